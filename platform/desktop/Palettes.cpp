// SPDX-License-Identifier: MIT
#include "platform/desktop/Palettes.h"

#include "platform/desktop/ThemeColours.h"

namespace desktop {
namespace {

struct Shades {
  QRgb window, text, base, alternate, button, highlight, placeholder, disabled, light, dark, shadow, toolTip;
};

const Shades kLightShades{0xfff2f4f6, 0xff1a1f25, 0xffffffff, 0xfff7f9fa, 0xffe9ecef, 0xff0b6a7e,
                          0xff636c77, 0xff7c858f, 0xffffffff, 0xff838d99, 0xff56606b, 0xff1a1f25};
const Shades kDarkShades{0xff1f2328, 0xffe4e8ec, 0xff16191d, 0xff1b1f23, 0xff2a2f36, 0xff1b6b7d,
                         0xff98a2ad, 0xff848e99, 0xff363d45, 0xff6e7986, 0xff0c0e10, 0xff30363d};

QPalette Make(const Shades& shades, const ThemeColours& colours) {
  QPalette palette;
  palette.setColor(QPalette::Window, shades.window);
  for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText}) {
    palette.setColor(role, shades.text);
    palette.setColor(QPalette::Disabled, role, shades.disabled);
  }
  palette.setColor(QPalette::Base, shades.base);
  palette.setColor(QPalette::Disabled, QPalette::Base, shades.button);
  palette.setColor(QPalette::AlternateBase, shades.alternate);
  palette.setColor(QPalette::Button, shades.button);
  palette.setColor(QPalette::Highlight, shades.highlight);
  palette.setColor(QPalette::HighlightedText, 0xffffffff);
  palette.setColor(QPalette::PlaceholderText, shades.placeholder);
  palette.setColor(QPalette::Disabled, QPalette::PlaceholderText, shades.disabled);
  palette.setColor(QPalette::Light, shades.light);
  palette.setColor(QPalette::Midlight, colours.line);
  palette.setColor(QPalette::Mid, colours.line);
  palette.setColor(QPalette::Dark, shades.dark);
  palette.setColor(QPalette::Shadow, shades.shadow);
  palette.setColor(QPalette::BrightText, 0xffffffff);
  palette.setColor(QPalette::Link, colours.accent);
  palette.setColor(QPalette::LinkVisited, colours.accent);
  palette.setColor(QPalette::ToolTipBase, shades.toolTip);
  palette.setColor(QPalette::ToolTipText, 0xffffffff);
  return palette;
}

// The colours of a set of shades, before a palette exists.
const ThemeColours& ThemeColoursOf(const Shades& shades) {
  QPalette page;
  page.setColor(QPalette::Window, shades.window);
  page.setColor(QPalette::WindowText, shades.text);
  return ThemeColoursFor(page);
}

}  // namespace

QPalette LightPalette() {
  return Make(kLightShades, ThemeColoursOf(kLightShades));
}

QPalette DarkPalette() {
  return Make(kDarkShades, ThemeColoursOf(kDarkShades));
}

}  // namespace desktop
