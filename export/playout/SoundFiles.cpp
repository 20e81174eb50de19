// SPDX-License-Identifier: MIT
#include "export/playout/SoundFiles.h"

#include "platform/audio/Error.h"
#include "platform/audio/Measure.h"
#include "platform/runtime/Error.h"
#include "platform/runtime/HostPath.h"

#include <QSet>
#include <QtConcurrentMap>

using namespace Qt::StringLiterals;

namespace {

struct CheckedFile {
  QString path;
  SoundFile file;
};

CheckedFile CheckFile(const QString& path, Look look) {
  CheckedFile checked{path, {runtime::Probe(path)}};
  if (look == Look::Presence || checked.file.presence != runtime::Presence::There) return checked;
  try {
    checked.file.lengthMs = audio::MeasureMs(runtime::HostPath(path).toStdString());
  } catch (const audio::Error&) {
    checked.file.readable = false;
  } catch (const runtime::Error&) {
    checked.file.presence = runtime::Presence::NotReachable;  // the drive was disconnected in the meantime
  }
  return checked;
}

}  // namespace

SoundFiles LookAtFiles(const QStringList& paths, Look look) {
  SoundFiles files;
  files.reserve(paths.size());
  const auto all = QtConcurrent::blockingMapped<QList<CheckedFile>>(
      paths, std::function<CheckedFile(const QString&)>([look](const QString& path) { return CheckFile(path, look); }));
  for (const CheckedFile& checked : all)
    files.insert(checked.path, checked.file);
  return files;
}

LookUpFile In(const SoundFiles& files) {
  return [&files](const QString& path) -> std::optional<SoundFile> {
    const auto file = files.constFind(path);
    if (file == files.constEnd()) return std::nullopt;
    return *file;
  };
}

// Makes plans with a look-up that only notes the paths: a plan looks up exactly the files it depends on.
QStringList FilesOf(const std::vector<Block>& blocks, const QDateTime& moment) {
  QSet<QString> paths;
  const auto note = [&paths](const QString& path) -> std::optional<SoundFile> {
    paths.insert(path);
    return std::nullopt;
  };
  for (const Block& block : blocks)
    PlanBlock(block, moment, 0, note);
  return paths.values();
}
