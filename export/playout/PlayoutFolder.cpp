// SPDX-License-Identifier: MIT
#include "export/playout/PlayoutFolder.h"

#include "platform/runtime/Error.h"
#include "platform/runtime/FileCalls.h"

#include <QDir>
#include <QFile>
#include <QHash>
#include <QSet>

#include <cstdio>

using namespace Qt::StringLiterals;

namespace {

[[noreturn]] void Fail(const QString& what, const QString& path, const QString& reason) {
  throw runtime::Error(u"Kan '%1' niet %2: %3."_s.arg(path, what, reason));
}

QByteArray Read(const QString& path) {
  QFile file(path);
  if (!file.open(QIODevice::ReadOnly)) Fail(u"lezen"_s, path, file.errorString());
  return file.readAll();
}

// Written under a temporary name first, so that a player never reads half a file. Not synced: after a power cut the
// next run rewrites incomplete files.
void Write(const QString& path, const QByteArray& content, bool program) {
  const QString temporary = path + u".tmp"_s;
  {
    QFile file(temporary);
    if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size() || !file.flush())
      Fail(u"schrijven"_s, path, file.errorString());
    if (program) file.setPermissions(file.permissions() | QFile::ExeOwner | QFile::ExeGroup | QFile::ExeOther);
  }
  if (std::rename(QFile::encodeName(temporary).constData(), QFile::encodeName(path).constData()) != 0)
    Fail(u"schrijven"_s, path, u"het kan niet op zijn plaats worden gezet"_s);
}

}  // namespace

FolderChanges UpdatePlayoutFolder(const QString& folder, PlayoutForm form, const std::vector<PlayoutFile>& files) {
  runtime::MakeFolders(folder);
  const QDir place(folder);
  QHash<QString, QByteArray> present;
  for (const QString& name : place.entryList(QDir::Files | QDir::Hidden)) {
    if (!IsPlayoutFileName(form, name)) continue;
    const QByteArray content = Read(place.filePath(name));
    if (!IsPlayoutFile(content))
      throw runtime::Error(
          u"'%1' is niet door Spotrooster gemaakt en blijft staan: kies een andere map."_s.arg(place.filePath(name)));
    present.insert(name, content);
  }
  FolderChanges changes;
  for (const PlayoutFile& file : files) {
    const auto before = present.constFind(file.name);
    const bool same = before != present.constEnd() && *before == file.content;
    present.remove(file.name);
    ++(same ? changes.unchanged : changes.written);
    if (!same) Write(place.filePath(file.name), file.content, form == PlayoutForm::Rivendell);
  }
  for (auto gone = present.constBegin(); gone != present.constEnd(); ++gone) {
    QFile file(place.filePath(gone.key()));
    if (!file.remove()) Fail(u"verwijderen"_s, file.fileName(), file.errorString());
    ++changes.removed;
  }
  return changes;
}
