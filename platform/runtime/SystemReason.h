// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

namespace runtime {

// A short Dutch reason for an errno value, to follow "... niet openen: ".
QString SystemReason(int errorNumber);

}  // namespace runtime
