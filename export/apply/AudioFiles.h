// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <QStringList>

namespace apply {

// What became of the audio files that an Audio.tae lists, each by its path there.
struct AudioFiles {
  QStringList copied;
  QStringList present;    // a file of that name and content is in the folder
  QStringList different;  // a file of that name but other content is in the folder; it is not replaced
  QStringList missing;    // not found, or its drive is not known here

  QString Summary() const;
};

// Copies the audio files listed in the Audio.tae of `listFolder` to `toFolder`, each once and completely; when `copies`
// is false it copies nothing and only reports. Without an Audio.tae there are no files. Paths are path texts; those in
// the list are resolved with the drives of runtime::SetDrives. Throws runtime::Error when the list cannot be read or a
// copy cannot be written.
AudioFiles CopyAudioFiles(const QString& listFolder, const QString& toFolder, bool copies);

}  // namespace apply
