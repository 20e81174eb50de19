// SPDX-License-Identifier: MIT
#include "data/Messages.h"

#include "data/Globals.h"
#include "platform/dao/Database.h"
#include "platform/runtime/Numbers.h"
#include "platform/runtime/Trapped.h"

using namespace Qt::StringLiterals;

namespace {

int StyleOf(const QString& letter) {
  if (letter == u"Q"_s) return kStyleYesNo;
  if (letter == u"C"_s) return runtime::kStyleYesNoCancel;
  if (letter == u"N"_s) return kStyleYesNoDefaultNo;
  if (letter == u"M"_s) return kStyleInformation;
  if (letter == u"E"_s) return kStyleExclamation;
  if (letter == u"W"_s) return kStyleCritical;
  return 0;
}

// Searches again from the start after each replacement, so that a placeholder produced by a replacement is replaced
// too. If that would not end, each occurrence is replaced once.
QString Replaced(const QString& text, const QString& placeholder, const QString& value) {
  QString result = text;
  if (value.contains(placeholder)) return result.replace(placeholder, value);
  qsizetype at = result.indexOf(placeholder);
  for (qsizetype round = 0; at >= 0 && round < text.size(); ++round) {
    result.replace(at, placeholder.size(), value);
    at = result.indexOf(placeholder);
  }
  return at < 0 ? result : QString(text).replace(placeholder, value);
}

QString Filled(const QString& text, const QString& value1, const QString& value2, const QString& value3) {
  QString result = Replaced(text, u"%1"_s, value1);
  result = Replaced(result, u"%2"_s, value2);
  result = Replaced(result, u"%3"_s, value3);
  return Replaced(result, u"%LF"_s, u"\r\n"_s);
}

QString TrimmedField(const dao::Recordset& rows, const QString& field) {
  return runtime::TrimBlanks(rows.Field(field).toString());
}

}  // namespace

MsgElements GetMsgElements(int msgNr, const QString& value1, const QString& value2, const QString& value3) {
  return runtime::Trapped(__func__, MsgElements(), [&] {
    dao::Database database = dao::OpenDatabase(global.localDatabasePath);
    const dao::Recordset rows = database.OpenRecordset(
        u"SELECT appMessages.* From appMessages WHERE appMessages.MsgNr = "_s + QString::number(msgNr));
    if (rows.Bof() && rows.Eof()) {
      const QString fallback = u"De applicatie kan de foutmelding "_s + QString::number(msgNr) +
                               u" niet laten zien. Kontakteer de software-beheerder."_s;
      return MsgElements{Filled(fallback, value1, value2, value3), StyleOf(u"C"_s)};
    }
    return MsgElements{Filled(TrimmedField(rows, u"MsgTekst"_s), value1, value2, value3) + u""_s,
                       StyleOf(TrimmedField(rows, u"MsgStyle"_s))};
  });
}

int ShowAppMessage(int msgNr, const QString& value1, const QString& value2, const QString& value3) {
  const MsgElements message = GetMsgElements(msgNr, value1, value2, value3);
  if (message.text.isNull()) {
    global.lastAnswer = kAnswerNone;
    return kAnswerNone;
  }
  return ShowItemsMessage(message.text, message.style);
}

int ShowItemsMessage(const QString& text, int style) {
  const int answer = runtime::ShowUserMessage(text, style, u"Items"_s);
  global.lastAnswer = answer;
  return answer;
}
