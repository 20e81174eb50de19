// SPDX-License-Identifier: MIT
// The code page against the conversion tables of the C library.
#include "platform/runtime/CodePage.h"

#include <gtest/gtest.h>
#include <iconv.h>

#include <optional>

namespace {

class ReferenceConverter {
 public:
  ReferenceConverter(const char* to, const char* from) : converter_(::iconv_open(to, from)) {}
  ~ReferenceConverter() { ::iconv_close(converter_); }
  ReferenceConverter(const ReferenceConverter&) = delete;
  ReferenceConverter& operator=(const ReferenceConverter&) = delete;

  std::optional<QByteArray> Convert(QByteArray text) const {
    QByteArray result(16, 0);
    char* in = text.data();
    char* out = result.data();
    std::size_t inLeft = static_cast<std::size_t>(text.size());
    std::size_t outLeft = static_cast<std::size_t>(result.size());
    ::iconv(converter_, nullptr, nullptr, nullptr, nullptr);
    if (::iconv(converter_, &in, &inLeft, &out, &outLeft) != 0) return std::nullopt;
    result.chop(static_cast<qsizetype>(outLeft));
    return result;
  }

 private:
  iconv_t converter_;
};

bool IsUndefinedByte(int byte) {
  return byte == 0x81 || byte == 0x8D || byte == 0x8F || byte == 0x90 || byte == 0x9D;
}

TEST(CodePageReference, EveryByteIsTheSameCharacter) {
  const ReferenceConverter toUtf8("UTF-8", "CP1252");
  for (int byte = 0; byte < 256; ++byte) {
    const QByteArray one(1, static_cast<char>(byte));
    const auto expected = toUtf8.Convert(one);
    EXPECT_EQ(expected.has_value(), !IsUndefinedByte(byte)) << byte;
    const QString character = runtime::FromCodePage(one);
    EXPECT_EQ(expected ? QString::fromUtf8(*expected) : QString(QChar(byte)), character) << byte;
  }
}

TEST(CodePageReference, EveryCodeUnitHasTheSameByteOrNone) {
  const ReferenceConverter fromUtf8("CP1252", "UTF-8");
  for (int unit = 1; unit < 0x10000; ++unit) {
    const QString text{QChar(unit)};
    if (text.front().isSurrogate() || IsUndefinedByte(unit)) continue;
    const auto expected = fromUtf8.Convert(text.toUtf8());
    QByteArray bytes;
    ASSERT_EQ(runtime::AppendCodePage(text, bytes), expected.has_value()) << unit;
    ASSERT_EQ(bytes, expected.value_or("?")) << unit;
  }
}

TEST(CodePageReference, ALoneSurrogateIsOneQuestionMark) {
  EXPECT_EQ(runtime::ToCodePage(QString(QChar(0xD83D)) + QChar(u'a')), QByteArray("?a"));
  EXPECT_EQ(runtime::ToCodePage(QString(QChar(0xDE00)) + QChar(0xD83D)), QByteArray("??"));
}

}  // namespace
