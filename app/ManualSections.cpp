// SPDX-License-Identifier: MIT
#include "app/ManualSections.h"

#include <QHash>

using namespace Qt::StringLiterals;

namespace {

const QHash<QString, QString>& SectionOfWindow() {
  static const QHash<QString, QString> sections{{u"frmRadioDetail"_s, u"Starten en een zender kiezen"_s},
                                                {u"frmEersteStart"_s, u"Starten en een zender kiezen"_s},
                                                {u"frmNieuweZender"_s, u"Starten en een zender kiezen"_s},
                                                {u"frmItems"_s, u"De lijsten"_s},
                                                {u"frmItemSpots"_s, u"De lijsten"_s},
                                                {u"frmItemPingles"_s, u"Item-pingles"_s},
                                                {u"frmItemSpotsDetail"_s, u"Een item-spot"_s},
                                                {u"frmItemPinglesDetail"_s, u"Item-pingles"_s},
                                                {u"frmItemsDetail"_s, u"Een item"_s},
                                                {u"frmItemsDetailOpt1"_s, u"Een item"_s},
                                                {u"frmBeluisteren"_s, u"Een blok beluisteren"_s},
                                                {u"frmWeek"_s, u"De week en wat er ontbreekt"_s},
                                                {u"frmOntbreekt"_s, u"De week en wat er ontbreekt"_s},
                                                {u"frmItemOpruimen"_s, u"Opruimen"_s},
                                                {u"frmItemSpotOpruimen"_s, u"Opruimen"_s},
                                                {u"frmDefaults"_s, u"Online en offline"_s},
                                                {u"frmPlanningExporteren"_s, u"Exporteren"_s},
                                                {u"frmExportsVerwerken"_s, u"Exports verwerken"_s},
                                                {u"frmOverzichten"_s, u"Op papier"_s},
                                                {u"frmReservekopieen"_s, u"Reservekopieën"_s},
                                                {u"messageBox"_s, u"Meldingen"_s}};
  return sections;
}

}  // namespace

QString ManualSectionOf(const QString& window) {
  return SectionOfWindow().value(window);
}

QStringList ManualSections() {
  return SectionOfWindow().values();
}
