// SPDX-License-Identifier: MIT
// Finding as you type among 100 000 item-spots: from the key press to the list with the matching rows, compared with an
// SQLite query that finds the same rows by LIKE. Elapsed time, each key once a round. usage: FindBench [ROWS]
#include "bench/Figures.h"
#include "bench/Plain.h"
#include "bench/SpotStation.h"
#include "catalogue/frmItemSpots.h"
#include "platform/controls/ListBox.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <vector>

using namespace Qt::StringLiterals;
using bench::Require;

namespace {

constexpr int kRounds = 5;
constexpr double kMsPerNs = 1e-6;

// What a planner types: words of names, digits, and text without a match.
const QStringList& Words() {
  static const QStringList words{u"bakkerij"_s, u"tuincentrum van damme 7"_s, u"99"_s, u"café"_s, u"damme 4242"_s,
                                 u"xyz"_s};
  return words;
}

struct Times {
  std::vector<double> keys;   // ms
  std::vector<double> likes;  // ms

  static double At(std::vector<double> times, double share) {
    std::sort(times.begin(), times.end());
    return times[static_cast<std::size_t>(share * static_cast<double>(times.size() - 1))];
  }
};

// The rows whose name contains the text, converted to texts and numbers as in the list.
int RowsLike(sqlite3_stmt* select, const QString& text) {
  const QByteArray pattern = u"%%1%"_s.arg(text).toUtf8();
  sqlite3_bind_text(select, 1, pattern.constData(), static_cast<int>(pattern.size()), SQLITE_TRANSIENT);
  std::vector<controls::ListBox::Line> lines;
  while (sqlite3_step(select) == SQLITE_ROW) {
    lines.push_back({QString::fromUtf8(reinterpret_cast<const char*>(sqlite3_column_text(select, 1))),
                     sqlite3_column_int64(select, 0)});
  }
  sqlite3_reset(select);
  return static_cast<int>(lines.size());
}

void Press(QWidget& field, int key, const QString& text) {
  QKeyEvent press(QEvent::KeyPress, key, Qt::NoModifier, text);
  QCoreApplication::sendEvent(&field, &press);
  QCoreApplication::sendPostedEvents();  // also repaints the list
}

class Finding {
 public:
  Finding(frmItemSpots& form, sqlite3_stmt* select)
      : search_(*form.findChild<QLineEdit*>(u"txtZoek"_s)),
        list_(*form.findChild<controls::ListBox*>(u"lstOverzicht"_s)),
        select_(select) {}

  void Type(const QString& word) {
    search_.clear();
    for (const QChar letter : word) {
      QElapsedTimer timer;
      timer.start();
      Press(search_, 0, letter);
      times_.keys.push_back(static_cast<double>(timer.nsecsElapsed()) * kMsPerNs);
      timer.restart();
      const int like = RowsLike(select_, search_.text().trimmed());
      times_.likes.push_back(static_cast<double>(timer.nsecsElapsed()) * kMsPerNs);
      Require(list_.ShownCount() == like, "the list and LIKE find the same number of rows");
    }
  }

  void Print() const {
    for (const auto& [what, share] : {std::pair{"median", 0.5}, {"95th percentile", 0.95}, {"worst", 1.0}}) {
      const double key = Times::At(times_.keys, share);
      const double like = Times::At(times_.likes, share);
      std::printf("%-16s key to list %7.2f ms   LIKE %7.2f ms   ratio %5.2f\n", what, key, like, key / like);
      bench::ReportTimes(std::string("find-") + what, key, "LIKE", like);
    }
  }

 private:
  QLineEdit& search_;
  controls::ListBox& list_;
  sqlite3_stmt* select_;
  Times times_;
};

// Waits for all marks so that only the keys are measured: the count line shows the total length once all rows are read,
// and the file checks finish soon after.
void LetMarksSettle(const QWidget& form) {
  constexpr int kSettleMs = 3000;
  const auto* count = form.findChild<QLabel*>(u"lblAantal"_s);
  while (!count->text().contains(u"samen"_s))
    QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
  QElapsedTimer timer;
  timer.start();
  while (!timer.hasExpired(kSettleMs))
    QCoreApplication::processEvents(QEventLoop::AllEvents, kSettleMs);
}

}  // namespace

int main(int argc, char** argv) {
  qputenv("QT_QPA_PLATFORM", "offscreen");
  const QApplication application(argc, argv);
  const int rows = argc > 1 ? std::max(1, std::atoi(argv[1])) : 100000;
  const bench::SpotStation station(rows);
  bench::Plain plain(station.File(u"plain.sqlite"_s));
  plain.Run("CREATE TABLE spots (ID INTEGER PRIMARY KEY, Naam TEXT COLLATE NOCASE)");
  plain.Run("BEGIN");
  for (const auto& spot : station.Spots())
    plain.Run(u"INSERT INTO spots VALUES (%1, '%2')"_s.arg(QString::number(spot.itemData), spot.text).toUtf8());
  plain.Run("COMMIT");
  sqlite3_stmt* select = nullptr;
  sqlite3_prepare_v2(plain.Connection(), "SELECT ID, Naam FROM spots WHERE Naam LIKE ? ORDER BY Naam", -1, &select,
                     nullptr);
  frmItemSpots form(nullptr);
  form.Form_Load();
  form.show();
  LetMarksSettle(form);
  Finding finding(form, select);
  for (int round = 0; round < kRounds; ++round) {
    for (const QString& word : Words())
      finding.Type(word);
  }
  std::printf("%d item-spots, %d rounds\n", rows, kRounds);
  finding.Print();
  sqlite3_finalize(select);
  return 0;
}
