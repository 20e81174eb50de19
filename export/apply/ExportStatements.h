// SPDX-License-Identifier: MIT
#pragma once

#include "export/apply/CatalogueTables.h"
#include "platform/dao/Value.h"

#include <QByteArray>
#include <QString>

#include <utility>
#include <vector>

namespace apply {

enum class Verb { Insert, Update, Delete };

// One statement of an export file.
struct ExportStatement {
  int line = 0;  // of the file, from 1; where it begins
  Verb verb = Verb::Insert;
  Table table = Table::Items;
  qint64 key = 0;  // ID of the record; of a link the ID of its item
  // Field and value in their order, those of a link's item too; none for a DELETE. A text is as the log has it: "*"
  // where the record has an apostrophe.
  std::vector<std::pair<QString, dao::Value>> values;
};

// Splits an export file into statements. Every text in it is between apostrophes and contains none, so that a line
// end or ";" within a text ends nothing. Only statements that an export writes are taken; a runtime::Error names the
// file (`path`), the line and what is wrong there.
std::vector<ExportStatement> ParseExport(const QByteArray& content, const QString& path);

// Whether it reads as UTF-8 while it should be Windows-1252: it has letters outside ASCII, and all are UTF-8.
bool LooksLikeUtf8(const QByteArray& content);

}  // namespace apply
