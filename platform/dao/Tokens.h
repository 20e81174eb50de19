// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <QStringView>

#include <vector>

namespace dao {

enum class TokenKind {
  Word,    // a keyword or a bare name
  Name,    // a name in square brackets
  Number,  // as written
  Text,    // a literal between double or single quotes
  Symbol,
  End
};

// `text` is a view of the statement, without the quotes or brackets around it.
struct Token {
  TokenKind kind = TokenKind::End;
  QStringView text = {};
  bool hasDoubledQuotes = false;  // Text: each doubled quote stands for one

  bool Is(QStringView symbol) const { return kind == TokenKind::Symbol && text == symbol; }
  bool IsWord(QStringView word) const {
    return kind == TokenKind::Word && text.size() == word.size() && text.compare(word, Qt::CaseInsensitive) == 0;
  }
  bool IsName() const { return kind == TokenKind::Word || kind == TokenKind::Name; }
  // The text; of a literal its value.
  QString Value() const;
};

// The tokens of a statement, which must outlive them, followed by one End token. A final semicolon is dropped. Error,
// with the statement: an unmatched quote or bracket, a character or comment that the dialect does not have, a second
// statement.
std::vector<Token> Tokenise(const QString& sql);

}  // namespace dao
