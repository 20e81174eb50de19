// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

#include <filesystem>

namespace runtime {

// Calls with host paths. These two use this thread's file system (files::CurrentFileSystem) and return 0 or an errno.

int RemoveFile(const QString& hostPath);
// Syncs the folder of the file: on return its directory entries survive a power cut.
int SyncFolderOf(const QString& hostPath);

// Makes the folder, and those above it that do not exist, on the host's file system. Throws Error with the reason.
void MakeFolders(const QString& hostPath);

// The host path in the encoding of the operating system.
std::filesystem::path NativePath(const QString& hostPath);

}  // namespace runtime
