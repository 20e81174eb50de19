/// The file's UTF-16 as UTF-8, for messages and for programs that print.
#pragma once

#include <string>
#include <string_view>

namespace jet {

/// A lone surrogate becomes U+FFFD.
std::string ToUtf8(std::u16string_view text);
/// The same behind what is in `out` already.
void AppendUtf8(std::string& out, std::u16string_view text);

}  // namespace jet
