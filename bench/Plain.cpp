// SPDX-License-Identifier: MIT
#include "bench/Plain.h"

#include "bench/Figures.h"

#include <QElapsedTimer>
#include <QFile>

#include <algorithm>
#include <cstdio>
#include <cstdlib>

namespace bench {

double Median(std::vector<double> figures) {
  std::sort(figures.begin(), figures.end());
  return figures[figures.size() / 2];
}

void Require(bool good, const char* what) {
  if (good) return;
  std::fprintf(stderr, "wrong: %s\n", what);
  std::exit(1);
}

Plain::Plain(const QString& path) {
  Require(sqlite3_open(QFile::encodeName(path).constData(), &connection_) == SQLITE_OK, "open");
  Run("PRAGMA journal_mode=DELETE");
  Run("PRAGMA synchronous=EXTRA");
}

Plain::~Plain() {
  sqlite3_close(connection_);
}

void Plain::Run(const QByteArray& statement) {
  const int answer = sqlite3_exec(connection_, statement.constData(), nullptr, nullptr, nullptr);
  Require(answer == SQLITE_OK, sqlite3_errmsg(connection_));
}

qint64 Plain::Number(const QByteArray& select) {
  sqlite3_stmt* prepared = nullptr;
  Require(sqlite3_prepare_v2(connection_, select.constData(), -1, &prepared, nullptr) == SQLITE_OK, select.constData());
  Require(sqlite3_step(prepared) == SQLITE_ROW, select.constData());
  const qint64 number = sqlite3_column_int64(prepared, 0);
  sqlite3_finalize(prepared);
  return number;
}

double MillisecondsOf(const std::function<void()>& work) {
  QElapsedTimer timer;
  timer.start();
  work();
  return static_cast<double>(timer.nsecsElapsed()) / 1e6;
}

void Sides::Print(const QByteArray& id, const char* what) const {
  const double ours = Median(ours_);
  const double beside = Median(beside_);
  std::printf("%s: %.1f ms, SQLite %.1f ms: ratio %.2f\n", what, ours, beside, ours / beside);
  ReportTimes(id.toStdString(), ours, "SQLite", beside);
}

}  // namespace bench
