// SPDX-License-Identifier: MIT
#include "platform/dao/JetCursor.h"

#include "platform/dao/JetValue.h"
#include "platform/runtime/Error.h"

#include <variant>

using namespace Qt::StringLiterals;

namespace dao {

WantedColumns::WantedColumns(const FieldMask& wanted) {
  for (std::size_t field = 0; columns.size() < wanted.count(); ++field) {
    if (!wanted[field]) continue;
    places[field] = static_cast<std::uint8_t>(columns.size());
    columns.push_back(field);
  }
}

ValueView JetCursor::Field(std::size_t field) const {
  if (!mask_[field]) return {};
  const jet::Value& stored = Values()[wanted_.places[field]];
  const bool becomesText = std::holds_alternative<jet::Guid>(stored) || std::holds_alternative<jet::Currency>(stored) ||
                           std::holds_alternative<jet::Decimal>(stored);
  if (!becomesText) {
    std::u16string unused;
    return ViewOf(stored, unused);
  }
  return ViewOf(stored, texts_.emplace_back());
}

bool JetScan::Next() {
  ForgetTexts();
  return file_.WithUserErrors([&] { return cursor_.Next(); });
}

bool JetKeyScan::Next() {
  ForgetTexts();
  return file_.WithUserErrors([&] {
    if (!cursor_.Next()) return false;
    if (!row_.Fetch(cursor_.Id())) {
      throw runtime::Error(
          u"Het bestand '%1' is beschadigd: een index van de tabel '%2' noemt een rij die er niet is."_s.arg(
              file_.PathText(), QString::fromStdU16String(table_.Definition().name)));
    }
    return true;
  });
}

}  // namespace dao
