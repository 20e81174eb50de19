// SPDX-License-Identifier: MIT
#include "platform/dao/postgres/ServerAddress.h"

#include "platform/dao/postgres/Libpq.h"
#include "platform/runtime/Error.h"

#include <QDir>
#include <QFileInfo>
#include <QMap>
#include <QRegularExpression>
#include <QSysInfo>

#include <pwd.h>
#include <unistd.h>

#include <algorithm>
#include <memory>
#include <optional>

using namespace Qt::StringLiterals;

namespace dao {
namespace {

using Options = QMap<QByteArray, QByteArray>;

constexpr char kSystemCertificates[] = "/etc/ssl/certs/ca-certificates.crt";

// The URL and the name of the schema, which is after the last backslash.
QPair<QString, QString> Parted(const QString& pathText) {
  const qsizetype at = pathText.lastIndexOf(u'\\');
  if (at < 0) return {pathText, {}};
  QString url = pathText.left(at);
  while (url.endsWith(u'\\'))
    url.chop(1);
  QString schema = pathText.mid(at + 1);
  if (schema.endsWith(u".mdb"_s, Qt::CaseInsensitive)) schema.chop(4);
  return {url, schema};
}

// Nothing when libpq cannot parse it. libpq's message is not shown, because it may contain a password.
std::optional<Options> OptionsOf(const QString& url) {
  char* message = nullptr;
  PQconninfoOption* options = Libpq().PQconninfoParse(url.toUtf8().constData(), &message);
  Libpq().PQfreemem(message);
  if (options == nullptr) return std::nullopt;
  const std::unique_ptr<PQconninfoOption, decltype(LibpqFunctions::PQconninfoFree)> owned(options,
                                                                                          Libpq().PQconninfoFree);
  Options given;
  for (const PQconninfoOption* option = options; option->keyword != nullptr; ++option) {
    if (option->val != nullptr) given.insert(option->keyword, option->val);
  }
  return given;
}

bool HasPassword(const QString& url) {
  static const QRegularExpression kUserPart(u"^[a-z]+://[^/?@]*:[^/?]*@"_s, QRegularExpression::CaseInsensitiveOption);
  static const QRegularExpression kOption(u"[?&](ssl)?password="_s, QRegularExpression::CaseInsensitiveOption);
  if (kUserPart.match(url).hasMatch() || kOption.match(url).hasMatch()) return true;
  const auto given = OptionsOf(url);
  return given && (given->contains("password") || given->contains("sslpassword"));
}

// User and computer, which the server shows for this connection.
QByteArray ApplicationName() {
  const passwd* user = ::getpwuid(::getuid());
  const QString name = user == nullptr ? u"?"_s : QString::fromLocal8Bit(user->pw_name);
  return (name + u'@' + QSysInfo::machineHostName()).toUtf8().left(63);
}

bool IsLoopback(const QByteArray& address) {
  return address.startsWith("127.") || address == "::1";
}

bool StaysOnThisComputer(const QByteArray& host, const QByteArray& hostaddr) {
  if (!hostaddr.isEmpty()) return IsLoopback(hostaddr);
  return host.startsWith('/') || host.startsWith('@') || host == "localhost" || IsLoopback(host);
}

class WayMaker {
 public:
  WayMaker(const QString& url, const Options& given) : url_(url), given_(given) {}

  QList<ServerAddress::Parameters> Make() const {
    const QList<QByteArray> hosts = given_.value("host").split(',');
    const QList<QByteArray> addresses = given_.value("hostaddr").split(',');
    const QList<QByteArray> ports = given_.value("port").split(',');
    const qsizetype count = std::max(hosts.size(), addresses.size());
    const bool fits = (hosts.size() == count || hosts.size() == 1) && (ports.size() == count || ports.size() == 1) &&
                      (addresses.size() == count || addresses.first().isEmpty());
    if (!fits) throw runtime::Error(u"Het adres '%1' noemt niet even veel servers als poorten."_s.arg(url_));
    QList<ServerAddress::Parameters> ways;
    for (qsizetype i = 0; i < count; ++i) {
      ways += ParametersFor(hosts.value(std::min(i, hosts.size() - 1)), addresses.value(i),
                            ports.value(std::min(i, ports.size() - 1)), count > 1);
    }
    return ways;
  }

 private:
  ServerAddress::Parameters ParametersFor(const QByteArray& host, const QByteArray& address, const QByteArray& port,
                                          bool oneOfMany) const {
    Options way = given_;
    way.insert("host", host);
    way.insert("hostaddr", address);
    way.insert("port", port);
    way.insert("application_name", ApplicationName());
    way.insert("client_encoding", "UTF8");
    way.insert("tcp_user_timeout", "5000");
    if (!way.contains("gssencmode")) way.insert("gssencmode", "disable");
    if (oneOfMany && !way.contains("target_session_attrs")) way.insert("target_session_attrs", "read-write");
    Protect(way);
    ServerAddress::Parameters parameters;
    for (auto option = way.constBegin(); option != way.constEnd(); ++option) {
      if (!option.value().isEmpty()) parameters.append({option.key(), option.value()});
    }
    return parameters;
  }

  // Over a network the server must have a certificate for its host name. Local sockets need none.
  void Protect(Options& way) const {
    if (StaysOnThisComputer(way.value("host"), way.value("hostaddr"))) return;
    const QByteArray mode = way.value("sslmode", "verify-full");
    if (mode != "verify-full") {
      throw runtime::Error(
          u"Het adres '%1' vraagt sslmode=%2; dat beschermt niet tegen meelezen of een valse server. Laat "
          "sslmode weg of gebruik verify-full."_s.arg(url_, QString::fromUtf8(mode)));
    }
    way.insert("sslmode", mode);
    const bool ownRoots = QFileInfo::exists(QDir::homePath() + u"/.postgresql/root.crt"_s);
    if (!way.contains("sslrootcert") && !ownRoots) way.insert("sslrootcert", kSystemCertificates);
  }

  const QString& url_;
  const Options& given_;
};

}  // namespace

bool IsServerPath(const QString& pathText) {
  return pathText.startsWith(u"postgresql://"_s, Qt::CaseInsensitive) ||
         pathText.startsWith(u"postgres://"_s, Qt::CaseInsensitive);
}

void RefusePassword(const QString& pathText) {
  if (!IsServerPath(pathText) || !HasPassword(Parted(pathText).first)) return;
  throw runtime::Error(
      u"Het adres van de databaseserver bevat een wachtwoord. Laat het weg en zet het in het bestand "
      "~/.pgpass van deze gebruiker (of in een servicebestand): zo staat het nergens leesbaar."_s);
}

ServerAddress::ServerAddress(const QString& pathText) : pathText_(pathText) {
  RefusePassword(pathText);
  const auto [url, schema] = Parted(pathText);
  url_ = url;
  schema_ = schema;
  const auto given = OptionsOf(url);
  if (!given) throw runtime::Error(u"'%1' is geen leesbaar adres van een databaseserver."_s.arg(pathText));
  if (schema.isEmpty()) {
    throw runtime::Error(
        u"Het adres '%1' noemt geen database van een zender: zet er \\OvalistoServer.mdb achter, met het nummer "
        "van de zender voor de punt (\\OvalistoServer3.mdb)."_s.arg(pathText));
  }
  if (schema.toUtf8().size() > 63) throw runtime::Error(u"De naam '%1' is te lang voor een schema."_s.arg(schema));
  ways_ = WayMaker(url_, *given).Make();
}

QString ServerAddress::HostOf(const Parameters& way) {
  QByteArray host = "de databaseserver";
  for (const auto& [keyword, value] : way) {
    if (keyword == "host" || (keyword == "hostaddr" && host == "de databaseserver")) host = value;
    if (keyword == "service" && host == "de databaseserver") host = "service " + value;
  }
  return QString::fromUtf8(host);
}

}  // namespace dao
