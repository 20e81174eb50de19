// SPDX-License-Identifier: MIT
#include "items/FolderList.h"

#include "platform/desktop/Background.h"
#include "platform/runtime/Error.h"
#include "platform/runtime/HostPath.h"
#include "platform/runtime/Probe.h"

#include <QApplication>
#include <QDir>
#include <QFileInfo>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

QString Below(const QString& folder, const QString& name) {
  return (folder.endsWith(u'\\') ? folder : QString(folder + u'\\')) + name;
}

// The drive or share at the start of a path text; "\" for a path without one.
QString DriveOf(const QString& pathText) {
  QString found;
  for (const QString& drive : runtime::Drives()) {
    const bool begins = pathText.startsWith(drive, Qt::CaseInsensitive) &&
                        (pathText.size() == drive.size() || pathText[drive.size()] == u'\\');
    if (begins && drive.size() > found.size()) found = drive;
  }
  return found;
}

QStringList Subfolders(const QString& pathText) {
  runtime::RequireThere(pathText);
  const QFileInfo folder(runtime::HostPath(pathText));
  if (!folder.isDir()) throw runtime::Error(u"'%1' is geen map."_s.arg(pathText));
  if (!folder.isReadable() || !folder.isExecutable()) {
    throw runtime::Error(u"De map '%1' is niet toegankelijk: toegang geweigerd."_s.arg(pathText));
  }
  return QDir(folder.filePath()).entryList(QDir::Dirs | QDir::NoDotAndDotDot, QDir::Name | QDir::IgnoreCase);
}

}  // namespace

FolderList::FolderList(QWidget* parent) : ListBox(parent) {
  setTabKeyNavigation(false);
}

void FolderList::SetPath(const QString& pathText) {
  // Before any change, since it may throw.
  const QStringList below = desktop::InBackground([pathText] { return Subfolders(pathText); });
  const QString drive = DriveOf(pathText);
  Clear();
  paths_.clear();
  names_.clear();
  QString path = drive.size() == 2 ? QString(drive + u'\\') : drive;
  int depth = 0;
  AddFolder(path, path, depth);
  for (const QString& name : pathText.mid(drive.size()).split(u'\\', Qt::SkipEmptyParts)) {
    path = Below(path, name);
    AddFolder(path, name, ++depth);
  }
  path_ = path;
  pathLine_ = depth;
  for (const QString& name : below)
    AddFolder(Below(path, name), name, depth + 1);
}

void FolderList::AddFolder(const QString& path, const QString& name, int depth) {
  paths_ += path;
  names_ += name;
  AddItem(QString(3 * depth, u' ') + name, paths_.size() - 1);
}

QString FolderList::List(int index) const {
  return paths_.at(static_cast<qsizetype>(ItemData(index)));
}

void FolderList::keyboardSearch(const QString& typed) {
  const bool goesOn = sinceTyped_.isValid() && sinceTyped_.elapsed() < QApplication::keyboardInputInterval();
  typed_ = goesOn ? typed_ + typed : typed;
  sinceTyped_.start();
  const int from = ListIndex() + (goesOn ? 0 : 1);
  for (int step = 0; step < names_.size(); ++step) {
    const int line = static_cast<int>((std::max(from, 0) + step) % names_.size());
    if (!names_[line].startsWith(typed_, Qt::CaseInsensitive)) continue;
    SetListIndex(line);
    return;
  }
}
