// SPDX-License-Identifier: MIT
#include "platform/dao/postgres/ServerError.h"

#include <QRegularExpression>

using namespace Qt::StringLiterals;

namespace dao {
namespace {

// The SQLSTATE after "FATAL:", in any language; empty when the server did not report an error.
QString CodeIn(const QString& reason) {
  static const QRegularExpression kCode(u":\\s+([0-9][0-9A-Z]{4})(?::|$)"_s, QRegularExpression::MultilineOption);
  return kCode.match(reason).captured(1);
}

QString OneLine(const QString& reason) {
  return reason.simplified();
}

bool IsAboutCertificates(const QString& reason) {
  return reason.contains(u"certificate"_s, Qt::CaseInsensitive) || reason.contains(u"SSL"_s);
}

}  // namespace

QString ConnectionError(const ServerAddress& address, const QString& host, const QString& reason, bool needsPassword) {
  const QString code = CodeIn(reason);
  const QString& path = address.PathText();
  if (needsPassword) {
    return u"De databaseserver van '%1' vraagt een wachtwoord en er is er geen gevonden. Zet het in het bestand "
           "~/.pgpass (alleen leesbaar voor deze gebruiker) en probeer het opnieuw."_s.arg(path);
  }
  if (code == u"28P01"_s) {
    return u"De databaseserver van '%1' weigert het wachtwoord. Verbeter het in ~/.pgpass of vraag de beheerder om "
           "een nieuw."_s.arg(path);
  }
  if (code == u"28000"_s) {
    return u"De databaseserver van '%1' laat deze gebruiker of deze computer niet toe. Vraag de beheerder om toegang."_s
        .arg(path);
  }
  if (code == u"3D000"_s) {
    return u"De database van '%1' bestaat niet op de server. Controleer DatabasePath in ovalis.ini, of laat de "
           "beheerder ze maken."_s.arg(path);
  }
  if (code == u"53300"_s) {
    return u"De databaseserver van '%1' heeft geen plaats voor nog een verbinding. Probeer het straks opnieuw."_s.arg(
        path);
  }
  if (code == u"57P03"_s) {
    return u"De databaseserver van '%1' is aan het starten of stoppen. Probeer het straks opnieuw."_s.arg(path);
  }
  if (code.isEmpty() && IsAboutCertificates(reason)) {
    return u"De verbinding met '%1' is niet veilig: het certificaat van de server klopt niet of ontbreekt. Er is niets "
           "verstuurd. Waarschuw de beheerder. (%2)"_s.arg(path, OneLine(reason));
  }
  if (reason.contains(u"read-only"_s) || reason.contains(u"read-write"_s) || reason.contains(u"hot standby"_s)) {
    return u"Geen enkele databaseserver van '%1' laat nu wijzigingen toe: misschien wordt er net omgeschakeld. Probeer "
           "het over enkele seconden opnieuw."_s.arg(path);
  }
  return u"De databaseserver %1 van '%2' is niet bereikbaar. Controleer het netwerk en probeer het opnieuw, of werk "
         "offline verder. (%3)"_s.arg(host, path, OneLine(reason));
}

QString RefusalError(const ServerAddress& address, const Refusal& refusal) {
  const QString& path = address.PathText();
  const QString& code = refusal.code;
  if (code == u"42501"_s) {
    return u"U hebt geen rechten voor deze handeling op '%1'. Vraag de beheerder om rechten."_s.arg(path);
  }
  if (code == u"25006"_s) {
    return u"De databaseserver van '%1' is nu alleen-lezen, misschien na een omschakeling. Er is niets bewaard; "
           u"probeer "
           "het over enkele seconden opnieuw."_s.arg(path);
  }
  if (code == u"55P03"_s) return u"'%1' is in gebruik door een ander. Probeer het straks opnieuw."_s.arg(path);
  if (code == u"57014"_s) {
    return u"De databaseserver van '%1' deed te lang over de opdracht. Er is niets bewaard; probeer het opnieuw."_s.arg(
        path);
  }
  if (code.startsWith(u"53"_s) || code.startsWith(u"58"_s)) {
    return u"De databaseserver van '%1' kan niets meer bewaren: zijn schijf of geheugen is vol of defect. Er is niets "
           "bewaard. Waarschuw de beheerder. (%2)"_s.arg(path, OneLine(refusal.message));
  }
  if (code.startsWith(u"57P"_s) || code.startsWith(u"08"_s) || code == u"25P03"_s) return ConnectionLostError(address);
  if (code == u"3F000"_s || code == u"42P01"_s) {
    return u"'%1' bestaat niet: de databaseserver heeft geen schema '%2' van Spotrooster. Laat de beheerder het maken "
           "met 'spotrooster-db create'."_s.arg(path, address.Schema());
  }
  if (code == u"23502"_s) {
    return u"Het veld '%1' van de tabel '%2' moet een waarde hebben."_s.arg(refusal.column, refusal.table);
  }
  return u"De databaseserver van '%1' weigert de opdracht: %2 (%3)"_s.arg(path, OneLine(refusal.message), code);
}

QString DuplicateError(const TableDef& table, const IndexDef& index, const Refusal& refusal) {
  // "Key (...)=(2) already exists.", in any language.
  static const QRegularExpression kValue(u"\\)=\\((.*)\\)"_s);
  const FieldDef& field = table.fields[table.FieldIndex(index.fields.first().name)];
  const QString shown = field.type == FieldType::Text ? QString() : kValue.match(refusal.detail).captured(1);
  QString start = u"De waarde%1 van het veld '%2' van de tabel '%3' bestaat al (index '%4')."_s.arg(
      shown.isEmpty() ? shown : u' ' + shown, field.name, table.name, index.name);
  if (!index.primary || !IsWholeNumber(field.type)) return start;
  return start + u" Misschien nam een ander net dit nummer; druk nog eens op OK."_s;
}

QString ConnectionLostError(const ServerAddress& address) {
  return u"De verbinding met de databaseserver van '%1' is verbroken. Er is niets bewaard; probeer het opnieuw."_s.arg(
      address.PathText());
}

}  // namespace dao
