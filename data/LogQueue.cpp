// SPDX-License-Identifier: MIT
#include "data/LogQueue.h"

#include "data/AudioList.h"
#include "data/Globals.h"
#include "data/Lookups.h"
#include "data/Messages.h"
#include "data/OfflineBasis.h"
#include "data/Statements.h"
#include "platform/dao/Database.h"
#include "platform/runtime/Error.h"
#include "platform/runtime/Probe.h"
#include "platform/runtime/TextFile.h"

#include <QDataStream>
#include <QHash>
#include <QIODevice>
#include <QList>
#include <QStringList>

using namespace Qt::StringLiterals;

namespace {

constexpr quint32 kFormatVersion = 2;  // 1 has no rows of tblOfflineBasis

struct QueuedStatement {
  QString text;
  QString audioPath;   // empty: none
  bool tried = false;  // its row may be in the log already
  qint32 number = 0;   // ID of its row in the log, if tried
  qint32 basisID = 0;  // its row in tblOfflineBasis; 0: none
};

struct LogQueue {
  QList<QueuedStatement> statements;
  QStringList audioPaths;  // of statements that have been logged

  bool IsEmpty() const { return statements.isEmpty() && audioPaths.isEmpty(); }
};

// QDataStream stores UTF-16, so every text that the database accepts is read back unchanged.
QDataStream& operator<<(QDataStream& out, const QueuedStatement& statement) {
  return out << statement.text << statement.audioPath << statement.tried << statement.number;
}
QDataStream& operator>>(QDataStream& in, QueuedStatement& statement) {
  return in >> statement.text >> statement.audioPath >> statement.tried >> statement.number;
}

QList<qint32> BasisIDs(const QList<QueuedStatement>& statements) {
  QList<qint32> ids;
  for (const QueuedStatement& statement : statements)
    ids += statement.basisID;
  return ids;
}

// False when the numbers do not belong to these statements.
bool SetBasisIDs(const QList<qint32>& ids, QList<QueuedStatement>& statements) {
  if (ids.size() != statements.size()) return false;
  for (qsizetype i = 0; i < ids.size(); ++i)
    statements[i].basisID = ids[i];
  return true;
}

// Statements not yet written to their file, by path of the local database; they follow those in the file.
QHash<QString, QList<QueuedStatement>>& InMemory() {
  static QHash<QString, QList<QueuedStatement>> statements;
  return statements;
}

QString FilePath() {
  return global.localDatabasePath + u"-unlogged"_s;
}

LogQueue ReadQueue() {
  LogQueue queue;
  if (runtime::IsThere(FilePath())) {
    QDataStream in(runtime::ReadFile(FilePath()));
    in.setVersion(QDataStream::Qt_6_4);
    quint32 version = 0;
    in >> version >> queue.statements >> queue.audioPaths;
    QList<qint32> basisIDs(queue.statements.size());
    if (version == kFormatVersion) in >> basisIDs;
    if (version < 1 || version > kFormatVersion || in.status() != QDataStream::Ok || !in.atEnd() ||
        !SetBasisIDs(basisIDs, queue.statements)) {
      throw runtime::Error(
          u"Het bestand '%1', met wijzigingen die nog in het logboek moeten, kan niet gelezen worden."_s.arg(
              FilePath()));
    }
  }
  queue.statements += InMemory().value(global.localDatabasePath);
  return queue;
}

void WriteQueue(const LogQueue& queue) {
  QByteArray content;
  QDataStream out(&content, QIODevice::WriteOnly);
  out.setVersion(QDataStream::Qt_6_4);
  out << kFormatVersion << queue.statements << queue.audioPaths << BasisIDs(queue.statements);
  if (!queue.IsEmpty()) {
    try {
      runtime::WriteFile(FilePath(), content);
    } catch (const runtime::Error& error) {
      if (error.IsDone()) InMemory().remove(global.localDatabasePath);
      throw;
    }
  } else if (runtime::IsThere(FilePath())) {
    runtime::DeleteFile(FilePath());
  }
  InMemory().remove(global.localDatabasePath);
}

bool IsLogged(const QueuedStatement& statement) {
  if (!statement.tried) return false;
  const dao::Recordset rows =
      dao::OpenDatabase(global.localDatabasePath)
          .OpenRecordset(u"SELECT SqlSyntax FROM tblOfflineLog WHERE ID = "_s + QString::number(statement.number));
  return !rows.Eof() && rows.Field(u"SqlSyntax"_s).toString() == statements::LogText(statement.text);
}

// The ID is stored in the file before the row is written, so that after a crash between the two the row is not written
// twice.
void LogFirst(LogQueue& queue) {
  QueuedStatement& first = queue.statements.first();
  if (!IsLogged(first)) {
    first.number = NextID(u"tblOfflineLog"_s, u"ID"_s, global.localDatabasePath);
    first.tried = true;
    WriteQueue(queue);
    if (first.basisID != 0) basis::SetLogID(first.basisID, first.number);
    dao::OpenDatabase(global.localDatabasePath).Execute(statements::InsertLog(first.number, first.text));
  }
  if (!first.audioPath.isEmpty()) queue.audioPaths += first.audioPath;
  queue.statements.removeFirst();
  WriteQueue(queue);
}

}  // namespace

void QueueForLog(const QString& statement, std::optional<qint32> triedAs, std::optional<qint32> basisID) {
  InMemory()[global.localDatabasePath] +=
      QueuedStatement{statement, {}, triedAs.has_value(), triedAs.value_or(0), basisID.value_or(0)};
  try {
    WriteQueue(ReadQueue());
  } catch (const runtime::Error& error) {
    const QString inMemory =
        u"Een wijziging is gedaan, maar kon niet in het logboek komen en ook niet apart bewaard worden:\n%1\n\n"
        u"Laat het programma open en neem de oorzaak weg: met de volgende wijziging of export komt ze alsnog in het "
        u"logboek."_s.arg(error.Description());
    ShowItemsMessage(error.IsDone() ? error.Description() : inMemory, kStyleExclamation);
  }
}

bool QueueAudioPath(const QString& path) {
  QList<QueuedStatement>& inMemory = InMemory()[global.localDatabasePath];
  if (!inMemory.isEmpty()) {
    inMemory.last().audioPath = path;
    return true;
  }
  LogQueue queue = ReadQueue();
  if (queue.statements.isEmpty()) return false;
  queue.statements.last().audioPath = path;
  WriteQueue(queue);
  return true;
}

int QueuedStatementCount() {
  return static_cast<int>(ReadQueue().statements.size());
}

void QueueUnloggedStatements() {
  const auto isQueued = [](qint32 basisID) {
    try {
      return BasisIDs(ReadQueue().statements).contains(basisID);
    } catch (const runtime::Error&) {
      return true;  // unknown, and nothing is logged before the file can be read
    }
  };
  for (const basis::Unlogged& unlogged : basis::FindUnlogged(isQueued))
    QueueForLog(unlogged.statement, std::nullopt, unlogged.id);
}

void LogQueuedStatements() {
  LogQueue queue = ReadQueue();
  while (!queue.statements.isEmpty())
    LogFirst(queue);
}

void AddQueuedAudioLines() {
  LogQueue queue = ReadQueue();
  while (!queue.audioPaths.isEmpty()) {
    AppendToAudioList(queue.audioPaths.first());
    queue.audioPaths.removeFirst();
    WriteQueue(queue);
  }
}
