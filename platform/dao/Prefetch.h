// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <QStringList>

#include <cstdint>
#include <memory>
#include <vector>

namespace dao {

// Reads rows of a database on a server in one round trip, before the statements that look them up one by one. While it
// exists, statements of this thread that read this table by this key find those rows in it, as they were at its start;
// other rows are read from the server. Does nothing for a file, and nothing when the rows cannot be read: the
// statements then report why. For a short series of reads without changes in between.
class Prefetch {
 public:
  struct Rows {
    QString table;
    QString keyField;      // with whole numbers
    QStringList fields{};  // that the statements read
    std::vector<std::int64_t> keys{};
  };
  Prefetch(const QString& pathText, const Rows& rows);
  ~Prefetch();
  Prefetch(const Prefetch&) = delete;
  Prefetch& operator=(const Prefetch&) = delete;

 private:
  class Read;
  std::unique_ptr<Read> read_;
};

}  // namespace dao
