// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

#include <filesystem>

namespace runtime {

// Calls on this thread's file system (files::CurrentFileSystem) with host paths. They return 0 or an errno.

int RemoveFile(const QString& hostPath);
// Syncs the folder of the file: on return its directory entries survive a power cut.
int SyncFolderOf(const QString& hostPath);

// The host path in the encoding of the operating system.
std::filesystem::path NativePath(const QString& hostPath);

}  // namespace runtime
