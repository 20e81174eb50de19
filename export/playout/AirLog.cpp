// SPDX-License-Identifier: MIT
#include "export/playout/AirLog.h"

#include "platform/runtime/Error.h"

#include <QRegularExpression>
#include <QStringList>

using namespace Qt::StringLiterals;

namespace {

constexpr qint32 kSpotCarts = 100'000;
constexpr qint32 kJingleCarts = 200'000;

[[noreturn]] void Fail(const QString& name, qsizetype line, const QString& reason) {
  throw runtime::Error(u"'%1', regel %2: %3."_s.arg(name, QString::number(line + 1), reason));
}

QStringList LinesOf(const QByteArray& content) {
  QStringList lines = QString::fromUtf8(content).split(u'\n');
  for (QString& line : lines) {
    if (line.endsWith(u'\r')) line.chop(1);
  }
  return lines;
}

std::optional<Airing> OwnLine(const QString& line) {
  static const QRegularExpression kForm(u"^(\\d{1,11})(?:\\.(\\d*))?,(\\d{1,9}),(\\d{0,9})$"_s);
  const QRegularExpressionMatch match = kForm.match(line);
  if (!match.hasMatch()) return std::nullopt;
  const qint64 ms = match.captured(1).toLongLong() * 1000 + match.captured(2).leftJustified(3, u'0', true).toInt();
  return Airing{match.captured(3).toInt(), QDateTime::fromMSecsSinceEpoch(ms), match.captured(4).toInt()};
}

std::vector<Airing> ReadOwn(const QStringList& lines, const QString& name) {
  std::vector<Airing> airings;
  for (qsizetype at = 0; at < lines.size(); ++at) {
    if (lines[at].isEmpty()) continue;
    const std::optional<Airing> airing = OwnLine(lines[at]);
    if (!airing) Fail(name, at, u"geen regel van het logboek van Liquidsoap"_s);
    airings.push_back(*airing);
  }
  return airings;
}

// --- Rivendell's cut log

const QString kCutLog = u"Rivendell RDAirPlay Cut Report for"_s;

// The date in the first line. With slashes, day and month may be in either order.
QDate DayOf(const QString& heading, const QString& name) {
  const QString text = heading.section(kCutLog, 1).trimmed();
  if (text.contains(u" - "_s))
    Fail(name, 0, u"een logboek van meer dan één dag zegt niet welke dag bij een regel hoort"_s);
  for (const QString& form : {u"yyyy-MM-dd"_s, u"dd-MM-yyyy"_s, u"dd.MM.yyyy"_s}) {
    if (const QDate date = QDate::fromString(text, form); date.isValid()) return date;
  }
  const QDate monthFirst = QDate::fromString(text, u"MM/dd/yyyy"_s);
  const QDate dayFirst = QDate::fromString(text, u"dd/MM/yyyy"_s);
  if (monthFirst.isValid() == dayFirst.isValid() && monthFirst != dayFirst)
    Fail(name, 0, u"de datum '%1' kan twee dagen zijn; zeg met --dag welke"_s.arg(text));
  const QDate date = monthFirst.isValid() ? monthFirst : dayFirst;
  if (!date.isValid()) Fail(name, 0, u"'%1' is geen datum; zeg met --dag welke dag het is"_s.arg(text));
  return date;
}

std::vector<Airing> ReadCutLog(const QStringList& lines, const QString& name, const std::optional<QDate>& given) {
  static const QRegularExpression kRow(u"^ ?(\\d{1,2}:\\d\\d:\\d\\d(?: ?[AP]M)?) +(\\d+)(?: |$)"_s,
                                       QRegularExpression::CaseInsensitiveOption);
  const QDate day = given ? *given : DayOf(lines.first(), name);
  std::vector<Airing> airings;
  for (qsizetype at = 3; at < lines.size(); ++at) {
    if (lines[at].trimmed().isEmpty()) continue;
    const QRegularExpressionMatch match = kRow.match(lines[at]);
    if (!match.hasMatch()) Fail(name, at, u"geen regel van een cutlogboek"_s);
    const QString text = match.captured(1).simplified().remove(u' ').toUpper();
    const QTime time =
        text.endsWith(u'M') ? QTime::fromString(text, u"h:mm:ssAP"_s) : QTime::fromString(text, u"h:mm:ss"_s);
    if (!time.isValid()) Fail(name, at, u"'%1' is geen tijdstip"_s.arg(match.captured(1)));
    const qint32 cart = match.captured(2).toInt();
    if (cart > kSpotCarts && cart < kJingleCarts) airings.push_back({cart - kSpotCarts, QDateTime(day, time), 0});
  }
  return airings;
}

// --- a table

struct Columns {
  QChar separator = u',';
  qsizetype moment = -1;
  qsizetype spot = -1;
  qsizetype item = -1;
};

QStringList CellsOf(const QString& line, QChar separator) {
  QStringList cells = line.split(separator);
  for (QString& cell : cells) {
    cell = cell.trimmed();
    if (cell.size() >= 2 && cell.startsWith(u'"') && cell.endsWith(u'"')) cell = cell.mid(1, cell.size() - 2);
  }
  return cells;
}

std::optional<Columns> ColumnsOf(QString heading) {
  if (heading.startsWith(QChar::ByteOrderMark)) heading.remove(0, 1);
  Columns columns;
  columns.separator = heading.contains(u';') ? u';' : u',';
  const QStringList names = CellsOf(heading.toLower(), columns.separator);
  columns.moment = names.indexOf(u"moment"_s);
  columns.spot = names.indexOf(u"itemspot"_s);
  columns.item = names.indexOf(u"item"_s);
  if (columns.moment < 0 || columns.spot < 0) return std::nullopt;
  return columns;
}

QDateTime MomentOf(const QString& text) {
  for (const QString& form : {u"yyyy-MM-dd HH:mm:ss"_s, u"yyyy-MM-ddTHH:mm:ss"_s, u"dd-MM-yyyy HH:mm:ss"_s}) {
    if (QDateTime moment = QDateTime::fromString(text, form); moment.isValid()) return moment;
  }
  return {};
}

qint32 NumberOf(const QString& text, const QString& name, qsizetype line) {
  bool whole = false;
  const int number = text.toInt(&whole);
  if (!whole || number < 0) Fail(name, line, u"'%1' is geen nummer"_s.arg(text));
  return number;
}

std::vector<Airing> ReadTable(const QStringList& lines, const Columns& columns, const QString& name) {
  std::vector<Airing> airings;
  for (qsizetype at = 1; at < lines.size(); ++at) {
    if (lines[at].trimmed().isEmpty()) continue;
    const QStringList cells = CellsOf(lines[at], columns.separator);
    if (cells.size() <= std::max({columns.moment, columns.spot, columns.item}))
      Fail(name, at, u"er ontbreekt een veld"_s);
    Airing airing;
    airing.moment = MomentOf(cells[columns.moment]);
    if (!airing.moment.isValid()) Fail(name, at, u"'%1' is geen moment"_s.arg(cells[columns.moment]));
    airing.spotID = NumberOf(cells[columns.spot], name, at);
    if (columns.item >= 0 && !cells[columns.item].isEmpty()) airing.itemID = NumberOf(cells[columns.item], name, at);
    if (airing.spotID > 0) airings.push_back(airing);
  }
  return airings;
}

}  // namespace

std::vector<Airing> ReadAirLog(const QByteArray& content, const QString& name, const std::optional<QDate>& day) {
  const QStringList lines = LinesOf(content);
  if (content.trimmed().isEmpty()) return {};
  if (lines.first().contains(kCutLog)) return ReadCutLog(lines, name, day);
  if (const std::optional<Columns> columns = ColumnsOf(lines.first())) return ReadTable(lines, *columns, name);
  if (OwnLine(lines.first())) return ReadOwn(lines, name);
  Fail(name, 0,
       u"dit is geen logboek van Liquidsoap, geen cutlogboek van Rivendell en geen tabel met de kolommen Moment en "
       u"ItemSpot"_s);
}
