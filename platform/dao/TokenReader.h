// SPDX-License-Identifier: MIT
#pragma once

#include "platform/dao/Tokens.h"

#include <cstddef>
#include <vector>

namespace dao {

// Reads the tokens of a statement in order, for recognisers of a few forms: a token that is not there is no error.
class TokenReader {
 public:
  explicit TokenReader(const std::vector<Token>& tokens) : tokens_(tokens) {}

  // The next token; End after the last.
  const Token& Peek() const { return tokens_[at_]; }
  bool AtEnd() const { return Peek().kind == TokenKind::End; }
  // Not past End.
  void Skip() { ++at_; }

  // True, and the token is skipped, when it is the next one.
  bool TakeWord(QStringView word) { return Take(Peek().IsWord(word)); }
  bool TakeSymbol(QStringView symbol) { return Take(Peek().Is(symbol)); }

 private:
  bool Take(bool isNext) {
    if (isNext) ++at_;
    return isNext;
  }

  const std::vector<Token>& tokens_;  // ends with End
  std::size_t at_ = 0;
};

}  // namespace dao
