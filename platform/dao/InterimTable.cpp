#include "platform/dao/InterimTable.h"

#include <array>

#include "platform/dao/SqlText.h"
#include "platform/runtime/Error.h"

using namespace Qt::StringLiterals;

namespace dao {
namespace {

class InterimCursor : public Cursor {
 public:
  InterimCursor(InterimConnection& connection, const QString& sql, const FieldMask& wanted)
      : statement_(connection, sql) {
    int column = 1;
    for (std::size_t field = 0; field < kMostFields; ++field)
      columns_[field] = wanted[field] ? column++ : 0;
  }

  sqlite3_stmt* Statement() const { return statement_.Get(); }
  bool Next() override { return statement_.Step(); }
  RowId Id() const override { return sqlite3_column_int64(statement_.Get(), 0); }
  ValueView Field(std::size_t field) const override {
    if (columns_[field] == 0) return {};
    return ValueOf(sqlite3_column_value(statement_.Get(), columns_[field]));
  }

 private:
  InterimStatement statement_;
  std::array<int, kMostFields> columns_{};
};

bool IsKeyRequired(const TableDef& table, const QString& field) {
  for (const IndexDef& index : table.indexes) {
    if (!index.primary && !index.required) continue;
    for (const IndexField& key : index.fields) {
      if (key.name.compare(field, Qt::CaseInsensitive) == 0) return true;
    }
  }
  return false;
}

QString OrderTerms(const IndexDef& index, bool backwards) {
  QStringList terms;
  for (const IndexField& field : index.fields) {
    const bool descending = (field.direction == Direction::Descending) != backwards;
    terms += QuotedName(field.name) + (descending ? u" DESC"_s : u" ASC"_s);
  }
  return terms.join(u", "_s);
}

QString IndexSql(const TableDef& table, const IndexDef& index) {
  QString sql = u"CREATE %1INDEX %2 ON %3 (%4)"_s.arg(index.unique || index.primary ? u"UNIQUE "_s : QString(),
                                                      QuotedName(table.name + u'.' + index.name),
                                                      QuotedName(table.name), OrderTerms(index, false));
  if (!index.ignoreNull) return sql;
  QStringList present;
  for (const IndexField& field : index.fields)
    present += QuotedName(field.name) + u" IS NOT NULL"_s;
  return sql + u" WHERE "_s + present.join(u" AND "_s);
}

// "... failed: tblItems.ID, tblItems.Naam" names the fields behind the table.
QString FieldsIn(const QString& message) {
  QStringList fields;
  const QString list = message.mid(message.indexOf(u": "_s) + 2);
  for (const QString& part : list.split(u", "_s))
    fields += part.mid(part.lastIndexOf(u'.') + 1);
  return fields.join(u", "_s);
}

}  // namespace

void InterimTable::Create(InterimConnection& connection, const TableDef& definition) {
  QStringList columns;
  for (const FieldDef& field : definition.fields) {
    const QString required = IsKeyRequired(definition, field.name) ? u" NOT NULL"_s : QString();
    columns += QuotedName(field.name) + u" COLLATE "_s + QLatin1StringView(kTextOrderName) + required;
  }
  connection.Run(u"CREATE TABLE %1 (%2)"_s.arg(QuotedName(definition.name), columns.join(u", "_s)));
  for (const IndexDef& index : definition.indexes)
    connection.Run(IndexSql(definition, index));
}

QString InterimTable::SelectSql(const FieldMask& wanted) const {
  QString sql = u"SELECT rowid"_s;
  for (qsizetype i = 0; i < definition_.fields.size(); ++i) {
    if (wanted[static_cast<std::size_t>(i)]) sql += u", "_s + QuotedName(definition_.fields[i].name);
  }
  return sql + u" FROM "_s + QuotedName(definition_.name);
}

std::unique_ptr<Cursor> InterimTable::Scan(const FieldMask& wanted) {
  return std::make_unique<InterimCursor>(connection_, SelectSql(wanted), wanted);
}

std::unique_ptr<Cursor> InterimTable::ScanByIndex(std::size_t index, bool backwards, const FieldMask& wanted) {
  const QString order = OrderTerms(definition_.indexes[static_cast<qsizetype>(index)], backwards);
  return std::make_unique<InterimCursor>(connection_, SelectSql(wanted) + u" ORDER BY "_s + order, wanted);
}

std::unique_ptr<Cursor> InterimTable::Lookup(std::size_t index, std::span<const Value> key, const FieldMask& wanted) {
  const IndexDef& definition = definition_.indexes[static_cast<qsizetype>(index)];
  QStringList terms;
  for (std::size_t i = 0; i < key.size(); ++i) {
    terms += QuotedName(definition.fields[static_cast<qsizetype>(i)].name) + u" = ?"_s;
  }
  const QString sql = SelectSql(wanted) + u" WHERE "_s + terms.join(u" AND "_s);
  auto cursor = std::make_unique<InterimCursor>(connection_, sql, wanted);
  for (std::size_t i = 0; i < key.size(); ++i)
    Bind(cursor->Statement(), static_cast<int>(i) + 1, View(key[i]));
  return cursor;
}

void InterimTable::Insert(std::span<const Value> row) {
  QStringList places;
  for (std::size_t i = 0; i < row.size(); ++i)
    places += u"?"_s;
  InterimStatement statement(connection_,
                             u"INSERT INTO %1 VALUES (%2)"_s.arg(QuotedName(definition_.name), places.join(u", "_s)));
  for (std::size_t i = 0; i < row.size(); ++i) {
    const FieldDef& field = definition_.fields[static_cast<qsizetype>(i)];
    const Value value = field.autoNumber && IsNull(row[i]) ? NextNumber(field.name) : row[i];
    Bind(statement.Get(), static_cast<int>(i) + 1, View(value));
  }
  Run(statement);
}

void InterimTable::Update(RowId row, std::span<const FieldValue> changes) {
  if (changes.empty()) return;
  QStringList terms;
  for (const auto& [field, value] : changes) {
    terms += QuotedName(definition_.fields[static_cast<qsizetype>(field)].name) + u" = ?"_s;
  }
  InterimStatement statement(
      connection_, u"UPDATE %1 SET %2 WHERE rowid = ?"_s.arg(QuotedName(definition_.name), terms.join(u", "_s)));
  int parameter = 0;
  for (const auto& [field, value] : changes)
    Bind(statement.Get(), ++parameter, View(value));
  sqlite3_bind_int64(statement.Get(), ++parameter, row);
  Run(statement);
}

void InterimTable::Delete(RowId row) {
  InterimStatement statement(connection_, u"DELETE FROM %1 WHERE rowid = ?"_s.arg(QuotedName(definition_.name)));
  sqlite3_bind_int64(statement.Get(), 1, row);
  Run(statement);
}

Value InterimTable::NextNumber(const QString& field) {
  InterimStatement statement(connection_,
                             u"SELECT MAX(%1) FROM %2"_s.arg(QuotedName(field), QuotedName(definition_.name)));
  statement.Step();
  return std::int64_t{sqlite3_column_int64(statement.Get(), 0) + 1};
}

void InterimTable::Run(InterimStatement& statement) {
  const int answer = sqlite3_step(statement.Get());
  if (answer == SQLITE_DONE) return;
  if (answer != SQLITE_CONSTRAINT) connection_.Fail();
  const int kind = sqlite3_extended_errcode(connection_.Handle());
  const QString fields = FieldsIn(QString::fromUtf8(sqlite3_errmsg(connection_.Handle())));
  if (kind == SQLITE_CONSTRAINT_NOTNULL) {
    throw runtime::Error(u"Het veld '%1' van de tabel '%2' moet een waarde hebben."_s.arg(fields, definition_.name));
  }
  throw runtime::Error(
      u"De sleutel van de tabel '%1' (%2) bestaat al: er is niets gewijzigd."_s.arg(definition_.name, fields));
}

}  // namespace dao
