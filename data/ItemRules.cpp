// SPDX-License-Identifier: MIT
#include "data/ItemRules.h"

#include "data/MessageNumbers.h"
#include "platform/runtime/Numbers.h"

using namespace Qt::StringLiterals;

namespace {

std::optional<Refusal> CheckPattern(const ItemInput& input) {
  if (auto refusal = CheckText(input.directory, u"Directory"_s, kLongestItemDirectory, u"txtOpt2Directory"_s))
    return refusal;
  if (auto refusal =
          CheckText(input.fixedPart, u"Vast Naam-gedeelte"_s, kLongestItemNaam, u"txtOpt2VastNaamGedeelte"_s))
    return refusal;
  if (!input.hasVariablePart)
    return Refusal{message::kNothingChosen, u"Variabel Naam-gedeelte"_s, u"format"_s, u"cboOpt2VariabelNaamGedeelte"_s};
  return CheckText(input.extension, u"File-extensie"_s, kLongestItemExtension, u"txtOpt2FileExtensie"_s);
}

std::optional<Refusal> CheckSpotCount(const ItemInput& input) {
  const QString count = u"txtAantalSpots"_s;
  if (!runtime::IsNumeric(input.aantalSpots)) return Refusal{message::kNotANumber, u"Aantal spots"_s, {}, count};
  if (!runtime::IsNumeric(input.maxAantalSpots))
    return Refusal{message::kNotANumber, u"Maximum aantal spots"_s, {}, u"txtMaxAantalSpots"_s};
  if (runtime::ToLong(input.aantalSpots) < 1) return Refusal{message::kCountTooSmall, u"0"_s, {}, count};
  if (runtime::ToLong(input.aantalSpots) > runtime::ToLong(input.maxAantalSpots))
    return Refusal{message::kCountAboveMaximum, {}, {}, count};
  return std::nullopt;
}

}  // namespace

std::optional<Refusal> CheckItem(const ItemInput& input, const std::function<bool()>& isDuplicate) {
  if (auto refusal = CheckText(input.naam, u"Item-naam"_s, kLongestItemNaam, u"txtNaam"_s)) return refusal;
  if (isDuplicate())
    return Refusal{message::kNameExists, runtime::TrimBlanks(input.naam), u"Item-naam"_s, u"txtNaam"_s};
  if (input.hasList && input.listedSpots == 0) return Refusal{message::kListEmpty, {}, {}, {}};
  if (input.hasPattern) {
    if (auto refusal = CheckPattern(input)) return refusal;
  }
  return input.severalSpots ? CheckSpotCount(input) : std::nullopt;
}
