// SPDX-License-Identifier: MIT
// Addresses of databases on a server; needs no server.
#include "platform/dao/postgres/ServerAddress.h"

#include "tests/platform/dao/Scratch.h"

#include <QMap>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using dao::ServerAddress;

namespace {

QMap<QByteArray, QByteArray> ParametersOf(const ServerAddress& address, qsizetype host = 0) {
  QMap<QByteArray, QByteArray> parameters;
  for (const auto& [keyword, value] : address.Ways()[host])
    parameters.insert(keyword, value);
  return parameters;
}

QString AddressError(const QString& path) {
  return scratch::ErrorOf([&] { const ServerAddress address(path); });
}

TEST(ServerAddresses, OnlyPostgresUrlsAreServers) {
  for (const QString& path : {u"postgresql://db/x"_s, u"postgres://db/x"_s, u"PostgreSQL://db/x\\s.mdb"_s})
    EXPECT_TRUE(dao::IsServerPath(path)) << qPrintable(path);
  for (const QString& path : {u"D:\\postgres\\x.mdb"_s, u"\\\\postgresql\\x.mdb"_s, u"mysql://db/x"_s, QString()})
    EXPECT_FALSE(dao::IsServerPath(path)) << qPrintable(path);
}

TEST(ServerAddresses, TheSchemaIsTheFileNameAfterTheUrl) {
  const ServerAddress address(u"postgresql://els@db.radio.example:5433/stations\\OvalistoServer3.mdb"_s);
  EXPECT_EQ(address.Url(), u"postgresql://els@db.radio.example:5433/stations"_s);
  EXPECT_EQ(address.Schema(), u"OvalistoServer3"_s);
  EXPECT_EQ(address.PathText(), u"postgresql://els@db.radio.example:5433/stations\\OvalistoServer3.mdb"_s);
  EXPECT_EQ(ServerAddress(u"postgresql://localhost/x\\\\S.MDB"_s).Schema(), u"S"_s);
  EXPECT_EQ(ServerAddress(u"postgresql://localhost/x\\\\S.MDB"_s).Url(), u"postgresql://localhost/x"_s);
  EXPECT_EQ(ServerAddress(u"postgresql://localhost/x\\zonder"_s).Schema(), u"zonder"_s);
}

TEST(ServerAddresses, PartsOfTheUrlArePassedOn) {
  const auto parameters = ParametersOf(ServerAddress(u"postgresql://els@db:5433/stations?connect_timeout=3\\s.mdb"_s));
  EXPECT_EQ(parameters["host"], "db");
  EXPECT_EQ(parameters["port"], "5433");
  EXPECT_EQ(parameters["user"], "els");
  EXPECT_EQ(parameters["dbname"], "stations");
  EXPECT_EQ(parameters["connect_timeout"], "3");
  EXPECT_EQ(parameters["client_encoding"], "UTF8");
  EXPECT_TRUE(parameters["application_name"].contains(' ') || !parameters["application_name"].isEmpty());
}

TEST(ServerAddresses, LocalServersNeedNoCertificate) {
  for (const QString& host : {u"localhost"_s, u"127.0.0.1"_s, u"127.1.2.3"_s, u"[::1]"_s, u""_s}) {
    const ServerAddress address(
        u"postgresql://%1/x%2\\s.mdb"_s.arg(host, host.isEmpty() ? u"?host=/tmp"_s : QString()));
    EXPECT_FALSE(ParametersOf(address).contains("sslmode")) << qPrintable(host);
  }
  EXPECT_FALSE(ParametersOf(ServerAddress(u"postgresql://db/x?hostaddr=127.0.0.1\\s.mdb"_s)).contains("sslmode"));
}

TEST(ServerAddresses, RemoteServersNeedAVerifiedCertificate) {
  for (const QString& url :
       {u"postgresql://db/x"_s, u"postgresql://10.0.0.7/x"_s, u"postgresql://localhost/x?hostaddr=10.0.0.7"_s,
        u"postgresql://db/x?sslmode=verify-full"_s})
    EXPECT_EQ(ParametersOf(ServerAddress(url + u"\\s.mdb"_s))["sslmode"], "verify-full") << qPrintable(url);
  for (const QString& mode : {u"disable"_s, u"allow"_s, u"prefer"_s, u"require"_s, u"verify-ca"_s}) {
    const QString error = AddressError(u"postgresql://db/x?sslmode=%1\\s.mdb"_s.arg(mode));
    EXPECT_TRUE(error.contains(u"sslmode="_s + mode)) << qPrintable(error);
  }
  EXPECT_EQ(ParametersOf(ServerAddress(u"postgresql://db/x?sslrootcert=/a.crt\\s.mdb"_s))["sslrootcert"], "/a.crt");
}

TEST(ServerAddresses, SeveralHostsAreTriedForOneThatAcceptsChanges) {
  const ServerAddress address(u"postgresql://db1,db2,localhost:5434/x\\s.mdb"_s);
  ASSERT_EQ(address.Ways().size(), 3);
  for (qsizetype i = 0; i < 3; ++i)
    EXPECT_EQ(ParametersOf(address, i)["target_session_attrs"], "read-write");
  EXPECT_EQ(ParametersOf(address, 1)["host"], "db2");
  EXPECT_EQ(ParametersOf(address, 1)["sslmode"], "verify-full");
  EXPECT_FALSE(ParametersOf(address, 2).contains("sslmode"));
  EXPECT_FALSE(ParametersOf(ServerAddress(u"postgresql://db1/x\\s.mdb"_s)).contains("target_session_attrs"));
  EXPECT_EQ(
      ParametersOf(ServerAddress(u"postgresql://a,b/x?target_session_attrs=any\\s.mdb"_s))["target_session_attrs"],
      "any");
}

TEST(ServerAddresses, OnePortServesAllHostsAndOtherNumbersOfPortsAreErrors) {
  const ServerAddress address(u"postgresql:///x?host=a,b&port=6000\\s.mdb"_s);
  EXPECT_EQ(ParametersOf(address, 0)["port"], "6000");
  EXPECT_EQ(ParametersOf(address, 1)["port"], "6000");
  EXPECT_TRUE(AddressError(u"postgresql:///x?host=a,b&port=1,2,3\\s.mdb"_s).contains(u"niet even veel"_s));
}

TEST(ServerAddresses, TheHostForMessagesIsNameAddressOrService) {
  const auto hostOf = [](const QString& url) {
    return ServerAddress::HostOf(ServerAddress(url + u"\\s.mdb"_s).Ways().first());
  };
  EXPECT_EQ(hostOf(u"postgresql://db.radio.example/x"_s), u"db.radio.example"_s);
  EXPECT_EQ(hostOf(u"postgresql:///x?hostaddr=127.0.0.1"_s), u"127.0.0.1"_s);
  EXPECT_EQ(hostOf(u"postgresql://db/x?hostaddr=127.0.0.1"_s), u"db"_s);
  EXPECT_EQ(hostOf(u"postgresql://?service=radio"_s), u"service radio"_s);
}

TEST(ServerAddresses, InvalidAddressesAreErrors) {
  EXPECT_TRUE(AddressError(u"postgresql://localhost/x"_s).contains(u"noemt geen database"_s));
  EXPECT_TRUE(AddressError(u"postgresql://localhost/x\\.mdb"_s).contains(u"noemt geen database"_s));
  EXPECT_TRUE(AddressError(u"postgresql://localhost:poort:x/y?a=b\\s.mdb"_s).contains(u"geen leesbaar adres"_s));
  EXPECT_TRUE(AddressError(u"postgresql://localhost/x?onbekend=1\\s.mdb"_s).contains(u"geen leesbaar adres"_s));
  EXPECT_TRUE(AddressError(u"postgresql://localhost/x\\%1.mdb"_s.arg(QString(64, u's'))).contains(u"te lang"_s));
  EXPECT_TRUE(AddressError(u"postgresql://localhost/x\\%1.mdb"_s.arg(QString(63, u's'))).isEmpty());
}

TEST(ServerAddresses, APasswordIsRefusedInEveryNotation) {
  for (const QString& url :
       {u"postgresql://a:geheim@db/x"_s, u"postgresql://a:@db/x"_s, u"postgres://db/x?password=geheim"_s,
        u"postgresql://db/x?a=b&sslpassword=geheim"_s, u"POSTGRESQL://a:ge%20heim@db/x"_s}) {
    const QString error = AddressError(url + u"\\s.mdb"_s);
    EXPECT_TRUE(error.contains(u"~/.pgpass"_s)) << qPrintable(url);
    EXPECT_FALSE(error.contains(u"heim"_s)) << qPrintable(error);
  }
}

}  // namespace
