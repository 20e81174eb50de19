// SPDX-License-Identifier: MIT
#pragma once

#include "platform/files/FileSystem.h"
#include "platform/jet/values/Bytes.h"

namespace jet {

using files::ByteRange;
using files::File;
using files::FileIdentity;
using files::FileSystem;
using files::HostFileSystem;
using files::LockKind;
using files::OpenMode;

}  // namespace jet
