// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

#include <filesystem>

namespace runtime {

// Calls on the files of this thread (files::CurrentFileSystem), for host paths. They return 0 or an errno.

int RemoveFile(const QString& hostPath);
// Returns when the names in the folder that holds the file will survive a power cut.
int SyncFolderOf(const QString& hostPath);

// The host path as the system takes it.
std::filesystem::path NativePath(const QString& hostPath);

}  // namespace runtime
