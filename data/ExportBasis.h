// SPDX-License-Identifier: MIT
#pragma once

#include "platform/dao/Recordset.h"
#include "platform/dao/Value.h"

#include <QByteArray>
#include <QList>
#include <QString>
#include <QStringList>

#include <optional>
#include <vector>

// The basis of an export: for each statement of a .tql file the rows that it changed, as they were before and after it.
// It is the file "<name>.tql.basis" beside the export. UTF-8, one JSON value a line: a header, one line a statement in
// the order of the export, and a last line with their number, by which a file that was cut short is recognised. All
// texts are exact, also where the export has another character.
namespace basis {

// One value a field, in the order of Entry::fields; a Date as days since 30-12-1899.
using Row = std::vector<dao::Value>;

// Another record that a statement depends on: the item of a link, the spot of a link, a jingle of an item. A number
// alone does not tell which record it was, because the copy may have had another one under that number before or after.
struct Reference {
  QString table;  // of the server
  qint64 id = 0;
  QString fingerprint;  // of the record's row in the copy when the statement was executed; empty: there was none

  bool operator==(const Reference&) const = default;
};

// What one statement did. `before` is empty for an INSERT, `after` for a DELETE; a DELETE of an item's links has as
// many rows as the item had links.
struct Entry {
  QString table;     // of the server, also when the statement names a copy
  QString keyField;  // of the statement's WHERE: "ID" or "ItemID"; of an INSERT the field that its key is in
  qint64 key = 0;
  QStringList fields;  // of the table, all of them
  QList<Row> before;
  QList<Row> after;
  // Of a link: its item and the spots of all rows in `before` and `after`. Of an item: its jingles, likewise. Each
  // once, as they were after the statement.
  QList<Reference> references;

  bool operator==(const Entry&) const = default;
};

struct Header {
  QString exportID;   // a random number of this export alone: a UUID without braces
  QByteArray digest;  // BLAKE2b-256 of the .tql file in hexadecimal (ContentDigest)
  qint64 bytes = 0;   // length of the .tql file
  QString source;     // name of the station or workstation; empty when there is none

  bool operator==(const Header&) const = default;
};

// An entry is missing where the statement was logged without its rows.
struct File {
  Header header;
  std::vector<std::optional<Entry>> entries;
};

// Whether two values are the same in a database: a whole number equals a floating-point number of the same size.
bool Same(const dao::Value& left, const dao::Value& right);

// 32 hexadecimal digits that stand for the content of a row: all fields of its table, in their order.
QString Fingerprint(const Row& row);

// All rows of a recordset, in the form of Entry; `fields` becomes the names of its columns.
QList<Row> RowsOf(dao::Recordset rows, QStringList& fields);

// One entry as one line of text without a line end; Decode throws a runtime::Error that says what is wrong with it.
QByteArray Encode(const Entry& entry);
Entry Decode(const QByteArray& line);

// The lines of a file, each with its line end.
QByteArray HeaderLine(const Header& header);
QByteArray EntryLine(const std::optional<Entry>& entry);
QByteArray LastLine(qsizetype entryCount);

// The basis that belongs to an export file.
QString PathOf(const QString& tqlPath);

// The whole file (path text). Throws runtime::Error with the file, and the line for what is wrong with its content.
File Read(const QString& path);

}  // namespace basis
