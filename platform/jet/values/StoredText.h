// SPDX-License-Identifier: MIT
// Text as it lies in rows and long values: UTF-16LE, or the compressed form that begins with FF FE.
#pragma once

#include "platform/jet/values/Bytes.h"

#include <string>
#include <string_view>

namespace jet {

// Longest memo, in characters, that is stored in the compressed form.
constexpr std::size_t kMaxCompressedMemo = 1024;

// Replaces `out` by the text stored in `bytes`. An odd last byte is left out.
void DecodeText(ByteView bytes, std::u16string& out);
std::u16string DecodeText(ByteView bytes);

// Plain UTF-16LE, as names in table definitions and properties are stored.
std::u16string DecodePlainText(ByteView bytes);

Bytes EncodePlainText(std::u16string_view text);

// The stored form. Compressed only where allowed and as a whole, as the original does: at least three characters,
// every one U+0001 to U+00FF. A text that begins with U+FEFF, the mark of the compressed form, is the one exception;
// an Error where it cannot be told apart.
void AppendText(std::u16string_view text, bool mayCompress, Bytes& out);
Bytes EncodeText(std::u16string_view text, bool mayCompress);

}  // namespace jet
