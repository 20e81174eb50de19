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
    constexpr std::size_t kUsualTokens = 48;
    std::vector<Token> tokens;
    tokens.reserve(kUsualTokens);
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
  QStringView Part(qsizetype start) const { return QStringView(sql_).sliced(start, at_ - start); }

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
    Token token{TokenKind::Text, {}, false};
    const qsizetype start = ++at_;
    for (; at_ < sql_.size(); ++at_) {
      if (sql_[at_] != quote) continue;
      if (Peek(1) != quote) {
        token.text = Part(start);
        ++at_;
        return token;
      }
      token.hasDoubledQuotes = true;
      ++at_;
    }
    ThrowSyntaxError(sql_, u"een aanhalingsteken (%1) wordt niet gesloten"_s.arg(quote));
  }

  Token Bracketed() {
    const qsizetype start = at_ + 1;
    const qsizetype end = sql_.indexOf(u']', at_);
    if (end < 0) ThrowSyntaxError(sql_, u"een vierkante haak ([) wordt niet gesloten"_s);
    if (end == start) ThrowSyntaxError(sql_, u"er staat geen naam tussen de vierkante haken"_s);
    at_ = end + 1;
    return {TokenKind::Name, QStringView(sql_).sliced(start, end - start)};
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
    return {TokenKind::Number, Part(start)};
  }

  void SkipDigits() {
    while (IsDigit(Peek()))
      ++at_;
  }

  Token Word() {
    const qsizetype start = at_;
    while (at_ < sql_.size() && ContinuesWord(sql_[at_]))
      ++at_;
    return {TokenKind::Word, Part(start)};
  }

  Token Symbol() {
    const QChar first = Peek();
    const QChar second = Peek(1);
    if ((first == u'-' && second == u'-') || (first == u'/' && second == u'*')) {
      ThrowSyntaxError(sql_, u"commentaar wordt niet ondersteund"_s);
    }
    if (!QStringView(u"(),.=<>+-*/").contains(first)) {
      ThrowSyntaxError(sql_, u"het teken '%1' wordt niet ondersteund"_s.arg(first));
    }
    const bool isDouble = (second == u'=' && (first == u'<' || first == u'>')) || (first == u'<' && second == u'>');
    const qsizetype start = at_;
    at_ += isDouble ? 2 : 1;
    return {TokenKind::Symbol, Part(start)};
  }

  const QString& sql_;
  qsizetype at_ = 0;
  int bad_ = 0;
};

}  // namespace

QString Token::Value() const {
  QString value = text.toString();
  if (hasDoubledQuotes) {
    const QChar quote = *(text.begin() - 1);
    value.replace(QString(2, quote), QString(quote));
  }
  return value;
}

std::vector<Token> Tokenise(const QString& sql) {
  return Tokeniser(sql).Run();
}

}  // namespace dao
