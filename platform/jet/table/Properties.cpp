// SPDX-License-Identifier: MIT
#include "platform/jet/table/Properties.h"

#include "platform/jet/values/Codec.h"
#include "platform/jet/values/Damage.h"
#include "platform/jet/values/Names.h"
#include "platform/jet/values/StoredText.h"

#include <algorithm>
#include <iterator>

namespace jet {

namespace {

constexpr std::uint8_t kSignature[] = {'M', 'R', '2', 0};
constexpr std::uint16_t kNameList = 0x80;
constexpr std::uint16_t kTableSet = 0;
constexpr std::uint16_t kColumnSet = 1;
constexpr std::size_t kChunkHead = 6;   // u32 length, u16 kind
constexpr std::size_t kRecordHead = 8;  // u16 length, u8 DDL, u8 type, u16 name, u16 data length

std::vector<std::u16string> ParseNames(ByteView body) {
  std::vector<std::u16string> names;
  for (std::size_t at = 0; at < body.size();) {
    const std::size_t length = U16(body, at);
    names.push_back(DecodePlainText(Part(body, at + 2, length)));
    at += 2 + length;
  }
  return names;
}

Property ParseRecord(ByteView record, const std::vector<std::u16string>& names) {
  Property property;
  property.ddl = U8(record, 2) != 0;
  property.type = U8(record, 3);
  const std::size_t name = U16(record, 4);
  if (name >= names.size()) throw Damage("een eigenschap heeft geen naam");
  property.name = names[name];
  const ByteView data = Part(record, kRecordHead, U16(record, 6));
  property.data.assign(data.begin(), data.end());
  return property;
}

PropertySet ParseSet(ByteView body, const std::vector<std::u16string>& names) {
  PropertySet set;
  const std::size_t headLength = U32(body, 0);
  set.column = DecodePlainText(Part(body, 6, U16(body, 4)));
  for (std::size_t at = headLength; at < body.size();) {
    const std::size_t length = U16(body, at);
    if (length < kRecordHead) throw Damage("een eigenschap is te kort");
    set.properties.push_back(ParseRecord(Part(body, at, length), names));
    at += length;
  }
  return set;
}

template <typename Number>
void Append(Bytes& out, Number number) {
  out.resize(out.size() + sizeof number);
  Store(out.data() + out.size() - sizeof number, number);
}

void AppendName(Bytes& out, std::u16string_view name) {
  const Bytes text = EncodePlainText(name);
  Append(out, static_cast<std::uint16_t>(text.size()));
  out.insert(out.end(), text.begin(), text.end());
}

void AppendChunk(Bytes& out, std::uint16_t kind, const Bytes& body) {
  Append(out, static_cast<std::uint32_t>(kChunkHead + body.size()));
  Append(out, kind);
  out.insert(out.end(), body.begin(), body.end());
}

std::vector<std::u16string> CollectNames(const std::vector<PropertySet>& sets) {
  std::vector<std::u16string> names;
  for (const PropertySet& set : sets) {
    for (const Property& property : set.properties) {
      if (std::find(names.begin(), names.end(), property.name) == names.end()) names.push_back(property.name);
    }
  }
  return names;
}

Bytes BuildSet(const PropertySet& set, const std::vector<std::u16string>& names) {
  Bytes body;
  Append(body, static_cast<std::uint32_t>(6 + 2 * set.column.size()));
  AppendName(body, set.column);
  for (const Property& property : set.properties) {
    const auto name = std::find(names.begin(), names.end(), property.name) - names.begin();
    Append(body, static_cast<std::uint16_t>(kRecordHead + property.data.size()));
    Append(body, static_cast<std::uint8_t>(property.ddl ? 1 : 0));
    Append(body, property.type);
    Append(body, static_cast<std::uint16_t>(name));
    Append(body, static_cast<std::uint16_t>(property.data.size()));
    body.insert(body.end(), property.data.begin(), property.data.end());
  }
  return body;
}

}  // namespace

const Property* PropertySet::Find(std::u16string_view name) const {
  for (const Property& property : properties) {
    if (SameName(property.name, name)) return &property;
  }
  return nullptr;
}

bool PropertySet::FlagOf(std::u16string_view name, bool whenMissing) const {
  const Property* property = Find(name);
  return property != nullptr && !property->data.empty() ? property->data[0] != 0 : whenMissing;
}

std::u16string PropertySet::TextOf(std::u16string_view name) const {
  const Property* property = Find(name);
  std::u16string text = property != nullptr ? DecodePlainText(property->data) : std::u16string();
  while (!text.empty() && text.back() == u'\0')
    text.pop_back();
  return text;
}

std::vector<PropertySet> ParseProperties(ByteView block) {
  if (!std::equal(block.begin(), block.begin() + std::min<std::ptrdiff_t>(4, std::ssize(block)), kSignature,
                  kSignature + 4)) {
    throw Damage("de eigenschappen zijn van een onbekende soort");
  }
  std::vector<std::u16string> names;
  std::vector<PropertySet> sets;
  for (std::size_t at = sizeof kSignature; at < block.size();) {
    const std::size_t length = U32(block, at);
    if (length < kChunkHead) throw Damage("de eigenschappen zijn afgebroken");
    const ByteView chunk = Part(block, at, length);
    const std::uint16_t kind = U16(chunk, 4);
    if (kind == kNameList) names = ParseNames(chunk.subspan(kChunkHead));
    if (kind == kTableSet || kind == kColumnSet) sets.push_back(ParseSet(chunk.subspan(kChunkHead), names));
    at += length;
  }
  return sets;
}

Bytes BuildProperties(const std::vector<PropertySet>& sets) {
  Bytes out(kSignature, kSignature + sizeof kSignature);
  const std::vector<std::u16string> names = CollectNames(sets);
  Bytes nameList;
  for (const std::u16string& name : names)
    AppendName(nameList, name);
  AppendChunk(out, kNameList, nameList);
  for (const PropertySet& set : sets) {
    AppendChunk(out, set.column.empty() ? kTableSet : kColumnSet, BuildSet(set, names));
  }
  return out;
}

}  // namespace jet
