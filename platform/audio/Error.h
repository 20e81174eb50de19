// SPDX-License-Identifier: MIT
// The exception of this library's core.
#pragma once

#include <stdexcept>
#include <string>

namespace audio {

// A failure of a sound file or sound device. what() is a Dutch sentence (UTF-8) for the user; for a file it contains
// the path.
class Error : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

// "Kan het geluidsbestand 'path' niet lezen: reason."
Error ReadError(const std::string& path, const std::string& reason);
// "Kan het geluidsbestand 'path' niet schrijven: reason."
Error WriteError(const std::string& path, const std::string& reason);

}  // namespace audio
