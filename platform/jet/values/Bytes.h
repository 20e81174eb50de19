// SPDX-License-Identifier: MIT
#pragma once

#include "platform/files/Bytes.h"

namespace jet {

using files::Bytes;
using files::ByteSpan;
using files::ByteView;

}  // namespace jet
