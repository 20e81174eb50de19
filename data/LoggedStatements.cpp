// SPDX-License-Identifier: MIT
#include "data/LoggedStatements.h"

#include "data/OfflineBasis.h"
#include "data/Statements.h"
#include "platform/dao/Database.h"
#include "platform/runtime/Error.h"
#include "platform/runtime/Numbers.h"

#include <utility>

using namespace Qt::StringLiterals;

namespace {

// Collects what the join gives for one row of the log, and hands it to the visit.
class LogRow {
 public:
  explicit LogRow(const std::function<void(const LoggedStatement&)>& visit) : visit_(visit) {}

  void Begin(std::optional<qint32> id, QStringView sqlSyntax) {
    if (open_ && id && id == id_) return;
    End();
    open_ = true;
    id_ = id;
    row_ = {id.value_or(0), runtime::TrimBlanks(sqlSyntax).toString(), {}};
    logText_ = sqlSyntax.toString();
  }
  // The first whose statement is the logged one: a number may have been expected for several.
  void Offer(QStringView statement, QStringView kept) {
    if (row_.entry || statement.isNull() || statements::LogText(statement.toString()) != logText_) return;
    try {
      row_.entry = basis::Decode(kept.toUtf8());
    } catch (const runtime::Error&) {
      // As a statement whose rows were not kept.
    }
  }
  void End() {
    if (std::exchange(open_, false)) visit_(row_);
  }

 private:
  const std::function<void(const LoggedStatement&)>& visit_;
  bool open_ = false;
  std::optional<qint32> id_;
  QString logText_;
  LoggedStatement row_;
};

}  // namespace

void VisitLog(const QString& localDatabasePath, std::optional<qint32> last,
              const std::function<void(const LoggedStatement&)>& visit) {
  dao::Database local = dao::OpenDatabase(localDatabasePath);
  const bool hasBasis = basis::HasOfflineTable(local);
  const QString columns = hasBasis ? u", tblOfflineBasis.SqlSyntax AS Exact, tblOfflineBasis.Basis "_s : u" "_s;
  const QString join = hasBasis ? u"LEFT JOIN tblOfflineBasis ON tblOfflineLog.ID = tblOfflineBasis.LogID "_s : u""_s;
  const QString order = hasBasis ? u"tblOfflineLog.ID, tblOfflineBasis.ID"_s : u"tblOfflineLog.ID"_s;
  const QString where =
      last ? u"WHERE tblOfflineLog.ID <= "_s + QString::number(*last) + u" OR tblOfflineLog.ID IS NULL "_s : QString();
  LogRow row(visit);
  local.Visit(u"SELECT tblOfflineLog.ID, tblOfflineLog.SqlSyntax"_s + columns + u"FROM tblOfflineLog "_s + join +
                  where + u"ORDER BY "_s + order,
              [&](const dao::Row& found) {
                const QVariant id = found.Field(0);
                row.Begin(id.isNull() ? std::nullopt : std::optional(runtime::ToLong(id)), found.Text(1));
                if (hasBasis) row.Offer(found.Text(2), found.Text(3));
                return true;
              });
  row.End();
}
