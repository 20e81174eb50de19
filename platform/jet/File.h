#pragma once

#include "platform/files/File.h"
#include "platform/jet/Bytes.h"

namespace jet {

using files::ByteRange;
using files::File;
using files::FileIdentity;
using files::LockKind;

}  // namespace jet
