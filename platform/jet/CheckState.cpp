#include "platform/jet/CheckState.h"

#include "platform/jet/Damage.h"

namespace jet {

namespace {

const std::string kMapOwner = "gebruikskaarten";
constexpr RowId kGlobalMap = MakeRowId(1, 0);

}  // namespace

void CheckState::Add(bool remark, const std::string& text) {
  if (findings_.size() > kMostFindings) return;
  if (findings_.size() == kMostFindings) {
    findings_.push_back({false, "er zijn nog meer bevindingen"});
    return;
  }
  findings_.push_back({remark, Where() + text});
}

void CheckState::ProblemAt(std::uint32_t page, const std::string& what) {
  Problem("pagina " + std::to_string(page) + ": " + what);
}

void CheckState::Claim(std::uint32_t page, const std::string& owner) {
  const auto [entry, isNew] = claims_.emplace(page, owner);
  if (!isNew) ProblemAt(page, "hoort bij " + entry->second + " en ook bij " + owner);
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
    if (where != kGlobalMap && !map.PastEnd().empty()) {
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

void CheckState::Note(const Error& error) {
  if (error.Code() != ErrorCode::Damaged) throw error;
  Problem(error.what());
}

}  // namespace jet
