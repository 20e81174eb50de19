// SPDX-License-Identifier: MIT
#pragma once

#include "platform/dao/Sqlite.h"
#include "platform/dao/VirtualTables.h"

#include <memory>

namespace dao {

// An in-memory SQLite connection for one statement. The next statement of this thread reuses it, because opening one
// takes longer than most statements; after an exception it is closed, so that no state of the failure remains.
class EngineConnection {
 public:
  EngineConnection();
  ~EngineConnection();
  EngineConnection(const EngineConnection&) = delete;
  EngineConnection& operator=(const EngineConnection&) = delete;

  sqlite3* Get() const { return opened_.connection.get(); }
  VirtualTables& Tables() const { return *opened_.tables; }

 private:
  struct Opened {
    std::unique_ptr<VirtualTables> tables;
    SqliteConnection connection;  // closed first
  };
  static Opened OpenInMemory();
  static Opened& Idle();

  Opened opened_;
  int exceptions_;  // uncaught ones at construction
};

}  // namespace dao
