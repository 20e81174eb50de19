// SPDX-License-Identifier: MIT
#include "data/Backup.h"

#include "data/Catalogue.h"
#include "data/IniFile.h"
#include "data/Messages.h"
#include "data/SettingsFile.h"
#include "platform/dao/Database.h"
#include "platform/dao/FrozenDatabase.h"
#include "platform/dao/postgres/ServerAddress.h"
#include "platform/files/AtomicFile.h"
#include "platform/files/TemporaryName.h"
#include "platform/runtime/Clock.h"
#include "platform/runtime/Error.h"
#include "platform/runtime/FileCalls.h"
#include "platform/runtime/HostPath.h"
#include "platform/runtime/Probe.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <algorithm>
#include <memory>
#include <tuple>

using namespace Qt::StringLiterals;

namespace {

const QString kMomentFormat = u"yyyyMMdd-HHmmss"_s;
const QString kEnding = u".mdb"_s;
constexpr qint64 kStep = 2;  // seconds; the resolution of file times on FAT

// The copies of one database.
class BackupFolder {
 public:
  explicit BackupFolder(const QString& databasePath)
      : folder_(QFileInfo(runtime::HostPath(databasePath)).path() + u"/backup"_s),
        prefix_(QFileInfo(runtime::HostPath(databasePath)).completeBaseName() + u'-') {}

  void Make(const dao::FrozenDatabase& database) const { database.MakeFolder(runtime::PathText(folder_)); }

  QList<BackupFile> NewestFirst() const {
    QList<BackupFile> files;
    for (const QFileInfo& file : QDir(folder_).entryInfoList(QDir::Files)) {
      const QDateTime moment = MomentOf(file.fileName());
      if (moment.isValid()) files += {file.fileName(), moment, file.lastModified(), file.size()};
    }
    std::sort(files.begin(), files.end(), [](const BackupFile& one, const BackupFile& other) {
      return std::tie(one.made, one.name) > std::tie(other.made, other.name);
    });
    return files;
  }

  bool HasCopyOf(QDate day) const {
    const QList<BackupFile> files = NewestFirst();
    return std::any_of(files.begin(), files.end(), [&](const BackupFile& file) { return file.moment.date() == day; });
  }

  QString Path() const { return runtime::PathText(folder_); }
  QString PathOf(const QString& name) const { return runtime::PathText(folder_ + u'/' + name); }

  // A free name: the time of the copy, or the first later second that is not taken.
  QString NewName(QDateTime moment) const {
    while (QFileInfo::exists(folder_ + u'/' + NameOf(moment)))
      moment = moment.addSecs(1);
    return NameOf(moment);
  }

  // The name has the clock's time; the modification time gives the order of the copies and always increases, even when
  // the clock is set back.
  void MarkAsNewest(const QString& name, const QDateTime& now, const QList<BackupFile>& earlier) const {
    const QDateTime made = earlier.isEmpty() ? now : qMax(now, earlier.first().made.addSecs(kStep));
    QFile file(folder_ + u'/' + name);
    if (file.open(QIODevice::ReadWrite)) file.setFileTime(made, QFileDevice::FileModificationTime);
  }

  void Remove(const QString& name) const { runtime::RemoveFile(folder_ + u'/' + name); }

  // Temporary files of a killed process.
  void RemoveUnfinished() const { files::RemoveLeftoversBeginning(runtime::NativePath(folder_ + u'/' + prefix_)); }

 private:
  QString NameOf(const QDateTime& moment) const { return prefix_ + moment.toString(kMomentFormat) + kEnding; }

  QDateTime MomentOf(const QString& name) const {
    if (!name.startsWith(prefix_) || !name.endsWith(kEnding)) return {};
    return QDateTime::fromString(name.mid(prefix_.size()).chopped(kEnding.size()), kMomentFormat);
  }

  QString folder_;
  QString prefix_;
};

bool HasRows(dao::Database& database, const QString& table) {
  return database.OpenRecordset(u"SELECT COUNT(*) AS Aantal FROM "_s + table).Field(u"Aantal"_s).toInt() > 0;
}

// Whether every copy table has rows; in a server database, which has none, items and item-spots.
bool IsComplete(const QString& path) {
  try {
    dao::Database database = dao::OpenDatabase(path, {.readOnly = true});
    QStringList tables = database.TableNames().filter(kCopyTablePrefix);
    if (tables.isEmpty()) tables = QStringList{u"tblItems"_s, u"tblItemSpots"_s};
    return std::all_of(tables.begin(), tables.end(), [&](const QString& table) { return HasRows(database, table); });
  } catch (const runtime::Error&) {
    return false;
  }
}

void DeleteExpired(const BackupFolder& folder, QDate today, const QString& keep = {}) {
  const QString kept = QFileInfo(runtime::HostPath(keep)).canonicalFilePath();
  const auto isComplete = [&](const BackupFile& file) { return IsComplete(folder.PathOf(file.name)); };
  for (const BackupFile& file : ExpiredBackups(folder.NewestFirst(), today, isComplete)) {
    if (QFileInfo(runtime::HostPath(folder.PathOf(file.name))).canonicalFilePath() != kept) folder.Remove(file.name);
  }
}

std::unique_ptr<dao::FrozenDatabase> FrozenIfExists(const QString& databasePath, const QString& password) {
  try {
    return std::make_unique<dao::FrozenDatabase>(databasePath, password);
  } catch (const runtime::Error&) {
    if (runtime::Probe(databasePath) == runtime::Presence::NotThere) return nullptr;
    throw;
  }
}

// The path of the newest copy if it is identical to the database; an unreadable copy never is.
std::optional<QString> SameAsNewest(const dao::FrozenDatabase& database, const BackupFolder& folder) {
  const QList<BackupFile> files = folder.NewestFirst();
  if (files.isEmpty()) return std::nullopt;
  try {
    const QString path = folder.PathOf(files.first().name);
    if (database.IsSameAs(path)) return path;
  } catch (const runtime::Error&) {
    // The caller makes a new copy.
  }
  return std::nullopt;
}

// Returns the path of the copy with the present contents, which may exist already.
QString CopyUnlessSame(const dao::FrozenDatabase& database, const BackupFolder& folder, const QDateTime& now,
                       const QString& keep = {}) {
  folder.RemoveUnfinished();
  if (auto same = SameAsNewest(database, folder)) return *same;
  folder.Make(database);
  const QList<BackupFile> earlier = folder.NewestFirst();
  const QString name = folder.NewName(now);
  database.CopyTo(folder.PathOf(name));
  folder.MarkAsNewest(name, now, earlier);
  DeleteExpired(folder, now.date(), keep);
  return folder.PathOf(name);
}

// As CopyUnlessSame, but others may write while the file is copied, which takes seconds for a large one on a network
// folder. They wait only while what they wrote is copied again.
void CopyWhileOthersWrite(dao::FrozenDatabase& database, const BackupFolder& folder, const QDateTime& now) {
  bool isSame = false;
  std::unique_ptr<files::AtomicFile> copy;
  QString name;
  const bool isWhole = database.UnchangedDuring([&] {
    folder.RemoveUnfinished();
    isSame = SameAsNewest(database, folder).has_value();
    if (isSame) return;
    folder.Make(database);
    name = folder.NewName(now);
    copy = database.Prepare(folder.PathOf(name));
  });
  if (folder.HasCopyOf(now.date()) || (isSame && isWhole)) return;  // another program made one, or none is needed
  if (isSame) {
    CopyUnlessSame(database, folder, now);
    return;
  }
  if (!isWhole) database.Refresh(*copy, folder.PathOf(name));
  const QList<BackupFile> earlier = folder.NewestFirst();
  dao::FrozenDatabase::Place(*copy, folder.PathOf(name));
  folder.MarkAsNewest(name, now, earlier);
}

}  // namespace

std::optional<QString> BackUp(const QString& databasePath, const QString& password, const QString& keep) {
  const auto frozen = FrozenIfExists(databasePath, password);
  if (!frozen) return std::nullopt;
  return CopyUnlessSame(*frozen, BackupFolder(databasePath), runtime::Now(), keep);
}

void BackUpDaily(const QString& databasePath, const QDateTime& now) {
  if (dao::IsServerPath(databasePath)) return;
  const BackupFolder folder(databasePath);
  if (folder.HasCopyOf(now.date())) return;
  {
    const auto frozen = FrozenIfExists(databasePath, {});
    // Another program may have made it while this one waited for its turn.
    if (!frozen || folder.HasCopyOf(now.date())) return;
    CopyWhileOthersWrite(*frozen, folder, now);
  }
  DeleteExpired(folder, now.date());
}

QList<BackupFile> BackupsOf(const QString& databasePath) {
  if (dao::IsServerPath(databasePath)) return {};
  return BackupFolder(databasePath).NewestFirst();
}

QString BackupFolderOf(const QString& databasePath) {
  return BackupFolder(databasePath).Path();
}

bool BackupsEnabled(const QString& settingsPath) {
  try {
    IniFile file;
    file.SetPath(settingsPath);
    file.SetSection(settings::kBackup.toString());
    file.SetKey(settings::kEnabled.toString());
    return file.Value() != u"0"_s;
  } catch (const runtime::Error&) {
    return true;
  }
}

BackupBefore BackUpBefore(const QString& databasePath) {
  // The administrator of a server backs it up.
  if (dao::IsServerPath(databasePath) || !BackupsEnabled(SettingsFile().Path())) return {};
  try {
    return {true, BackUp(databasePath).value_or(QString())};
  } catch (const runtime::Error& error) {
    const QString question =
        u"Er kon vooraf geen reservekopie van '%1' gemaakt worden.\n\n%2\n\nWilt u toch doorgaan?"_s.arg(
            databasePath, error.Description());
    return {ShowItemsMessage(question, kStyleYesNoDefaultNo) == kAnswerYes, QString()};
  }
}
