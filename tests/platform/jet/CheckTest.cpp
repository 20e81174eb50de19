// SPDX-License-Identifier: MIT
#include "platform/jet/check/Check.h"

#include "tests/platform/jet/SpotsImage.h"
#include "tests/platform/jet/support/SharedChain.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <functional>
#include <string>
#include <vector>

namespace {

using jet::Bytes;

std::vector<jet::Finding> Check(const Bytes& file) {
  return jet::CheckDatabase(*OpenBytes(file));
}

std::string Text(const std::vector<jet::Finding>& findings) {
  std::string text;
  for (const jet::Finding& finding : findings)
    text += finding.Line() + "\n";
  return text;
}

std::size_t SlotAt(jet::RowId row) {
  return 14 + 2 * jet::SlotOf(row);
}

void Put(DatabaseImage::Page& page, std::size_t at, std::uint64_t number, std::size_t size) {
  std::memcpy(page.data() + at, &number, size);
}

std::size_t StartOf(SpotsImage& sample, jet::RowId row) {
  return Get16(sample.image.At(jet::PageOf(row)), SlotAt(row)) & 0x1FFFu;
}

DatabaseImage::Page& PageOfRow(SpotsImage& sample, int id) {
  return sample.image.At(jet::PageOf(sample.rows.at(static_cast<std::size_t>(id))));
}

DatabaseImage::Page& Definition(SpotsImage& sample) {
  return sample.image.At(sample.spots.page);
}

std::uint32_t OwnedMap(const SpotsImage& sample) {
  return jet::MakeRowId(sample.spots.maps, 0);
}
std::uint32_t FreeMap(const SpotsImage& sample) {
  return jet::MakeRowId(sample.spots.maps, 1);
}
std::uint32_t MemoMap(const SpotsImage& sample) {
  return jet::MakeRowId(sample.spots.maps, 2);
}
std::uint32_t KeyMap(const SpotsImage& sample) {
  return DatabaseImage::MapOfIndex(sample.spots, 1);
}

// One kind of damage and the words that its finding must contain.
struct Damage {
  const char* name;
  std::function<void(SpotsImage&)> make;
  const char* expected;
};

void PutMemoHead(SpotsImage& sample, int id, const Bytes& head) {
  const jet::RowId row = sample.rows.at(static_cast<std::size_t>(id));
  const std::size_t memoAt = StartOf(sample, row) + 2 + 12 + 2;  // after column count, fixed area, one letter
  std::copy(head.begin(), head.end(), PageOfRow(sample, id).begin() + static_cast<std::ptrdiff_t>(memoAt));
}

// Leaves room for the first eight pages only.
void ShortenGlobalMap(SpotsImage& sample) {
  DatabaseImage::Page& page = sample.image.At(1);
  Put(page, 14, 4096 - 6, 2);
  Put(page, 4096 - 6, 0, 6);
}

const Damage kPageDamages[] = {
    {"the page type of a data page", [](SpotsImage& s) { PageOfRow(s, 1)[0] = 7; }, "gegevenspagina"},
    {"the owner of a data page", [](SpotsImage& s) { Put(PageOfRow(s, 1), 4, 99, 4); }, "hoort bij 99"},
    {"a data page that belongs to long values", [](SpotsImage& s) { Put(PageOfRow(s, 1), 4, 0x4C41564C, 4); },
     "hoort bij lange waarden in plaats van bij "},
    {"the owner of a page of long values", [](SpotsImage& s) { Put(s.image.At(s.memoPage), 4, 99, 4); },
     "hoort bij 99 in plaats van bij lange waarden"},
    {"the free bytes of a data page", [](SpotsImage& s) { PageOfRow(s, 1)[2] ^= 1; }, "vrije ruimte is"},
    {"too many slots", [](SpotsImage& s) { Put(PageOfRow(s, 1), 12, 3000, 2); }, "te veel rijen"},
    {"slots out of order", [](SpotsImage& s) { Put(PageOfRow(s, 2), SlotAt(s.rows[2]), 4095, 2); },
     "ligt buiten haar plaats"},
    {"a row that begins in the slots", [](SpotsImage& s) { Put(PageOfRow(s, 6), SlotAt(s.rows[6]), 16, 2); },
     "ligt buiten haar plaats"},
    {"a table definition of a wrong length", [](SpotsImage& s) { Definition(s)[8] ^= 1; }, "bytes lang in plaats van"},
    {"a table definition without its mark", [](SpotsImage& s) { Definition(s)[12] = 0; }, "verkeerd kenmerk"},
    {"a table definition of a wrong page type", [](SpotsImage& s) { Definition(s)[0] = 1; }, "soort 1 in plaats van 2"},
    {"a table definition that loops", [](SpotsImage& s) { Put(Definition(s), 4, s.spots.page, 4); }, "kring"},
    {"a column number past the last", [](SpotsImage& s) { Put(Definition(s), 41, 2, 2); }, "kolomnummer"},
    {"an index of no column", [](SpotsImage& s) { Put(Definition(s), 45, 4, 2); }, "definitie"},
};

const Damage kMapDamages[] = {
    {"a usage map that is gone", [](SpotsImage& s) { s.image.At(s.spots.maps)[15] |= 0xC0; },
     "gebruikskaart 0 ontbreekt"},
    {"a usage map of an unknown kind", [](SpotsImage& s) { s.image.At(s.spots.maps).at(StartOf(s, OwnedMap(s))) = 9; },
     "onbekende soort 9"},
    {"a page in two maps", [](SpotsImage& s) { s.image.AddToMap(OwnedMap(s), s.memoPage); }, "en ook bij"},
    {"room in a page that is not owned", [](SpotsImage& s) { s.image.AddToMap(FreeMap(s), s.memoPage); },
     "maar hoort er niet bij"},
    {"a used page that is marked free", [](SpotsImage& s) { s.image.AddToMap(0x100, s.memoPage); },
     "maar is als vrij gemarkeerd"},
    {"the free bytes of the page of the global map", [](SpotsImage& s) { s.image.At(1)[2] ^= 1; }, "vrije ruimte is"},
    {"the owner of the page of the global map", [](SpotsImage& s) { s.image.At(1)[4] = 0; }, "in plaats van bij 1"},
    {"a global map that ends before the file", [](SpotsImage& s) { ShortenGlobalMap(s); }, "dekt het bestand niet"},
    {"a long-value page outside of its map", [](SpotsImage& s) { s.image.AddToMap(MemoMap(s), s.memoPage, false); },
     "bevat een lange waarde"},
    {"a data page outside of its map", [](SpotsImage& s) { s.image.AddToMap(OwnedMap(s), s.spots.data, false); },
     "maar hoort er niet bij"},
    {"an index page outside of its map", [](SpotsImage& s) { s.image.AddToMap(KeyMap(s), s.leaves[1], false); },
     "maar hoort er niet bij"},
    {"a page of the index map outside of the tree", [](SpotsImage& s) { s.image.AddIndexPage(s.spots, 1); },
     "ligt niet in de boom"},
};

const Damage kRowDamages[] = {
    {"a row with too many columns", [](SpotsImage& s) { PageOfRow(s, 1)[StartOf(s, s.rows[1])] = 6; },
     "meer velden dan de tabel"},
    {"a value that ends after its row",
     [](SpotsImage& s) { PageOfRow(s, 1)[StartOf(s, s.rows[1]) + 2 + 12 + 2] = 0xF0; }, "buiten de rij"},
    {"a row pointer to nothing", [](SpotsImage& s) { PageOfRow(s, 3)[StartOf(s, s.rows[3])] = 77; }, "die er niet is"},
    {"a row pointer that loops", [](SpotsImage& s) { Put(PageOfRow(s, 3), StartOf(s, s.rows[3]), s.rows[3], 4); },
     "kring"},
    {"a moved row that nothing points at",
     [](SpotsImage& s) { Put(PageOfRow(s, 3), StartOf(s, s.rows[3]), s.rows[1], 4); }, "geen rij verwijst hierheen"},
    {"a long value that is cut short", [](SpotsImage& s) { Put(s.image.At(s.chainPages[0]), 4096 - 14, 0, 4); },
     "10 bytes in plaats van 20"},
    {"a long value whose piece is gone", [](SpotsImage& s) { s.image.At(s.memoPage)[15] |= 0xC0; }, "ontbreekt"},
    {"a piece of a long value used twice",
     [](SpotsImage& s) { PutMemoHead(s, 5, LongHead(12, 1, jet::MakeRowId(s.memoPage, 0))); }, "deelt een stuk"},
    {"a long value of an unknown kind", [](SpotsImage& s) { PutMemoHead(s, 4, LongHead(12, 3, 0)); },
     "onbekende soort"},
    {"a long value longer than the file", [](SpotsImage& s) { PutMemoHead(s, 5, LongHead(0x3FFFFFFF, 0, 0x300)); },
     "langer dan het bestand"},
    {"an inline value of a wrong length", [](SpotsImage& s) { PutMemoHead(s, 2, LongHead(3, 2, 0)); },
     "verkeerde lengte"},
};

const Damage kIndexDamages[] = {
    {"an index page of a wrong type", [](SpotsImage& s) { s.image.At(s.leaves[0])[0] = 1; },
     "in plaats van een indexpagina"},
    {"an index page of another table", [](SpotsImage& s) { s.image.At(s.leaves[0])[4] ^= 1; }, "bij een andere tabel"},
    {"the free bytes of an index page", [](SpotsImage& s) { s.image.At(s.leaves[0])[2] ^= 1; }, "vrije ruimte is"},
    {"an index that loops",
     [](SpotsImage& s) {
       s.image.PutIndexPage(s.root, s.spots, {s.IdEntry(3) + SpotsImage::Child(s.leaves[0])}, 0, 0, s.root, true);
     },
     "kring"},
    {"index entries out of order",
     [](SpotsImage& s) {
       s.image.PutIndexPage(s.leaves[1], s.spots, {s.IdEntry(5), s.IdEntry(4), s.IdEntry(6)}, s.leaves[0], 0);
     },
     "de volgorde klopt niet"},
    {"a row that an index misses",
     [](SpotsImage& s) {
       s.image.PutIndexPage(s.leaves[1], s.spots, {s.IdEntry(4), s.IdEntry(6)}, s.leaves[0], 0);
     },
     "ontbreekt"},
    {"an entry whose key is not the row's",
     [](SpotsImage& s) {
       s.image.PutIndexPage(s.leaves[1], s.spots,
                            {s.IdEntry(4), s.IdEntry(5), SpotsImage::IdKey(9) + SpotsImage::Pointer(s.rows[6])},
                            s.leaves[0], 0);
     },
     "of haar sleutel is er niet"},
    {"an entry for a row that is not there",
     [](SpotsImage& s) {
       s.image.PutIndexPage(s.leaves[1], s.spots,
                            {s.IdEntry(4), s.IdEntry(5), s.IdEntry(6), SpotsImage::IdKey(7) + Bytes{0, 0, 9, 9}},
                            s.leaves[0], 0);
     },
     "pagina 9, rij 9"},
    {"a unique key twice",
     [](SpotsImage& s) {
       s.image.PutIndexPage(s.leaves[1], s.spots,
                            {s.IdEntry(4), s.IdEntry(5), SpotsImage::IdKey(5) + SpotsImage::Pointer(s.rows[6])},
                            s.leaves[0], 0);
     },
     "komt tweemaal voor"},
    {"a broken chain of leaves backwards", [](SpotsImage& s) { s.image.At(s.leaves[1])[12] = 0; },
     "het vorige blad klopt niet"},
    {"a broken chain of leaves forwards", [](SpotsImage& s) { s.image.At(s.leaves[0])[16] = 0; },
     "het volgende blad klopt niet"},
    {"a node entry that is not its child's last",
     [](SpotsImage& s) {
       s.image.PutIndexPage(s.root, s.spots, {s.IdEntry(2) + SpotsImage::Child(s.leaves[0])}, 0, 0, s.leaves[1], true);
     },
     "niet de laatste van haar kind"},
    {"a shared prefix longer than the entries", [](SpotsImage& s) { s.image.At(s.leaves[0])[24] = 200; },
     "gedeelde begin"},
};

void ExpectFound(const Damage& damage) {
  SCOPED_TRACE(damage.name);
  SpotsImage sample;
  damage.make(sample);
  const auto findings = Check(sample.image.File());
  EXPECT_NE(Text(findings).find(damage.expected), std::string::npos) << Text(findings);
}

TEST(Check, FindsNothingInASoundFile) {
  EXPECT_EQ(Text(Check(SpotsImage().image.File())), "");
}

TEST(Check, FindsDamagedPagesAndDefinitions) {
  for (const Damage& damage : kPageDamages)
    ExpectFound(damage);
}

TEST(Check, FindsDamagedMaps) {
  for (const Damage& damage : kMapDamages)
    ExpectFound(damage);
}

TEST(Check, FindsDamagedRowsAndLongValues) {
  for (const Damage& damage : kRowDamages)
    ExpectFound(damage);
}

TEST(Check, FindsDamagedIndexes) {
  for (const Damage& damage : kIndexDamages)
    ExpectFound(damage);
}

TEST(Check, FindsAFileThatEndsInTheMiddleOfAPage) {
  Bytes file = SpotsImage().image.File();
  file.resize(file.size() + 100);
  EXPECT_TRUE(jet::HasProblem(Check(file)));
}

TEST(Check, FindsADamagedCatalogueAndStillChecksTheRest) {
  SpotsImage sample;
  sample.image.At(2)[0] = 9;
  EXPECT_NE(Text(Check(sample.image.File())).find("pagina 2: soort 9 in plaats van 2"), std::string::npos);
}

TEST(Check, StaleCountsAndOrphanPagesAreRemarksOnly) {
  SpotsImage sample;
  sample.image.SetRowCount(sample.spots, 8, 2);
  const std::uint32_t orphan = sample.image.NewPage();
  const auto findings = Check(sample.image.File());
  EXPECT_FALSE(jet::HasProblem(findings));
  EXPECT_EQ(Text(findings),
            "opmerking: tabel 'Spots', de tabel telt 8 rijen, er zijn er 6\n"
            "opmerking: tabel 'Spots', het laatste automatische nummer staat op 2, het grootste is 6\n"
            "opmerking: 1 pagina is in gebruik maar hoort nergens bij: " +
                std::to_string(orphan) + "\n");
}

// 20 memos with the same chain of 300 pieces: one finding for each memo.
TEST(Check, NamesALongValueThatIsSharedOnceForEachRow) {
  const auto findings = Check(jet::test::SharedChain(20, 300));
  EXPECT_TRUE(jet::HasProblem(findings));
  EXPECT_EQ(findings.size(), 19U) << Text(findings);
}

TEST(Check, AMovedRowThatNothingPointsAtIsARemark) {
  SpotsImage sample;
  sample.image.AddRow(sample.spots, jet::Bytes(30, 0), jet::SlotKind::Target);
  const auto findings = Check(sample.image.File());
  EXPECT_FALSE(jet::HasProblem(findings)) << Text(findings);
  EXPECT_NE(Text(findings).find("geen rij verwijst hierheen"), std::string::npos) << Text(findings);
}

TEST(Check, LimitsTheNumberOfFindings) {
  SpotsImage sample;
  for (int i = 0; i < 400; ++i) {
    sample.spots.data = 0;  // a new page for every four rows
    for (int moved = 0; moved < 4; ++moved)
      sample.image.AddRow(sample.spots, Le(0xFFFFFF00, 4), jet::SlotKind::Pointer);
  }
  EXPECT_EQ(Check(sample.image.File()).size(), jet::kMaxFindings + 1);
}

}  // namespace
