// SPDX-License-Identifier: MIT
#pragma once

#include "platform/dao/postgres/ServerCursor.h"

#include <cstdint>
#include <map>
#include <memory>
#include <unordered_map>
#include <vector>

namespace dao {

// Prefetches the look-ups of a join within one reading transaction. SQLite looks up the rows of the inner table one by
// one, by keys from the rows of an earlier reply. The first look-up therefore also requests the rows of the keys that
// follow in that reply, and the next look-ups find them here without a round trip.
class KeyBatches {
 public:
  // Adds a reply whose whole numbers may be keys of other tables.
  void Note(const TableDef& table, std::shared_ptr<const ServerRows> rows);

  // The key, followed by the keys that will probably be looked up next.
  std::vector<std::int64_t> KeysFrom(const TableDef& table, std::int64_t key) const;

  // Adds the rows of a batch of keys of a field. They must contain that field.
  void Keep(const TableDef& table, std::size_t field, const std::vector<std::int64_t>& keys,
            std::shared_ptr<const ServerRows> rows);
  // The rows of one key; null when no batch has this key and all wanted fields.
  std::unique_ptr<Cursor> Find(const TableDef& table, std::size_t field, std::int64_t key,
                               const FieldMask& wanted) const;

 private:
  struct Reply {
    QString table;
    std::shared_ptr<const ServerRows> rows;
    std::vector<int> columns;  // with whole numbers
  };
  struct Batch {
    std::shared_ptr<const ServerRows> rows;
    std::unordered_map<std::int64_t, std::vector<int>> rowsOfKey;
  };

  std::vector<Reply> replies_;
  std::map<std::pair<QString, std::size_t>, Batch> batches_;
};

}  // namespace dao
