// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

#include <vector>

namespace dao {

enum class TokenKind {
  Word,    // a keyword or a bare name
  Name,    // a name in square brackets
  Number,  // as written
  Text,    // the value of a literal between double or single quotes
  Symbol,
  End
};

struct Token {
  TokenKind kind = TokenKind::End;
  QString text;

  bool Is(const QString& symbol) const { return kind == TokenKind::Symbol && text == symbol; }
  bool IsWord(const QString& word) const {
    return kind == TokenKind::Word && text.compare(word, Qt::CaseInsensitive) == 0;
  }
  bool IsName() const { return kind == TokenKind::Word || kind == TokenKind::Name; }
};

// The tokens of a statement, followed by one End token. A final semicolon is dropped. Error, with the statement: an
// unmatched quote or bracket, a character or comment that the dialect does not have, a second statement.
std::vector<Token> Tokenise(const QString& sql);

}  // namespace dao
