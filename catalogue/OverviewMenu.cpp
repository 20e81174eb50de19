// SPDX-License-Identifier: MIT
#include "catalogue/OverviewMenu.h"

#include "platform/controls/ListBox.h"

#include <QContextMenuEvent>
#include <QMenu>
#include <QPushButton>

#include <utility>

using namespace Qt::StringLiterals;

namespace {

// A line's name in a menu: not too long, and without mnemonics.
QString MenuName(const QWidget& widget, const QString& naam) {
  constexpr int kWidest = 40;  // average letters
  const QFontMetrics metrics = widget.fontMetrics();
  QString shown = metrics.elidedText(naam, Qt::ElideRight, kWidest * metrics.averageCharWidth());
  return u" ‘"_s + shown.replace(u'&', u"&&"_s) + u"’"_s;
}

}  // namespace

OverviewMenu::OverviewMenu(controls::ListBox& list, QList<QPushButton*> own, QList<QPushButton*> others)
    : QObject(&list), list_(list), own_(std::move(own)), others_(std::move(others)) {
  list_.installEventFilter(this);
  list_.viewport()->installEventFilter(this);
}

bool OverviewMenu::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::ContextMenu) {
    const auto& asked = static_cast<const QContextMenuEvent&>(*event);
    if (asked.reason() == QContextMenuEvent::Mouse) {
      Show(asked.globalPos());
    } else {
      const QRect line = list_.visualRect(list_.currentIndex());
      Show(list_.viewport()->mapToGlobal(line.isValid() ? line.center() : QPoint()));
    }
    return true;
  }
  if (event->type() == QEvent::KeyPress) {
    const auto& key = static_cast<const QKeyEvent&>(*event);
    if (key.key() == Qt::Key_F10 && key.modifiers() == Qt::ShiftModifier) {
      Show(list_.viewport()->mapToGlobal(list_.visualRect(list_.currentIndex()).center()));
      return true;
    }
  }
  return QObject::eventFilter(watched, event);
}

void OverviewMenu::Show(const QPoint& at) {
  QMenu menu(&list_);
  menu.setObjectName(u"mnuRegel"_s);
  const bool several = list_.MarkedCount() > 1;
  const QString line = several ? MenuName(list_, list_.Text(list_.ListIndex())) : QString();
  for (QPushButton* button : std::as_const(others_))
    Add(menu, *button, {});
  if (!menu.isEmpty()) menu.addSeparator();
  for (QPushButton* button : std::as_const(own_))
    Add(menu, *button, line);
  menu.exec(at);
}

void OverviewMenu::Add(QMenu& menu, QPushButton& button, const QString& line) const {
  if (button.isHidden() || !button.isEnabled()) return;
  QAction* entry = menu.addAction(button.icon(), button.text() + line);
  connect(entry, &QAction::triggered, &button, &QPushButton::click);
}
