// SPDX-License-Identifier: MIT
#include "data/ItemRules.h"

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
    return Refusal{1501, u"Variabel Naam-gedeelte"_s, u"format"_s, u"cboOpt2VariabelNaamGedeelte"_s};
  return CheckText(input.extension, u"File-extensie"_s, kLongestItemExtension, u"txtOpt2FileExtensie"_s);
}

std::optional<Refusal> CheckSpotCount(const ItemInput& input) {
  const QString count = u"txtAantalSpots"_s;
  if (!runtime::IsNumeric(input.aantalSpots)) return Refusal{3028, u"Aantal spots"_s, {}, count};
  if (!runtime::IsNumeric(input.maxAantalSpots))
    return Refusal{3028, u"Maximum aantal spots"_s, {}, u"txtMaxAantalSpots"_s};
  if (runtime::ToLong(input.aantalSpots) < 1) return Refusal{5107, u"0"_s, {}, count};
  if (runtime::ToLong(input.aantalSpots) > runtime::ToLong(input.maxAantalSpots)) return Refusal{5106, {}, {}, count};
  return std::nullopt;
}

}  // namespace

std::optional<Refusal> CheckItem(const ItemInput& input, const std::function<bool()>& isDuplicate) {
  if (auto refusal = CheckText(input.naam, u"Item-naam"_s, kLongestItemNaam, u"txtNaam"_s)) return refusal;
  if (isDuplicate()) return Refusal{1600, runtime::TrimBlanks(input.naam), u"Item-naam"_s, u"txtNaam"_s};
  if (input.hasList && input.listedSpots == 0) return Refusal{5005, {}, {}, {}};
  if (input.hasPattern) {
    if (auto refusal = CheckPattern(input)) return refusal;
  }
  return input.severalSpots ? CheckSpotCount(input) : std::nullopt;
}
