#pragma once

#include "platform/dao/Sqlite.h"

namespace dao {

// The SQL engine as one statement has it: in memory, without tables. This thread's next statement gets the same one,
// for opening it takes longer than many a statement; after an exception it gets a new one, so that nothing of what went
// wrong stays behind.
class EngineConnection {
 public:
  EngineConnection();
  ~EngineConnection();
  EngineConnection(const EngineConnection&) = delete;
  EngineConnection& operator=(const EngineConnection&) = delete;

  sqlite3* Get() const { return connection_.get(); }

 private:
  SqliteConnection connection_;
  int exceptions_;  // on their way when it was made
};

}  // namespace dao
