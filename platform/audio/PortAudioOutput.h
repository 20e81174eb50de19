// SPDX-License-Identifier: MIT
// Playback on a sound device, through PortAudio.
#pragma once

#include "platform/audio/Output.h"

#include <memory>

namespace audio {

// Opens the requested device at the file's sample rate or, if the device rejects that, at its own. Returns a
// SilentOutput when the device does not exist or cannot be opened; its Status says which. Never throws.
std::unique_ptr<Output> OpenDeviceOutput(const OutputRequest& request);

}  // namespace audio
