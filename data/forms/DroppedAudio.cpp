// SPDX-License-Identifier: MIT
#include "data/forms/DroppedAudio.h"

#include "data/Messages.h"

#include <QFileInfo>

using namespace Qt::StringLiterals;

namespace {

constexpr int kMaxListed = 5;

QStringList droppedFiles;  // host paths

// By file name, like the file dialog; the contents are checked when the file is opened.
bool IsAudio(const QString& file) {
  const QString suffix = QFileInfo(file).suffix().toLower();
  return (suffix == u"mp3"_s || suffix == u"wav"_s) && QFileInfo(file).isFile();
}

QString FileList(const QStringList& files) {
  QString text;
  for (const QString& file : files.first(qMin(files.size(), kMaxListed)))
    text += u"\r\n'%1'"_s.arg(file);
  if (files.size() > kMaxListed) text += u"\r\nen nog %1"_s.arg(files.size() - kMaxListed);
  return text;
}

}  // namespace

QStringList AcceptedAudio(const QStringList& files) {
  QStringList audio;
  QStringList others;
  for (const QString& file : files)
    (IsAudio(file) ? audio : others) += file;
  if (!others.isEmpty()) {
    ShowItemsMessage(
        u"U kunt hier geluidsbestanden van deze computer neerzetten: Mpeg-3 (*.MP3) en Wave (*.WAV).\r\n"
        u"Niet overgenomen:"_s +
            FileList(others),
        kStyleExclamation);
  }
  return audio;
}

void QueueDroppedAudio(const QStringList& files) {
  droppedFiles += files;
}

qsizetype DroppedAudioLeft() {
  return droppedFiles.size();
}

QString TakeDroppedAudio() {
  return droppedFiles.isEmpty() ? QString() : droppedFiles.takeFirst();
}

void ForgetDroppedAudio() {
  droppedFiles.clear();
}
