// SPDX-License-Identifier: MIT
#pragma once

#include "platform/files/Error.h"

namespace jet {

using files::Error;
using files::ErrorCode;
using files::SystemError;

}  // namespace jet
