// SPDX-License-Identifier: MIT
#pragma once

#include "platform/dao/Sqlite.h"
#include "platform/dao/VirtualTable.h"

#include <memory>

namespace dao {

// The SQL engine as one statement has it: in memory, with the tables that it adds. This thread's next statement gets
// the same one, for opening it takes longer than many a statement; after an exception it gets a new one, so that
// nothing of what went wrong stays behind.
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
  int exceptions_;  // on their way when it was made
};

}  // namespace dao
