// SPDX-License-Identifier: MIT
#include "platform/desktop/ThemeColours.h"

#include <QPalette>

namespace desktop {
namespace {

const ThemeColours kLight{
    .accent = 0xff0b6a7e,
    .onAccent = 0xffffffff,
    .danger = 0xffb3261e,
    .onDanger = 0xffffffff,
    .face = 0xffffffff,
    .card = 0xfffbfcfd,
    .line = 0xffd8dde3,
    .lineStrong = 0xff838d99,
    .hint = 0xff56606b,
    .runs = 0xff1a7f37,
    .begins = 0xff0a5fb4,
    .ends = 0xff955800,
    .over = 0xff5b6470,
    .wrong = 0xffb3261e,
};

const ThemeColours kDark{
    .accent = 0xff3fb0c4,
    .onAccent = 0xff071619,
    .danger = 0xffff7b72,
    .onDanger = 0xff1f0907,
    .face = 0xff30363d,
    .card = 0xff24292f,
    .line = 0xff363d45,
    .lineStrong = 0xff6e7986,
    .hint = 0xffa5afba,
    .runs = 0xff4ac26b,
    .begins = 0xff6cb6ff,
    .ends = 0xfff0b429,
    .over = 0xff9aa4af,
    .wrong = 0xffff7b72,
};

}  // namespace

bool IsDark(const QPalette& palette) {
  return palette.color(QPalette::Window).lightness() < palette.color(QPalette::WindowText).lightness();
}

const ThemeColours& ThemeColoursFor(const QPalette& palette) {
  return IsDark(palette) ? kDark : kLight;
}

}  // namespace desktop
