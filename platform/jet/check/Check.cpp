// SPDX-License-Identifier: MIT
#include "platform/jet/check/Check.h"

#include "platform/jet/check/CheckState.h"
#include "platform/jet/database/Database.h"
#include "platform/jet/pages/DataPage.h"
#include "platform/jet/pages/FreePages.h"
#include "platform/jet/rows/StoredTableFormat.h"
#include "platform/jet/values/Codec.h"
#include "platform/jet/values/Damage.h"
#include "platform/jet/values/Utf8.h"

#include <algorithm>
#include <set>

namespace jet {

namespace {

constexpr std::size_t kDefinitionMarkAt = 12;
constexpr std::size_t kOrphansNamed = 10;

void CheckFileSize(Database& database, CheckState& state) {
  const std::uint64_t size = database.Shared().FileSize();
  if (size % kPageSize != 0) state.Problem("het bestand eindigt midden in een pagina");
}

void CheckDefinition(CheckState& state, const StoredTable& table) {
  const PageRef first = state.Source().Read(table.page);
  if (table.length != table.streamLength) {
    state.ProblemAt(table.page, "de tabeldefinitie is " + std::to_string(table.streamLength) +
                                    " bytes lang in plaats van " + std::to_string(table.length));
  }
  if (LoadU32(first->data() + kDefinitionMarkAt) != table_definition::kBlockMark) {
    state.ProblemAt(table.page, "de tabeldefinitie heeft een verkeerd kenmerk");
  }
  for (const std::uint32_t page : table.pages)
    state.Claim(page, state.Where() + "definitie");
}

void CheckTable(CheckState& state, const CatalogEntry& entry) {
  state.SetTable(ToUtf8(entry.name));
  state.Guard([&] {
    const StoredTable table = ReadStoredTable(state.Source(), static_cast<std::uint32_t>(entry.id));
    CheckDefinition(state, table);
    state.Guard([&] { CheckRows(state, table); });
    state.Guard([&] { CheckIndexes(state, table); });
  });
  state.SetTable({});
}

void CheckTables(Database& database, CheckState& state) {
  const Catalog& catalog = database.Objects();
  for (const std::string& damage : catalog.Damages())
    state.Problem(damage);
  std::set<std::int32_t> seen;
  for (const CatalogEntry& entry : catalog.Entries()) {
    if (!entry.IsTable()) continue;
    if (seen.insert(entry.id).second) {
      CheckTable(state, entry);
    } else {
      state.Problem("tabel '" + ToUtf8(entry.name) + "' heeft dezelfde definitie als een andere");
    }
  }
  if (seen.count(static_cast<std::int32_t>(kObjectsTable)) == 0) {
    state.Problem("de catalogus noemt zichzelf (MSysObjects) niet");
  }
}

std::string ListOf(const std::vector<std::uint32_t>& pages) {
  std::string list;
  for (std::size_t i = 0; i < std::min(pages.size(), kOrphansNamed); ++i) {
    list += (i == 0 ? "" : ", ") + std::to_string(pages[i]);
  }
  return pages.size() > kOrphansNamed ? list + " ..." : list;
}

// Compares every page with the map of free pages: a page is either in use or free.
void CheckFreePagesMap(CheckState& state) {
  const DataPage page(state.Source().Read(kFreePagesPage), kFreePagesPage);
  if (page.SlotCount() < 2) state.ProblemAt(kFreePagesPage, "de kaart van vrije pagina's ontbreekt");
  CheckDataPage(state, page, kFreePagesPage);
  const UsageMap free = state.ReadMap(kFreePagesMap, "de vrije pagina's");
  state.Guard([&] { RequireUsable(free, state.Source().PageCount()); });
  if (free.FirstPage() > 0) {
    state.Remark("de kaart van vrije pagina's begint pas bij pagina " + std::to_string(free.FirstPage()));
  }
  state.ReadMap(kSecondMap, "de tweede kaart");
  if (free.End() < state.Source().PageCount()) {
    state.ProblemAt(kFreePagesPage, "de kaart van vrije pagina's dekt het bestand niet: " + std::to_string(free.End()) +
                                        " van " + std::to_string(state.Source().PageCount()) + " pagina's");
  }
  std::vector<std::uint32_t> orphans;
  for (std::uint32_t number = 1; number < state.Source().PageCount(); ++number) {
    const bool claimed = state.IsClaimed(number);
    if (claimed && free.Contains(number)) {
      state.ProblemAt(number, "is in gebruik (" + state.Claims().at(number) + "), maar is als vrij gemarkeerd");
    }
    if (!claimed && !free.Contains(number)) orphans.push_back(number);
  }
  if (orphans.size() == 1) {
    state.Remark("1 pagina is in gebruik maar hoort nergens bij: " + ListOf(orphans));
  } else if (!orphans.empty()) {
    state.Remark(std::to_string(orphans.size()) +
                 " pagina's zijn in gebruik maar horen nergens bij: " + ListOf(orphans));
  }
}

}  // namespace

std::vector<Finding> CheckDatabase(Database& database) {
  std::vector<Finding> findings;
  CheckState state(database.Source(), findings);
  CheckFileSize(database, state);
  state.Guard([&] { CheckTables(database, state); });
  state.Guard([&] { CheckFreePagesMap(state); });
  return findings;
}

bool HasProblem(const std::vector<Finding>& findings) {
  return std::any_of(findings.begin(), findings.end(), [](const Finding& finding) { return !finding.remark; });
}

}  // namespace jet
