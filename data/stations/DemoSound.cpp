// SPDX-License-Identifier: MIT
#include "data/stations/DemoSound.h"

#include "platform/audio/Measure.h"
#include "platform/audio/Synth.h"
#include "platform/runtime/FileCalls.h"

#include <QFile>
#include <QtConcurrentMap>

#include <string>

using namespace Qt::StringLiterals;

namespace demo {
namespace {

// A sound file to make; `lengthSec` is set once it is made.
struct Sound {
  std::string path;
  audio::ToneOptions options;
  int lengthSec = 0;
};

QString HostFile(const QString& folder, const QString& file) {
  return folder + u'/' + QString(file).replace(u'\\', u'/');
}

Sound Plan(const QString& path, int seconds, quint32 seed, audio::ToneOptions::Kind kind) {
  Sound sound;
  sound.path = path.toStdString();
  sound.options.seconds = seconds + (seed % 10) / 10.0;
  sound.options.seed = seed;
  sound.options.kind = kind;
  sound.options.sampleRate = 22050;  // keeps the files small
  sound.options.channels = 1;
  sound.options.variableBitRate = seed % 2 == 0;
  return sound;
}

}  // namespace

void MakeSounds(QList<Spot>& spots, QList<Jingle>& jingles, const QString& hostFolder, const QString& audioText) {
  for (const QString& name : {u"Spots"_s, u"Jingles"_s, u"Blokken"_s})
    runtime::MakeFolders(hostFolder + u'/' + name);
  QList<Sound> sounds;
  for (const Spot& spot : spots) {
    sounds += Plan(HostFile(hostFolder, spot.file), spot.seconds, static_cast<quint32>(spot.row.id),
                   audio::ToneOptions::Kind::Speech);
  }
  for (const Jingle& jingle : jingles) {
    sounds += Plan(HostFile(hostFolder, jingle.file), jingle.seconds, static_cast<quint32>(100 + jingle.row.id),
                   audio::ToneOptions::Kind::Jingle);
  }
  QtConcurrent::blockingMap(sounds, [](Sound& sound) {
    audio::WriteToneFile(sound.path, sound.options);
    sound.lengthSec = audio::MeasureMs(sound.path) / 1000;
  });
  for (qsizetype i = 0; i < spots.size(); ++i) {
    spots[i].row.path = audioText + u'\\' + spots[i].file;
    spots[i].row.lengteSec = sounds[i].lengthSec;
    if (spots[i].missing) QFile::remove(HostFile(hostFolder, spots[i].file));
  }
  for (qsizetype i = 0; i < jingles.size(); ++i) {
    jingles[i].row.path = audioText + u'\\' + jingles[i].file;
    jingles[i].row.lengteSec = sounds[spots.size() + i].lengthSec;
  }
}

}  // namespace demo
