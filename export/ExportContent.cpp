#include "export/ExportContent.h"

#include "data/Text.h"
#include "platform/dao/Database.h"
#include "platform/runtime/CodePage.h"
#include "platform/runtime/Dates.h"
#include "platform/runtime/Numbers.h"

#include <QCryptographicHash>

using namespace Qt::StringLiterals;

namespace {
constexpr qsizetype kMostNamed = 5;
constexpr qsizetype kLongestNamed = 160;  // characters
}  // namespace

QString ExportContent::FileName(const QDateTime& moment) {
  return runtime::FormatDate(moment, u"yyyymmddhhmmss"_s) + u".tql"_s;
}

ExportContent ExportContent::OfLog(const QString& localDatabasePath, std::optional<qint32> last) {
  const QString upTo =
      last ? u"WHERE tblOfflineLog.ID <= "_s + QString::number(*last) + u" OR tblOfflineLog.ID IS NULL "_s : QString();
  dao::Database database = dao::OpenDatabase(localDatabasePath);
  dao::Recordset rows =
      database.OpenRecordset(u"SELECT tblOfflineLog.ID, tblOfflineLog.SqlSyntax From tblOfflineLog "_s + upTo +
                             u"ORDER BY tblOfflineLog.ID"_s);
  constexpr int kID = 0;
  constexpr int kSqlSyntax = 1;
  ExportContent content;
  for (; !rows.Eof(); rows.MoveNext()) {
    content.Add(rows.Field(kSqlSyntax));
    const QVariant id = rows.Field(kID);
    if (!id.isNull()) content.highestID_ = runtime::ToLong(id);
    ++content.rowCount_;
  }
  return content;
}

// A quarter of what SHA-256 would take, which is as much as all else.
QByteArray ExportContent::DigestOf(const QByteArray& bytes) {
  return QCryptographicHash::hash(bytes, QCryptographicHash::Blake2b_256).toHex();
}

void ExportContent::Add(const QVariant& sqlSyntax) {
  if (IsKull(sqlSyntax)) return;
  const QString statement = runtime::TrimBlanks(sqlSyntax.toString());
  bytes_ += runtime::ToCodePage(statement) + ";\r\n";
  if (!runtime::FitsCodePage(statement)) altered_ += statement;
}

QString AlteredWarning(const QStringList& altered, const QString& path) {
  QString text =
      u"In '%1' zijn tekens die het bestand niet kan bevatten vervangen door een vraagteken, in:"_s.arg(path);
  for (const QString& statement : altered.first(qMin(altered.size(), kMostNamed))) {
    text += u"\n\n"_s + (statement.size() > kLongestNamed ? statement.left(kLongestNamed) + u" ..."_s : statement);
  }
  if (altered.size() > kMostNamed) {
    const qsizetype others = altered.size() - kMostNamed;
    text += others == 1 ? u"\n\nen nog 1 andere opdracht."_s : u"\n\nen nog %1 andere opdrachten."_s.arg(others);
  }
  return text;
}
