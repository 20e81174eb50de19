// SPDX-License-Identifier: MIT
#include "data/FieldWords.h"

#include "platform/runtime/Dates.h"

#include <QHash>

using namespace Qt::StringLiterals;

namespace {

bool IsYesNo(const QString& field) {
  return field == u"Aktief"_s || field == u"Locked"_s || field == u"OptMeerdereSpots"_s || field.startsWith(u"Chk"_s);
}

QString TextWord(const QString& text) {
  return text.isEmpty() ? u"leeg"_s : text;
}

QString MomentWord(const QDateTime& moment) {
  const bool hasTime = moment.time() != QTime(0, 0);
  return runtime::FormatDate(moment, hasTime ? u"dd-mm-yyyy hh:mm"_s : u"dd-mm-yyyy"_s);
}

QString NumberWord(const QString& field, double number) {
  if (IsYesNo(field)) return number != 0 ? u"ja"_s : u"nee"_s;
  if (!field.endsWith(u"Datum"_s) && field != u"LaatstGedraaid"_s) return QString::number(number, 'g', 15);
  return MomentWord(runtime::MomentOfDayNumber(number));
}

}  // namespace

QString RecordWord(const QString& serverTable) {
  if (serverTable == u"tblItems"_s) return u"item"_s;
  return serverTable == u"tblItemSpots"_s ? u"item-spot"_s : u"jingle"_s;
}

QString FieldWord(const QString& field) {
  static const QHash<QString, QString> words{{u"LengteSec"_s, u"Lengte"_s},
                                             {u"StartPunt"_s, u"Startpunt"_s},
                                             {u"Mixpunt"_s, u"Outtromix"_s},
                                             {u"StartDatum"_s, u"Startdatum"_s},
                                             {u"StartUur"_s, u"Startuur"_s},
                                             {u"EindDatum"_s, u"Einddatum"_s},
                                             {u"EindUur"_s, u"Einduur"_s},
                                             {u"AantalGedraaid"_s, u"Aantal gedraaid"_s},
                                             {u"LaatstGedraaid"_s, u"Laatst gedraaid"_s},
                                             {u"ItemSpotsOptID"_s, u"Optie"_s},
                                             {u"Opt2Directory"_s, u"Directory"_s},
                                             {u"Opt2VastNaamGedeelte"_s, u"Vast naam-gedeelte"_s},
                                             {u"Opt2VariabelNaamGedeelte"_s, u"Variabel naam-gedeelte"_s},
                                             {u"Opt2FormatGedeelte"_s, u"Formaat"_s},
                                             {u"Opt2Eerstedagvanweek"_s, u"Eerste dag van de week"_s},
                                             {u"Opt2FileExtensie"_s, u"File-extensie"_s},
                                             {u"Opt2MixPunt"_s, u"Mixpunt"_s},
                                             {u"OptMeerdereSpots"_s, u"Meerdere spots"_s},
                                             {u"AantalSpots"_s, u"Aantal spots"_s},
                                             {u"MaxAantalSpots"_s, u"Maximum aantal spots"_s},
                                             {u"ChkRandomizeMeerdereSpots"_s, u"Willekeurige volgorde"_s},
                                             {u"Locked"_s, u"Vergrendeld"_s}};
  return words.value(field, field);
}

QString ValueWord(const QString& field, const dao::Value& value) {
  if (const auto* text = std::get_if<std::u16string>(&value)) return TextWord(QString::fromStdU16String(*text));
  if (const auto* whole = std::get_if<std::int64_t>(&value)) return NumberWord(field, static_cast<double>(*whole));
  if (const auto* number = std::get_if<double>(&value)) return NumberWord(field, *number);
  return u"leeg"_s;
}

QString ValueWord(const QString& field, const QVariant& value) {
  if (value.isNull()) return u"leeg"_s;
  if (value.typeId() == QMetaType::QDateTime) return MomentWord(value.toDateTime());
  return value.typeId() == QMetaType::QString ? TextWord(value.toString()) : NumberWord(field, value.toDouble());
}
