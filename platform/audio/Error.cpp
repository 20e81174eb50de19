// SPDX-License-Identifier: MIT
#include "platform/audio/Error.h"

namespace audio {

Error ReadError(const std::string& path, const std::string& reason) {
  return Error("Kan het geluidsbestand '" + path + "' niet lezen: " + reason + ".");
}

Error WriteError(const std::string& path, const std::string& reason) {
  return Error("Kan het geluidsbestand '" + path + "' niet schrijven: " + reason + ".");
}

}  // namespace audio
