// SPDX-License-Identifier: MIT
#include "data/MessageTexts.h"

#include "data/MessageNumbers.h"

using namespace Qt::StringLiterals;

QList<MessageText> MessageTexts() {
  const QString question = u"Q"_s;
  const QString questionNo = u"N"_s;
  const QString information = u"M"_s;
  const QString exclamation = u"E"_s;
  return {
      {message::kFieldEmpty, u"Het veld '%1' is nog leeg.%LFVul het in, a.u.b."_s, exclamation},
      {message::kNothingChosen, u"Bij '%1' is nog niets gekozen.%LFKies een %2 uit de lijst, a.u.b."_s, exclamation},
      {message::kFieldTooLong, u"Het veld '%1' is te lang.%LFEr passen maximaal %2 tekens in."_s, exclamation},
      {message::kNameExists, u"'%1' bestaat al.%LFGeef bij '%2' een andere naam, a.u.b."_s, exclamation},
      {message::kSaveChanges, u"De gegevens zijn gewijzigd.%LFWilt u de wijzigingen bewaren?"_s, question},
      {message::kAreYouSure, u"%1Weet u het zeker?"_s, questionNo},
      {message::kNotANumber, u"Bij '%1' hoort een getal."_s, exclamation},
      {message::kNotADate, u"Bij '%1' hoort een geldige datum (dd-mm-jjjj)."_s, exclamation},
      {message::kFolderMissing, u"De map bij '%1' bestaat niet of is niet bereikbaar."_s, exclamation},
      {message::kExportEnded, u"De export is beëindigd."_s, information},
      {message::kListEmpty, u"De lijst is nog leeg.%LFVoeg minstens één item-spot toe, a.u.b."_s, exclamation},
      {message::kCountAboveMaximum, u"Het aantal spots is groter dan het maximum aantal spots."_s, exclamation},
      {message::kCountTooSmall, u"Het aantal spots moet groter zijn dan %1."_s, exclamation},
  };
}
