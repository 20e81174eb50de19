#pragma once

#include "platform/files/Bytes.h"

namespace jet {

using files::Bytes;
using files::ByteView;
using files::ByteSpan;

}  // namespace jet
