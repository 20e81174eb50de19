// SPDX-License-Identifier: MIT
#include "platform/jet/pages/Header.h"

#include "platform/jet/pages/Rc4.h"
#include "platform/jet/values/Codec.h"
#include "platform/jet/values/Error.h"
#include "tests/platform/jet/SpotsImage.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>

namespace {

std::string Refusal(const jet::Bytes& file) {
  try {
    OpenBytes(file);
  } catch (const jet::Error& error) {
    EXPECT_EQ(error.Code(), jet::ErrorCode::NotADatabase);
    return error.what();
  }
  return "(opened)";
}

TEST(Rc4, ProducesTheHeaderMask) {
  jet::Bytes zeros(16);
  jet::ApplyRc4({0xC7, 0xDA, 0x39, 0x6B}, zeros);
  EXPECT_EQ(zeros, (jet::Bytes{0xB5, 0x6F, 0x03, 0x62, 0x61, 0x08, 0xC2, 0x55, 0xEB, 0xA9, 0x67, 0x72, 0x43, 0x3F, 0x00,
                               0x9C}));
}

TEST(Header, ReadsSortOrderAndDate) {
  const jet::Header header = jet::ParseHeader(DatabaseImage().At(0), "test.mdb");
  EXPECT_EQ(header.sortOrder, jet::SortOrder());
  EXPECT_EQ(header.creationDate, 40960.0);
  EXPECT_EQ(header.encodingKey, 0u);
  EXPECT_TRUE(header.password.empty());
}

TEST(Header, RefusesOtherFormatsByName) {
  EXPECT_EQ(Refusal({}), "Het bestand 'test.mdb' is geen database: het is korter dan één pagina.");
  EXPECT_EQ(Refusal(jet::Bytes(8192, 'x')), "Het bestand 'test.mdb' is geen database.");
  DatabaseImage image;
  image.At(0)[0x14] = 0;
  EXPECT_NE(Refusal(image.File()).find("Jet 3-database (Access 97)"), std::string::npos);
  image.At(0)[0x14] = 9;
  EXPECT_NE(Refusal(image.File()).find("onbekende versie 9"), std::string::npos);
  const std::string ace = "Standard ACE DB";
  std::copy(ace.begin(), ace.end(), image.At(0).begin() + 4);
  EXPECT_NE(Refusal(image.File()).find("Access 2007 of later"), std::string::npos);
}

// Writes a password and an encoding key to the header as the original engine does.
jet::Bytes Protected(DatabaseImage& image, const std::string& password, std::uint32_t encodingKey) {
  image.MaskHeader();
  DatabaseImage::Page& page = image.At(0);
  const jet::Bytes text = Utf16(password);
  const jet::Bytes day = Le(40960, 4);
  for (std::size_t i = 0; i < 40; ++i) {
    page[0x42 + i] = static_cast<std::uint8_t>((i < text.size() ? text[i] : 0) ^ day[i % 4]);
  }
  const jet::Bytes key = Le(encodingKey, 4);
  std::copy(key.begin(), key.end(), page.begin() + 0x3E);
  image.MaskHeader();
  jet::Bytes file = image.File();
  for (std::uint32_t number = 1; encodingKey != 0 && number < file.size() / 4096; ++number) {
    const jet::Bytes k = Le(encodingKey ^ number, 4);
    jet::ApplyRc4({k[0], k[1], k[2], k[3]}, jet::ByteSpan(file).subspan(4096 * number, 4096));
  }
  return file;
}

TEST(Header, APasswordIsRequiredAndCompared) {
  SpotsImage sample;
  const jet::Bytes file = Protected(sample.image, "geheim", 0);
  const auto errorOf = [&](const std::u16string& password) -> std::string {
    try {
      jet::OpenOptions options;
      options.password = password;
      OpenBytes(file, options);
      return "";
    } catch (const jet::Error& error) {
      EXPECT_EQ(error.Code(), jet::ErrorCode::Password);
      return error.what();
    }
  };
  EXPECT_EQ(errorOf(u""), "Voor het bestand 'test.mdb' is een wachtwoord nodig.");
  EXPECT_EQ(errorOf(u"Geheim"), "Het wachtwoord voor het bestand 'test.mdb' is niet juist.");
  EXPECT_EQ(errorOf(u"geheim"), "");
}

TEST(Header, AnEncodedFileIsDecoded) {
  SpotsImage sample;
  const auto database = OpenBytes(Protected(sample.image, "", 0xA7B773E0));
  EXPECT_EQ(database->OpenTable(u"Spots").CountRows(), 6u);
}

}  // namespace
