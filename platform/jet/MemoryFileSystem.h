#pragma once

#include "platform/files/MemoryFileSystem.h"
#include "platform/jet/FileSystem.h"

namespace jet {

using files::MemoryFileSystem;

}  // namespace jet
