// SPDX-License-Identifier: MIT
#include "export/InterruptedExport.h"

#include "data/ExportBasis.h"
#include "data/Globals.h"
#include "data/Messages.h"
#include "data/Text.h"
#include "export/ExportContent.h"
#include "export/ExportRecord.h"
#include "export/OfflineLogExport.h"
#include "platform/runtime/Error.h"
#include "platform/runtime/FileCalls.h"
#include "platform/runtime/HostPath.h"
#include "platform/runtime/Probe.h"
#include "platform/runtime/TextFile.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>

#include <sys/stat.h>

#include <optional>

using namespace Qt::StringLiterals;
using runtime::Presence;

namespace {

constexpr qint64 kLargestExport = qint64{1} << 30;

bool Holds(const QString& path, const QByteArray& digest) {
  return ContentDigest::Of(runtime::ReadFile(path, kLargestExport)) == digest;
}

// Whether the path is in the export folder and its file name matches.
bool IsInExportFolder(const QString& path, const QRegularExpression& name) {
  return name.match(GetFile(path)).hasMatch() &&
         QFileInfo(runtime::HostPath(path)).path() == QDir::cleanPath(runtime::HostPath(global.exportPath));
}

// A record decides which file is removed and which statements are deleted from the log. So a record is refused unless
// an export into the current folder can have written it.
void RequireOwnRecord(const ExportRecord& record, const QString& recordPath) {
  static const QRegularExpression kFile(u"\\A[0-9]{14}\\.tql\\z"_s);
  static const QRegularExpression kUnfinished(
      u"\\A([0-9]{14}\\.tql\\.[0-9a-f]{8}\\.tmp|\\.[0-9]{14}\\.tql\\.[0-9a-f]{16}\\.spotrooster-tmp)\\z"_s);
  static const QRegularExpression kUnfinishedBasis(
      u"\\A\\.[0-9]{14}\\.tql\\.basis\\.[0-9a-f]{16}\\.spotrooster-tmp\\z"_s);
  if (IsInExportFolder(record.path, kFile) && IsInExportFolder(record.temporary, kUnfinished) &&
      (record.basisTemporary.isEmpty() || IsInExportFolder(record.basisTemporary, kUnfinishedBasis)))
    return;
  throw runtime::Error(
      u"Het bestand '%1' noemt '%2': dat is geen export in de exportmap '%3'. Er is niets veranderd. Is de exportmap "
      u"intussen een andere, zet ze dan eerst terug bij ExportPath in ovalis.ini; vraag anders de beheerder vanwaar "
      u"dit "
      u"bestand komt."_s.arg(recordPath, record.path, global.exportPath));
}

// Whether both paths are links to one file: the crash came between link() and unlink() of a rename.
bool IsSameFile(const QString& path, const QString& other) {
  struct stat one {};
  struct stat two {};
  return ::stat(QFile::encodeName(runtime::HostPath(path)).constData(), &one) == 0 &&
         ::stat(QFile::encodeName(runtime::HostPath(other)).constData(), &two) == 0 && one.st_dev == two.st_dev &&
         one.st_ino == two.st_ino;
}

// Removes the basis of an export whose own file is not there. After a failure a basis without its export is left.
void RemoveBasis(const ExportRecord& record) {
  if (record.basisTemporary.isEmpty()) return;
  const QString path = basis::PathOf(record.path);
  const Presence temporary = runtime::Probe(record.basisTemporary);
  if (temporary == Presence::There) {
    if (IsSameFile(record.basisTemporary, path)) runtime::RemoveFile(runtime::HostPath(path));
    runtime::RemoveFile(runtime::HostPath(record.basisTemporary));
    return;
  }
  if (temporary != Presence::NotThere || runtime::Probe(path) != Presence::There) return;
  try {
    if (Holds(path, record.basisDigest)) runtime::RemoveFile(runtime::HostPath(path));
  } catch (const runtime::Error&) {
    // It may be the basis of another export.
  }
}

// The record is removed before the file: a record without its temporary file would mean that the file was renamed.
ExportSettlement Drop(const QString& localDatabasePath, const ExportRecord& record) {
  RemoveBasis(record);
  RemoveExportRecord(localDatabasePath);
  runtime::RemoveFile(runtime::HostPath(record.temporary));
  return {InterruptedExport::Dropped, record.path};
}

ExportSettlement Finish(const QString& localDatabasePath, const ExportRecord& record) {
  if (!record.basisTemporary.isEmpty()) runtime::RemoveFile(runtime::HostPath(record.basisTemporary));
  EmptyLogUpTo(localDatabasePath, record.highestID);
  return {InterruptedExport::Finished, record.path};
}

// The log still holds the statements of the file: was the file renamed to its final name?
ExportSettlement SettleByFile(const QString& localDatabasePath, const ExportRecord& record) {
  const Presence temporary = runtime::Probe(record.temporary);
  if (temporary == Presence::There) {
    if (!IsSameFile(record.temporary, record.path)) return Drop(localDatabasePath, record);
    runtime::RemoveFile(runtime::HostPath(record.temporary));
    return Finish(localDatabasePath, record);
  }
  const Presence file = temporary == Presence::NotThere ? runtime::Probe(record.path) : temporary;
  if (file == Presence::NotReachable) return {InterruptedExport::NotReachable, record.path};
  if (file == Presence::Denied) return {InterruptedExport::Denied, record.path};
  if (file == Presence::There && Holds(record.path, record.digest)) return Finish(localDatabasePath, record);
  // An unmounted share looks the same, so the user must decide.
  return {InterruptedExport::Missing, record.path};
}

[[noreturn]] void ThrowUndecided(const QString& path, const QString& why, const QString& until) {
  throw runtime::Error(
      u"Een export naar '%1' werd onderbroken, en %2. "
      u"Het logboek blijft zoals het is; exporteren kan weer als de map %3 is."_s.arg(path, why, until));
}

}  // namespace

ExportSettlement SettleInterruptedExport(const QString& localDatabasePath) {
  const std::optional<ExportRecord> record = ReadExportRecord(localDatabasePath);
  if (!record) return {};
  RequireOwnRecord(*record, ExportRecordPath(localDatabasePath));
  ExportContent log;
  log.AddLog(localDatabasePath, record->highestID);
  if (log.RowCount() == 0) return Finish(localDatabasePath, *record);
  if (log.Finish() == record->digest) return SettleByFile(localDatabasePath, *record);
  // Other statements with the same IDs: the log was emptied, only the record could not be removed.
  RemoveExportRecord(localDatabasePath);
  return {};
}

void SettleMissingFile(const QString& localDatabasePath, MissingFile answer) {
  const std::optional<ExportRecord> record = ReadExportRecord(localDatabasePath);
  if (!record) return;
  if (answer == MissingFile::NotProcessed) {
    RequireOwnRecord(*record, ExportRecordPath(localDatabasePath));
    RemoveBasis(*record);
    return RemoveExportRecord(localDatabasePath);
  }
  EmptyLogUpTo(localDatabasePath, record->highestID);
}

MissingFile AskAboutMissingFile(const QString& path) {
  const int answer = ShowItemsMessage(
      u"Een export werd onderbroken toen het bestand al klaar was, maar het staat er niet meer:\n%1\n\n"
      u"Is dat bestand verwerkt, met Exports verwerken of met Kadrovia? Bij Ja gaan de wijzigingen uit het logboek, "
      u"bij Nee gaan ze mee met "
      u"de volgende export."_s.arg(path),
      kStyleYesNoDefaultNo);
  return answer == kAnswerYes ? MissingFile::Processed : MissingFile::NotProcessed;
}

void FinishInterruptedExport(const QString& localDatabasePath,
                             const std::function<MissingFile(const QString& path)>& decide) {
  const ExportSettlement settlement = SettleInterruptedExport(localDatabasePath);
  if (settlement.what == InterruptedExport::Finished) {
    ShowItemsMessage(
        u"De vorige export werd onderbroken toen het bestand al klaar was:\n%1\n\n"
        u"De wijzigingen die erin staan zijn nu uit het logboek gehaald."_s.arg(settlement.path),
        kStyleInformation);
  } else if (settlement.what == InterruptedExport::NotReachable) {
    ThrowUndecided(settlement.path, u"de schijf of netwerkmap antwoordt niet"_s, u"bereikbaar"_s);
  } else if (settlement.what == InterruptedExport::Denied) {
    ThrowUndecided(settlement.path, u"de toegang tot de map wordt geweigerd"_s, u"toegankelijk"_s);
  } else if (settlement.what == InterruptedExport::Missing) {
    SettleMissingFile(localDatabasePath, decide(settlement.path));
  }
}
