// SPDX-License-Identifier: MIT
#pragma once

#include <QColor>

class QPalette;

namespace desktop {

// The colours that have no palette role.
struct ThemeColours {
  QColor accent;      // default button, focus ring, check marks
  QColor onAccent;    // text on it
  QColor danger;      // buttons that delete; errors
  QColor onDanger;    // text on it
  QColor face;        // push button
  QColor card;        // background of a group box
  QColor line;        // hairlines
  QColor lineStrong;  // borders of fields
  QColor hint;        // less prominent text: counts, units, explanations
  QColor runs;        // state colours, readable on Base
  QColor begins;
  QColor ends;
  QColor over;
  QColor wrong;
};

// Whether the palette is dark: its Window is darker than its WindowText.
bool IsDark(const QPalette& palette);

// The colours for a light or dark palette. Read them while painting; do not store them.
const ThemeColours& ThemeColoursFor(const QPalette& palette);

// Colours of the sound controls (LED panels, meters, waveforms); the same in both variants.
namespace instrument {
inline constexpr QRgb kGround = 0xff08090a;
inline constexpr QRgb kRim = 0xff33383e;
inline constexpr QRgb kLit = 0xffffd60a;
inline constexpr QRgb kUnlit = 0xff2b2606;
inline constexpr QRgb kArrowGround = 0xff1b1f23;
inline constexpr QRgb kGreen = 0xff35c46a;
inline constexpr QRgb kRed = 0xffff5a4d;
inline constexpr QRgb kPeak = 0xff3b8fa0;
inline constexpr QRgb kRms = 0xff8fd3e0;
inline constexpr QRgb kOuttroPeak = 0xffb79a10;
inline constexpr QRgb kOuttroRms = 0xffffe36b;
inline constexpr QRgb kRuler = 0xffa5afba;
inline constexpr QRgb kTrouble = 0xffff7b72;
inline constexpr QRgb kFocus = 0xff3fb0c4;
}  // namespace instrument

}  // namespace desktop
