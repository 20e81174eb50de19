#include "platform/jet/TableWriter.h"

#include <algorithm>
#include <random>

#include "platform/jet/Codec.h"
#include "platform/jet/Damage.h"
#include "platform/jet/IndexCursor.h"
#include "platform/jet/IndexKey.h"
#include "platform/jet/Rows.h"
#include "platform/jet/StoredText.h"
#include "platform/jet/Utf8.h"

namespace jet {

namespace {

Guid RandomGuid() {
  std::random_device random;
  Guid guid;
  for (std::uint8_t& byte : guid.bytes)
    byte = static_cast<std::uint8_t>(random());
  guid.bytes[7] = static_cast<std::uint8_t>((guid.bytes[7] & 0x0F) | 0x40);
  guid.bytes[8] = static_cast<std::uint8_t>((guid.bytes[8] & 0x3F) | 0x80);
  return guid;
}

Bytes BytesOf(const ColumnDef& column, const Value& value) {
  if (column.Type() == ColumnType::Ole) {
    if (const Bytes* bytes = std::get_if<Bytes>(&value)) return *bytes;
  } else if (const std::u16string* text = std::get_if<std::u16string>(&value)) {
    return EncodeText(*text, column.MayCompress() && text->size() <= kMaxCompressedMemo);
  }
  throw Error(ErrorCode::Misuse, "De waarde is niet van de soort van veld '" + ToUtf8(column.name) + "'.");
}

/// A number or text as an error shows it; nothing for the others.
std::string Shown(const Value& value) {
  if (const auto* number = std::get_if<std::int64_t>(&value)) return ' ' + std::to_string(*number);
  if (const auto* text = std::get_if<std::u16string>(&value)) return " '" + ToUtf8(*text) + "'";
  return {};
}

/// Where the bytes of a moved row are; 0 for a row in its first place. Nothing when there is no such row.
std::optional<RowId> TargetOf(PageSource& pages, RowId row) {
  const DataPage page(pages.Read(PageOf(row)), PageOf(row));
  if (SlotOf(row) >= page.SlotCount()) return std::nullopt;
  const Slot slot = page.At(SlotOf(row));
  if (slot.kind == SlotKind::Row) return 0;
  if (slot.kind != SlotKind::Pointer) return std::nullopt;
  const RowId target = U32(page.BytesOf(slot), 0);
  const DataPage targetPage(pages.Read(PageOf(target)), PageOf(target));
  if (targetPage.At(SlotOf(target)).kind != SlotKind::Target)
    throw DamageAt(PageOf(row), "een verplaatste rij ontbreekt");
  return target;
}

}  // namespace

template <typename Work>
auto TableWriter::Naming(Work work) const {
  try {
    return work();
  } catch (const Error& error) {
    throw Error(error.Code(), "Tabel '" + ToUtf8(definition_.name) + "': " + error.what());
  }
}

TableWriter::TableWriter(Transaction& pages, TableDef def, TableDefinition definition)
    : pages_(pages),
      space_(pages),
      def_(std::move(def)),
      definition_(std::move(definition)),
      rows_(pages, space_, def_.page, def_.ownedMap, def_.freeMap),
      relations_(pages, def_),
      longValues_(def_.columns.size()) {
  for (const ColumnDef& column : def_.columns)
    places_.push_back(definition_.FindColumn(column.name));
  Naming([&] {
    CheckSupported();
    MakeTrees();
  });
}

void TableWriter::CheckSupported() const {
  for (std::size_t i = 0; i < def_.columns.size(); ++i) {
    if (!def_.columns[i].KnownType()) throw Error(ErrorCode::Unsupported, NameOf(i) + " is van een onbekende soort.");
    if (!DefinitionOf(i).validationRule.empty()) {
      throw Error(ErrorCode::Unsupported, NameOf(i) + " heeft een validatieregel; die wordt niet ondersteund.");
    }
  }
  for (const RealIndexDef& index : def_.realIndexes) {
    for (const RealIndexDef::Field& field : index.fields) {
      if (CanBuildKeys(*def_.ColumnByNumber(field.column))) continue;
      throw Error(ErrorCode::Unsupported,
                  "een index gebruikt een sorteervolgorde die niet bekend is; er wordt niet in "
                  "geschreven.");
    }
  }
}

void TableWriter::MakeTrees() {
  for (const RealIndexDef& index : def_.realIndexes) {
    Tree tree;
    tree.def = &index;
    tree.unique = (index.flags & RealIndexDef::kUnique) != 0;
    tree.required = (index.flags & RealIndexDef::kRequired) != 0;
    for (const LogicalIndexDef& logical : def_.logicalIndexes) {
      if (&def_.realIndexes[logical.realIndex] != &index) continue;
      const bool primary = logical.role == LogicalIndexDef::Role::PrimaryKey;
      tree.unique |= primary;
      tree.required |= primary;
      if (tree.name.empty() || primary) tree.name = ToUtf8(logical.name);
    }
    for (const RealIndexDef::Field& field : index.fields) {
      tree.columns.push_back(static_cast<std::size_t>(def_.ColumnByNumber(field.column) - def_.columns.data()));
    }
    tree.writer = std::make_unique<IndexWriter>(pages_, space_, def_.page, index);
    trees_.push_back(std::move(tree));
  }
}

std::string TableWriter::NameOf(std::size_t column) const {
  return "veld '" + ToUtf8(def_.columns[column].name) + "'";
}

TableWriter::Values TableWriter::Arrange(const std::vector<Value>& values) const {
  if (values.size() != definition_.columns.size())
    throw Error(ErrorCode::Misuse, "Er is niet voor elk veld een waarde.");
  Values arranged;
  for (std::size_t i = 0; i < places_.size(); ++i) {
    arranged.push_back(values[places_[i]]);
    Normalise(i, arranged.back());
  }
  return arranged;
}

void TableWriter::Normalise(std::size_t column, Value& value) const {
  const ColumnDef& def = def_.columns[column];
  if (def.Type() == ColumnType::Boolean && IsNull(value)) value = false;
  if (double* number = std::get_if<double>(&value); number != nullptr && *number == 0) *number = 0;  // not -0
  if (const Decimal* number = std::get_if<Decimal>(&value); number != nullptr && def.Type() == ColumnType::Decimal) {
    value = Rescaled(def, *number);
  }
}

void TableWriter::CheckValue(std::size_t column, const Value& value) const {
  const ColumnDefinition& definition = DefinitionOf(column);
  if (IsNull(value)) {
    if (definition.required) throw Error(ErrorCode::Required, NameOf(column) + " moet een waarde hebben.");
    return;
  }
  const std::u16string* text = std::get_if<std::u16string>(&value);
  if (text != nullptr && text->empty() && !definition.allowZeroLength) {
    throw Error(ErrorCode::Required, NameOf(column) + " mag geen lege tekst hebben.");
  }
}

std::optional<Bytes> TableWriter::KeyOf(const Tree& tree, const Values& values) const {
  Values key;
  for (const std::size_t column : tree.columns)
    key.push_back(values[column]);
  const bool ignoresNulls = (tree.def->flags & RealIndexDef::kIgnoreNulls) != 0;
  if (ignoresNulls && std::all_of(key.begin(), key.end(), IsNull)) return std::nullopt;
  return BuildKey(def_, *tree.def, key);
}

void TableWriter::CheckKey(Tree& tree, const std::optional<Bytes>& key, const Values& values) {
  bool allNull = true;
  for (const std::size_t column : tree.columns) {
    const bool isNull = IsNull(values[column]);
    allNull = allNull && isNull;
    if (!isNull || !tree.required) continue;
    throw Error(ErrorCode::Required, NameOf(column) + " moet een waarde hebben: het is een sleutel.");
  }
  if (!tree.unique || allNull || !key || !tree.writer->Contains(*key)) return;
  throw Error(ErrorCode::Duplicate, "de waarde" + Shown(values[tree.columns.front()]) + " van " +
                                        NameOf(tree.columns.front()) + " bestaat al (index '" + tree.name + "').");
}

void TableWriter::InsertKey(Tree& tree, const std::optional<Bytes>& key, RowId row) {
  if (!key) return;
  if (tree.unique || !tree.writer->Contains(*key)) CountKey(*tree.def);
  tree.writer->Insert(*key, row);
}

void TableWriter::RemoveKey(Tree& tree, const Values& values, RowId row) {
  std::optional<Bytes> key;
  try {
    key = KeyOf(tree, values);
    if (!key) return;
  } catch (const Error& error) {
    if (error.Code() != ErrorCode::UnknownCharacter) throw;
  }
  if (!key || !tree.writer->Holds(*key, row)) key = tree.writer->KeyOfRow(row);
  if (!key) throw Damage("de rij ontbreekt in de index '" + tree.name + "'");
  tree.writer->Remove(*key, row);
}

/// Texts that differ in case only have the same key, too.
bool TableWriter::IsSameKey(const Tree& tree, const Values& before, const Values& after) const {
  const auto isSame = [&](std::size_t column) { return before[column] == after[column]; };
  if (std::all_of(tree.columns.begin(), tree.columns.end(), isSame)) return true;
  try {
    return KeyOf(tree, before) == KeyOf(tree, after);
  } catch (const Error& error) {
    if (error.Code() != ErrorCode::UnknownCharacter) throw;
    return false;
  }
}

void TableWriter::FillAutonumbers(Values& values, std::vector<Value>& given) {
  for (std::size_t i = 0; i < values.size(); ++i) {
    if (!def_.columns[i].IsAutonumber() || !IsNull(values[i])) continue;
    if (def_.columns[i].Type() == ColumnType::Guid) {
      values[i] = RandomGuid();
    } else {
      values[i] = NextNumber(i);
    }
    given[places_[i]] = values[i];
  }
}

/// The stored last number can be too low in real files: then the largest number that is there counts.
std::int64_t TableWriter::NextNumber(std::size_t column) {
  const PageRef page = pages_.Read(def_.page);
  const std::int64_t next = std::int64_t{Load<std::int32_t>(page->data() + kAutonumberAt)} + 1;
  for (Tree& tree : trees_) {
    if (!tree.unique || tree.columns != std::vector<std::size_t>{column}) continue;
    Bytes key;
    AppendKeyField(def_.columns[column], next, tree.def->fields[0].ascending, key);
    if (!tree.writer->Contains(key)) return next;
    IndexCursor cursor(pages_, def_.page, tree.def->root);
    if (tree.def->fields[0].ascending) {
      cursor.SeekLast();
    } else {
      cursor.SeekFirst();
    }
    const auto row = FindRow(pages_, cursor.Row(), true, def_.page);
    if (!row) throw Damage("een index noemt een rij die er niet is");
    Value largest;
    ReadField(pages_, RowView(row->bytes, def_), def_.columns[column], largest);
    return std::get<std::int64_t>(largest) + 1;
  }
  return next;
}

void TableWriter::RaiseAutonumber(std::size_t column, const Value& value) {
  const ColumnDef& def = def_.columns[column];
  const std::int64_t* number = std::get_if<std::int64_t>(&value);
  if (!def.IsAutonumber() || number == nullptr) return;
  const auto last = Load<std::int32_t>(pages_.Read(def_.page)->data() + kAutonumberAt);
  if (*number > last) Store(pages_.Change(def_.page).data() + kAutonumberAt, static_cast<std::int32_t>(*number));
}

void TableWriter::EncodeField(std::size_t column, const Value& value, Field& field) const {
  const ColumnDef& def = def_.columns[column];
  field = Field{};
  if (IsNull(value)) return;
  field.bit = true;
  if (def.Type() == ColumnType::Boolean) {
    const bool* bit = std::get_if<bool>(&value);
    if (bit == nullptr) throw Error(ErrorCode::Misuse, "De waarde is niet van de soort van " + NameOf(column) + ".");
    field.bit = *bit;
  } else if (def.IsLong()) {
    field.stored.resize(LongValueHead::kBytes);  // its place; the value itself comes when all is checked
  } else {
    field.stored = EncodeValue(def, value);
  }
}

void TableWriter::PutLongValues(const Values& values, const std::vector<bool>& changed, Fields& fields) {
  const bool any = std::any_of(def_.columns.begin(), def_.columns.end(), [](const ColumnDef& c) { return c.IsLong(); });
  std::size_t size = any ? BuildRow(def_, fields).size() : 0;
  for (std::size_t i = 0; i < fields.size(); ++i) {
    if (!def_.columns[i].IsLong() || !changed[i] || IsNull(values[i])) continue;
    const Bytes bytes = BytesOf(def_.columns[i], values[i]);
    const bool fits = size + bytes.size() <= RowPage::kMostRowBytes;
    fields[i].stored = LongValues(i).Write(bytes, fits);
    size += fields[i].stored.size() - LongValueHead::kBytes;
  }
}

LongValueWriter& TableWriter::LongValues(std::size_t column) {
  auto& writer = longValues_[column];
  if (writer == nullptr) writer = std::make_unique<LongValueWriter>(pages_, space_, def_.columns[column]);
  return *writer;
}

void TableWriter::CountRows(int change) {
  std::uint8_t* count = pages_.Change(def_.page).data() + kRowCountAt;
  const std::uint32_t rows = LoadU32(count);
  if (change > 0 || rows > 0) Store(count, rows + static_cast<std::uint32_t>(change));
}

void TableWriter::CountKey(const RealIndexDef& index) {
  // A continuation page of the definition begins with eight bytes that are not of the stream.
  constexpr std::size_t kContinuationHead = 8;
  constexpr std::size_t kPerContinuation = kPageSize - kContinuationHead;
  std::size_t page = 0;
  std::size_t at = index.distinctKeysAt;
  if (at + 4 > kPageSize) {
    page = 1 + (at - kPageSize) / kPerContinuation;
    at = kContinuationHead + (at - kPageSize) % kPerContinuation;
  }
  if (page >= def_.pages.size() || at + 4 > kPageSize) return;
  std::uint8_t* count = pages_.Change(def_.pages[page]).data() + at;
  Store(count, LoadU32(count) + 1);
}

RowId TableWriter::Insert(std::vector<Value>& given) {
  return Naming([&] {
    Values values = Arrange(given);
    FillAutonumbers(values, given);
    Fields fields(values.size());
    for (std::size_t i = 0; i < values.size(); ++i) {
      CheckValue(i, values[i]);
      EncodeField(i, values[i], fields[i]);
    }
    std::vector<std::optional<Bytes>> keys;
    for (Tree& tree : trees_) {
      keys.push_back(KeyOf(tree, values));
      CheckKey(tree, keys.back(), values);
    }
    relations_.CheckNames(values);
    PutLongValues(values, std::vector<bool>(values.size(), true), fields);
    const RowId row = rows_.Add(BuildRow(def_, fields));
    for (std::size_t i = 0; i < trees_.size(); ++i)
      InsertKey(trees_[i], keys[i], row);
    for (std::size_t i = 0; i < values.size(); ++i)
      RaiseAutonumber(i, values[i]);
    CountRows(1);
    return row;
  });
}

bool TableWriter::IsIndexed(std::size_t column) const {
  return std::any_of(trees_.begin(), trees_.end(), [&](const Tree& tree) {
    return std::find(tree.columns.begin(), tree.columns.end(), column) != tree.columns.end();
  });
}

TableWriter::Present TableWriter::Read(RowId row) {
  const auto target = TargetOf(pages_, row);
  const auto stored = FindRow(pages_, row, true, def_.page);
  if (!target || !stored) throw Error(ErrorCode::NotFound, "de rij bestaat niet meer.");
  Present present;
  present.target = *target;
  const RowView view(stored->bytes, def_);
  present.values.resize(def_.columns.size());
  present.fields.resize(def_.columns.size());
  for (std::size_t i = 0; i < def_.columns.size(); ++i) {
    const ColumnDef& column = def_.columns[i];
    if (!column.IsLong() || IsIndexed(i)) ReadField(pages_, view, column, present.values[i]);
    present.fields[i].bit = view.Bit(column);
    if (column.Type() == ColumnType::Boolean || !view.Bit(column)) continue;
    const ByteView bytes = view.BytesOf(column);
    present.fields[i].stored.assign(bytes.begin(), bytes.end());
  }
  return present;
}

void TableWriter::Update(RowId row, const std::vector<Value>& given, const std::vector<bool>& changedGiven) {
  Naming([&] {
    const Present present = Read(row);
    const Values arranged = Arrange(given);
    Values values = present.values;
    Fields fields = present.fields;
    std::vector<bool> changed(values.size());
    for (std::size_t i = 0; i < values.size(); ++i) {
      changed[i] = changedGiven[places_[i]];
      if (!changed[i]) continue;
      values[i] = arranged[i];
      CheckValue(i, values[i]);
      EncodeField(i, values[i], fields[i]);
    }
    std::vector<Tree*> touched;
    for (Tree& tree : trees_) {
      if (IsSameKey(tree, present.values, values)) continue;
      touched.push_back(&tree);
      CheckKey(tree, KeyOf(tree, values), values);
    }
    relations_.CheckChange(present.values, values);
    PutLongValues(values, changed, fields);
    Place(row, present, BuildRow(def_, fields));
    for (Tree* tree : touched) {
      RemoveKey(*tree, present.values, row);
      InsertKey(*tree, KeyOf(*tree, values), row);
    }
    for (std::size_t i = 0; i < values.size(); ++i) {
      if (!changed[i]) continue;
      if (def_.columns[i].IsLong() && present.fields[i].bit) LongValues(i).Release(present.fields[i].stored);
      RaiseAutonumber(i, values[i]);
    }
  });
}

void TableWriter::Place(RowId row, const Present& present, const Bytes& bytes) {
  const bool moved = present.target != 0;
  if (rows_.ReplaceInPlace(moved ? present.target : row, bytes, moved ? SlotKind::Target : SlotKind::Row)) return;
  const RowId target = rows_.Add(bytes, SlotKind::Target);
  Bytes pointer(4);
  Store(pointer.data(), target);
  if (!rows_.ReplaceInPlace(row, pointer, SlotKind::Pointer))
    throw DamageAt(PageOf(row), "geen plaats voor een verwijzing");
  if (moved) rows_.Delete(present.target);
}

void TableWriter::Delete(RowId row) {
  Naming([&] {
    const Present present = Read(row);
    relations_.CheckNotNamed(present.values);
    for (Tree& tree : trees_)
      RemoveKey(tree, present.values, row);
    for (std::size_t i = 0; i < def_.columns.size(); ++i) {
      if (def_.columns[i].IsLong() && present.fields[i].bit) LongValues(i).Release(present.fields[i].stored);
    }
    if (present.target != 0) rows_.Delete(present.target);
    rows_.Delete(row);
    CountRows(-1);
  });
}

}  // namespace jet
