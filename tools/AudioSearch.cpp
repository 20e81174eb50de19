// SPDX-License-Identifier: MIT
#include "tools/AudioSearch.h"

#include "platform/audio/Error.h"
#include "platform/audio/Measure.h"
#include "platform/runtime/Error.h"

#include <QDirIterator>
#include <QFileInfo>

#include <cstdlib>

using namespace Qt::StringLiterals;

namespace {

constexpr qint32 kHour = 3600;  // seconds

bool HasLength(const QString& hostPath, qint32 lengteSec) {
  try {
    const qint32 seconds = audio::MeasureMs(hostPath.toStdString()) / 1000;
    return std::abs(seconds - lengteSec) <= 1 || std::abs(seconds % kHour - lengteSec) <= 1;
  } catch (const audio::Error&) {
    return false;
  }
}

}  // namespace

AudioSearch::AudioSearch(const QStringList& folders) {
  for (const QString& folder : folders) {
    const QFileInfo info(folder);
    if (!info.isDir() || !info.isReadable())
      throw runtime::Error(u"Kan in '%1' niet zoeken: het is geen map die te lezen is."_s.arg(folder));
    QDirIterator files(info.absoluteFilePath(), QDir::Files | QDir::Hidden, QDirIterator::Subdirectories);
    while (files.hasNext()) {
      const QString path = files.next();
      QStringList& paths = byName_[files.fileName().toLower()];
      if (!paths.contains(path)) paths += path;
    }
  }
}

AudioSearch::Answer AudioSearch::Find(const QString& fileName, std::optional<qint32> lengteSec) const {
  const QStringList named = byName_.value(fileName.toLower());
  if (named.isEmpty()) return {};
  QStringList fitting;
  for (const QString& path : named) {
    if (lengteSec && HasLength(path, *lengteSec)) fitting += path;
  }
  if (fitting.isEmpty()) return {Outcome::OtherLength, {}};
  if (fitting.size() > 1) return {Outcome::Several, {}};
  return {Outcome::Found, fitting.first()};
}
