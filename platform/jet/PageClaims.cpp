#include "platform/jet/PageClaims.h"

#include "platform/jet/Catalog.h"
#include "platform/jet/Damage.h"
#include "platform/jet/TableDef.h"
#include "platform/jet/UsageMap.h"

#include <vector>

namespace jet {

namespace {

constexpr RowId kGlobalMap = MakeRowId(1, 0);
constexpr std::uint8_t kFreedDefinition = 8;
constexpr std::uint8_t kFreedData = 9;

/// Which pages the maps and definitions of all tables name.
class Claims {
 public:
  explicit Claims(PageSource& pages) : pages_(pages), claimed_(pages.PageCount()) {
    const Catalog catalog = Catalog::Read(pages);
    if (!catalog.Damages().empty()) throw Damage(catalog.Damages().front());
    for (const CatalogEntry& entry : catalog.Entries()) {
      if (entry.IsTable()) AddTable(ReadTableDef(pages, static_cast<std::uint32_t>(entry.id)));
    }
  }

  bool Contains(std::uint32_t page) const { return claimed_[page]; }
  const std::set<std::uint32_t>& PastEnd() const { return pastEnd_; }

 private:
  void AddTable(const TableDef& table) {
    for (const std::uint32_t page : table.pages)
      Add(page);
    AddMap(table.ownedMap);
    AddMap(table.freeMap);
    for (const ColumnDef& column : table.columns) {
      AddMap(column.ownedMap);
      AddMap(column.freeMap);
    }
    for (const RealIndexDef& index : table.realIndexes) {
      Add(index.root);
      AddMap(index.map);
    }
  }

  void AddMap(RowId where) {
    if (where == 0) return;
    const UsageMap map = UsageMap::Read(pages_, where);
    Add(PageOf(where));
    for (const std::uint32_t page : map.BitmapPages())
      Add(page);
    for (const std::uint32_t page : map.Members())
      Add(page);
    pastEnd_.insert(map.PastEnd().begin(), map.PastEnd().end());
  }

  void Add(std::uint32_t page) {
    if (page < claimed_.size()) claimed_[page] = true;
  }

  PageSource& pages_;
  std::vector<bool> claimed_;
  std::set<std::uint32_t> pastEnd_;
};

bool HoldsSomething(const PageBytes& page) {
  return page[0] != static_cast<std::uint8_t>(PageType::Unwritten) && page[0] != kFreedData &&
         page[0] != kFreedDefinition;
}

}  // namespace

std::set<std::uint32_t> FindWronglyFreePages(PageSource& pages) {
  const std::vector<std::uint32_t> free = UsageMap::Read(pages, kGlobalMap).Members();
  std::set<std::uint32_t> wrong;
  try {
    const Claims claims(pages);
    wrong = claims.PastEnd();
    for (const std::uint32_t page : free) {
      if (claims.Contains(page)) wrong.insert(page);
    }
  } catch (const Error& error) {
    if (error.Code() != ErrorCode::Damaged) throw;
    for (const std::uint32_t page : free) {
      if (HoldsSomething(*pages.Read(page))) wrong.insert(page);
    }
  }
  return wrong;
}

}  // namespace jet
