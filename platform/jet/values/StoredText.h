// SPDX-License-Identifier: MIT
// Text as stored in rows and long values: UTF-16LE, or the compressed form that begins with FF FE.
#pragma once

#include "platform/jet/values/Bytes.h"

#include <string>
#include <string_view>

namespace jet {

// Longest memo, in characters, that is stored in the compressed form.
constexpr std::size_t kMaxCompressedMemo = 1024;

// Sets `out` to the text stored in `bytes`. An odd last byte is ignored.
void DecodeText(ByteView bytes, std::u16string& out);
std::u16string DecodeText(ByteView bytes);

// Plain UTF-16LE, as names in table definitions and properties are stored.
std::u16string DecodePlainText(ByteView bytes);

Bytes EncodePlainText(std::u16string_view text);

// Appends the stored form. As in the original engine it is compressed only where allowed and when the text has at least
// three characters, all U+0001 to U+00FF. A text that begins with U+FEFF is always compressed, since its plain form
// would be read as compressed. Throws Error (Unsupported) when it cannot be.
void AppendText(std::u16string_view text, bool mayCompress, Bytes& out);
Bytes EncodeText(std::u16string_view text, bool mayCompress);

}  // namespace jet
