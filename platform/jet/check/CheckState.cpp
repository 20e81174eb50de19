// SPDX-License-Identifier: MIT
#include "platform/jet/check/CheckState.h"

#include "platform/jet/pages/FreePages.h"
#include "platform/jet/values/Damage.h"

namespace jet {

namespace {

const std::string kMapOwner = "gebruikskaarten";

}  // namespace

void CheckState::Add(bool remark, const std::string& text) {
  if (findings_.size() > kMaxFindings) return;
  if (findings_.size() == kMaxFindings) {
    findings_.push_back({false, "er zijn nog meer bevindingen"});
    return;
  }
  findings_.push_back({remark, Where() + text});
}

void CheckState::ProblemAt(std::uint32_t page, const std::string& what) {
  Problem("pagina " + std::to_string(page) + ": " + what);
}

bool CheckState::Claim(std::uint32_t page, const std::string& owner) {
  const auto [entry, isNew] = claims_.emplace(page, owner);
  if (!isNew) ProblemAt(page, "hoort bij " + entry->second + " en ook bij " + owner);
  return isNew;
}

void CheckState::ClaimMapPage(std::uint32_t page) {
  const auto found = claims_.find(page);
  if (found == claims_.end() || found->second != kMapOwner) Claim(page, kMapOwner);
}

UsageMap CheckState::ReadMap(RowId where, const std::string& what) {
  UsageMap map;
  if (where == 0) return map;
  Guard([&] {
    map = UsageMap::Read(pages_, where);
    ClaimMapPage(PageOf(where));
    if (where != kFreePagesMap && !map.PastEnd().empty()) {
      Problem("gebruikskaart van " + what + " noemt pagina " + std::to_string(map.PastEnd().front()) +
              " voorbij het einde van het bestand");
    }
    const auto [entry, isNew] = maps_.emplace(where, Where() + what);
    if (!isNew) ProblemAt(PageOf(where), "gebruikskaart van " + entry->second + " is ook die van " + what);
    for (const std::uint32_t page : map.BitmapPages())
      Claim(page, "een gebruikskaart");
  });
  return map;
}

bool CheckState::IsFree(std::uint32_t page) {
  if (!freePages_) {
    freePages_.emplace();
    try {
      freePages_ = UsageMap::Read(pages_, kFreePagesMap);
    } catch (const Error& error) {
      if (error.Code() != ErrorCode::Damaged) throw;  // reported where the map itself is checked
    }
  }
  return freePages_->Contains(page);
}

void CheckState::Note(const Error& error) {
  if (error.Code() != ErrorCode::Damaged) throw error;
  Problem(error.what());
}

bool CheckDataPage(CheckState& state, const DataPage& page, std::uint32_t owner) {
  if (page.Owner() != owner) {
    state.ProblemAt(page.Number(), WrongOwnerText(page.Owner(), owner));
    return false;
  }
  const std::size_t expected = page.MeasuredFreeBytes();
  if (page.FreeBytes() != expected) {
    state.ProblemAt(page.Number(), "vrije ruimte is " + std::to_string(page.FreeBytes()) + " in plaats van " +
                                       std::to_string(expected));
  }
  return true;
}

}  // namespace jet
