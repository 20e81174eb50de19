// SPDX-License-Identifier: MIT
#include "media/Screens.h"

#include "data/Globals.h"
#include "data/forms/Screens.h"
#include "tests/media/support/EditorDesk.h"
#include "tests/support/ModalDriver.h"

#include <QDialog>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using namespace media_testing;

// Opened by another screen, the editor shows the selected record, is owned by that screen, and is destroyed afterwards.
TEST(MediaScreens, BothEditorsOpenModallyForTheSelectedRecord) {
  const EditorDesk desk;
  RegisterMediaScreens();
  QWidget owner;
  testing_support::ModalDriver driver;
  for (const auto& [screen, name] : {std::pair(Screen::ItemSpotsDetail, u"frmItemSpotsDetail"_s),
                                     std::pair(Screen::ItemPinglesDetail, u"frmItemPinglesDetail"_s)}) {
    global.gstrSelectedID = u"NIEUW"_s;
    QString caption;
    driver.OnNext(name, [&](QDialog& window) {
      caption = window.windowTitle();
      EXPECT_TRUE(window.isModal());
      EXPECT_EQ(window.parentWidget(), &owner);
      Click(window, u"cmdAnnuleren"_s);
    });
    ShowScreen(screen, &owner);
    EXPECT_TRUE(caption.endsWith(u"... nieuw"_s)) << name.toStdString();
  }
}
