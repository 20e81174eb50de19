// SPDX-License-Identifier: MIT
#pragma once

#include <array>
#include <cstddef>
#include <ostream>
#include <streambuf>

// Forwards bytes to another stream and makes control characters visible: an escape becomes "\x1B". Otherwise texts of a
// database could control the terminal. Line breaks, tabs and printable UTF-8 pass unchanged; a byte that belongs to no
// character is made visible too.
class VisibleBuffer : public std::streambuf {
 public:
  explicit VisibleBuffer(std::streambuf& target) : target_(target) {}

 protected:
  int_type overflow(int_type byte) override;
  int sync() override;

 private:
  bool Take(unsigned char byte);
  bool PassCharacter();
  bool ShowBytes();

  std::streambuf& target_;
  std::array<unsigned char, 4> character_{};  // the bytes of an incomplete character
  std::size_t length_ = 0;
  std::size_t wanted_ = 0;
};

// While it exists, a stream that writes to a terminal shows control characters; files and pipes get every byte
// unchanged.
class VisibleOnTerminal {
 public:
  // `descriptor`: where the stream writes.
  VisibleOnTerminal(std::ostream& stream, int descriptor);
  ~VisibleOnTerminal();
  VisibleOnTerminal(const VisibleOnTerminal&) = delete;
  VisibleOnTerminal& operator=(const VisibleOnTerminal&) = delete;

 private:
  std::ostream& stream_;
  std::streambuf* real_;
  VisibleBuffer visible_;
};
