// SPDX-License-Identifier: MIT
#include "platform/runtime/CodePage.h"

#include <algorithm>
#include <array>

namespace runtime {
namespace {

// The code points of bytes 0x80 to 0x9F; all other bytes are their own code point.
constexpr std::array<char16_t, 32> kHighControls = {0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021,
                                                    0x02C6, 0x2030, 0x0160, 0x2039, 0x0152, 0x008D, 0x017D, 0x008F,
                                                    0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022, 0x2013, 0x2014,
                                                    0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178};

// The byte of one code unit, or -1.
int ByteOf(char16_t c) {
  if (c < 0x80 || (c >= 0xA0 && c <= 0xFF)) return c;
  for (std::size_t i = 0; i < kHighControls.size(); ++i) {
    if (kHighControls[i] == c) return static_cast<int>(0x80 + i);
  }
  return -1;
}

// Whether every code unit is a byte of the same value: nearly every text. The loop has no early exit, so that the
// compiler can vectorise it.
bool IsLatin1(QStringView text) {
  unsigned short other = 0;
  for (const QChar c : text) {
    const unsigned short unit = c.unicode();
    other |= static_cast<unsigned short>((unit & 0xFF00) | ((unit & 0xE0) == 0x80 ? 1 : 0));
  }
  return other == 0;
}

}  // namespace

QString FromCodePage(const QByteArray& bytes) {
  QString text(bytes.size(), Qt::Uninitialized);
  for (qsizetype i = 0; i < bytes.size(); ++i) {
    const auto byte = static_cast<unsigned char>(bytes[i]);
    text[i] = byte >= 0x80 && byte < 0xA0 ? kHighControls[byte - 0x80U] : char16_t{byte};
  }
  return text;
}

bool AppendCodePage(QStringView text, QByteArray& bytes) {
  if (IsLatin1(text)) {
    const qsizetype before = bytes.size();
    bytes.resize(before + text.size());
    std::transform(text.begin(), text.end(), bytes.begin() + before,
                   [](QChar c) { return static_cast<char>(c.unicode()); });
    return true;
  }
  bool fits = true;
  for (qsizetype i = 0; i < text.size(); ++i) {
    const int byte = ByteOf(text[i].unicode());
    bytes.append(byte < 0 ? '?' : static_cast<char>(byte));
    if (byte >= 0) continue;
    fits = false;
    if (text[i].isHighSurrogate() && i + 1 < text.size() && text[i + 1].isLowSurrogate()) ++i;
  }
  return fits;
}

QByteArray ToCodePage(const QString& text) {
  QByteArray bytes;
  AppendCodePage(text, bytes);
  return bytes;
}

}  // namespace runtime
