// SPDX-License-Identifier: MIT
#include "platform/jet/check/DatabaseCopy.h"

#include "platform/jet/check/Check.h"
#include "platform/jet/check/CheckState.h"
#include "platform/jet/database/Database.h"
#include "platform/jet/database/NewDatabase.h"
#include "platform/jet/pages/FreePages.h"
#include "platform/jet/pages/Header.h"
#include "platform/jet/pages/PageSpace.h"
#include "platform/jet/pages/UsageMap.h"
#include "platform/jet/pages/UsageMapAllocator.h"
#include "platform/jet/values/Damage.h"
#include "platform/jet/values/Utf8.h"

#include <algorithm>
#include <map>

namespace jet {

namespace {

constexpr std::uint32_t kEnginePages = 6;  // header, maps, the definitions of the four engine tables
constexpr std::uint32_t kFirstTable = 2;
constexpr std::uint32_t kMaxUnused = 8;  // at most one of so many pages may be free

bool IsEngineTable(std::uint32_t page) {
  return page < kEnginePages;
}

}  // namespace

DatabaseCopy::DatabaseCopy(Database& source) : source_(source) {
  ReadTables();
  RequireNothingLost();
  RequireSoundRows();
  std::set<std::uint32_t> keeping;
  for (const StoredTable& table : tables_)
    keeping.insert(table.page);
  Build(keeping);
  const std::uint32_t used = UsedPages();
  if (pages_->PageCount() - used <= used / kMaxUnused) return;
  std::erase_if(keeping, [&](std::uint32_t page) { return page >= used; });
  Build(keeping);
}

void DatabaseCopy::ReadTables() {
  const Catalog catalog = Catalog::Read(source_.Source());
  if (!catalog.Damages().empty()) throw Damage(catalog.Damages().front());
  std::map<std::uint32_t, std::string> names;
  for (std::uint32_t page = kFirstTable; page < kEnginePages; ++page) {
    // Their pages are fixed, even if the catalogue does not list them.
    const bool isTable = (*source_.Source().Read(page))[0] == static_cast<std::uint8_t>(PageType::Definition);
    if (isTable) names[page] = "MSys";
  }
  for (const CatalogEntry& entry : catalog.Entries()) {
    if (entry.IsTable()) names[static_cast<std::uint32_t>(entry.id)] = ToUtf8(entry.name);
  }
  for (const auto& [page, name] : names) {
    tables_.push_back(ReadStoredTable(source_.Source(), page));
    names_.push_back(name);
  }
}

void DatabaseCopy::RequireNothingLost() {
  const auto refuse = [&](const std::string& what) {
    throw Error(ErrorCode::Unsupported,
                "Het bestand '" + source_.Name() + "' heeft " + what + ", wat bij het comprimeren verloren zou gaan.");
  };
  const UsageMap second = UsageMap::Read(source_.Source(), kSecondMap);
  if (!second.Members().empty() || !second.PastEnd().empty()) refuse("een tweede kaart van pagina's die niet leeg is");
  for (std::size_t i = 0; i < tables_.size(); ++i) {
    for (const StoredColumn& column : tables_[i].columns) {
      if (column.KnownType()) continue;
      refuse("in tabel '" + names_[i] + "' het veld '" + ToUtf8(column.name) + "' van een onbekende soort");
    }
  }
}

// Unreachable rows are not copied, which must not happen silently. Damage of an index is accepted, since the copy gets
// new indexes.
void DatabaseCopy::RequireSoundRows() {
  std::vector<Finding> findings;
  CheckState state(source_.Source(), findings);
  for (std::size_t i = 0; i < tables_.size(); ++i) {
    state.SetTable(names_[i]);
    state.Guard([&] { CheckRows(state, tables_[i]); });
  }
  const auto problem = std::ranges::find(findings, false, &Finding::remark);
  if (problem != findings.end()) throw Damage(problem->text);
}

void DatabaseCopy::Build(const std::set<std::uint32_t>& keeping) {
  pages_ = std::make_unique<Transaction>(nothing_);
  places_.clear();
  for (std::uint32_t page = 0; page < kEnginePages; ++page)
    pages_->Append();
  pages_->Change(0) = *source_.Source().Read(0);
  MarkChange(pages_->Change(0));
  FormatFreePagesMap(*pages_, kEnginePages);
  PageSpace space(*pages_);
  TakePlaces(space, keeping);
  UsageMapAllocator engineMaps(*pages_, space);
  for (const StoredTable& table : tables_) {
    UsageMapAllocator maps(*pages_, space);
    UsageMapAllocator& its = IsEngineTable(table.page) ? engineMaps : maps;
    TableCopy(source_.Source(), table, *pages_, space, its, places_).Run();
  }
}

// Allocates the fixed definition pages before any other page.
void DatabaseCopy::TakePlaces(PageSpace& space, std::set<std::uint32_t> keeping) {
  for (const StoredTable& table : tables_) {
    if (!IsEngineTable(table.page)) continue;
    places_[table.page] = table.page;
    keeping.erase(table.page);
  }
  std::vector<std::uint32_t> between;
  while (!keeping.empty()) {
    const std::uint32_t page = space.Allocate();
    // A page of the map of free pages itself may now be where a table was.
    keeping.erase(keeping.begin(), keeping.lower_bound(page));
    if (keeping.erase(page) != 0) {
      places_[page] = page;
    } else {
      between.push_back(page);
    }
  }
  space.Release(between);
  for (const StoredTable& table : tables_) {
    if (!places_.contains(table.page)) places_[table.page] = space.Allocate();
  }
}

std::uint32_t DatabaseCopy::UsedPages() {
  const UsageMap free = UsageMap::Read(*pages_, kFreePagesMap);
  return pages_->PageCount() - static_cast<std::uint32_t>(free.Members().size());
}

void DatabaseCopy::Compare(Database& target) {
  for (std::size_t i = 0; i < tables_.size(); ++i) {
    if (IsFaithfulCopy(source_.Source(), tables_[i], target.Source(), places_)) continue;
    throw Error(ErrorCode::Damaged, "De tabel '" + names_[i] + "' is niet goed overgenomen.");
  }
}

}  // namespace jet
