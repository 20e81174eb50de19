// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

namespace runtime {

// The operating system's error number as a short Dutch reason, to stand behind "... niet openen: ".
QString SystemReason(int errorNumber);

}  // namespace runtime
