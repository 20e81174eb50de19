// SPDX-License-Identifier: MIT
#pragma once

#include <QList>
#include <QString>
#include <QStringView>
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

inline bool IsWholeNumber(FieldType type) {
  return type == FieldType::Byte || type == FieldType::Integer || type == FieldType::Long;
}

struct FieldDef {
  QString name;
  FieldType type = FieldType::Long;
  int size = 0;  // Text: most characters, 1 to 255; Binary: most bytes, 1 to 510; other types: not used
  bool required = false;
  bool allowZeroLength = true;  // Text and Memo: "" may be stored
  bool autoNumber = false;      // Long: the storage assigns the value when an insert omits the field
  QVariant defaultValue;        // stored when an insert omits the field; invalid = none
  QString defaultExpression;    // read from a file: a default that is not constant; an insert must give the field
  int precision = 18;           // Numeric: total digits, 1 to 28
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
  bool required = false;    // none of its fields may be NULL
  bool ignoreNull = false;  // rows in which all its fields are NULL have no entry
  bool usable = true;       // false, read from a file: its sort order is unknown, so it is not used for look-ups

  bool operator==(const IndexDef&) const = default;
};

struct TableDef {
  QString name;
  QList<FieldDef> fields;
  QList<IndexDef> indexes;

  // The position of a field in `fields`, ignoring letter case; -1 when there is none.
  int FieldIndex(QStringView fieldName) const;
};

// Throws an Error with the table and the reason for an invalid definition: a name, size, index or number of fields.
void CheckTableDef(const TableDef& table);

}  // namespace dao
