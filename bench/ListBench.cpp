// SPDX-License-Identifier: MIT
// The item-spot list with many records: the time to open it, to refill it and to search in it, compared with SQLite's
// time for the same query over the same rows; the longest freeze of the window while marks arrive; and the time to
// refresh the local copy on closing.
#include "bench/Figures.h"
#include "bench/SpotStation.h"
#include "catalogue/frmItemSpots.h"
#include "data/Globals.h"
#include "data/Writes.h"
#include "platform/controls/ListBox.h"
#include "platform/runtime/Clock.h"

#include <QApplication>
#include <QCheckBox>
#include <QElapsedTimer>
#include <QLineEdit>
#include <QPushButton>

#include <sqlite3.h>

#include <algorithm>
#include <cstdio>
#include <ctime>
#include <functional>
#include <vector>

using namespace Qt::StringLiterals;

namespace {

constexpr int kRuns = 5;

// Processor time of the user-interface thread, so that other programs do not count.
double ThreadMs() {
  timespec time{};
  clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
  return static_cast<double>(time.tv_sec) * 1e3 + static_cast<double>(time.tv_nsec) / 1e6;
}

double MedianMs(const std::function<void()>& work) {
  std::vector<double> times;
  for (int run = 0; run < kRuns; ++run) {
    const double start = ThreadMs();
    work();
    times.push_back(ThreadMs() - start);
  }
  std::sort(times.begin(), times.end());
  return times[kRuns / 2];
}

class PlainSqlite {
 public:
  explicit PlainSqlite(const QString& path) {
    sqlite3_open(path.toUtf8().constData(), &database_);
    Run("CREATE TABLE tblItemSpots (ID INTEGER PRIMARY KEY, Path TEXT, Naam TEXT COLLATE NOCASE, LengteSec INTEGER, "
        "StartDatum REAL, StartUur INTEGER, EindDatum REAL, EindUur INTEGER, AantalGedraaid INTEGER, Aktief INTEGER)");
  }
  ~PlainSqlite() { sqlite3_close(database_); }
  PlainSqlite(const PlainSqlite&) = delete;
  PlainSqlite& operator=(const PlainSqlite&) = delete;

  void Run(const char* sql) { sqlite3_exec(database_, sql, nullptr, nullptr, nullptr); }

  void Fill(const std::vector<controls::ListBox::Line>& rows) {
    Run("BEGIN");
    sqlite3_stmt* insert = nullptr;
    sqlite3_prepare_v2(database_, "INSERT INTO tblItemSpots VALUES (?,'Z:\\a.wav',?,30,45658,0,73050,23,0,1)", -1,
                       &insert, nullptr);
    for (const auto& row : rows) {
      const QByteArray name = row.text.toUtf8();
      sqlite3_bind_int64(insert, 1, row.itemData);
      sqlite3_bind_text(insert, 2, name.constData(), static_cast<int>(name.size()), SQLITE_TRANSIENT);
      sqlite3_step(insert);
      sqlite3_reset(insert);
    }
    sqlite3_finalize(insert);
    Run("COMMIT");
  }

  // The list's own query, every row converted to texts and numbers.
  std::size_t Query() {
    std::vector<controls::ListBox::Line> lines;
    sqlite3_stmt* select = nullptr;
    sqlite3_prepare_v2(database_, "SELECT ID, Naam FROM tblItemSpots WHERE Aktief = 1 ORDER BY Naam", -1, &select,
                       nullptr);
    while (sqlite3_step(select) == SQLITE_ROW) {
      lines.push_back({QString::fromUtf8(reinterpret_cast<const char*>(sqlite3_column_text(select, 1))),
                       sqlite3_column_int64(select, 0)});
    }
    sqlite3_finalize(select);
    return lines.size();
  }

 private:
  sqlite3* database_ = nullptr;
};

void Print(const char* what, double ms, double plainMs, const char* id = nullptr) {
  std::printf("%-46s %8.1f ms", what, ms);
  if (plainMs > 0) std::printf("   %5.2f x SQLite", ms / plainMs);
  std::printf("\n");
  if (id == nullptr) return;
  if (plainMs > 0)
    bench::ReportTimes(id, ms, "SQLite", plainMs);
  else
    bench::Report(id, bench::Milliseconds(ms));
}

// The longest freeze of the window while marks are read and drawn, after the first paint; and the elapsed time until
// the last mark is shown.
void BenchMarks(frmItemSpots& form) {
  const auto& list = *form.findChild<controls::ListBox*>(u"lstOverzicht"_s);
  int marked = 0;  // lines that have their mark, from the first on
  const auto areThere = [&] {
    while (marked < list.ListCount() && list.Details(marked).mark != controls::LineMark::None)
      ++marked;
    return marked == list.ListCount();
  };
  form.Form_Load();
  form.grab();
  QElapsedTimer all;
  all.start();
  double longest = 0;
  do {
    const double start = ThreadMs();
    QCoreApplication::processEvents();  // does not wait
    longest = std::max(longest, ThreadMs() - start);
  } while (!areThere());
  Print("marks: longest turn of the event loop", longest, 0, "list-longest-turn");
  Print("marks: until all stand", static_cast<double>(all.elapsed()), 0, "list-marks");
}

void BenchList(PlainSqlite& plain) {
  const double plainMs = MedianMs([&] { plain.Query(); });
  Print("SQLite alone: the list's query", plainMs, 0);
  frmItemSpots form(nullptr);
  form.show();
  Print("open: fill and first picture", MedianMs([&] {
          form.Form_Load();
          form.grab();
        }),
        plainMs, "list-open");
  auto* inactive = form.findChild<QCheckBox*>(u"chkNietAktieve"_s);
  Print("refill by a check box", MedianMs([&] { inactive->toggle(); }), plainMs, "list-filter");
  BenchMarks(form);
  auto* search = form.findChild<QLineEdit*>(u"txtZoek"_s);
  for (const QString& text : {u"b"_s, u"bakkerij"_s, u"99"_s, u"zzz"_s, QString()}) {
    const double ms = MedianMs([&] {
      search->setText(u"fiets"_s);
      search->setText(text);
      form.grab();
    });
    Print(("search '" + text.toStdString() + "' and picture (two keystrokes)").c_str(), ms, 0);
  }
  auto* list = form.findChild<controls::ListBox*>(u"lstOverzicht"_s);
  Print("select the last line by its ID", MedianMs([&] {
          list->SelectWhereItemData(list->ItemData(list->ListCount() - 1));
          list->SetListIndex(0);
        }),
        0);
  QElapsedTimer timer;
  timer.start();
  TransItemSpotsToLocal(global.serverDatabasePath, global.localDatabasePath);
  Print("copy the server's table, by the clock", static_cast<double>(timer.restart()), 0);
  DeleteAllInTable(u"tblCopie_ItemSpots"_s, global.localDatabasePath);
  Print("empty the full copy, by the clock", static_cast<double>(timer.restart()), 0);
  TransItemSpotsToLocal(global.serverDatabasePath, global.localDatabasePath);
  timer.restart();
  form.findChild<QPushButton*>(u"cmdSluiten"_s)->click();
  Print("close: keep, empty and copy, by the clock", static_cast<double>(timer.elapsed()), 0, "list-close");
}

}  // namespace

int main(int argc, char** argv) {
  runtime::KeepTimeZone();
  qputenv("QT_QPA_PLATFORM", "offscreen");
  const QApplication application(argc, argv);
  const int rows = argc > 1 ? std::max(1, std::atoi(argv[1])) : 50000;
  const bench::SpotStation station(rows);
  PlainSqlite plain(station.File(u"plain.sqlite"_s));
  plain.Fill(station.Spots());
  std::printf("%d item-spots, median of %d runs\n", rows, kRuns);
  BenchList(plain);
  return 0;
}
