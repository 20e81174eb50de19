#include "tools/LocalFolder.h"

#include "data/Backup.h"

#include <QFileInfo>

using namespace Qt::StringLiterals;

namespace {

// A file that is not there yet has no real path.
QString RealPath(const QString& path) {
  const QString real = QFileInfo(path).canonicalFilePath();
  return real.isEmpty() ? QFileInfo(path).absoluteFilePath() : real;
}

}  // namespace

bool IsOfflineLog(const dao::Database& database, const QString& table) {
  return database.Table(table).name.compare(u"tblOfflineLog"_s, Qt::CaseInsensitive) == 0;
}

LocalFolder::LocalFolder(const QString& databasePath)
    : databasePath_(RealPath(databasePath)), folder_(QFileInfo(databasePath_).absolutePath()) {}

bool LocalFolder::IsLocal() const {
  return QFileInfo(databasePath_).fileName().startsWith(u"OvalistoLocal"_s, Qt::CaseInsensitive);
}

std::unique_ptr<ProgramLock> LocalFolder::Lock() const {
  return IsLocal() ? std::make_unique<ProgramLock>(folder_) : nullptr;
}

void LocalFolder::BackUp(const QString& password) const {
  // The program's folder is the one above "data".
  if (BackupsWanted(QFileInfo(folder_).absolutePath() + u"/ovalis.ini"_s)) ::BackUp(databasePath_, password);
}
