// SPDX-License-Identifier: MIT
#include "platform/jet/pages/Header.h"

#include "platform/jet/pages/Rc4.h"
#include "platform/jet/values/Codec.h"
#include "platform/jet/values/Error.h"
#include "platform/jet/values/StoredText.h"

#include <unistd.h>

#include <algorithm>
#include <cmath>
#include <string_view>

namespace jet {

namespace {

constexpr std::size_t kMaskedFrom = 0x18;
constexpr std::size_t kMaskedBytes = 128;
constexpr std::size_t kSignatureAt = 4;
constexpr std::size_t kVersionAt = 0x14;
constexpr std::size_t kEncodingKeyAt = 0x3E;
constexpr std::size_t kPasswordAt = 0x42;
constexpr std::size_t kPasswordBytes = 40;
constexpr std::size_t kEngineBuildAt = 0x6A;
constexpr std::size_t kSortOrderAt = 0x6E;
constexpr std::size_t kCreationDateAt = 0x72;

constexpr std::uint32_t kJet3 = 0;
constexpr std::uint32_t kJet4 = 1;

[[noreturn]] void Refuse(const std::string& fileName, const std::string& what) {
  throw Error(ErrorCode::NotADatabase, "Het bestand '" + fileName + "' is " + what);
}

bool HasSignature(ByteView page0, std::string_view signature) {
  const auto* text = reinterpret_cast<const char*>(page0.data() + kSignatureAt);
  return std::string_view(text, signature.size()) == signature;
}

void CheckKind(ByteView page0, const std::string& fileName) {
  const std::string onlyJet4 = "; alleen Jet 4-bestanden (Access 2000 tot en met 2003) kunnen worden gelezen.";
  if (page0.size() < kPageSize) Refuse(fileName, "geen database: het is korter dan één pagina.");
  if (HasSignature(page0, "Standard ACE DB")) {
    Refuse(fileName, "een nieuwere database (Access 2007 of later)" + onlyJet4);
  }
  if (HasSignature(page0, "MSISAM Database")) Refuse(fileName, "een Money-database" + onlyJet4);
  if (!HasSignature(page0, "Standard Jet DB") || LoadU32(page0.data()) != 0x100) Refuse(fileName, "geen database.");
  const std::uint32_t version = LoadU32(page0.data() + kVersionAt);
  if (version == kJet3) Refuse(fileName, "een Jet 3-database (Access 97)" + onlyJet4);
  if (version != kJet4) Refuse(fileName, "een database van onbekende versie " + std::to_string(version) + onlyJet4);
}

// The stored bytes are XORed with the four bytes of the creation day, repeated.
std::u16string ReadPassword(ByteView page0, double creationDate) {
  constexpr double kLastDay = 2958465;  // 9999-12-31
  const bool usable = std::isfinite(creationDate) && std::abs(creationDate) <= kLastDay;
  std::array<std::uint8_t, 4> day;
  Store(day.data(), static_cast<std::int32_t>(usable ? creationDate : 0.0));
  std::array<std::uint8_t, kPasswordBytes> plain;
  for (std::size_t i = 0; i < plain.size(); ++i)
    plain[i] = page0[kPasswordAt + i] ^ day[i % day.size()];
  std::u16string password = DecodePlainText(plain);
  password.resize(std::min(password.find(u'\0'), password.size()));
  return password;
}

}  // namespace

void ApplyHeaderMask(std::span<std::uint8_t, kPageSize> page0) {
  ApplyRc4({0xC7, 0xDA, 0x39, 0x6B}, page0.subspan(kMaskedFrom, kMaskedBytes));
}

void MarkChange(std::span<std::uint8_t, kPageSize> page0) {
  if (::getentropy(&page0[kChangeMark], kCommitCounters - kChangeMark) != 0)
    throw Error(ErrorCode::Io, "Het systeem geeft geen willekeurig getal.");
}

Header ParseHeader(ByteView page0, const std::string& fileName) {
  CheckKind(page0, fileName);
  std::array<std::uint8_t, kPageSize> plain;
  std::copy_n(page0.begin(), kPageSize, plain.begin());
  ApplyHeaderMask(plain);
  Header header;
  header.encodingKey = LoadU32(plain.data() + kEncodingKeyAt);
  header.engineBuild = LoadU32(plain.data() + kEngineBuildAt);
  header.sortOrder.language = LoadU16(plain.data() + kSortOrderAt);
  header.sortOrder.version = plain[kSortOrderAt + 3];
  header.creationDate = Load<double>(plain.data() + kCreationDateAt);
  header.password = ReadPassword(plain, header.creationDate);
  return header;
}

}  // namespace jet
