// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <QStringList>
#include <QTemporaryDir>

#include <memory>

class QProcess;

namespace testing_support {

// A PostgreSQL server of the tests' own: a new cluster in a temporary folder, reached through a socket there, as the
// user "planner" who may do everything. Root gives its rights up for it, because the server refuses them. It ends with
// this object, and with this process.
class Cluster {
 public:
  struct Settings {
    QStringList options{};  // further "name=value" settings of the server
    quint16 port = 5432;
    bool durable = false;       // with fsync, as a station has it
    QString copyOf{};           // a folder made by BackUpTo, instead of a new cluster
    QStringList accessRules{};  // lines before the rule that trusts the socket (pg_hba.conf)
    QList<QPair<QString, QString>> environment{};
  };

  // Whether the server's programs are installed.
  static bool IsInstalled();
  // The folder of the server's programs, the newest there is.
  static QString ProgramFolder();

  Cluster() : Cluster(Settings()) {}
  explicit Cluster(const Settings& settings);
  ~Cluster();
  Cluster(const Cluster&) = delete;
  Cluster& operator=(const Cluster&) = delete;

  // Folder of the socket.
  QString SocketFolder() const { return folder_.path(); }
  QString DataFolder() const { return folder_.path() + QStringLiteral("/data"); }
  // "postgresql://planner@/postgres?host=...", without a schema. `options` are added ("&connect_timeout=2").
  QString Url(const QString& options = {}) const;

  void Kill();   // with -9
  void Stop();   // at once, as a crash: no buffer is written
  void Start();  // again
  bool IsRunning() const;

  // Any SQL, as "planner", outside of the program; the first column of its rows. Throws std::runtime_error.
  QStringList Sql(const QString& statements) const;
  // Runs one of the server's programs as its user; throws std::runtime_error when it fails.
  void RunProgram(const QString& program, const QStringList& arguments) const;

  // Gives a file or folder to the user of the server.
  static void GiveTo(const QString& path);
  // Whom root becomes for the server.
  static void GiveUpRoot();

 private:
  void MakeData();
  QTemporaryDir folder_;
  Settings settings_;
  std::unique_ptr<QProcess> server_;
};

// The one cluster of this test program, started by the first that asks for it.
Cluster& SharedCluster();
void StopSharedCluster();
// Whether this run keeps its server databases there: SPOTROOSTER_TEST_SERVER is set.
bool OnServer();
// A path on the shared cluster: the database that is that schema.
QString ServerPath(const QString& schema);

}  // namespace testing_support
