// SPDX-License-Identifier: MIT
// The one exception of this library's core, which stands without Qt.
#pragma once

#include <stdexcept>
#include <string>

namespace audio {

// What went wrong with a sound file or a sound device, in Dutch (UTF-8), fit to show to a user and naming the file.
class Error : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

// "Kan het geluidsbestand 'path' niet lezen: reason."
Error ReadError(const std::string& path, const std::string& reason);
// "Kan het geluidsbestand 'path' niet schrijven: reason."
Error WriteError(const std::string& path, const std::string& reason);

}  // namespace audio
