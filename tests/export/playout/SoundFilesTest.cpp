// SPDX-License-Identifier: MIT
#include "export/playout/SoundFiles.h"

#include "tests/platform/audio/support/SoundFiles.h"
#include "tests/support/Station.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using runtime::Presence;
using testing_support::Station;

TEST(SoundFiles, ReportsPresenceAndLength) {
  const Station station;
  const QString whole = station.AudioFolder() + u"/toon.wav"_s;
  const QString damaged = station.AudioFolder() + u"/stuk.wav"_s;
  const QString missing = station.AudioFolder() + u"/weg.wav"_s;
  audiotest::MakeTone(whole.toStdString(), 1.234);
  audiotest::WriteBytes(damaged.toStdString(), {'x', 'y', 'z'});
  const SoundFiles files = LookAtFiles({whole, damaged, missing, u"Q:\\x.wav"_s}, Look::Measure);
  EXPECT_EQ(files[whole].presence, Presence::There);
  EXPECT_EQ(files[whole].lengthMs, 1234);
  EXPECT_TRUE(files[whole].readable);
  EXPECT_EQ(files[damaged].presence, Presence::There);
  EXPECT_FALSE(files[damaged].readable);
  EXPECT_EQ(files[missing].presence, Presence::NotThere);
  EXPECT_EQ(files[u"Q:\\x.wav"_s].presence, Presence::NotReachable);
  EXPECT_EQ(In(files)(whole)->lengthMs, 1234);
  EXPECT_FALSE(In(files)(u"onbekend"_s));
}

TEST(SoundFiles, WithoutMeasuringOnlyPresenceIsReported) {
  const Station station;
  const QString damaged = station.AudioFolder() + u"/stuk.wav"_s;
  audiotest::WriteBytes(damaged.toStdString(), {'x'});
  const SoundFiles files = LookAtFiles({damaged}, Look::Presence);
  EXPECT_TRUE(files[damaged].readable);
  EXPECT_FALSE(files[damaged].lengthMs);
}

TEST(SoundFiles, FilesOfAPlanAreListedOnce) {
  Block block;
  BlockSpot spot;
  spot.facts.aktief = true;
  spot.facts.path = u"D:\\een.wav"_s;
  block.spots = {spot, spot};
  spot.facts.aktief = false;
  spot.facts.path = u"D:\\uit.wav"_s;
  block.spots.push_back(spot);
  block.opener.emplace();
  block.opener->path = u"D:\\tune.wav"_s;
  QStringList files = FilesOf({block, block}, QDateTime(QDate(2025, 3, 11), QTime(8, 0)));
  files.sort();
  EXPECT_EQ(files, (QStringList{u"D:\\een.wav"_s, u"D:\\tune.wav"_s}));
}
