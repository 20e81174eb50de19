// SPDX-License-Identifier: MIT
// Playback on a sound device, through PortAudio.
#pragma once

#include "platform/audio/Output.h"

#include <memory>

namespace audio {

// The product's output: the asked device through PortAudio, at the file's rate or, where the device refuses that, at
// its own. A SilentOutput when the device does not exist or cannot be opened; its Status says which. Never throws.
std::unique_ptr<Output> OpenDeviceOutput(const OutputRequest& request);

}  // namespace audio
