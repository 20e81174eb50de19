// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QString>

#include <sqlite3.h>

#include <functional>
#include <vector>

namespace bench {

// Ends the program when the measured work was done wrongly.
void Require(bool good, const char* what);

// The median; of at least one.
double Median(std::vector<double> figures);

// An SQLite file with the same durability: rollback journal, synchronous=EXTRA, which syncs the folder too.
class Plain {
 public:
  explicit Plain(const QString& path);
  ~Plain();
  Plain(const Plain&) = delete;
  Plain& operator=(const Plain&) = delete;

  void Run(const QByteArray& statement);
  qint64 Number(const QByteArray& select);
  sqlite3* Connection() { return connection_; }

 private:
  sqlite3* connection_ = nullptr;
};

// Elapsed time.
double MillisecondsOf(const std::function<void()>& work);

// Times of the same work done by us and by another program, alternating: other load on the machine then affects both.
class Sides {
 public:
  explicit Sides(int rounds) { ours_.reserve(static_cast<std::size_t>(rounds)); }

  void Ours(const std::function<void()>& work) { ours_.push_back(MillisecondsOf(work)); }
  void Beside(const std::function<void()>& work) { beside_.push_back(MillisecondsOf(work)); }
  // Prints the medians of both and their ratio, and reports them as the row `id`.
  void Print(const QByteArray& id, const char* what) const;

 private:
  std::vector<double> ours_;
  std::vector<double> beside_;
};

}  // namespace bench
