// SPDX-License-Identifier: MIT
#pragma once

#include "platform/dao/Database.h"
#include "platform/jet/pages/PageSource.h"
#include "tools/Arguments.h"

#include <memory>

namespace jet {
class Database;
}

// The database in the first plain word, for commands that work on one file.

inline const QString kPassword = QStringLiteral("--password");

enum class Purpose { Read, Write };
dao::Database OpenDatabase(const Arguments& arguments, Purpose purpose = Purpose::Read);

// The path text of a word of the command line: a server's address as it is, a file as its absolute path.
QString DatabasePathOf(const QString& word);

// Throws runtime::Error when the word is a server's address: the command is for files. `instead` says which tool of the
// server does the same.
void RefuseServer(const QString& word, const QString& instead);

// The file itself, for reading what a statement cannot: damaged tables, pages.
std::unique_ptr<jet::Database> OpenFile(const Arguments& arguments, std::size_t cachedPages = jet::kCachedPages);
