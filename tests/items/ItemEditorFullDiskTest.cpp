// SPDX-License-Identifier: MIT
// The item editor on a full disk.
#include "platform/desktop/MessageBox.h"
#include "tests/items/ItemEditor.h"
#include "tests/support/Hindrance.h"

using namespace Qt::StringLiterals;

namespace {

class ItemEditorFullDisk : public ItemEditor {
 protected:
  int Items() const { return station_.CurrentRows(u"SELECT ID FROM tblItems"_s).RecordCount(); }
};

}  // namespace

TEST_F(ItemEditorFullDisk, OkReportsTheReasonAndKeepsTheInput) {
  OpenNew();
  FillListItem();
  const QString naam = Edit(u"txtNaam"_s).text();
  const int before = Items();
  {
    const testing_support::FullDisk full(100);
    const desktop::MessageBoxScript boxes;
    Click(u"cmdOk"_s);
    ASSERT_EQ(boxes.Shown().size(), 1u);
    EXPECT_EQ(boxes.Last().title, u"Insert_tblItems"_s);
    EXPECT_TRUE(boxes.Last().text.contains(u"OvalistoServer.mdb"_s)) << boxes.Last().text.toStdString();
  }
  EXPECT_TRUE(IsOpen());
  EXPECT_EQ(Edit(u"txtNaam"_s).text(), naam);
  EXPECT_EQ(Items(), before);
  Click(u"cmdOk"_s);
  EXPECT_FALSE(IsOpen());
  EXPECT_EQ(Items(), before + 1);
}
