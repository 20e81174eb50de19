// SPDX-License-Identifier: MIT
#include "platform/dao/CopyDatabase.h"

#include "platform/dao/Storage.h"
#include "platform/dao/postgres/ServerAddress.h"
#include "platform/dao/postgres/ServerStorage.h"
#include "platform/runtime/Error.h"
#include "platform/runtime/HostPath.h"
#include "platform/runtime/Probe.h"

#include <QCryptographicHash>
#include <QFileInfo>
#include <QHash>

#include <cmath>
#include <cstring>
#include <span>
#include <variant>

using namespace Qt::StringLiterals;

namespace dao {
namespace {

constexpr double kDayInMicroseconds = 86'400'000'000.0;

FieldMask AllFields(const TableDef& table) {
  FieldMask all;
  for (qsizetype field = 0; field < table.fields.size(); ++field)
    all.set(static_cast<std::size_t>(field));
  return all;
}

class Digest {
 public:
  void Add(FieldType type, const ValueView& value) {
    Number(static_cast<std::int64_t>(value.index()));
    if (const auto* whole = std::get_if<std::int64_t>(&value)) Number(*whole);
    if (const auto* number = std::get_if<double>(&value)) {
      type == FieldType::Date ? Number(std::llround(*number * kDayInMicroseconds)) : Bits(*number + 0.0);
    }
    if (const auto* text = std::get_if<std::u16string_view>(&value))
      Block(text->data(), text->size() * sizeof(char16_t));
    if (const auto* bytes = std::get_if<std::span<const std::uint8_t>>(&value)) Block(bytes->data(), bytes->size());
  }
  QByteArray Take() { return hash_.result(); }

 private:
  void Block(const void* data, std::size_t size) {
    Number(static_cast<std::int64_t>(size));
    hash_.addData(QByteArrayView(static_cast<const char*>(data), static_cast<qsizetype>(size)));
  }
  void Number(std::int64_t number) {
    hash_.addData(QByteArrayView(reinterpret_cast<const char*>(&number), sizeof number));
  }
  void Bits(double number) {
    std::int64_t bits = 0;
    std::memcpy(&bits, &number, sizeof bits);
    Number(bits);
  }

  QCryptographicHash hash_{QCryptographicHash::Md5};
};

// Reads the rows of a table with its fields in the order of `order`.
class RowReader {
 public:
  RowReader(Table& table, const TableDef& order) : cursor_(table.Scan(AllFields(table.Definition()))) {
    for (const FieldDef& field : order.fields) {
      fields_.push_back(static_cast<std::size_t>(table.Definition().FieldIndex(field.name)));
      types_.push_back(field.type);
    }
  }

  bool Next() { return cursor_->Next(); }
  RowId Id() const { return cursor_->Id(); }
  ValueView Field(std::size_t at) const { return cursor_->Field(fields_[at]); }
  QByteArray DigestOfRow() const {
    Digest digest;
    for (std::size_t i = 0; i < fields_.size(); ++i)
      digest.Add(types_[i], Field(i));
    return digest.Take();
  }

 private:
  std::unique_ptr<Cursor> cursor_;
  std::vector<std::size_t> fields_;
  std::vector<FieldType> types_;
};

struct CheckSum {
  std::int64_t rows = 0;
  std::uint64_t sum = 0;

  void Add(const QByteArray& digest) {
    std::uint64_t part = 0;
    std::memcpy(&part, digest.constData(), sizeof part);
    sum += part;
    ++rows;
  }
  bool operator==(const CheckSum&) const = default;
};

CheckSum SumOf(Table& table, const TableDef& order) {
  CheckSum sum;
  for (RowReader rows(table, order); rows.Next();)
    sum.Add(rows.DigestOfRow());
  return sum;
}

void RequireSameFields(const TableDef& source, const TableDef& target) {
  bool same = source.fields.size() == target.fields.size();
  for (const FieldDef& field : source.fields) {
    const int there = target.FieldIndex(field.name);
    same = same && there >= 0 && target.fields[there].type == field.type;
  }
  if (same) return;
  throw runtime::Error(
      u"De tabel '%1' heeft in het doel andere velden dan in de bron. Kopieer naar een nieuwe, lege database."_s.arg(
          source.name));
}

// The rows of the target that the source does not have. `missing` counts the rows of the source by digest; rows that
// the target has are subtracted from it.
std::vector<RowId> RowsNotInSource(Table& target, const TableDef& order, QHash<QByteArray, int>& missing) {
  std::vector<RowId> surplus;
  for (RowReader rows(target, order); rows.Next();) {
    const auto found = missing.find(rows.DigestOfRow());
    if (found != missing.end() && *found > 0) {
      --*found;
    } else {
      surplus.push_back(rows.Id());
    }
  }
  return surplus;
}

class TableCopy {
 public:
  TableCopy(Storage& source, Storage& target, const QString& name)
      : target_(target), from_(source.OpenTable(name)), definition_(from_->Definition()) {
    result_.name = definition_.name;
  }

  CopiedTable Run(CopyMode mode) {
    CreateMissingTable();
    QHash<QByteArray, int> missing;
    CheckSum sum;
    for (RowReader rows(*from_, definition_); rows.Next();) {
      const QByteArray digest = rows.DigestOfRow();
      ++missing[digest];
      sum.Add(digest);
    }
    const std::vector<RowId> surplus = RowsNotInSource(*to_, definition_, missing);
    if (mode == CopyMode::Fill) RequireEmpty(surplus, sum, missing);
    if (!surplus.empty()) to_->Delete(surplus);
    result_.deleted = static_cast<std::int64_t>(surplus.size());
    InsertMissing(missing);
    if (SumOf(*to_, definition_) != sum) {
      throw runtime::Error(
          u"De kopie van de tabel '%1' is niet gelijk aan de bron. Er is niets bewaard."_s.arg(definition_.name));
    }
    result_.rows = sum.rows;
    return result_;
  }

 private:
  void CreateMissingTable() {
    to_ = target_.OpenTable(definition_.name);
    if (!to_) {
      CheckTableDef(definition_);
      target_.CreateTable(definition_);
      to_ = target_.OpenTable(definition_.name);
    }
    RequireSameFields(definition_, to_->Definition());
  }

  void RequireEmpty(const std::vector<RowId>& surplus, const CheckSum& sum,
                    const QHash<QByteArray, int>& missing) const {
    std::int64_t left = 0;
    for (const int count : missing)
      left += count;
    if (surplus.empty() && left == sum.rows) return;
    throw runtime::Error(
        u"De tabel '%1' heeft in het doel al rijen. Met --refresh worden ze gelijk aan die van de bron."_s.arg(
            definition_.name));
  }

  void InsertMissing(QHash<QByteArray, int>& missing) {
    RowReader rows(*from_, definition_);
    while (rows.Next()) {
      int& left = missing[rows.DigestOfRow()];
      if (left == 0) continue;
      --left;
      std::vector<Value> row(static_cast<std::size_t>(to_->Definition().fields.size()));
      for (std::size_t i = 0; i < row.size(); ++i)
        row[static_cast<std::size_t>(
            to_->Definition().FieldIndex(definition_.fields[static_cast<qsizetype>(i)].name))] = Owned(rows.Field(i));
      to_->Insert(std::move(row));
      ++result_.inserted;
    }
  }

  Storage& target_;
  std::unique_ptr<Table> from_;
  std::unique_ptr<Table> to_;
  const TableDef definition_;
  CopiedTable result_;
};

bool IsSameFile(const QString& left, const QString& right) {
  if (IsServerPath(left) || IsServerPath(right)) return false;
  const QString real = QFileInfo(runtime::HostPath(left)).canonicalFilePath();
  return !real.isEmpty() && real == QFileInfo(runtime::HostPath(right)).canonicalFilePath();
}

void CreateMissingDatabase(const QString& path) {
  const bool isThere = IsServerPath(path) ? ServerStorageExists(path) : runtime::IsThere(path);
  if (!isThere) CreateStorage(path);
}

}  // namespace

std::vector<CopiedTable> CopyDatabase(const QString& source, const QString& target, CopyMode mode) {
  const auto from = OpenStorage(source, {.readOnly = true});
  CreateMissingDatabase(target);
  const auto to = OpenStorage(target);
  if (from->IsSameFile(*to) || IsSameFile(source, target))
    throw runtime::Error(u"Bron en doel zijn dezelfde database: '%1'."_s.arg(source));
  const auto writing = to->Begin(Access::Write);
  const auto reading = from->Begin(Access::Read);
  std::vector<CopiedTable> copied;
  QStringList names = from->TableNames();
  names.sort(Qt::CaseInsensitive);
  for (const QString& name : names)
    copied.push_back(TableCopy(*from, *to, name).Run(mode));
  writing->Commit();
  return copied;
}

}  // namespace dao
