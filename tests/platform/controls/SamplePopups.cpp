// SPDX-License-Identifier: MIT
#include "platform/controls/CalendarPopup.h"
#include "platform/controls/ComboBox.h"
#include "platform/desktop/Icons.h"
#include "tests/platform/controls/Samples.h"

#include <QAbstractItemView>
#include <QMenu>

namespace samples {

using namespace Qt::StringLiterals;

QWidget* MakeMenu() {
  auto* menu = new QMenu;
  menu->addAction(desktop::Icon(u"items"_s), u"&Items"_s)->setShortcut(Qt::CTRL | Qt::Key_1);
  menu->addAction(desktop::Icon(u"item-spots"_s), u"Item-&spots"_s)->setShortcut(Qt::CTRL | Qt::Key_2);
  menu->addSeparator();
  QAction* active = menu->addAction(desktop::Icon(u"item-pingles"_s), u"Item-&pingles"_s);
  active->setShortcut(Qt::CTRL | Qt::Key_3);
  menu->addAction(u"Uit"_s)->setEnabled(false);
  menu->setActiveAction(active);
  return menu;
}

QWidget* MakeChoices() {
  auto* window = new QWidget;
  auto* combo = new controls::ComboBox(window);
  for (const auto& day : {u"Maandag"_s, u"Dinsdag"_s, u"Woensdag"_s})
    combo->AddItem(day);
  combo->SetListIndex(1);
  combo->move(16, 16);
  window->resize(300, 160);
  window->show();
  combo->showPopup();
  QWidget* popup = combo->view()->window();
  popup->setParent(window, Qt::Widget);
  popup->move(16, 48);
  popup->show();
  return window;
}

QWidget* MakeCalendar() {
  auto* popup = new controls::CalendarPopup(nullptr, QDate(2025, 3, 15));
  popup->setAttribute(Qt::WA_DeleteOnClose, false);
  popup->adjustSize();
  return popup;
}

}  // namespace samples
