// SPDX-License-Identifier: MIT
#include "data/MessageTexts.h"

using namespace Qt::StringLiterals;

QList<MessageText> MessageTexts() {
  const QString question = u"Q"_s;
  const QString questionNo = u"N"_s;
  const QString information = u"M"_s;
  const QString exclamation = u"E"_s;
  return {
      {1500, u"Het veld '%1' is nog leeg.%LFVul het in, a.u.b."_s, exclamation},
      {1501, u"Bij '%1' is nog niets gekozen.%LFKies een %2 uit de lijst, a.u.b."_s, exclamation},
      {1506, u"Het veld '%1' is te lang.%LFEr passen maximaal %2 tekens in."_s, exclamation},
      {1600, u"'%1' bestaat al.%LFGeef bij '%2' een andere naam, a.u.b."_s, exclamation},
      {2000, u"De gegevens zijn gewijzigd.%LFWilt u de wijzigingen bewaren?"_s, question},
      {3009, u"%1Weet u het zeker?"_s, questionNo},
      {3028, u"Bij '%1' hoort een getal."_s, exclamation},
      {3038, u"Bij '%1' hoort een geldige datum (dd-mm-jjjj)."_s, exclamation},
      {5001, u"De map bij '%1' bestaat niet of is niet bereikbaar."_s, exclamation},
      {5004, u"De export is beëindigd."_s, information},
      {5005, u"De lijst is nog leeg.%LFVoeg minstens één item-spot toe, a.u.b."_s, exclamation},
      {5106, u"Het aantal spots is groter dan het maximum aantal spots."_s, exclamation},
      {5107, u"Het aantal spots moet groter zijn dan %1."_s, exclamation},
  };
}
