#pragma once

#include "platform/files/FileSystem.h"
#include "platform/jet/File.h"

namespace jet {

using files::FileSystem;
using files::HostFileSystem;
using files::OpenMode;

}  // namespace jet
