// SPDX-License-Identifier: MIT
#include "data/AudioRules.h"

#include "data/MessageNumbers.h"
#include "platform/runtime/Numbers.h"

using namespace Qt::StringLiterals;

namespace {

std::optional<Refusal> CheckHour(QString& hour, const QString& label, const QString& control) {
  if (!runtime::IsNumeric(hour)) return Refusal{message::kNotANumber, label, {}, control};
  const double value = runtime::ToDouble(hour);
  if (value < kFirstHour) hour = QString::number(kFirstHour);
  if (value > kLastHour) hour = QString::number(kLastHour);
  return std::nullopt;
}

}  // namespace

std::optional<Refusal> CheckAudio(const AudioInput& input, const std::function<bool()>& isDuplicate) {
  if (auto refusal = CheckText(input.path, u"Path"_s, kLongestAudioPath, u"txtPath"_s)) return refusal;
  if (auto refusal = CheckText(input.naam, u"Naam"_s, kLongestAudioNaam, u"txtNaam"_s)) return refusal;
  if (isDuplicate()) return Refusal{message::kNameExists, runtime::TrimBlanks(input.naam), u"Naam"_s, u"txtNaam"_s};
  return std::nullopt;
}

std::optional<Refusal> CheckValidity(ValidityInput& input) {
  if (!input.hasStartDatum) return Refusal{message::kNotADate, u"Startdatum"_s, {}, u"cobStart"_s};
  if (auto refusal = CheckHour(input.startUur, u"Startuur"_s, u"txtStartUur"_s)) return refusal;
  if (!input.hasEindDatum) return Refusal{message::kNotADate, u"Einddatum"_s, {}, u"cobStop"_s};
  return CheckHour(input.eindUur, u"Einduur"_s, u"txtEindUur"_s);
}
