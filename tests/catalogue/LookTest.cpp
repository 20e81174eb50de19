// SPDX-License-Identifier: MIT
#include "catalogue/frmItemOpruimen.h"
#include "catalogue/frmItemPingles.h"
#include "catalogue/frmItemSpotOpruimen.h"
#include "catalogue/frmItemSpots.h"
#include "catalogue/frmItems.h"
#include "platform/controls/ListBox.h"
#include "platform/desktop/Theme.h"
#include "platform/runtime/Clock.h"
#include "platform/runtime/Dates.h"
#include "tests/catalogue/CatalogueTest.h"
#include "tests/support/Waiting.h"

#include <QAbstractButton>
#include <QApplication>
#include <QDir>
#include <QLineEdit>
#include <QStyle>

using namespace Qt::StringLiterals;

// The windows as users see them. The pictures are written to the folder "look" next to the test program for review.
class CatalogueLook : public CatalogueTest {
 protected:
  CatalogueLook() : theme_(*qApp, desktop::Variant::Light) {
    QDir().mkpath(Folder());
    const struct {
      const char16_t* name;
      int first;
      int last;
      int aktief;
    } kSpots[] = {{u"Autobedrijf De Smet - opendeurdagen", -9, 19, 1},
                  {u"Bakkerij Van Damme - paasbrood", 20, 40, 1},
                  {u"Boekhandel Lezenswaard", -9, 290, 1},
                  {u"Bouwmarkt Vermeulen - gereedschap", -9, 3, 1},
                  {u"Café De Zwaan - quizavond", -9, 30, 1},
                  {u"Fietsen Janssens - voorjaarsactie", -9, 40, 1},
                  {u"Kringwinkel Het Rad - inzameldag", -40, -11, 1},
                  {u"Verzekeringen Maes & Zoon", -9, 20, 0}};
    const QString there = AudioFile(u"hier.wav"_s);
    int id = 0;
    for (const auto& spot : kSpots) {
      AddSpot({++id, QString::fromUtf16(spot.name), id == 5 ? there + u".weg"_s : there, spot.aktief});
      station_.OnCurrent(u"UPDATE tblItemSpots SET StartDatum = %1, EindDatum = %2 WHERE ID = %3"_s.arg(
          QString::number(kDay + spot.first), QString::number(kDay + spot.last), QString::number(id)));
    }
    AddItem(1, u"Ochtendblok 07 uur"_s);
    AddItem(2, u"Avondblok 18 uur"_s);
    AddPingle(1, u"Opener reclame"_s);
    global.gstrOpruimenID = u"1"_s;
  }
  ~CatalogueLook() override { QApplication::setPalette(QApplication::style()->standardPalette()); }

  void Grab(Form& form, const QString& name, QSize size = {}) {
    if (size.isValid()) form.resize(size);
    for (const auto variant : {desktop::Variant::Light, desktop::Variant::Dark}) {
      theme_.Use(variant);
      QCoreApplication::processEvents();
      const QString file =
          Folder() + u'/' + name + (variant == desktop::Variant::Light ? u"-light.png"_s : u"-dark.png"_s);
      QPixmap picture(form.size() * 1.5);
      picture.setDevicePixelRatio(1.5);
      form.render(&picture);
      EXPECT_TRUE(picture.save(file));
    }
    ExpectNothingCut(form);
  }

  static QString Folder() { return QCoreApplication::applicationDirPath() + u"/look"_s; }

  // Every button has room for its full caption, and the window fits its minimum size.
  static void ExpectNothingCut(const Form& form) {
    for (const auto* button : form.findChildren<QAbstractButton*>()) {
      if (button->text().isEmpty() || !button->isVisible()) continue;
      EXPECT_GE(button->width(), button->sizeHint().width()) << button->objectName().toStdString();
    }
  }

  static constexpr QSize kListSize{920, 600};  // independent of the size of the test's screen
  static constexpr qint32 kDay = 45727;        // 11-03-2025
  runtime::ClockScope clock_{QDateTime(runtime::DateOfDayNumber(kDay), QTime(14, 32))};
  desktop::Theme theme_;
};

TEST_F(CatalogueLook, ItemSpotList) {
  frmItemSpots form(nullptr);
  Open(form);
  Click(form, u"chkNietAktieve"_s);
  ASSERT_TRUE(WaitUntil([&] {
    return Lines(form).size() == 8 && List(form).Details(4).trailing == u"0:32"_s &&
           List(form).Details(4).word == u"geluidsbestand ontbreekt"_s;
  }));
  List(form).SetListIndex(5);
  Grab(form, u"item-spots"_s, kListSize);
  Click(form, u"chkNietAktieve"_s);
  Child<QLineEdit>(form, u"txtZoek"_s).setText(u"kerst"_s);
  Grab(form, u"item-spots-empty"_s, kListSize);
}

TEST_F(CatalogueLook, ItemSpotListFilteredByState) {
  frmItemSpots form(nullptr);
  form.ShowOnly(SpotView::LopenVandaag);
  Open(form);
  Grab(form, u"item-spots-state"_s, kListSize);
}

TEST_F(CatalogueLook, ItemList) {
  frmItems form(nullptr);
  Open(form);
  Grab(form, u"items"_s, kListSize);
}

TEST_F(CatalogueLook, ItemPingleList) {
  frmItemPingles form(nullptr);
  Open(form);
  Grab(form, u"item-pingles"_s, kListSize);
}

TEST_F(CatalogueLook, ItemSpotCleanup) {
  frmItemSpotOpruimen form(nullptr);
  Open(form);
  Click(form, u"chkVerwijderID"_s);
  Grab(form, u"cleanup"_s);
}

TEST_F(CatalogueLook, ItemCleanup) {
  frmItemOpruimen form(nullptr);
  Open(form);
  Grab(form, u"item-cleanup"_s);
}
