// SPDX-License-Identifier: MIT
#include "tests/support/Cluster.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <QStandardPaths>
#include <QThread>

#include <libpq-fe.h>
#include <pwd.h>
#include <sys/prctl.h>
#include <unistd.h>

#include <csignal>
#include <stdexcept>

using namespace Qt::StringLiterals;

namespace testing_support {
namespace {

constexpr int kLooks = 3000;
constexpr int kBetweenLooks = 5;  // milliseconds
constexpr int kLongestRun = 60'000;

struct ServerUser {
  uid_t user = getuid();
  gid_t group = getgid();
};

ServerUser UserOfServer() {
  if (getuid() != 0) return {};
  for (const char* name : {"postgres", "nobody"}) {
    if (const passwd* user = getpwnam(name)) return {user->pw_uid, user->pw_gid};
  }
  return {65534, 65534};
}

[[noreturn]] void Fail(const QString& what) {
  throw std::runtime_error(what.toStdString());
}

void RunAsServer(const QString& program, const QStringList& arguments) {
  QProcess process;
  process.setProcessChannelMode(QProcess::MergedChannels);
  process.setChildProcessModifier([] { Cluster::GiveUpRoot(); });
  process.setWorkingDirectory(u"/"_s);
  process.start(Cluster::ProgramFolder() + u'/' + program, arguments);
  if (!process.waitForFinished(kLongestRun) || process.exitCode() != 0) {
    Fail(program + u": " + QString::fromUtf8(process.readAll()));
  }
}

}  // namespace

// A connection of the test itself.
class Session {
 public:
  explicit Session(const QString& url) : connection_(PQconnectdb(url.toUtf8().constData()), PQfinish) {
    PQsetNoticeProcessor(
        connection_.get(), [](void*, const char*) {}, nullptr);
  }

  std::unique_ptr<PGresult, decltype(&PQclear)> Run(const QString& statements) const {
    std::unique_ptr<PGresult, decltype(&PQclear)> result(PQexec(connection_.get(), statements.toUtf8().constData()),
                                                         PQclear);
    const ExecStatusType status = PQresultStatus(result.get());
    if (status != PGRES_COMMAND_OK && status != PGRES_TUPLES_OK)
      Fail(QString::fromUtf8(PQerrorMessage(connection_.get())));
    return result;
  }

 private:
  std::unique_ptr<PGconn, decltype(&PQfinish)> connection_;
};

QString Cluster::ProgramFolder() {
  QDir versions(u"/usr/lib/postgresql"_s);
  int newest = 0;
  for (const QString& version : versions.entryList(QDir::Dirs | QDir::NoDotAndDotDot)) {
    if (QFileInfo::exists(versions.filePath(version) + u"/bin/initdb"_s)) newest = std::max(newest, version.toInt());
  }
  if (newest > 0) return versions.filePath(QString::number(newest)) + u"/bin"_s;
  return QFileInfo(QStandardPaths::findExecutable(u"initdb"_s)).path();
}

bool Cluster::IsInstalled() {
  return QFileInfo::exists(ProgramFolder() + u"/initdb"_s);
}

void Cluster::GiveUpRoot() {
  const ServerUser server = UserOfServer();
  if (getuid() == 0 && (setgid(server.group) != 0 || setuid(server.user) != 0)) _exit(127);
}

Cluster::Cluster(const Settings& settings) : settings_(settings) {
  if (!folder_.isValid()) Fail(u"no temporary folder"_s);
  GiveTo(folder_.path());
  MakeData();
  Start();
}

Cluster::~Cluster() {
  Stop();
}

void Cluster::GiveTo(const QString& path) {
  const ServerUser server = UserOfServer();
  if (getuid() == 0 && chown(QFile::encodeName(path).constData(), server.user, server.group) != 0) Fail(path);
}

void Cluster::MakeData() {
  if (settings_.copyOf.isEmpty()) {
    RunAsServer(u"initdb"_s, {u"--no-sync"_s, u"-U"_s, u"planner"_s, u"-A"_s, u"trust"_s, u"-E"_s, u"UTF8"_s,
                              u"--locale=C"_s, u"-D"_s, DataFolder()});
  } else if (!QDir().rename(settings_.copyOf, DataFolder())) {
    Fail(u"cannot take "_s + settings_.copyOf);
  }
  if (settings_.accessRules.isEmpty()) return;
  QFile rules(DataFolder() + u"/pg_hba.conf"_s);
  if (!rules.open(QIODevice::WriteOnly)) Fail(rules.fileName());
  rules.write((settings_.accessRules.join(u'\n') + u"\nlocal all all trust\nlocal replication all trust\n"_s).toUtf8());
}

void Cluster::Start() {
  QStringList arguments = {u"-D"_s, DataFolder(), u"-k"_s, SocketFolder(), u"-p"_s, QString::number(settings_.port)};
  QStringList options = {u"listen_addresses="_s, u"shared_buffers=16MB"_s, u"max_connections=130"_s,
                         u"logging_collector=off"_s,
                         // A killed server leaves its shared memory in its own folder.
                         u"dynamic_shared_memory_type=mmap"_s};
  if (!settings_.durable) options += {u"fsync=off"_s, u"full_page_writes=off"_s, u"synchronous_commit=off"_s};
  for (const QString& option : options + settings_.options)
    arguments += {u"-c"_s, option};
  server_ = std::make_unique<QProcess>();
  server_->setStandardErrorFile(folder_.filePath(u"log"_s), QIODevice::Append);
  server_->setStandardOutputFile(QProcess::nullDevice());
  server_->setWorkingDirectory(u"/"_s);
  QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
  for (const auto& [name, value] : settings_.environment)
    environment.insert(name, value);
  server_->setProcessEnvironment(environment);
  server_->setChildProcessModifier([] {
    GiveUpRoot();
    prctl(PR_SET_PDEATHSIG, SIGQUIT);  // giving up root clears it
  });
  server_->start(ProgramFolder() + u"/postgres"_s, arguments);
  server_->waitForStarted();
  const QByteArray where = Url().toUtf8();
  for (int look = 0; look < kLooks; ++look) {
    if (PQping(where.constData()) == PQPING_OK) return;
    if (server_->state() == QProcess::NotRunning) break;
    QThread::msleep(kBetweenLooks);
  }
  QFile log(folder_.filePath(u"log"_s));
  static_cast<void>(log.open(QIODevice::ReadOnly));
  Fail(u"the server does not start: "_s + QString::fromUtf8(log.readAll()));
}

void Cluster::Kill() {
  server_->kill();
  server_->waitForFinished(kLongestRun);
  server_.reset();
}

void Cluster::Stop() {
  if (!IsRunning()) return;
  ::kill(static_cast<pid_t>(server_->processId()), SIGQUIT);
  if (!server_->waitForFinished(kLongestRun)) server_->kill();
  server_.reset();
}

bool Cluster::IsRunning() const {
  return server_ && server_->state() == QProcess::Running;
}

QString Cluster::Url(const QString& options) const {
  const QString port = settings_.port == 5432 ? QString() : u"&port=%1"_s.arg(settings_.port);
  return u"postgresql://planner@/postgres?host="_s + SocketFolder() + port + options;
}

QStringList Cluster::Sql(const QString& statements) const {
  const Session session(Url());
  const auto result = session.Run(statements);
  QStringList values;
  for (int row = 0; row < PQntuples(result.get()); ++row)
    values += QString::fromUtf8(PQgetvalue(result.get(), row, 0));
  return values;
}

void Cluster::RunProgram(const QString& program, const QStringList& arguments) const {
  RunAsServer(program, arguments);
}

namespace {

std::unique_ptr<Cluster>& Shared() {
  static std::unique_ptr<Cluster> cluster;
  return cluster;
}

}  // namespace

class OtherTransaction::Connection : public Session {
 public:
  Connection() : Session(SharedCluster().Url()) {}
};

OtherTransaction::OtherTransaction(const QString& statements) : connection_(std::make_unique<Connection>()) {
  connection_->Run(u"BEGIN;"_s + statements);
}

OtherTransaction::~OtherTransaction() = default;

Cluster& SharedCluster() {
  if (!Shared()) Shared() = std::make_unique<Cluster>();
  return *Shared();
}

void StopSharedCluster() {
  Shared().reset();
}

bool OnServer() {
  static const bool onServer = !qEnvironmentVariableIsEmpty("SPOTROOSTER_TEST_SERVER");
  return onServer;
}

QString ServerPath(const QString& schema) {
  return SharedCluster().Url() + u'\\' + schema + u".mdb"_s;
}

}  // namespace testing_support
