// SPDX-License-Identifier: MIT
#include "platform/dao/Tokens.h"

#include "platform/dao/SqlText.h"

using namespace Qt::StringLiterals;

namespace dao {
namespace {

bool IsDigit(QChar c) {
  return c >= u'0' && c <= u'9';
}
bool StartsWord(QChar c) {
  return c.isLetter() || c == u'_';
}
bool ContinuesWord(QChar c) {
  return c.isLetterOrNumber() || c == u'_' || c.isMark();
}
bool IsBlank(QChar c) {
  return c == u' ' || c == u'\t' || c == u'\r' || c == u'\n';
}

class Tokeniser {
 public:
  explicit Tokeniser(const QString& sql) : sql_(sql) {}

  std::vector<Token> Run() {
    std::vector<Token> tokens;
    for (SkipBlanks(); at_ < sql_.size(); SkipBlanks()) {
      if (Peek() == u';') {
        RequireEndAfterSemicolon();
        break;
      }
      tokens.push_back(Next());
    }
    tokens.push_back({});
    return tokens;
  }

 private:
  QChar Peek(qsizetype ahead = 0) const { return at_ + ahead < sql_.size() ? sql_[at_ + ahead] : QChar(); }

  void SkipBlanks() {
    while (at_ < sql_.size() && IsBlank(sql_[at_]))
      ++at_;
  }

  void RequireEndAfterSemicolon() {
    ++at_;
    SkipBlanks();
    if (at_ < sql_.size()) ThrowSyntaxError(sql_, u"er staat tekst na het einde van de instructie"_s);
  }

  Token Next() {
    const QChar c = Peek();
    if (c == u'"' || c == u'\'') return Literal(c);
    if (c == u'[') return Bracketed();
    if (IsDigit(c) || (c == u'.' && IsDigit(Peek(1)))) return Number();
    if (StartsWord(c)) return Word();
    return Symbol();
  }

  Token Literal(QChar quote) {
    QString value;
    for (++at_; at_ < sql_.size(); ++at_) {
      if (Peek() != quote) {
        value += Peek();
      } else if (Peek(1) == quote) {
        value += quote;
        ++at_;
      } else {
        ++at_;
        return {TokenKind::Text, value};
      }
    }
    ThrowSyntaxError(sql_, u"een aanhalingsteken (%1) wordt niet gesloten"_s.arg(quote));
  }

  Token Bracketed() {
    const qsizetype end = sql_.indexOf(u']', at_);
    if (end < 0) ThrowSyntaxError(sql_, u"een vierkante haak ([) wordt niet gesloten"_s);
    const QString name = sql_.mid(at_ + 1, end - at_ - 1);
    if (name.isEmpty()) ThrowSyntaxError(sql_, u"er staat geen naam tussen de vierkante haken"_s);
    at_ = end + 1;
    return {TokenKind::Name, name};
  }

  Token Number() {
    const qsizetype start = at_;
    SkipDigits();
    if (Peek() == u'.') {
      ++at_;
      SkipDigits();
    }
    if (Peek().toLower() == u'e') {
      ++at_;
      if (Peek() == u'+' || Peek() == u'-') ++at_;
      if (!IsDigit(Peek())) ++bad_;
      SkipDigits();
    }
    if (bad_ > 0 || ContinuesWord(Peek()) || Peek() == u'.') {
      ThrowSyntaxError(sql_, u"'%1' is geen getal"_s.arg(sql_.mid(start, at_ - start + 1)));
    }
    return {TokenKind::Number, sql_.mid(start, at_ - start)};
  }

  void SkipDigits() {
    while (IsDigit(Peek()))
      ++at_;
  }

  Token Word() {
    const qsizetype start = at_;
    while (at_ < sql_.size() && ContinuesWord(sql_[at_]))
      ++at_;
    return {TokenKind::Word, sql_.mid(start, at_ - start)};
  }

  Token Symbol() {
    const QString two = sql_.mid(at_, 2);
    if (two == u"--"_s || two == u"/*"_s) ThrowSyntaxError(sql_, u"commentaar wordt niet ondersteund"_s);
    if (two == u"<>"_s || two == u"<="_s || two == u">="_s) {
      at_ += 2;
      return {TokenKind::Symbol, two};
    }
    if (!u"(),.=<>+-*/"_s.contains(Peek())) {
      ThrowSyntaxError(sql_, u"het teken '%1' wordt niet ondersteund"_s.arg(Peek()));
    }
    return {TokenKind::Symbol, QString(sql_[at_++])};
  }

  const QString& sql_;
  qsizetype at_ = 0;
  int bad_ = 0;
};

}  // namespace

std::vector<Token> Tokenise(const QString& sql) {
  return Tokeniser(sql).Run();
}

}  // namespace dao
