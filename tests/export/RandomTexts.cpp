// SPDX-License-Identifier: MIT
#include "tests/export/RandomTexts.h"

#include <QStringList>

using namespace Qt::StringLiterals;

namespace {

const QStringList kPieces = {u"'"_s,
                             u"\""_s,
                             u"''"_s,
                             u"\"\""_s,
                             u"|"_s,
                             u"*"_s,
                             u"\r\n"_s,
                             u"\n"_s,
                             u"\r"_s,
                             u"\t"_s,
                             u";"_s,
                             u"--"_s,
                             u"/*"_s,
                             u"["_s,
                             u"]"_s,
                             u"\\"_s,
                             u"%1"_s,
                             u"#"_s,
                             u"?"_s,
                             u" "_s,
                             u"tblCopie_ItemSpots"_s,
                             u"tblItems"_s,
                             u", Aktief = 0 WHERE 1 = 1"_s,
                             u"\", Naam = \"x\" WHERE ID > 0 OR Naam = \""_s,
                             u"\u201c"_s,
                             u"\u2019"_s,
                             u"\u20ac"_s,
                             u"\u00e9"_s,
                             u"e\u0301"_s,
                             u"\ufeff"_s,
                             u"\u2028"_s};

}  // namespace

qsizetype RandomTexts::Length() {
  switch (Number(1000)) {
    case 0:
      return 0;
    case 1:
    case 2:
      return 250 + Number(10);
    case 3:
      return 1000 + Number(3000);
    default:
      return 1 + Number(30);
  }
}

QString RandomTexts::Piece() {
  switch (Number(10)) {
    case 0:
      return kPieces[Number(static_cast<unsigned>(kPieces.size()))];
    case 1:  // any character of the first plane; unpaired surrogates rarely, since they are refused
      return Number(8) == 0 ? QString(QChar(static_cast<char16_t>(Number(0x10000)))) : u"\u0416"_s;
    case 2:
      return QString::fromUcs4(std::u32string(1, static_cast<char32_t>(0x10000 + Number(0x100000))).c_str(), 1);
    case 3:
      return QChar(static_cast<char16_t>(0x20 + Number(0xE0)));
    default:
      return QChar(static_cast<char16_t>(u'a' + Number(26)));
  }
}

QString RandomTexts::Next() {
  const qsizetype length = Length();
  const bool plain = Number(4) != 0;  // otherwise nearly every long text would be refused because of one character
  QString text;
  while (text.size() < length) {
    QString piece = Piece();
    if (plain) piece.replace(u'"', u'\'').replace(QChar(0), u'0');
    text += piece;
  }
  return text;
}
