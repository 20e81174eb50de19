// SPDX-License-Identifier: MIT
#include "data/SpotFacts.h"

#include "platform/runtime/Numbers.h"

using namespace Qt::StringLiterals;

namespace {

std::optional<int> NumberOf(const QVariant& value) {
  if (!value.isValid()) return std::nullopt;
  return value.toInt();
}

std::optional<QDate> DateOf(const QVariant& value) {
  if (!value.isValid()) return std::nullopt;
  return value.toDate();
}

}  // namespace

SpotFacts FactsOf(const dao::Recordset& row) {
  SpotFacts facts;
  facts.path = runtime::TrimBlanks(row.Field(u"Path"_s).toString());
  facts.aktief = row.Field(u"Aktief"_s).toInt() != 0;
  facts.startDatum = DateOf(row.Field(u"StartDatum"_s));
  facts.eindDatum = DateOf(row.Field(u"EindDatum"_s));
  facts.startUur = NumberOf(row.Field(u"StartUur"_s));
  facts.eindUur = NumberOf(row.Field(u"EindUur"_s));
  facts.lengteSec = NumberOf(row.Field(u"LengteSec"_s));
  return facts;
}
