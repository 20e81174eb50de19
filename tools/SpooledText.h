// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <ostream>
#include <string>
#include <string_view>

// Text that is complete before its first byte is passed on. Up to a limit it is in memory, then in a temporary file
// without a name; where no such file can be made or its disk is full, the rest stays in memory.
class SpooledText {
 public:
  static constexpr std::size_t kUsualLimit = std::size_t{1} << 20;  // bytes

  explicit SpooledText(std::size_t limit = kUsualLimit) : limit_(limit) {}
  ~SpooledText();
  SpooledText(SpooledText&& other) noexcept;
  SpooledText& operator=(SpooledText&&) = delete;

  void Add(std::string_view text);
  // Throws jet::Error when the temporary file cannot be read.
  void WriteTo(std::ostream& out) const;
  std::uint64_t InFile() const { return inFile_; }  // bytes

 private:
  bool MoveToFile();

  std::size_t limit_;
  std::string memory_;  // what follows the file
  int file_ = -1;
  bool hasNoFile_ = false;
  std::uint64_t inFile_ = 0;
};
