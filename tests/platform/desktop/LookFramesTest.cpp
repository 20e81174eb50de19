// SPDX-License-Identifier: MIT
// Frames, groups, tabs, column titles, menus and bars, as pixels; and the parts that they are painted from.
#include "platform/desktop/LookParts.h"
#include "tests/platform/desktop/Look.h"

#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMenu>
#include <QStatusBar>
#include <QStyleOption>
#include <QTabBar>
#include <QVBoxLayout>

namespace {

using namespace Qt::StringLiterals;
using namespace look_test;

class LookOfFrames : public Look {};

TEST_F(LookOfFrames, ListHasABorderThatShowsItsState) {
  QWidget window;
  auto* list = new QListWidget(&window);
  auto* other = new QLineEdit(&window);
  list->resize(120, 80);
  other->setGeometry(0, 90, 100, 28);
  window.show();
  QApplication::setActiveWindow(&window);
  const auto top = [list](int y) { return PaintedAsIs(*list).pixelColor(60, y); };
  other->setFocus();
  EXPECT_GE(Contrast(top(0), PaletteColour(QPalette::Base)), 1.8);
  EXPECT_EQ(top(1), PaletteColour(QPalette::Base));
  list->setFocus();
  EXPECT_EQ(top(0), Colours().accent);
  EXPECT_EQ(top(1), Colours().accent);
  EXPECT_EQ(top(2), PaletteColour(QPalette::Base));
  list->setEnabled(false);
  EXPECT_EQ(top(0), Colours().line);
}

TEST_F(LookOfFrames, FrameMarkedAsACardIsPaintedLikeTheInsideOfAGroup) {
  QFrame frame;
  frame.setFrameShape(QFrame::StyledPanel);
  frame.resize(80, 40);
  EXPECT_NE(PaintedAsIs(frame).pixelColor(40, 20), Colours().card);
  frame.setProperty("card", true);
  const QImage card = PaintedAsIs(frame);
  EXPECT_EQ(card.pixelColor(40, 20), Colours().card);
  EXPECT_EQ(card.pixelColor(40, 0), Colours().line);
  QVBoxLayout layout(&frame);
  EXPECT_EQ(layout.contentsMargins(), QMargins(12, 12, 12, 12));
}

TEST_F(LookOfFrames, LinesAreHairlinesAtEveryScale) {
  QFrame line;
  for (const double scale : {1.0, 2.0, 3.0}) {
    line.setFrameShape(QFrame::HLine);
    line.resize(40, 9);
    EXPECT_EQ(PlaceOf(PaintedAsIs(line, scale), Colours().line).size(), QSize(40, 1) * scale);
    line.setFrameShape(QFrame::VLine);
    line.resize(9, 40);
    EXPECT_EQ(PlaceOf(PaintedAsIs(line, scale), Colours().line).size(), QSize(1, 40) * scale);
  }
}

TEST_F(LookOfFrames, TitleOfAGroupIsGreyWhenTheGroupIsDisabled) {
  QGroupBox group(u"Geldigheid"_s);
  QVBoxLayout layout(&group);
  layout.addWidget(new QLineEdit);
  EXPECT_GT(CountOf(Painted(group), PaletteColour(QPalette::WindowText)), 20);
  group.setEnabled(false);
  const QImage disabled = Painted(group).copy(0, 0, group.width(), 18);
  EXPECT_EQ(CountOf(disabled, PaletteColour(QPalette::WindowText)), 0);
  EXPECT_GE(InkContrast(disabled, disabled.rect(), PaletteColour(QPalette::Window)), 3);
}

TEST_F(LookOfFrames, GroupWithoutATitleIsACardFromItsTop) {
  QGroupBox group;
  group.resize(80, 40);
  EXPECT_EQ(PaintedAsIs(group).pixelColor(40, 0), Colours().line);
  EXPECT_EQ(PaintedAsIs(group).pixelColor(40, 3), Colours().card);
}

TEST_F(LookOfFrames, GroupIsWideEnoughForItsTitle) {
  QGroupBox group(u"Een titel die breder is dan wat erin staat"_s);
  QVBoxLayout layout(&group);
  layout.addWidget(new QLabel(u"a"_s));
  QFont bold = group.font();
  bold.setWeight(QFont::DemiBold);
  EXPECT_GE(group.minimumSizeHint().width(), QFontMetrics(bold).horizontalAdvance(group.title()));
}

TEST_F(LookOfFrames, SelectedTabIsUnderlinedWithTheAccent) {
  QTabBar bar;
  bar.addTab(u"Vandaag"_s);
  bar.addTab(u"Morgen"_s);
  bar.setCurrentIndex(1);
  const QImage image = Painted(bar);
  const QRect selected = bar.tabRect(1);
  const QRect underline = PlaceOf(image, Colours().accent);
  EXPECT_EQ(underline, QRect(selected.left(), selected.bottom() - 1, selected.width(), 2));
  EXPECT_GE(selected.height(), 32);
}

TEST_F(LookOfFrames, FocusedTabHasARing) {
  const auto tab = [](QStyle::State state) {
    return PaintedOn(QSize(80, 32), PaletteColour(QPalette::Window), [state](QPainter& painter) {
      QStyleOptionTab option;
      option.rect = QRect(0, 0, 80, 32);
      option.palette = QApplication::palette();
      option.state = QStyle::State_Enabled | state;
      QApplication::style()->drawControl(QStyle::CE_TabBarTabShape, &option, &painter);
    });
  };
  EXPECT_GT(CountOf(tab(QStyle::State_HasFocus), Colours().accent), 80);
  EXPECT_EQ(CountOf(tab(QStyle::State_None), PaletteColour(QPalette::Window)), 80 * 32);
}

TEST_F(LookOfFrames, SortMarkPointsUpWhenAscending) {
  const auto mark = [](QStyleOptionHeader::SortIndicator direction) {
    return PaintedOn(QSize(16, 16), PaletteColour(QPalette::AlternateBase), [direction](QPainter& painter) {
      QStyleOptionHeader option;
      option.rect = QRect(0, 0, 16, 16);
      option.palette = QApplication::palette();
      option.sortIndicator = direction;
      QApplication::style()->drawPrimitive(QStyle::PE_IndicatorHeaderArrow, &option, &painter);
    });
  };
  // In the middle column is the tip; the ends are at the other side.
  const auto tip = [](const QImage& image) {
    int lowest = 0;
    for (int y = 0; y < image.height(); ++y)
      if (image.pixelColor(7, y) != PaletteColour(QPalette::AlternateBase)) lowest = y;
    return lowest;
  };
  const QImage ascending = mark(QStyleOptionHeader::SortDown);
  const QImage descending = mark(QStyleOptionHeader::SortUp);
  EXPECT_LT(tip(ascending), tip(descending));
  EXPECT_GE(InkContrast(ascending, ascending.rect(), PaletteColour(QPalette::AlternateBase)), 3);
}

TEST_F(LookOfFrames, BarsAreSeparatedByAHairline) {
  QStatusBar status;
  status.setSizeGripEnabled(false);
  status.resize(120, 24);
  EXPECT_EQ(PlaceOf(PaintedAsIs(status), Colours().line), QRect(0, 0, 120, 1));
  const QImage tools = PaintedOn(QSize(120, 40), Qt::magenta, [](QPainter& painter) {
    QStyleOptionToolBar option;
    option.rect = QRect(0, 0, 120, 40);
    option.palette = QApplication::palette();
    QApplication::style()->drawControl(QStyle::CE_ToolBar, &option, &painter);
  });
  EXPECT_EQ(PlaceOf(tools, Colours().line), QRect(0, 39, 120, 1));
  EXPECT_EQ(tools.pixelColor(60, 20), PaletteColour(QPalette::Window));
}

TEST_F(LookOfFrames, SelectedMenuLineIsReadable) {
  for (const QPalette& palette : {desktop::LightPalette(), desktop::DarkPalette()}) {
    QApplication::setPalette(palette);
    QMenu menu;
    menu.addAction(u"Openen"_s);
    menu.addAction(u"Sluiten"_s);
    menu.setActiveAction(menu.actions().front());
    const QImage image = Painted(menu);
    const QRect line = menu.actionGeometry(menu.actions().front());
    const QColor ground = image.pixelColor(line.right() - 8, line.center().y());
    EXPECT_NE(ground, image.pixelColor(line.right() - 8, menu.actionGeometry(menu.actions().back()).center().y()));
    EXPECT_GE(InkContrast(image, line.adjusted(8, 4, -40, -4), ground), 7);
  }
}

TEST_F(LookOfFrames, MenuTitleHasAPanelUnderThePointer) {
  const auto title = [](QStyle::State state) {
    return PaintedOn(QSize(80, 28), Qt::magenta, [state](QPainter& painter) {
      QStyleOptionMenuItem option;
      option.rect = QRect(0, 0, 80, 28);
      option.palette = QApplication::palette();
      option.state = QStyle::State_Enabled | state;
      option.text = u"B"_s;
      QApplication::style()->drawControl(QStyle::CE_MenuBarItem, &option, &painter);
    });
  };
  EXPECT_EQ(title(QStyle::State_None).pixelColor(10, 14), PaletteColour(QPalette::Window));
  EXPECT_NE(title(QStyle::State_Selected).pixelColor(10, 14), PaletteColour(QPalette::Window));
}

TEST_F(LookOfFrames, HintIsSmallerAndInTheHintColour) {
  QLabel plain(u"MMMM"_s);
  QLabel hint(u"MMMM"_s);
  hint.setProperty("hint", true);
  const QImage image = Painted(hint);
  EXPECT_EQ(hint.font().pointSizeF(), QApplication::font().pointSizeF() - 1);
  EXPECT_GT(CountOf(image, Colours().hint), 4);
  EXPECT_EQ(CountOf(image, PaletteColour(QPalette::WindowText)), 0);
  EXPECT_LT(hint.sizeHint().height(), plain.sizeHint().height() + 1);

  QApplication::style()->polish(&hint);  // as after a change of style
  EXPECT_EQ(hint.font().pointSizeF(), QApplication::font().pointSizeF() - 1);
  QLabel large(u"MMMM"_s);
  large.setFont(QFont(large.font().family(), 20));
  large.setProperty("hint", true);
  Painted(large);
  EXPECT_EQ(large.font().pointSize(), 20);
}

TEST_F(LookOfFrames, DisabledHintIsNotInTheHintColour) {
  QLabel hint(u"MMMM"_s);
  hint.setProperty("hint", true);
  hint.setEnabled(false);
  EXPECT_EQ(CountOf(Painted(hint), Colours().hint), 0);
}

TEST(LookParts, MixedColourIsBetweenTheTwo) {
  const QColor one(10, 20, 30);
  const QColor other(110, 0, 31);
  EXPECT_EQ(desktop::look::Mixed(one, other, 0), one);
  EXPECT_EQ(desktop::look::Mixed(one, other, 1), other);
  EXPECT_EQ(desktop::look::Mixed(one, other, 0.5), QColor(60, 10, 31));
}

TEST(LookParts, PanelPaintsNoFillOrBorderForAnInvalidColour) {
  const auto panel = [](const QColor& fill, const QColor& border) {
    return PaintedOn(QSize(40, 20), Qt::white, [&](QPainter& painter) {
      desktop::look::Panel(painter, QRect(0, 0, 40, 20), 4, fill, border, 2);
    });
  };
  const QImage border = panel(QColor(), Qt::black);
  EXPECT_EQ(border.pixelColor(20, 10), QColor(Qt::white));
  EXPECT_EQ(border.pixelColor(20, 1), QColor(Qt::black));
  EXPECT_EQ(border.pixelColor(20, 2), QColor(Qt::white));
  const QImage fill = panel(Qt::black, QColor());
  EXPECT_EQ(fill.pixelColor(20, 0), QColor(Qt::black));
  EXPECT_EQ(fill.pixelColor(20, 19), QColor(Qt::black));
  EXPECT_EQ(fill.pixelColor(0, 0), QColor(Qt::white));
}

TEST(LookParts, HairlineIsAtItsEdge) {
  const auto line = [](Qt::Edge edge) {
    return PlaceOf(PaintedOn(QSize(20, 10), Qt::magenta,
                             [edge](QPainter& painter) {
                               desktop::look::Hairline(painter, QRect(0, 0, 20, 10), desktop::LightPalette(), edge);
                             }),
                   desktop::ThemeColoursFor(desktop::LightPalette()).line);
  };
  EXPECT_EQ(line(Qt::TopEdge), QRect(0, 0, 20, 1));
  EXPECT_EQ(line(Qt::BottomEdge), QRect(0, 9, 20, 1));
  EXPECT_EQ(line(Qt::LeftEdge), QRect(0, 0, 1, 10));
}

TEST_F(LookOfFrames, LinesOfMenusAndListsHaveTheHeightOfAField) {
  QLineEdit edit;
  QMenu menu;
  QAction* action = menu.addAction(u"Openen"_s);
  menu.addSeparator();
  menu.ensurePolished();
  menu.resize(menu.sizeHint());
  EXPECT_EQ(menu.actionGeometry(action).height(), edit.sizeHint().height());
  EXPECT_LT(menu.actionGeometry(menu.actions().back()).height(), edit.sizeHint().height());
  QListWidget list;
  list.addItem(u"Bakker"_s);
  EXPECT_EQ(list.sizeHintForRow(0), edit.sizeHint().height() - 2);
}

}  // namespace
