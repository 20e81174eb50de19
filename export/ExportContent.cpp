// SPDX-License-Identifier: MIT
#include "export/ExportContent.h"

#include "data/LoggedStatements.h"
#include "platform/runtime/CodePage.h"
#include "platform/runtime/Dates.h"
#include "platform/runtime/Numbers.h"

using namespace Qt::StringLiterals;

namespace {
constexpr qsizetype kMaxNamed = 5;
constexpr qsizetype kMaxQuotedLength = 160;       // characters
constexpr qsizetype kBlock = qsizetype{1} << 20;  // bytes written at once
}  // namespace

QString ExportContent::FileName(const QDateTime& moment) {
  return runtime::FormatDate(moment, u"yyyymmddhhmmss"_s) + u".tql"_s;
}

void AlteredStatements::Add(QStringView statement) {
  ++count;
  if (first.size() < kMaxNamed) first += statement.toString();
}

void ExportContent::AddLog(const QString& localDatabasePath, std::optional<qint32> last) {
  VisitLogRows(localDatabasePath, last, [&](const LogRow& row) {
    Add(row.sqlSyntax);
    if (row.id) highestID_ = *row.id;
    ++rowCount_;
  });
}

void ExportContent::Add(QStringView sqlSyntax) {
  const QStringView statement = runtime::TrimBlanks(sqlSyntax);
  if (statement.isEmpty()) return;
  changes_.Add(statement);
  ++statementCount_;
  if (!runtime::AppendCodePage(statement, block_)) altered_.Add(statement);
  block_ += ";\r\n";
  if (block_.size() >= kBlock) Flush();
}

QByteArray ExportContent::Finish() {
  Flush();
  return digest_.Result();
}

void ExportContent::Flush() {
  if (block_.isEmpty()) return;
  digest_.Add(block_);
  byteCount_ += block_.size();
  if (sink_) sink_(block_);
  block_ = QByteArray();
  block_.reserve(kBlock + kBlock / 8);
}

QString AlteredWarning(const AlteredStatements& altered, const QString& path) {
  QString text =
      u"In '%1' zijn tekens die het bestand niet kan bevatten vervangen door een vraagteken, in:"_s.arg(path);
  for (const QString& statement : altered.first) {
    text +=
        u"\n\n"_s + (statement.size() > kMaxQuotedLength ? statement.left(kMaxQuotedLength) + u" ..."_s : statement);
  }
  const qsizetype others = altered.count - altered.first.size();
  if (others == 1) text += u"\n\nen nog 1 andere wijziging."_s;
  if (others > 1) text += u"\n\nen nog %1 andere wijzigingen."_s.arg(others);
  return text;
}
