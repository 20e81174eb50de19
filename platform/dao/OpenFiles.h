// SPDX-License-Identifier: MIT
#pragma once

#include "platform/dao/OpenOptions.h"
#include "platform/jet/database/Database.h"

#include <QString>

#include <filesystem>
#include <memory>

namespace dao {

// Opens the file, or gives the opening that this thread had last: the screens open their databases anew for each
// statement, and what was read of a file stays good until somebody changes it. Between statements an opening holds no
// lock that keeps others from reading or writing. Throws jet::Error.
std::shared_ptr<jet::Database> OpenFile(const QString& hostPath, const OpenOptions& options);

// What databases of this thread are opened on: files::CurrentFileSystem.
jet::FileSystem& Files();

// Gives up the openings that this thread keeps.
void CloseKept();

std::filesystem::path EncodedPath(const QString& hostPath);

}  // namespace dao
