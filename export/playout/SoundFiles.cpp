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

struct Looked {
  QString path;
  SoundFile file;
};

Looked LookAt(const QString& path, Look look) {
  Looked looked{path, {runtime::Probe(path)}};
  if (look == Look::Presence || looked.file.presence != runtime::Presence::There) return looked;
  try {
    looked.file.lengthMs = audio::MeasureMs(runtime::HostPath(path).toStdString());
  } catch (const audio::Error&) {
    looked.file.readable = false;
  } catch (const runtime::Error&) {
    looked.file.presence = runtime::Presence::NotReachable;  // the drive went away meanwhile
  }
  return looked;
}

}  // namespace

SoundFiles LookAtFiles(const QStringList& paths, Look look) {
  SoundFiles files;
  files.reserve(paths.size());
  const auto all = QtConcurrent::blockingMapped<QList<Looked>>(
      paths, std::function<Looked(const QString&)>([look](const QString& path) { return LookAt(path, look); }));
  for (const Looked& looked : all)
    files.insert(looked.path, looked.file);
  return files;
}

LookUpFile In(const SoundFiles& files) {
  return [&files](const QString& path) -> std::optional<SoundFile> {
    const auto file = files.constFind(path);
    if (file == files.constEnd()) return std::nullopt;
    return *file;
  };
}

// A plan asks for exactly the files on which it depends.
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
