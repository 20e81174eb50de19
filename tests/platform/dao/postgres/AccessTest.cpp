// SPDX-License-Identifier: MIT
// Authentication of users, and of the server by its certificate.
#include "tests/platform/dao/postgres/ServerScratch.h"

#include <QFile>
#include <QProcess>
#include <QStandardPaths>

#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

using namespace Qt::StringLiterals;
using namespace scratch;
using testing_support::Cluster;

namespace {

quint16 FreePort() {
  const int listener = ::socket(AF_INET, SOCK_STREAM, 0);
  sockaddr_in address{};
  address.sin_family = AF_INET;
  address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
  socklen_t size = sizeof address;
  EXPECT_EQ(::bind(listener, reinterpret_cast<sockaddr*>(&address), size), 0);
  EXPECT_EQ(::getsockname(listener, reinterpret_cast<sockaddr*>(&address), &size), 0);
  ::close(listener);
  return ntohs(address.sin_port);
}

class Access : public testing::Test {
 protected:
  ~Access() override {
    qunsetenv("PGPASSFILE");
    dao::CloseKeptConnections();
  }

  // Creates a self-signed certificate for `host` with its key.
  QString Certificate(const QString& name, const QString& host) const {
    QString path = folder_.filePath(name);
    QProcess openssl;
    openssl.start(u"openssl"_s, {u"req"_s, u"-x509"_s, u"-newkey"_s, u"rsa:2048"_s, u"-nodes"_s, u"-days"_s, u"2"_s,
                                 u"-subj"_s, u"/CN="_s + host, u"-addext"_s, u"subjectAltName=DNS:"_s + host,
                                 u"-keyout"_s, path + u".key", u"-out"_s, path + u".crt"});
    EXPECT_TRUE(openssl.waitForFinished() && openssl.exitCode() == 0);
    QFile::setPermissions(path + u".key"_s, QFile::ReadOwner);
    return path;
  }

  static bool HasOpenssl() { return !QStandardPaths::findExecutable(u"openssl"_s).isEmpty(); }

  QString OpenError(const QString& url) const {
    return ErrorOf([&] { dao::OpenDatabase(url + u"\\Zender.mdb"_s); });
  }

  QTemporaryDir folder_;
};

TEST_F(Access, OnlyTheServerOfTheCertificateIsAccepted) {
  if (!HasOpenssl()) GTEST_SKIP() << "openssl is not installed";
  const QString right = Certificate(u"right"_s, u"localhost"_s);
  const QString other = Certificate(u"other"_s, u"localhost"_s);
  const QString elsewhere = Certificate(u"elsewhere"_s, u"db.radio.example"_s);
  const quint16 port = FreePort();
  for (const QString& certificate : {right, elsewhere}) {
    Cluster::Settings settings;
    settings.port = port;
    settings.options = {u"listen_addresses=127.0.0.1"_s, u"ssl=on"_s, u"ssl_cert_file="_s + certificate + u".crt",
                        u"ssl_key_file="_s + certificate + u".key"};
    settings.accessRules = {u"hostssl all all 127.0.0.1/32 trust"_s};
    const Cluster cluster([&] {
      Cluster::GiveTo(folder_.path());
      Cluster::GiveTo(certificate + u".key"_s);
      return settings;
    }());
    const QString url =
        u"postgresql://planner@localhost:%1/postgres?hostaddr=127.0.0.1&sslmode=verify-full&sslrootcert="_s.arg(port);
    if (certificate == right) {
      dao::CreateDatabase(url + right + u".crt\\Zender.mdb"_s);
      EXPECT_EQ(OpenError(url + right + u".crt"_s), QString());
      dao::CloseKeptConnections();
      const QString error = OpenError(url + other + u".crt"_s);  // not the certificate of this server
      EXPECT_TRUE(error.contains(u"niet veilig"_s)) << qPrintable(error);
    } else {
      const QString error = OpenError(url + elsewhere + u".crt"_s);  // a certificate for another host name
      EXPECT_TRUE(error.contains(u"niet veilig"_s)) << qPrintable(error);
    }
  }
}

TEST_F(Access, AServerWithoutTlsIsRefusedWhenRequired) {
  Cluster::Settings settings;
  settings.port = FreePort();
  settings.options = {u"listen_addresses=127.0.0.1"_s};
  settings.accessRules = {u"host all all 127.0.0.1/32 trust"_s};
  const Cluster cluster(settings);
  const QString error =
      OpenError(u"postgresql://planner@localhost:%1/postgres?sslmode=verify-full"_s.arg(settings.port));
  EXPECT_TRUE(error.contains(u"niet veilig"_s)) << qPrintable(error);
}

TEST_F(Access, PasswordsComeOnlyFromThePasswordFile) {
  Cluster::Settings settings;
  settings.accessRules = {u"local all els scram-sha-256"_s, u"local all niemand reject"_s};
  const Cluster cluster(settings);
  cluster.Sql(u"CREATE ROLE els LOGIN SUPERUSER PASSWORD 'wachtwoord van els'"_s);
  const QString url = u"postgresql://els@/postgres?host="_s + cluster.SocketFolder();
  const QString file = folder_.filePath(u"pgpass"_s);
  qputenv("PGPASSFILE", QFile::encodeName(file));
  EXPECT_TRUE(OpenError(url).contains(u"vraagt een wachtwoord"_s)) << qPrintable(OpenError(url));
  const auto write = [&](const QByteArray& password) {
    QFile passwords(file);
    ASSERT_TRUE(passwords.open(QIODevice::WriteOnly));
    passwords.write("*:*:*:els:" + password + "\n");
    passwords.setPermissions(QFile::ReadOwner | QFile::WriteOwner);
  };
  write("verkeerd");
  EXPECT_TRUE(OpenError(url).contains(u"weigert het wachtwoord"_s)) << qPrintable(OpenError(url));
  write("wachtwoord van els");
  dao::CreateDatabase(url + u"\\Zender.mdb"_s);
  EXPECT_EQ(OpenError(url), QString());
  EXPECT_TRUE(OpenError(u"postgresql://niemand@/postgres?host="_s + cluster.SocketFolder()).contains(u"niet toe"_s));
}

TEST_F(Access, TheGrantsLetPlannersChangeRowsButNoTables) {
  const Cluster cluster;
  const QString path = cluster.Url() + u"\\OvalistoServer3.mdb"_s;
  dao::CreateDatabase(path);
  for (const QString& table : {u"tblItems"_s, u"tblItemSpots"_s, u"tblItemPingles"_s, u"tblItemsItemSpots"_s})
    dao::OpenDatabase(path).CreateTable(Spots(table));
  const QString script = folder_.filePath(u"rechten.sql"_s);
  ASSERT_TRUE(QFile::copy(QStringLiteral(SPOTROOSTER_SOURCE "/packaging/databaseserver-rechten.sql"), script));
  Cluster::GiveTo(folder_.path());
  Cluster::GiveTo(script);
  for (int time = 0; time < 2; ++time) {
    cluster.RunProgram(u"psql"_s, {u"-d"_s, cluster.Url(), u"-v"_s, u"schema=OvalistoServer3"_s, u"-f"_s, script});
  }
  cluster.Sql(
      u"CREATE ROLE els LOGIN IN ROLE spotrooster_planner; CREATE ROLE rapporten LOGIN IN ROLE spotrooster_lezer"_s);
  const auto pathOf = [&](const QString& user) {
    return u"postgresql://%1@/postgres?host=%2\\OvalistoServer3.mdb"_s.arg(user, cluster.SocketFolder());
  };
  dao::Database planner = dao::OpenDatabase(pathOf(u"els"_s));
  EXPECT_EQ(ExecuteError(planner, u"INSERT INTO tblItems (ID, Naam) VALUES (1, \"a\")"_s), QString());
  EXPECT_EQ(ExecuteError(planner, u"UPDATE tblItems SET Naam = \"b\" WHERE ID = 1"_s), QString());
  EXPECT_EQ(ExecuteError(planner, u"DELETE FROM tblItems"_s), QString());
  EXPECT_TRUE(ErrorOf([&] { planner.CreateTable(Spots(u"tblNieuw"_s)); }).contains(u"geen rechten"_s));
  dao::Database reader = dao::OpenDatabase(pathOf(u"rapporten"_s));
  EXPECT_EQ(Rows(reader, u"SELECT * FROM tblItems"_s), QStringList());
  EXPECT_TRUE(ExecuteError(reader, u"DELETE FROM tblItems"_s).contains(u"geen rechten"_s));
}

}  // namespace
