// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <QStringList>
#include <QTemporaryDir>

#include <memory>

class QProcess;

namespace testing_support {

// A PostgreSQL server for tests: a new cluster in a temporary folder, reached through a socket there as the superuser
// "planner". Under root it runs as another user, because PostgreSQL refuses to run as root. It ends with this object,
// and with this process.
class Cluster {
 public:
  struct Settings {
    QStringList options{};  // further "name=value" settings of the server
    quint16 port = 5432;
    bool durable = false;       // with fsync, as in production
    QString copyOf{};           // a folder made by BackUpTo, instead of a new cluster
    QStringList accessRules{};  // lines before the rule that trusts the socket (pg_hba.conf)
    QList<QPair<QString, QString>> environment{};
  };

  // Whether the server's programs are installed.
  static bool IsInstalled();
  // The folder of the newest installed server programs.
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
  void Stop();   // immediately, as a crash: no buffer is written
  void Start();  // again
  bool IsRunning() const;

  // Runs any SQL as "planner", outside of the program; returns the first column of its rows. Throws std::runtime_error.
  QStringList Sql(const QString& statements) const;
  // Runs one of the server's programs as its user; throws std::runtime_error when it fails.
  void RunProgram(const QString& program, const QStringList& arguments) const;

  // Makes the server's user the owner of a file or folder.
  static void GiveTo(const QString& path);
  // The user that root becomes for the server.
  static void GiveUpRoot();

 private:
  void MakeData();
  QTemporaryDir folder_;
  Settings settings_;
  std::unique_ptr<QProcess> server_;
};

// A transaction of another program on the shared cluster, which keeps what its statements locked.
class OtherTransaction {
 public:
  explicit OtherTransaction(const QString& statements);
  ~OtherTransaction();
  OtherTransaction(const OtherTransaction&) = delete;
  OtherTransaction& operator=(const OtherTransaction&) = delete;

 private:
  class Connection;
  std::unique_ptr<Connection> connection_;
};

// The one cluster of this test program, started at the first call.
Cluster& SharedCluster();
void StopSharedCluster();
// Whether this run keeps its server databases on the shared cluster: SPOTROOSTER_TEST_SERVER is set.
bool OnServer();
// The path text of a database on the shared cluster, which is that schema.
QString ServerPath(const QString& schema);

}  // namespace testing_support
