// SPDX-License-Identifier: MIT
#include "platform/jet/table/PageClaims.h"

#include "platform/jet/pages/FreePages.h"
#include "platform/jet/pages/UsageMap.h"
#include "platform/jet/rows/StoredTable.h"
#include "platform/jet/table/Catalog.h"
#include "platform/jet/values/Damage.h"

#include <vector>

namespace jet {

namespace {

// The pages that the maps and definitions of all tables reference.
class Claims {
 public:
  Claims(PageSource& pages, const UsageMap& freePages)
      : pages_(pages), freePages_(freePages), claimed_(pages.PageCount()) {
    for (const std::uint32_t page : freePages.BitmapPages())
      Add(page);
    AddMap(kSecondMap);
    const Catalog catalog = Catalog::Read(pages);
    if (!catalog.Damages().empty()) throw Damage(catalog.Damages().front());
    for (const CatalogEntry& entry : catalog.Entries()) {
      if (entry.IsTable()) AddTable(ReadStoredTable(pages, static_cast<std::uint32_t>(entry.id)));
    }
  }

  bool Contains(std::uint32_t page) const { return claimed_[page]; }
  const std::set<std::uint32_t>& PastEnd() const { return pastEnd_; }
  const std::multimap<std::uint32_t, RowId>& StillInIndexMap() const { return stillInIndexMap_; }

 private:
  void AddTable(const StoredTable& table) {
    for (const std::uint32_t page : table.pages)
      Add(page);
    AddMap(table.ownedMap);
    AddMap(table.freeMap);
    for (const StoredColumn& column : table.columns) {
      AddMap(column.ownedMap);
      AddMap(column.freeMap);
    }
    for (const StoredIndex& index : table.realIndexes) {
      Add(index.root);
      AddMap(index.map, index.root);
    }
  }

  // `root`: root page of the index whose map it is; 0 for other maps.
  void AddMap(RowId where, std::uint32_t root = 0) {
    if (where == 0) return;
    const UsageMap map = UsageMap::Read(pages_, where);
    Add(PageOf(where));
    for (const std::uint32_t page : map.BitmapPages())
      Add(page);
    for (const std::uint32_t page : map.Members()) {
      const bool isEmptied = root != 0 && page != root && freePages_.Contains(page) && IsUnwritten(*pages_.Read(page));
      if (isEmptied) {
        stillInIndexMap_.emplace(page, where);
      } else {
        Add(page);
      }
    }
    pastEnd_.insert(map.PastEnd().begin(), map.PastEnd().end());
  }

  void Add(std::uint32_t page) {
    if (page < claimed_.size()) claimed_[page] = true;
  }

  PageSource& pages_;
  const UsageMap& freePages_;
  std::vector<bool> claimed_;
  std::set<std::uint32_t> pastEnd_;
  std::multimap<std::uint32_t, RowId> stillInIndexMap_;
};

bool HoldsSomething(const PageBytes& page) {
  const auto type = static_cast<PageType>(page[0]);
  return type != PageType::Unwritten && type != PageType::FreedData && type != PageType::FreedDefinition;
}

}  // namespace

DoubtfulFreePages FindDoubtfulFreePages(PageSource& pages) {
  const UsageMap freePages = UsageMap::Read(pages, kFreePagesMap);
  RequireUsable(freePages, pages.PageCount());
  const std::vector<std::uint32_t> free = freePages.Members();
  DoubtfulFreePages doubtful;
  try {
    const Claims claims(pages, freePages);
    doubtful = {claims.PastEnd(), claims.StillInIndexMap()};
    for (const std::uint32_t page : free) {
      if (claims.Contains(page)) doubtful.inUse.insert(page);
    }
  } catch (const Error& error) {
    if (error.Code() != ErrorCode::Damaged) throw;
    for (const std::uint32_t page : free) {
      if (HoldsSomething(*pages.Read(page))) doubtful.inUse.insert(page);
    }
  }
  return doubtful;
}

}  // namespace jet
