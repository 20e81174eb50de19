// SPDX-License-Identifier: MIT
#include "export/playout/PlayoutForm.h"

#include "platform/runtime/Error.h"
#include "platform/runtime/HostPath.h"

#include <QFile>
#include <QProcess>
#include <QTemporaryDir>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace {

const QString kOdd = u"a\"b'c\\d,e:f $(touch x) `id` #{1} ; & | é"_s;

const QString kOddFile = QString(kOdd).remove(u'\\');  // a folder separator in a path

PlannedSound Sound(SoundKind kind, qint32 id, const QString& naam, const QString& path, qint32 mixMs, qint64 lengthMs) {
  PlannedSound sound{kind, id, naam, path, mixMs};
  sound.mixMs = mixMs;
  sound.lengthMs = lengthMs;
  return sound;
}

PlannedBlock Planned() {
  PlannedBlock planned;
  planned.block.id = 12;
  planned.block.naam = u"Blok \"twaalf\"\nmet meer"_s;
  BlockSpot spot;
  spot.id = 41;
  spot.facts.startDatum = QDate(2026, 11, 1);
  spot.facts.eindDatum = QDate(2026, 11, 30);
  spot.facts.startUur = 6;
  spot.facts.eindUur = 18;
  planned.block.spots.push_back(spot);
  planned.plan.sounds = {
      Sound(SoundKind::Opener, 3, u"Tune"_s, u"/srv/tune.wav"_s, 300, 3000),
      Sound(SoundKind::Spot, 41, kOdd + u"\nregel"_s, u"/srv/"_s + kOddFile + u".mp3"_s, 1250, 30'040),
      Sound(SoundKind::File, 0, u"weer.wav"_s, u"/srv/weer.wav"_s, 0, 5000)};
  return planned;
}

QString TextOf(PlayoutForm form, std::size_t file = 0) {
  return QString::fromUtf8(PlayoutFilesOf(form, {Planned()}).at(file).content);
}

// The arguments that a script passes to the programs it calls, one per line; line ends are shown as "\n".
QStringList WordsOf(const QByteArray& script) {
  const QTemporaryDir folder;
  for (const QString& program : {u"rdimport"_s, u"rdclilogedit"_s}) {
    QFile file(folder.filePath(program));
    EXPECT_TRUE(file.open(QIODevice::WriteOnly));
    file.write("#!/bin/sh\necho CALL\nfor w in \"$@\"; do printf '%s\\n' \"$w\"; done\n[ \"$1\" != -n ] || cat\n");
    file.setPermissions(file.permissions() | QFile::ExeOwner);
  }
  QProcess shell;
  QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
  environment.insert(u"PATH"_s, folder.path() + u':' + environment.value(u"PATH"_s));
  shell.setProcessEnvironment(environment);
  shell.setWorkingDirectory(folder.path());
  shell.start(u"/bin/sh"_s, {});
  shell.write(script);
  shell.closeWriteChannel();
  EXPECT_TRUE(shell.waitForFinished(-1));
  EXPECT_EQ(shell.exitCode(), 0) << shell.readAllStandardError().toStdString();
  EXPECT_FALSE(QFile::exists(folder.filePath(u"x"_s))) << "something in a name was carried out";
  return QString::fromUtf8(shell.readAllStandardOutput()).split(u'\n', Qt::SkipEmptyParts);
}

}  // namespace

TEST(PlayoutForm, NamesAreKnownAndOthersAreNot) {
  EXPECT_EQ(PlayoutFormOf(u"liquidsoap"_s), PlayoutForm::Liquidsoap);
  EXPECT_EQ(PlayoutFormOf(u"rivendell"_s), PlayoutForm::Rivendell);
  EXPECT_EQ(PlayoutFormOf(u"m3u"_s), PlayoutForm::M3u);
  EXPECT_FALSE(PlayoutFormOf(u"pls"_s));
}

TEST(PlayoutForm, FileNamesAreSafeAndRecognised) {
  EXPECT_EQ(PlayoutFileName(PlayoutForm::M3u, 12), u"blok-12.m3u"_s);
  EXPECT_TRUE(IsPlayoutFileName(PlayoutForm::M3u, u"blok-12.m3u"_s));
  EXPECT_TRUE(IsPlayoutFileName(PlayoutForm::Rivendell, u"geluiden.sh"_s));
  for (const QString& name : {u"blok-12.sh"_s, u"blok-.m3u"_s, u"blok-1x.m3u"_s, u"muziek.m3u"_s})
    EXPECT_FALSE(IsPlayoutFileName(PlayoutForm::M3u, name)) << name.toStdString();
  for (const auto form : {PlayoutForm::Liquidsoap, PlayoutForm::Rivendell, PlayoutForm::M3u}) {
    for (const PlayoutFile& file : PlayoutFilesOf(form, {Planned()})) {
      EXPECT_TRUE(IsPlayoutFile(file.content));
      EXPECT_TRUE(IsPlayoutFileName(form, file.name));
    }
  }
  EXPECT_FALSE(IsPlayoutFile("#EXTM3U\n/srv/eigen.wav\n"));
  EXPECT_FALSE(IsPlayoutFile(""));
}

TEST(PlayoutForm, LiquidsoapGetsTheStartOfTheNextSound) {
  const QStringList lines = TextOf(PlayoutForm::Liquidsoap).split(u'\n');
  ASSERT_EQ(lines.size(), 6);
  EXPECT_EQ(lines[1], u"# Spotrooster: Blok 'twaalf' met meer"_s);
  EXPECT_EQ(
      lines[2],
      u"annotate:title=\"Tune\",block_id=\"12\",duration=\"3.000\",liq_cross_duration=\"0.300\","
      u"liq_cross_end_duration=\"0.300\",liq_cross_start_duration=\"0.000\",liq_fade_in=\"0.\",liq_fade_out=\"0.\""
      u":/srv/tune.wav"_s);
  EXPECT_TRUE(lines[3].contains(u"spot_id=\"41\",duration=\"30.040\",liq_cross_duration=\"1.250\","_s));
  EXPECT_TRUE(lines[3].contains(u"liq_cross_start_duration=\"0.300\""_s));
  EXPECT_TRUE(lines[4].contains(u"liq_cross_duration=\"0.000\""_s));
  EXPECT_FALSE(lines[4].contains(u"spot_id"_s));
}

TEST(PlayoutForm, NoNameEndsItsQuotesInLiquidsoap) {
  const QString line = TextOf(PlayoutForm::Liquidsoap).split(u'\n').at(3);
  const QString title = line.section(u"title=\""_s, 1).section(u"\",block_id"_s, 0, 0);
  EXPECT_EQ(title, u"a'b'c/d,e:f $(touch x) `id` # {1} ; & | é regel"_s);
  EXPECT_TRUE(line.endsWith(u"\":/srv/"_s + kOddFile + u".mp3"_s)) << line.toStdString();
}

TEST(PlayoutForm, AnM3uListsTheFilesInOrder) {
  EXPECT_EQ(TextOf(PlayoutForm::M3u),
            u"#EXTM3U\n# Spotrooster: Blok 'twaalf' met meer\n#EXTINF:3,Tune\n/srv/tune.wav\n"
            u"#EXTINF:30,a'b'c/d,e:f $(touch x) `id` # {1} ; & | é regel\n/srv/"_s +
                kOddFile + u".mp3\n#EXTINF:5,weer.wav\n/srv/weer.wav\n"_s);
}

TEST(PlayoutForm, RivendellImportsEachSoundOnceWithItsDaysHoursAndMixPoint) {
  const QByteArray script = PlayoutFilesOf(PlayoutForm::Rivendell, {Planned(), Planned()}).at(2).content;
  const QStringList words = WordsOf(script);
  EXPECT_EQ(words.count(u"CALL"_s), 3);
  const qsizetype spot = words.indexOf(u"--to-cart=100041"_s);
  ASSERT_GE(spot, 0) << words.join(u'\n').toStdString();
  EXPECT_EQ(
      words.mid(spot, 11),
      (QStringList{u"--to-cart=100041"_s, u"--delete-cuts"_s,
                   u"--set-string-title=a'b'c/d,e:f $(touch x) `id` # {1} ; & | é regel"_s,
                   u"--set-datetimes=20261101-000000,20261130-235959"_s, u"--set-daypart-times=060000,185959"_s,
                   u"--set-marker-start-segue=-1250"_s, u"--set-marker-end-segue=30040"_s, u"--normalization-level=0"_s,
                   u"--autotrim-level=0"_s, u"ADS"_s, u"/srv/"_s + kOddFile + u".mp3"_s}));
  EXPECT_TRUE(words.contains(u"--to-cart=200003"_s));
  EXPECT_TRUE(words.contains(u"--to-cart=301201"_s));
}

TEST(PlayoutForm, ARivendellLogOverlapsTheCarts) {
  EXPECT_EQ(WordsOf(PlayoutFilesOf(PlayoutForm::Rivendell, {Planned()}).at(0).content),
            (QStringList{u"CALL"_s, u"-n"_s, u"new BLOK_12"_s, u"addcart 0 200003"_s, u"settrans 0 segue"_s,
                         u"addcart 1 100041"_s, u"settrans 1 segue"_s, u"addcart 2 301201"_s, u"settrans 2 segue"_s,
                         u"saveas BLOK_12"_s, u"bye"_s}));
}

TEST(PlayoutForm, ANumberOutsideTheCartRangeIsAnErrorThatNamesIt) {
  PlannedBlock planned = Planned();
  planned.plan.sounds[1].id = 100'000;
  planned.plan.sounds[1].naam = u"Bakker"_s;
  try {
    PlayoutFilesOf(PlayoutForm::Rivendell, {planned});
    FAIL();
  } catch (const runtime::Error& error) {
    EXPECT_TRUE(error.Description().contains(u"'Bakker' van item 12"_s)) << error.what();
  }
}

TEST(PlayoutForm, PathsAreMappedByDrivesAndOthersAreRefused) {
  runtime::SetDrives({{u"D"_s, u"/srv/audio"_s}});
  PlannedBlock planned = Planned();
  planned.plan.sounds.resize(1);
  planned.plan.sounds[0].path = u"D:\\map\\tune.wav"_s;
  EXPECT_TRUE(PlayoutFilesOf(PlayoutForm::M3u, {planned})[0].content.endsWith("/srv/audio/map/tune.wav\n"));
  EXPECT_TRUE(CanBeWritten(u"D:\\map\\tune.wav"_s));
  EXPECT_FALSE(CanBeWritten(u"E:\\map\\tune.wav"_s));
  EXPECT_FALSE(CanBeWritten(u"D:\\map\\tu\nne.wav"_s));
  runtime::SetDrives({});
}
