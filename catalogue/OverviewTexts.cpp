// SPDX-License-Identifier: MIT
#include "catalogue/OverviewTexts.h"

#include <QLocale>

using namespace Qt::StringLiterals;

namespace {

QString Quoted(const QString& text) {
  return u"‘"_s + text + u"’"_s;
}

QString NothingFound(const OverviewView& view) {
  const QString found = u"Geen "_s + view.many + u" gevonden met "_s + Quoted(view.search) + u".\n"_s;
  if (!view.hasBoxes || view.nietAktieve) return found + u"Maak het zoekveld leeg."_s;
  return found + u"Maak het zoekveld leeg of vink "_s + Quoted(u"Niet aktieve "_s + view.many) + u" aan."_s;
}

}  // namespace

QString CountTextOf(const OverviewView& view) {
  if (!view.read) return {};
  const QLocale dutch(QLocale::Dutch);
  const QString all = dutch.toString(view.all) + u' ' + (view.all == 1 ? view.one : view.many);
  return view.shown == view.all ? all : dutch.toString(view.shown) + u" van "_s + all;
}

QString EmptyTextOf(const OverviewView& view) {
  if (!view.read) return u"De lijst kon niet gelezen worden.\nDruk op F5 om het opnieuw te proberen."_s;
  if (view.all > 0) return NothingFound(view);
  const QString aktieve = Quoted(u"Aktieve "_s + view.many);
  const QString nietAktieve = Quoted(u"Niet aktieve "_s + view.many);
  if (!view.hasBoxes || (view.aktieve && view.nietAktieve)) {
    return u"Er zijn nog geen "_s + view.many + u".\nKies "_s + Quoted(u"Nieuw"_s) + u" om te beginnen."_s;
  }
  if (view.aktieve) {
    return u"Er zijn geen aktieve "_s + view.many + u".\nVink "_s + nietAktieve + u" aan of kies "_s +
           Quoted(u"Nieuw"_s) + u'.';
  }
  if (view.nietAktieve) {
    return u"Er zijn geen niet aktieve "_s + view.many + u".\nVink "_s + aktieve + u" aan om de andere te zien."_s;
  }
  return u"Er is niets gekozen om te tonen.\nVink "_s + aktieve + u" of "_s + nietAktieve + u" aan."_s;
}
