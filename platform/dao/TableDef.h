// SPDX-License-Identifier: MIT
#pragma once

#include <QList>
#include <QString>
#include <QVariant>

namespace dao {

// The field types of a database file. In SQL a Boolean is -1 or 0, a Date is a day number (days since 30-12-1899,
// the time as the fraction), Currency and Numeric are floating-point numbers or, with more than 15 digits, their
// decimal text, a Guid is text in braces.
enum class FieldType {
  Boolean,
  Byte,
  Integer,
  Long,
  Currency,
  Single,
  Double,
  Date,
  Text,
  Memo,
  Binary,
  Guid,
  Numeric
};

struct FieldDef {
  QString name;
  FieldType type = FieldType::Long;
  int size = 0;  // Text: most characters, 1 to 255; Binary: most bytes, 1 to 510; other types: not used
  bool required = false;
  bool allowZeroLength = true;  // Text and Memo: "" may be stored
  bool autoNumber = false;      // Long: the file gives the value where an insert leaves it out
  QVariant defaultValue;        // stored where an insert leaves the field out; invalid = none
  QString defaultExpression;    // read from a file: a default that is no constant; an insert must then give the field
  int precision = 18;           // Numeric: digits in all, 1 to 28
  int scale = 0;                // Numeric: digits after the point

  bool operator==(const FieldDef&) const = default;
};

enum class Direction { Ascending, Descending };

struct IndexField {
  QString name;
  Direction direction = Direction::Ascending;

  bool operator==(const IndexField&) const = default;
};

struct IndexDef {
  QString name;
  QList<IndexField> fields;
  bool primary = false;  // implies unique and required
  bool unique = false;
  bool required = false;    // no field of it may be NULL
  bool ignoreNull = false;  // rows whose fields are all NULL have no entry
  bool usable = true;       // false, read from a file: its order is not known, so rows are not looked up by it

  bool operator==(const IndexDef&) const = default;
};

struct TableDef {
  QString name;
  QList<FieldDef> fields;
  QList<IndexDef> indexes;

  // The place of a field in `fields`, without regard to letter case; -1 when there is none.
  int FieldIndex(const QString& fieldName) const;
};

// An Error naming the table and what is wrong with its definition: a bad name, size, index or number of fields.
void CheckTableDef(const TableDef& table);

}  // namespace dao
