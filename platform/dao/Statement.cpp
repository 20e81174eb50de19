// SPDX-License-Identifier: MIT
#include "platform/dao/Statement.h"

#include "platform/dao/Rewriter.h"
#include "platform/dao/SqlText.h"
#include "platform/runtime/Error.h"

using namespace Qt::StringLiterals;

namespace dao {
namespace {

// Parses the part of each statement that determines its target; the Rewriter handles the rest.
class Parser {
 public:
  Parser(const QString& sql, const std::vector<Token>& tokens) : in_(sql, tokens) { statement_.source = sql; }

  Statement Run() {
    if (in_.Take(u"SELECT")) {
      in_.Emit(u"SELECT"_s);
      in_.SelectList();
    } else if (in_.Take(u"INSERT")) {
      Insert();
    } else if (in_.Take(u"UPDATE")) {
      Update();
    } else if (in_.Take(u"DELETE")) {
      Delete();
    } else {
      RefuseVerb();
    }
    in_.Rest();
    statement_.body = in_.Output();
    statement_.texts = in_.Texts();
    statement_.names = in_.Names();
    return std::move(statement_);
  }

 private:
  [[noreturn]] void RefuseVerb() {
    if (in_.Peek().kind == TokenKind::End) throw runtime::Error(u"De SQL-instructie is leeg."_s);
    throw runtime::Error(
        u"De instructie '%1' wordt niet ondersteund, alleen SELECT, INSERT, UPDATE en DELETE.\n%2"_s.arg(
            in_.Peek().text.toString().toUpper(), Shown(statement_.source)));
  }

  void Insert() {
    statement_.verb = Verb::Insert;
    in_.Expect(u"INTO");
    statement_.target = in_.TakeName();
    if (in_.TakeSymbol(u"(")) FieldList();
    if (in_.Take(u"IN")) InFile();
    if (in_.Take(u"VALUES")) {
      in_.Emit(u"VALUES"_s);
      in_.OneValueRow();
    } else {
      in_.Expect(u"SELECT");
      statement_.fromSelect = true;
      const bool isWhole = in_.Peek().Is(u"*") && in_.Peek(1).IsWord(u"FROM") && in_.Peek(2).IsName() &&
                           in_.Peek(3).kind == TokenKind::End;
      if (isWhole && statement_.fields.isEmpty()) statement_.wholeTable = in_.Peek(2).text.toString();
      in_.Emit(u"SELECT"_s);
      in_.SelectList();
    }
  }

  void FieldList() {
    do {
      AddField(in_.TakeName());
    } while (in_.TakeSymbol(u","));
    in_.ExpectSymbol(u")");
  }

  void InFile() {
    if (in_.Peek().kind != TokenKind::Text) in_.Unexpected();
    statement_.inFile = in_.Next().Value();
  }

  void Update() {
    statement_.verb = Verb::Update;
    statement_.target = in_.TakeName();
    in_.Expect(u"SET");
    in_.Emit(QString(u"UPDATE "_s + QuotedName(statement_.target) + u" SET"_s));
    while (true) {
      const QString field = in_.TakeField(statement_.target);
      AddField(field);
      in_.ExpectSymbol(u"=");
      in_.Emit(QString(QuotedName(field) + u" ="_s));
      in_.Expression();
      if (!in_.TakeSymbol(u",")) break;
      in_.Emit(u","_s);
    }
    RequireWhereOrEnd();
  }

  void Delete() {
    statement_.verb = Verb::Delete;
    in_.TakeSymbol(u"*");
    in_.Expect(u"FROM");
    statement_.target = in_.TakeName();
    in_.Emit(QString(u"DELETE FROM "_s + QuotedName(statement_.target)));
    RequireWhereOrEnd();
  }

  void RequireWhereOrEnd() {
    statement_.everyRow = in_.Peek().kind == TokenKind::End;
    if (!statement_.everyRow && !in_.Peek().IsWord(u"WHERE")) in_.Unexpected();
  }

  void AddField(const QString& field) {
    if (statement_.fields.contains(field, Qt::CaseInsensitive)) {
      throw runtime::Error(
          u"Het veld '%1' komt tweemaal voor in de SQL-instructie.\n%2"_s.arg(field, Shown(statement_.source)));
    }
    statement_.fields += field;
  }

  Rewriter in_;
  Statement statement_;
};

}  // namespace

Statement ParseStatement(const QString& sql, const std::vector<Token>& tokens) {
  Statement statement = Parser(sql, tokens).Run();
  if (statement.verb == Verb::Select) statement.sought = SoughtTextIn(tokens);
  return statement;
}

Statement ParseStatement(const QString& sql) {
  return ParseStatement(sql, Tokenise(sql));
}

}  // namespace dao
