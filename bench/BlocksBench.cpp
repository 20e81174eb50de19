// SPDX-License-Identifier: MIT
// A thousand blocks of twenty spots: the time until the item list shows all marks, the longest freeze of its window
// meanwhile, and the time spotrooster-db needs to write all blocks for a playout system, the first time and again.
// usage: BlocksBench [BLOCKS] [SPOTS]
#include "bench/Plain.h"
#include "bench/SpotStation.h"
#include "catalogue/frmItems.h"
#include "data/Globals.h"
#include "platform/audio/Synth.h"
#include "platform/dao/Database.h"
#include "platform/dao/Storage.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QFile>
#include <QLabel>
#include <QProcess>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <ctime>

using namespace Qt::StringLiterals;

namespace {

constexpr int kSpotsOfABlock = 20;

double ThreadMs() {
  timespec time{};
  clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
  return static_cast<double>(time.tv_sec) * 1e3 + static_cast<double>(time.tv_nsec) / 1e6;
}

dao::Value Number(int value) {
  return std::int64_t{value};
}

// Each spot has its own file; half of the blocks play in random order.
void Fill(const bench::SpotStation& station, int blocks, int spots) {
  audio::ToneOptions tone;
  tone.seconds = 0.5;
  tone.sampleRate = 8000;
  tone.channels = 1;
  const QString first = station.File(u"1.wav"_s);
  audio::WriteToneFile(first.toStdString(), tone);
  for (int spot = 2; spot <= spots; ++spot)
    QFile::copy(first, station.File(u"%1.wav"_s.arg(spot)));
  QFile::remove(station.File(u"%1.wav"_s.arg(spots)));
  const auto storage = dao::OpenStorage(global.serverDatabasePath);
  const auto turn = storage->Begin(dao::Access::Write);
  {
    const auto table = storage->OpenTable(u"tblItemSpots"_s);
    std::vector<std::pair<dao::RowId, int>> rows;
    const auto id = static_cast<std::size_t>(table->Definition().FieldIndex(u"ID"_s));
    const auto path = static_cast<std::size_t>(table->Definition().FieldIndex(u"Path"_s));
    dao::FieldMask wanted;
    wanted.set(id);
    for (const auto cursor = table->Scan(wanted); cursor->Next();)
      rows.emplace_back(cursor->Id(), static_cast<int>(std::get<std::int64_t>(cursor->Field(id))));
    for (const auto& [row, number] : rows) {
      const std::vector<dao::FieldValue> change{
          {path, QString(u"Z:"_s + station.File(u"%1.wav"_s.arg(number)).replace(u'/', u'\\')).toStdU16String()}};
      table->Update(row, change);
    }
  }
  const auto items = storage->OpenTable(u"tblItems"_s);
  const auto links = storage->OpenTable(u"tblItemsItemSpots"_s);
  const auto field = [&](const char16_t* name) {
    return static_cast<std::size_t>(items->Definition().FieldIndex(QString::fromUtf16(name)));
  };
  for (int block = 1; block <= blocks; ++block) {
    std::vector<dao::Value> row(static_cast<std::size_t>(items->Definition().fields.size()));
    row[field(u"ID")] = Number(block);
    row[field(u"Naam")] = u"Blok "_s.append(QString::number(block)).toStdU16String();
    row[field(u"ItemSpotsOptID")] = Number(1);
    row[field(u"OptMeerdereSpots")] = Number(-1);
    row[field(u"AantalSpots")] = row[field(u"MaxAantalSpots")] = Number(kSpotsOfABlock);
    row[field(u"ChkRandomizeMeerdereSpots")] = Number(block % 2);
    row[field(u"Aktief")] = Number(1);
    items->Insert(row);
    for (int order = 1; order <= kSpotsOfABlock; ++order)
      links->Insert({Number(block), Number(order), Number((block * kSpotsOfABlock + order) % spots + 1)});
  }
  turn->Commit();
}

void BenchMarks() {
  frmItems form(nullptr);
  form.show();
  // One file is missing: the count line says so once all files have been checked.
  const auto& count = *form.findChild<QLabel*>(u"lblAantal"_s);
  const auto areThere = [&] { return count.text().contains(u"te kort"_s); };
  QElapsedTimer all;
  all.start();
  form.Form_Load();
  form.grab();
  std::printf("open: fill and first picture                   %8.1f ms\n", static_cast<double>(all.elapsed()));
  double longest = 0;
  do {
    const double start = ThreadMs();
    QCoreApplication::processEvents();
    longest = std::max(longest, ThreadMs() - start);
  } while (!areThere());
  std::printf("marks: until all stand, since opening          %8.1f ms\n", static_cast<double>(all.elapsed()));
  std::printf("marks: longest turn of the event loop          %8.1f ms\n", longest);
}

void BenchPlayout(const bench::SpotStation& station, const char* what) {
  QElapsedTimer timer;
  timer.start();
  QProcess program;
  program.start(QStringLiteral(SPOTROOSTER_DB),
                {u"playout"_s, station.Folder(), u"--form"_s, u"liquidsoap"_s, u"--to"_s, station.File(u"uit"_s)});
  program.waitForFinished(-1);
  bench::Require(program.exitCode() == 0, program.readAllStandardError().constData());
  std::printf("playout, %-37s %8.1f ms\n", what, static_cast<double>(timer.elapsed()));
}

}  // namespace

int main(int argc, char** argv) {
  qputenv("QT_QPA_PLATFORM", "offscreen");
  const QApplication application(argc, argv);
  const int blocks = argc > 1 ? std::max(1, std::atoi(argv[1])) : 1000;
  const int spots = argc > 2 ? std::max(kSpotsOfABlock, std::atoi(argv[2])) : 2000;
  const bench::SpotStation station(spots);
  Fill(station, blocks, spots);
  QFile settings(station.File(u"ovalis.ini"_s));
  bench::Require(settings.open(QIODevice::WriteOnly), "a settings file");
  settings.write(("[Files]\r\nDatabasePath=Z:" + station.Folder().replace(u'/', u'\\').toUtf8() +
                  "\r\nExportPath=Z:\\tmp\r\n[Drives]\r\nZ=/\r\n"));
  settings.close();
  std::printf("%d blocks of %d, of %d item-spots\n", blocks, kSpotsOfABlock, spots);
  BenchMarks();
  BenchPlayout(station, "every file new");
  BenchPlayout(station, "nothing changed");
  return 0;
}
