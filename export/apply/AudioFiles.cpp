// SPDX-License-Identifier: MIT
#include "export/apply/AudioFiles.h"

#include "data/Text.h"
#include "platform/runtime/CodePage.h"
#include "platform/runtime/Error.h"
#include "platform/runtime/HostPath.h"
#include "platform/runtime/Probe.h"
#include "platform/runtime/StagedFile.h"
#include "platform/runtime/TextFile.h"

#include <QFile>

using namespace Qt::StringLiterals;

namespace apply {
namespace {

constexpr qint64 kBlockBytes = qint64{1} << 20;

QStringList ListedIn(const QString& folder) {
  const QString list = folder + u"\\Audio.tae"_s;
  if (runtime::Probe(list) != runtime::Presence::There) return {};
  QStringList paths = runtime::FromCodePage(runtime::ReadFile(list)).split(u'\n');
  for (QString& path : paths)
    path = path.trimmed();
  paths.removeAll(QString());
  paths.removeDuplicates();
  return paths;
}

// The host path of a file that can be read; empty when it is not there.
QString Found(const QString& path) {
  try {
    const QString host = runtime::HostPath(path);
    return runtime::Probe(path) == runtime::Presence::There ? host : QString();
  } catch (const runtime::Error&) {
    return {};
  }
}

bool HaveSameContent(const QString& left, const QString& right) {
  QFile first(left);
  QFile second(right);
  if (!first.open(QIODevice::ReadOnly) || !second.open(QIODevice::ReadOnly)) return false;
  if (first.size() != second.size()) return false;
  while (!first.atEnd()) {
    const QByteArray block = first.read(kBlockBytes);
    if (block.isEmpty() || block != second.read(block.size())) return false;
  }
  return true;
}

void Copy(const QString& from, const QString& to) {
  QFile source(from);
  if (!source.open(QIODevice::ReadOnly))
    throw runtime::Error(u"Kan '%1' niet lezen: %2."_s.arg(from, source.errorString()));
  runtime::StagedFile copy(to);
  while (!source.atEnd()) {
    const QByteArray block = source.read(kBlockBytes);
    if (block.isEmpty()) throw runtime::Error(u"Kan '%1' niet lezen: %2."_s.arg(from, source.errorString()));
    copy.Write(block);
  }
  copy.Complete();
  if (!copy.PlaceNew(to)) throw runtime::Error(u"Kan '%1' niet schrijven: er kwam intussen een bestand."_s.arg(to));
}

}  // namespace

QString AudioFiles::Summary() const {
  return u"%1 gekopieerd, %2 stonden er al, %3 met een andere inhoud, %4 ontbreken"_s.arg(
      QString::number(copied.size()), QString::number(present.size()), QString::number(different.size()),
      QString::number(missing.size()));
}

AudioFiles CopyAudioFiles(const QString& listFolder, const QString& toFolder, bool copies) {
  AudioFiles files;
  const QStringList paths = ListedIn(listFolder);
  if (!paths.isEmpty() && !runtime::IsFolder(toFolder))
    throw runtime::Error(u"De map '%1' bestaat niet."_s.arg(toFolder));
  for (const QString& path : paths) {
    const QString from = Found(path);
    const QString to = toFolder + u'\\' + GetFile(path);
    if (from.isEmpty()) {
      files.missing += path;
    } else if (runtime::Probe(to) == runtime::Presence::There) {
      (HaveSameContent(from, runtime::HostPath(to)) ? files.present : files.different) += path;
    } else {
      if (copies) Copy(from, to);
      files.copied += path;
    }
  }
  return files;
}

}  // namespace apply
