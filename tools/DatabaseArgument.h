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

// The file itself, to read what a statement cannot: damaged tables, pages.
std::unique_ptr<jet::Database> OpenFile(const Arguments& arguments);
