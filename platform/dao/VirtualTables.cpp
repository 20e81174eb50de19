// SPDX-License-Identifier: MIT
#include "platform/dao/VirtualTables.h"

#include "platform/dao/NewValues.h"
#include "platform/dao/SqlText.h"
#include "platform/dao/Sqlite.h"
#include "platform/runtime/Error.h"

#include <algorithm>
#include <utility>

using namespace Qt::StringLiterals;

namespace dao {
namespace {

struct OpenTable : sqlite3_vtab {
  VirtualTables::Entry* entry = nullptr;

  VirtualTables* All() const { return entry->all; }
  Table& Stored() const { return *entry->use.table; }
  const TableDef& Definition() const { return Stored().Definition(); }
};

struct OpenCursor : sqlite3_vtab_cursor {
  std::unique_ptr<Cursor> rows;
  bool atEnd = true;

  OpenTable& Owner() const { return *static_cast<OpenTable*>(pVtab); }
};

template <class Action>
int Guarded(VirtualTables* tables, Action action) noexcept {
  try {
    action();
    return SQLITE_OK;
  } catch (...) {
    tables->KeepFailure(std::current_exception());
    return SQLITE_ERROR;
  }
}

QByteArray Declaration(const TableDef& table) {
  QStringList columns;
  for (const FieldDef& field : table.fields) {
    columns += QuotedName(field.name) + u' ' + QLatin1StringView(DeclaredType(field.type)) + u" COLLATE "_s +
               QLatin1StringView(kTextOrderName);
  }
  return (u"CREATE TABLE t ("_s + columns.join(u", "_s) + u')').toUtf8();
}

int Connect(sqlite3* /*connection*/, void* entry, int /*count*/, const char* const* /*arguments*/, sqlite3_vtab** made,
            char** /*message*/) {
  auto table = std::make_unique<OpenTable>();
  table->entry = static_cast<VirtualTables::Entry*>(entry);
  int declared = SQLITE_OK;
  const int failed = Guarded(table->All(), [&] { declared = table->All()->Declare(*table->entry); });
  if (failed != SQLITE_OK || declared != SQLITE_OK) return std::max(failed, declared);
  *made = table.release();
  return SQLITE_OK;
}

int Disconnect(sqlite3_vtab* table) {
  delete static_cast<OpenTable*>(table);
  return SQLITE_OK;
}

int BestIndex(sqlite3_vtab* base, sqlite3_index_info* info) {
  auto* table = static_cast<OpenTable*>(base);
  return Guarded(table->All(), [&] {
    std::vector<Plan>& plans = table->entry->use.plans;
    info->idxNum = static_cast<int>(plans.size());
    plans.push_back(ChoosePlan(table->Definition(), info, table->entry->use.readOnce));
    plans.back().sought = table->entry->use.sought;
  });
}

int Open(sqlite3_vtab* base, sqlite3_vtab_cursor** made) {
  return Guarded(static_cast<OpenTable*>(base)->All(), [&] { *made = new OpenCursor; });
}

int Close(sqlite3_vtab_cursor* cursor) {
  delete static_cast<OpenCursor*>(cursor);
  return SQLITE_OK;
}

int Filter(sqlite3_vtab_cursor* base, int plan, const char* /*text*/, int count, sqlite3_value** values) {
  auto* cursor = static_cast<OpenCursor*>(base);
  OpenTable& table = cursor->Owner();
  return Guarded(table.All(), [&] {
    cursor->rows.reset();
    cursor->rows = CursorOf(table.entry->use.plans[static_cast<std::size_t>(plan)], table.Stored(), count, values);
    cursor->atEnd = !cursor->rows->Next();
  });
}

int Next(sqlite3_vtab_cursor* base) {
  auto* cursor = static_cast<OpenCursor*>(base);
  return Guarded(cursor->Owner().All(), [&] { cursor->atEnd = !cursor->rows->Next(); });
}

int AtEnd(sqlite3_vtab_cursor* cursor) {
  return static_cast<int>(static_cast<OpenCursor*>(cursor)->atEnd);
}

int Column(sqlite3_vtab_cursor* base, sqlite3_context* context, int column) {
  auto* cursor = static_cast<OpenCursor*>(base);
  // A field that an UPDATE does not change is not read.
  if (sqlite3_vtab_nochange(context) != 0) return SQLITE_OK;
  return Guarded(cursor->Owner().All(),
                 [&] { SetResult(context, cursor->rows->Field(static_cast<std::size_t>(column))); });
}

int Identity(sqlite3_vtab_cursor* base, sqlite3_int64* row) {
  auto* cursor = static_cast<OpenCursor*>(base);
  return Guarded(cursor->Owner().All(), [&] { *row = cursor->rows->Id(); });
}

// xUpdate gets the old identity, the new one, and then the fields.
constexpr std::size_t kFirstField = 2;

void InsertRow(const OpenTable& table, sqlite3_value** values) {
  const auto given = [&](std::size_t field) { return ValueOf(values[kFirstField + field]); };
  table.Stored().InsertAmongMany(NewRow(table.Definition(), table.entry->use.given, given));
}

void UpdateRow(const OpenTable& table, RowId identity, sqlite3_value** values) {
  const TableDef& definition = table.Definition();
  FieldMask changed;
  for (std::size_t i = 0; i < static_cast<std::size_t>(definition.fields.size()); ++i)
    changed[i] = sqlite3_value_nochange(values[kFirstField + i]) == 0;
  const auto given = [&](std::size_t field) { return ValueOf(values[kFirstField + field]); };
  table.Stored().Update(identity, NewValues(definition, changed, given));
}

int Update(sqlite3_vtab* base, int count, sqlite3_value** values, sqlite3_int64* /*identity*/) {
  auto* table = static_cast<OpenTable*>(base);
  return Guarded(table->All(), [&] {
    if (count == 1) {
      table->entry->use.toDelete.push_back(sqlite3_value_int64(values[0]));
    } else if (sqlite3_value_type(values[0]) == SQLITE_NULL) {
      InsertRow(*table, values);
    } else {
      UpdateRow(*table, sqlite3_value_int64(values[0]), values);
    }
  });
}

const sqlite3_module* Module() {
  static const sqlite3_module kModule = [] {
    sqlite3_module module{};
    module.xConnect = Connect;
    module.xBestIndex = BestIndex;
    module.xDisconnect = Disconnect;
    module.xOpen = Open;
    module.xClose = Close;
    module.xFilter = Filter;
    module.xNext = Next;
    module.xEof = AtEnd;
    module.xColumn = Column;
    module.xRowid = Identity;
    module.xUpdate = Update;
    return module;
  }();
  return &kModule;
}

}  // namespace

void VirtualTables::Add(const QString& name, std::unique_ptr<Table> table) {
  // SQLite's own tables take precedence over modules.
  if (name.startsWith(u"sqlite_"_s, Qt::CaseInsensitive)) {
    throw runtime::Error(u"De tabel '%1' is niet bruikbaar: die naam is van de SQL-machine zelf."_s.arg(name));
  }
  const QByteArray key = name.toUtf8();
  const QByteArray declaration = Declaration(table->Definition());
  std::unique_ptr<Entry> entry = TakeKept(key, declaration);
  if (!entry) {
    entry = std::make_unique<Entry>(Entry{this, key, declaration, {}});
    sqlite3_create_module_v2(connection_, key.constData(), Module(), entry.get(), nullptr);
  }
  entry->use.table = std::move(table);
  entries_.push_back(std::move(entry));
}

std::unique_ptr<VirtualTables::Entry> VirtualTables::TakeKept(const QByteArray& name, const QByteArray& declaration) {
  const auto found = std::find_if(kept_.begin(), kept_.end(), [&](const std::unique_ptr<Entry>& kept) {
    return kept->name == name && kept->declaration == declaration;
  });
  if (found == kept_.end()) return nullptr;
  std::unique_ptr<Entry> taken = std::move(*found);
  kept_.erase(found);
  return taken;
}

void VirtualTables::DropUnused() {
  if (kept_.empty()) return;
  std::vector<const char*> names;
  for (const std::unique_ptr<Entry>& entry : entries_)
    names.push_back(entry->name.constData());
  names.push_back(nullptr);
  sqlite3_drop_modules(connection_, names.data());
  kept_.clear();
}

void VirtualTables::EndStatement() {
  for (const std::unique_ptr<Entry>& entry : entries_)
    entry->use = {};
  kept_ = std::exchange(entries_, {});
}

void VirtualTables::FinishChanges(std::size_t place) {
  const Use& use = entries_[place]->use;
  if (!use.toDelete.empty()) use.table->Delete(use.toDelete);
  use.table->EndInserts();
}

int VirtualTables::Declare(const Entry& entry) {
  isDeclaring_ = true;
  const int result = sqlite3_declare_vtab(connection_, entry.declaration.constData());
  isDeclaring_ = false;
  return result;
}

void VirtualTables::RethrowFailure() const {
  if (failure_) std::rethrow_exception(failure_);
}

const char* DeclaredType(FieldType type) {
  // SQLite derives the affinity from parts of the name: TEXT, BLOB, DOUB or INT; every other name is NUMERIC.
  switch (type) {
    case FieldType::Boolean:
      return "BOOLEAN";
    case FieldType::Byte:
      return "BYTE";
    case FieldType::Integer:
      return "INTEGER";
    case FieldType::Long:
      return "LONG";
    case FieldType::Currency:
      return "CURRENCY";
    case FieldType::Single:
      return "SINGLE";
    case FieldType::Double:
      return "DOUBLE";
    case FieldType::Date:
      return "DATE";
    case FieldType::Text:
      return "TEXT";
    case FieldType::Memo:
      return "MEMOTEXT";
    case FieldType::Binary:
      return "BLOB";
    case FieldType::Guid:
      return "GUIDTEXT";
    case FieldType::Numeric:
      return "NUMERIC";
  }
  return "";
}

}  // namespace dao
