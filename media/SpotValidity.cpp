#include "media/SpotValidity.h"

using namespace Qt::StringLiterals;
using controls::LineMark;
using controls::LineTone;

namespace {

constexpr qint64 kEndsSoonDays = 7;

QString DaysAhead(qint64 days) {
  if (days == 0) return u"vandaag"_s;
  if (days == 1) return u"morgen"_s;
  return u"over %1 dagen"_s.arg(days);
}

// A first hour behind the last one runs over midnight.
bool WithinHours(const SpotValidity& spot, int hour) {
  const int first = spot.startUur.value_or(0);
  const int last = spot.eindUur.value_or(23);
  return first <= last ? first <= hour && hour <= last : hour >= first || hour <= last;
}

}  // namespace

ValidityRemark RemarkOn(const SpotValidity& spot, const QDateTime& now) {
  if (!spot.aktief) return {LineMark::Dash, LineTone::Quiet, false, u"niet aktief"_s};
  if (spot.fileMissing) return {LineMark::Cross, LineTone::Wrong, true, u"geluidsbestand ontbreekt"_s};
  if (!spot.startDatum || !spot.eindDatum) return {};
  const qint64 daysLeft = now.date().daysTo(*spot.eindDatum);
  const qint64 daysToStart = now.date().daysTo(*spot.startDatum);
  if (daysLeft < 0) {
    return {LineMark::Square, LineTone::Quiet, false, u"verlopen op "_s + spot.eindDatum->toString(u"dd-MM-yyyy"_s)};
  }
  if (daysToStart > 0) return {LineMark::Clock, LineTone::Begins, true, u"begint "_s + DaysAhead(daysToStart)};
  if (daysLeft <= kEndsSoonDays)
    return {LineMark::Triangle, LineTone::Ends, true, u"verloopt "_s + DaysAhead(daysLeft)};
  if (!WithinHours(spot, now.time().hour())) {
    return {LineMark::Circle, LineTone::Quiet, false, u"nu buiten de uren"_s};
  }
  return {LineMark::Circle, LineTone::Runs, false, u"loopt, nog %1 dagen"_s.arg(daysLeft)};
}
