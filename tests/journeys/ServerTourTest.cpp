// SPDX-License-Identifier: MIT
// The tour through the real windows, with the shared database on a server, for a user with a password.
#include "tests/support/Cluster.h"

#include <QDirIterator>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using testing_support::Cluster;

namespace {

const QString kPassword = u"Gr0en-Geheim-7"_s;
const QString kNewSpot = u"Nieuwe spot van de rondleiding"_s;

Cluster::Settings WithPassword() {
  Cluster::Settings settings;
  settings.accessRules = {u"local all els scram-sha-256"_s};
  return settings;
}

// The files below a folder, hidden ones too, that contain the text in one of the encodings that the program writes.
QStringList FilesWith(const QString& text, const QString& folder) {
  const QByteArray utf16(reinterpret_cast<const char*>(text.utf16()), text.size() * 2);
  QStringList found;
  for (QDirIterator files(folder, QDir::Files | QDir::Hidden, QDirIterator::Subdirectories); files.hasNext();) {
    QFile file(files.next());
    if (!file.open(QIODevice::ReadOnly)) ADD_FAILURE() << qPrintable(file.fileName());
    const QByteArray content = file.readAll();
    if (content.contains(text.toUtf8()) || content.contains(utf16)) found += file.fileName().mid(folder.size() + 1);
  }
  return found;
}

class ServerTour : public testing::Test {
 protected:
  ServerTour() {
    server_.Sql(u"CREATE ROLE els LOGIN SUPERUSER PASSWORD '%1'"_s.arg(kPassword));
    QFile passwords(secrets_.filePath(u"pgpass"_s));
    EXPECT_TRUE(passwords.open(QIODevice::WriteOnly));
    passwords.write("*:*:*:els:" + kPassword.toUtf8() + '\n');
    passwords.setPermissions(QFile::ReadOwner | QFile::WriteOwner);
  }

  QString Url() const { return u"postgresql://els@/postgres?host="_s + server_.SocketFolder(); }

  // Runs a program whose home folder, settings and temporary files are in folder_ too.
  void Run(const QString& program, const QStringList& arguments) {
    QProcess process;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    for (const char* name : {"HOME", "XDG_CONFIG_HOME", "XDG_CACHE_HOME", "XDG_DATA_HOME", "TMPDIR"})
      environment.insert(QString::fromLatin1(name), folder_.path());
    environment.insert(u"PGPASSFILE"_s, secrets_.filePath(u"pgpass"_s));
    environment.insert(u"SPOTROOSTER_TOUR_SERVER"_s, Url());
    process.setProcessEnvironment(environment);
    process.setProcessChannelMode(QProcess::MergedChannels);
    process.start(program, arguments);
    ASSERT_TRUE(process.waitForFinished(-1));
    const QByteArray output = process.readAll();
    EXPECT_EQ(process.exitCode(), 0) << output.toStdString();
    EXPECT_FALSE(output.contains(kPassword.toUtf8()));
  }

  const Cluster server_{WithPassword()};
  const QTemporaryDir secrets_;
  const QTemporaryDir folder_;
};

TEST_F(ServerTour, AWholeDayThroughTheRealWindows) {
  Run(QStringLiteral(SPOTROOSTER_TOUR), {folder_.path()});
  EXPECT_FALSE(QFile::exists(folder_.filePath(u"zender/server/OvalistoServer.mdb"_s)));
  // The day's online work is on the server.
  EXPECT_EQ(
      server_.Sql(u"SELECT \"Naam\" FROM \"OvalistoServer\".\"tblItemSpots\" WHERE \"Naam\"='%1'"_s.arg(kNewSpot)),
      QStringList(kNewSpot));
  const QString database = Url() + u"\\OvalistoServer.mdb";
  const QString tool = QStringLiteral(SPOTROOSTER_DB);
  Run(tool, {u"copy"_s, database, folder_.filePath(u"spiegel.mdb"_s)});
  Run(tool, {u"copy"_s, database, folder_.filePath(u"spiegel.mdb"_s), u"--refresh"_s});
  Run(tool, {u"create"_s, Url(), u"--station"_s, u"3"_s, u"--name"_s, u"Radio"_s});
  // The search finds what is there: the address, the name in the new database, but no password.
  EXPECT_EQ(FilesWith(u"postgresql://els@"_s, folder_.path()), QStringList(u"zender/ovalis.ini"_s));
  EXPECT_TRUE(FilesWith(kNewSpot, folder_.path()).contains(u"zender/data/OvalistoLocal.mdb"_s));
  EXPECT_EQ(FilesWith(kPassword, folder_.path()), QStringList());
}

}  // namespace
