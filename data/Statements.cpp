// SPDX-License-Identifier: MIT
#include "data/Statements.h"

#include "data/Text.h"
#include "platform/runtime/Error.h"

#include <optional>

using namespace Qt::StringLiterals;

namespace statements {
namespace {

QString Number(qint32 value) {
  return QString::number(value);
}

QString Quoted(const QString& field, const QString& value) {
  if (value.contains(u'"') || value.contains(QChar(0))) {
    throw runtime::Error(u"De waarde van '%1' bevat een dubbel aanhalingsteken of een ongeldig teken: %2"_s.arg(
        field, QString(value).replace(QChar(0), u' ')));
  }
  return u'"' + value + u'"';
}

// The two lists of an INSERT: each column is added together with its value.
class InsertLists {
 public:
  void Add(const QString& column, const QString& value) {
    columns_ += column + u", ";
    values_ += value + u", ";
  }
  void AddText(const QString& column, const QString& value) {
    if (!IsKull(value)) Add(column, Quoted(column, value));
  }
  void AddNumber(const QString& column, const std::optional<qint32>& value) {
    if (value) Add(column, Number(*value));
  }
  const QString& Columns() const { return columns_; }
  const QString& Values() const { return values_; }

 private:
  QString columns_;
  QString values_;
};

// Each caller passes its own `nullClause`, because three of them deviate from the usual form and must stay so.
QString TextClause(const QString& field, const QString& value, const QString& nullClause) {
  return IsKull(value) ? nullClause : field + u" = " + Quoted(field, value) + u", ";
}

QString NumberClause(const QString& field, const std::optional<qint32>& value, const QString& nullClause) {
  return value ? field + u" = " + Number(*value) + u", " : nullClause;
}

QString JingleClause(const QString& field, const std::optional<qint32>& value) {
  return NumberClause(field, value, field + u" = NULL, ");
}

QString Where(qint32 id) {
  return u"WHERE ID = "_s + Number(id);
}

// The first clauses of an UPDATE of item-spots and jingles. The unpaired apostrophe makes the database reject an empty
// name.
QString FileClauses(const QString& path, const QString& naam) {
  return TextClause(u"Path"_s, path, u"Path = NULL, "_s) + TextClause(u"Naam"_s, naam, u"Naam = 'NULL, "_s);
}

QString SoundClauses(const std::optional<qint32>& lengteSec, const std::optional<qint32>& startPunt,
                     const std::optional<qint32>& mixPunt) {
  return NumberClause(u"LengteSec"_s, lengteSec, u"LengteSec = NULL, "_s) +
         NumberClause(u"StartPunt"_s, startPunt, u"StartPunt = NULL, "_s) +
         NumberClause(u"MixPunt"_s, mixPunt, u"MixPunt = NULL, "_s);
}

// The first columns of an INSERT into item-spots and jingles.
template <class Row>
InsertLists SoundLists(const Row& row) {
  InsertLists lists;
  lists.Add(u"ID"_s, Number(row.id));
  lists.AddText(u"Path"_s, row.path);
  lists.AddText(u"Naam"_s, row.naam);
  lists.AddNumber(u"LengteSec"_s, row.lengteSec);
  lists.AddNumber(u"StartPunt"_s, row.startPunt);
  return lists;
}

}  // namespace

QString InsertItem(const ItemRow& row, const QString& table) {
  InsertLists lists;
  lists.Add(u"ID"_s, Number(row.id));
  lists.Add(u"Naam"_s, Quoted(u"Naam"_s, row.naam));
  lists.Add(u"ItemSpotsOptID"_s, Number(row.itemSpotsOptID));
  if (row.itemSpotsOptID == 2) {
    lists.Add(u"Opt2Directory"_s, Quoted(u"Opt2Directory"_s, row.opt2Directory));
    lists.Add(u"Opt2VastNaamGedeelte"_s, Quoted(u"Opt2VastNaamGedeelte"_s, row.opt2VastNaamGedeelte));
    lists.Add(u"Opt2VariabelNaamGedeelte"_s, Number(row.opt2VariabelNaamGedeelte));
    lists.Add(u"Opt2FormatGedeelte"_s, Quoted(u"Opt2FormatGedeelte"_s, row.opt2FormatGedeelte));
    lists.Add(u"Opt2Eerstedagvanweek"_s, Number(row.opt2Eerstedagvanweek));
    lists.Add(u"Opt2FileExtensie"_s, Quoted(u"Opt2FileExtensie"_s, row.opt2FileExtensie));
    lists.Add(u"Opt2MixPunt"_s, Number(row.opt2MixPunt));
  }
  lists.Add(u"OptMeerdereSpots"_s, Number(row.optMeerdereSpots));
  lists.Add(u"AantalSpots"_s, Number(row.aantalSpots));
  lists.Add(u"MaxAantalSpots"_s, Number(row.maxAantalSpots));
  lists.Add(u"ChkRandomizeMeerdereSpots"_s, Number(row.chkRandomizeMeerdereSpots));
  lists.AddNumber(u"Opener"_s, row.opener);
  lists.AddNumber(u"Midden"_s, row.midden);
  lists.AddNumber(u"Sluiter"_s, row.sluiter);
  return u"INSERT INTO "_s + table + u" (" + lists.Columns() + u"Aktief, Locked) VALUES (" + lists.Values() +
         Number(row.aktief) + u", " + Number(row.locked) + u")";
}

QString UpdateItem(const ItemRow& row, const QString& table) {
  QString text = u"UPDATE "_s + table + u" SET Naam = " + Quoted(u"Naam"_s, row.naam) + u", ItemSpotsOptID = " +
                 Number(row.itemSpotsOptID) + u", ";
  if (row.itemSpotsOptID == 2) {
    text += u"Opt2Directory = "_s + Quoted(u"Opt2Directory"_s, row.opt2Directory) + u", Opt2VastNaamGedeelte = " +
            Quoted(u"Opt2VastNaamGedeelte"_s, row.opt2VastNaamGedeelte) + u", Opt2VariabelNaamGedeelte = " +
            Number(row.opt2VariabelNaamGedeelte) + u", Opt2FormatGedeelte = " +
            Quoted(u"Opt2FormatGedeelte"_s, row.opt2FormatGedeelte) + u", Opt2Eerstedagvanweek = " +
            Number(row.opt2Eerstedagvanweek) + u", Opt2FileExtensie = " +
            Quoted(u"Opt2FileExtensie"_s, row.opt2FileExtensie) + u", Opt2MixPunt = " + Number(row.opt2MixPunt) + u", ";
  } else {
    text +=
        u"Opt2Directory = NULL, Opt2VastNaamGedeelte = NULL, Opt2VariabelNaamGedeelte = NULL, "
        u"Opt2FormatGedeelte = NULL, Opt2Eerstedagvanweek = NULL, Opt2FileExtensie = NULL, Opt2MixPunt = NULL, "_s;
  }
  return text + u"OptMeerdereSpots = " + Number(row.optMeerdereSpots) + u", AantalSpots = " + Number(row.aantalSpots) +
         u", MaxAantalSpots = " + Number(row.maxAantalSpots) + u", ChkRandomizeMeerdereSpots = " +
         Number(row.chkRandomizeMeerdereSpots) + u", " + JingleClause(u"Opener"_s, row.opener) +
         JingleClause(u"Midden"_s, row.midden) + JingleClause(u"Sluiter"_s, row.sluiter) + u"Aktief = " +
         Number(row.aktief) + u", Locked = " + Number(row.locked) + u" " + Where(row.id);
}

QString InsertItemSpot(const ItemSpotRow& row, const QString& table) {
  InsertLists lists = SoundLists(row);
  lists.AddNumber(u"Mixpunt"_s, row.mixpunt);
  lists.AddNumber(u"StartDatum"_s, row.startDatum);
  lists.AddNumber(u"StartUur"_s, row.startUur);
  lists.AddNumber(u"EindDatum"_s, row.eindDatum);
  lists.AddNumber(u"EindUur"_s, row.eindUur);
  return u"INSERT INTO "_s + table + u" (" + lists.Columns() + u"AantalGedraaid,Aktief) VALUES (" + lists.Values() +
         u"0," + Number(row.aktief) + u")";
}

QString UpdateItemSpot(const ItemSpotRow& row, const QString& table) {
  return u"UPDATE "_s + table + u" SET " + FileClauses(row.path, row.naam) +
         SoundClauses(row.lengteSec, row.startPunt, row.mixpunt) +
         NumberClause(u"StartDatum"_s, row.startDatum, u"StartDatum= NULL, "_s) +
         NumberClause(u"StartUur"_s, row.startUur, u"StartUur= NULL, "_s) +
         NumberClause(u"EindDatum"_s, row.eindDatum, u"EindDatum = NULL, "_s) +
         NumberClause(u"EindUur"_s, row.eindUur, u"EindUur = NULL, "_s) + u"Aktief = " + Number(row.aktief) + u" " +
         Where(row.id);
}

QString InsertItemPingle(const ItemPingleRow& row, const QString& table) {
  InsertLists lists = SoundLists(row);
  lists.AddNumber(u"MixPunt"_s, row.mixPunt);
  return u"INSERT INTO "_s + table + u" (" + lists.Columns() + u"Aktief) VALUES (" + lists.Values() +
         Number(row.aktief) + u")";
}

QString UpdateItemPingle(const ItemPingleRow& row, const QString& table) {
  return u"UPDATE "_s + table + u" SET " + FileClauses(row.path, row.naam) +
         SoundClauses(row.lengteSec, row.startPunt, row.mixPunt) + u"Aktief = " + Number(row.aktief) + u" " +
         Where(row.id);
}

QString InsertLink(const ItemsItemSpotsRow& row, const QString& table) {
  return u"INSERT INTO "_s + table + u" (ItemID, ItemSpotOrder, ItemSpotID) VALUES (" + Number(row.itemID) + u", " +
         Number(row.itemSpotOrder) + u", " + Number(row.itemSpotID) + u")";
}

QString SetAktief(qint32 id, qint32 aktief, const QString& table) {
  return u"UPDATE "_s + table + u" SET Aktief = " + Number(aktief) + u" " + Where(id);
}

QString ResetAantalGedraaid(qint32 id, const QString& table) {
  return u"UPDATE "_s + table + u" SET AantalGedraaid = 0 " + Where(id);
}

QString Delete(qint32 id, const QString& table, const QString& keyField) {
  return u"DELETE FROM "_s + table + u" WHERE " + keyField + u" = " + Number(id);
}

QString DeleteAll(const QString& table) {
  return u"DELETE FROM "_s + table;
}

QString LogText(const QString& statement) {
  QString text = statement;
  text.replace(u'\'', u'*');
  text.replace(u'"', u'\'');
  return text;
}

// The missing blank before VALUES is part of the established text.
QString InsertLog(qint32 id, const QString& statement) {
  return u"INSERT INTO tblOfflineLog (ID, SqlSyntax)VALUES ("_s + Number(id) + u", \"" + LogText(statement) + u"\")";
}

}  // namespace statements
