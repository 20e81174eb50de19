#include "tools/LocalFolder.h"

#include "data/Backup.h"

#include <QFileInfo>

using namespace Qt::StringLiterals;

LocalFolder::LocalFolder(const QString& databasePath)
    : databasePath_(databasePath), folder_(QFileInfo(databasePath).absolutePath()) {}

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
