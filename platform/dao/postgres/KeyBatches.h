// SPDX-License-Identifier: MIT
#pragma once

#include "platform/dao/postgres/ServerCursor.h"

#include <cstdint>
#include <map>
#include <memory>
#include <unordered_map>
#include <vector>

namespace dao {

// Spares a join its round trips, within one reading transaction. The SQL engine looks up the rows of the inner table
// one by one, by keys that stand in a reply it was given before; so the first look-up asks for the rows of the keys
// that follow there too, and the next look-ups find theirs here.
class KeyBatches {
 public:
  // A reply whose whole numbers may be keys of other tables.
  void Note(const TableDef& table, std::shared_ptr<const ServerRows> rows);

  // The key, and behind it those that will probably be looked up next.
  std::vector<std::int64_t> KeysFrom(const TableDef& table, std::int64_t key) const;

  // The rows of the field's keys, which were asked for together. They have the field and the wanted ones.
  void Keep(const TableDef& table, std::size_t field, const std::vector<std::int64_t>& keys,
            std::shared_ptr<const ServerRows> rows);
  // The rows of one key; null when it was not asked for, or without a wanted field.
  std::unique_ptr<Cursor> Find(const TableDef& table, std::size_t field, std::int64_t key,
                               const FieldMask& wanted) const;

 private:
  struct Reply {
    QString table;
    std::shared_ptr<const ServerRows> rows;
    std::vector<int> columns;  // those of whole numbers
  };
  struct Batch {
    std::shared_ptr<const ServerRows> rows;
    std::unordered_map<std::int64_t, std::vector<int>> rowsOfKey;
  };

  std::vector<Reply> replies_;
  std::map<std::pair<QString, std::size_t>, Batch> batches_;
};

}  // namespace dao
