// SPDX-License-Identifier: MIT
#include "platform/dao/Prefetch.h"

#include "platform/dao/postgres/PrefetchedRows.h"
#include "platform/dao/postgres/ServerStorage.h"
#include "platform/dao/postgres/ServerTable.h"
#include "platform/runtime/Error.h"

#include <algorithm>

namespace dao {
namespace {

struct Prefetched {
  QString database;
  KeyBatches batches{};
};

// The most recent last.
std::vector<const Prefetched*>& OfThisThread() {
  thread_local std::vector<const Prefetched*> all;
  return all;
}

QString NameOf(const ServerAddress& address) {
  return address.Url() + u'\\' + address.Schema().toLower();
}

}  // namespace

class Prefetch::Read {
 public:
  Read(const QString& pathText, const Rows& rows) : prefetched_{NameOf(ServerAddress(pathText))} {
    ServerStorage storage(pathText, {});
    const auto reading = storage.Begin(Access::Read);
    storage.ExpectOneRead();
    const std::unique_ptr<Table> table = storage.OpenTable(rows.table);
    if (!table) return;
    const TableDef& definition = table->Definition();
    const int keyField = definition.FieldIndex(rows.keyField);
    FieldMask wanted;
    for (const QString& name : rows.fields) {
      if (const int field = definition.FieldIndex(name); field >= 0) wanted.set(static_cast<std::size_t>(field));
    }
    if (keyField < 0) return;
    const auto key = static_cast<std::size_t>(keyField);
    prefetched_.batches.Keep(definition, key, rows.keys,
                             static_cast<ServerTable&>(*table).RowsOfKeys(key, rows.keys, wanted));
    OfThisThread().push_back(&prefetched_);
  }
  ~Read() { std::erase(OfThisThread(), &prefetched_); }
  Read(const Read&) = delete;
  Read& operator=(const Read&) = delete;

 private:
  Prefetched prefetched_;
};

Prefetch::Prefetch(const QString& pathText, const Rows& rows) {
  if (!IsServerPath(pathText) || rows.keys.size() < 2) return;
  try {
    read_ = std::make_unique<Read>(pathText, rows);
  } catch (const runtime::Error&) {
    // The statements read the rows themselves and report the error.
  }
}

Prefetch::~Prefetch() = default;

std::unique_ptr<Cursor> FindPrefetched(const ServerAddress& address, const TableDef& table, std::size_t field,
                                       std::int64_t key, const FieldMask& wanted) {
  for (const Prefetched* prefetched : OfThisThread()) {
    if (prefetched->database != NameOf(address)) continue;
    if (auto found = prefetched->batches.Find(table, field, key, wanted)) return found;
  }
  return nullptr;
}

}  // namespace dao
