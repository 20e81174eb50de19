// SPDX-License-Identifier: MIT
#pragma once

#include <array>
#include <cstddef>
#include <ostream>
#include <streambuf>

// Passes bytes on to another stream and makes control characters in them visible: an escape becomes "\x1B". Texts of a
// database would otherwise command the terminal. Line breaks and tabs pass as they are, and UTF-8 of printable
// characters does; a byte that belongs to no character is made visible too.
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
  std::array<unsigned char, 4> character_{};  // the bytes of one that is not whole yet
  std::size_t length_ = 0;
  std::size_t wanted_ = 0;
};

// While it lives, a stream that ends in a terminal shows control characters; files and pipes get every byte as it is.
class VisibleOnTerminal {
 public:
  // `descriptor`: what the stream writes to.
  VisibleOnTerminal(std::ostream& stream, int descriptor);
  ~VisibleOnTerminal();
  VisibleOnTerminal(const VisibleOnTerminal&) = delete;
  VisibleOnTerminal& operator=(const VisibleOnTerminal&) = delete;

 private:
  std::ostream& stream_;
  std::streambuf* real_;
  VisibleBuffer visible_;
};
