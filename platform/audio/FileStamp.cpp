// SPDX-License-Identifier: MIT
#include "platform/audio/FileStamp.h"

#include "platform/audio/SourceFile.h"

namespace audio {

FileStamp FileStamp::Of(const std::string& hostPath) {
  const SourceFile file(hostPath);
  return {hostPath, file.Size(), file.ModifiedNs()};
}

std::string FileStamp::Key() const {
  return std::to_string(size) + ' ' + std::to_string(modifiedNs) + ' ' + path;
}

}  // namespace audio
