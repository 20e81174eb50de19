// SPDX-License-Identifier: MIT
#pragma once

#include "platform/dao/Database.h"
#include "tools/Arguments.h"

#include <memory>

namespace jet {
class Database;
}

// The database that the first plain word names, for the commands that work on one file.

inline const QString kPassword = QStringLiteral("--password");

enum class Purpose { Read, Write };
dao::Database OpenDatabase(const Arguments& arguments, Purpose purpose = Purpose::Read);

// The path text that a word of the command line stands for: a server's address as it is, a file by its absolute path.
QString DatabasePathOf(const QString& word);

// A runtime::Error when the word is a server's address: the command is for files, and `instead` names the server's own
// tool with what it does.
void RefuseServer(const QString& word, const QString& instead);

// The file itself, to read what a statement cannot: damaged tables, pages.
std::unique_ptr<jet::Database> OpenFile(const Arguments& arguments);
