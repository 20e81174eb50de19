// SPDX-License-Identifier: MIT
#include "tests/windows/Controls.h"

#include "platform/controls/ClipStrip.h"
#include "platform/controls/LedClockGround.h"
#include "platform/controls/LedPanel.h"
#include "platform/controls/LevelMeter.h"
#include "platform/controls/LevelScale.h"
#include "platform/controls/StateMark.h"
#include "platform/controls/WaveformStrip.h"

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QAbstractSlider>
#include <QAccessible>
#include <QComboBox>
#include <QGroupBox>
#include <QHeaderView>
#include <QKeySequence>
#include <QLabel>
#include <QLineEdit>
#include <QMap>
#include <QMenu>
#include <QMenuBar>
#include <QRadioButton>
#include <QScrollBar>
#include <QTabBar>
#include <QTest>
#include <QTextEdit>
#include <QToolButton>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace windows {
namespace {

// Internal parts of a Qt control.
bool IsInner(const QWidget* widget) {
  return widget->objectName().startsWith(u"qt_"_s) || qobject_cast<const QScrollBar*>(widget) != nullptr ||
         qobject_cast<const QHeaderView*>(widget) != nullptr ||
         qobject_cast<const QComboBox*>(widget->parentWidget()) != nullptr ||
         qobject_cast<const QLineEdit*>(widget->parentWidget()) != nullptr ||
         qobject_cast<const QTabBar*>(widget->parentWidget()) != nullptr ||
         qobject_cast<const QMenuBar*>(widget->parentWidget()) != nullptr;
}

bool IsInstrument(const QWidget* widget) {
  return qobject_cast<const controls::LedPanel*>(widget) != nullptr ||
         qobject_cast<const controls::LevelMeter*>(widget) != nullptr ||
         qobject_cast<const controls::LevelScale*>(widget) != nullptr ||
         qobject_cast<const controls::WaveformStrip*>(widget) != nullptr ||
         qobject_cast<const controls::ClipStrip*>(widget) != nullptr ||
         qobject_cast<const controls::StateMark*>(widget) != nullptr;
}

bool IsActedOn(const QWidget* widget) {
  return qobject_cast<const QAbstractButton*>(widget) != nullptr || qobject_cast<const QLineEdit*>(widget) != nullptr ||
         qobject_cast<const QComboBox*>(widget) != nullptr ||
         qobject_cast<const QAbstractItemView*>(widget) != nullptr ||
         qobject_cast<const QAbstractSlider*>(widget) != nullptr || qobject_cast<const QTextEdit*>(widget) != nullptr ||
         qobject_cast<const controls::WaveformStrip*>(widget) != nullptr ||
         ((widget->focusPolicy() & Qt::TabFocus) != 0 && !widget->isWindow());
}

QList<QWidget*> Shown(const QWidget& window) {
  QList<QWidget*> shown;
  for (QWidget* widget : window.findChildren<QWidget*>()) {
    if (widget->isVisible() && widget->window() == &window && !IsInner(widget)) shown += widget;
  }
  return shown;
}

QString PropertyOf(QWidget* widget, QAccessible::Text what) {
  QAccessibleInterface* face = QAccessible::queryAccessibleInterface(widget);
  return face == nullptr ? QString() : face->text(what).trimmed();
}

bool HasLetters(const QString& text) {
  return std::any_of(text.begin(), text.end(), [](QChar c) { return c.isLetter(); });
}

// Controls that need a description besides a name: what they show, what keys and mouse do.
bool NeedsDescription(const QWidget* widget) {
  const auto* button = qobject_cast<const QAbstractButton*>(widget);
  const auto* line = qobject_cast<const QLineEdit*>(widget);
  return IsInstrument(widget) || qobject_cast<const QAbstractSlider*>(widget) != nullptr ||
         qobject_cast<const controls::LedClockGround*>(widget) != nullptr ||
         qobject_cast<const QAbstractItemView*>(widget) != nullptr ||
         (button != nullptr && !button->icon().isNull() && !HasLetters(button->text())) ||
         (line != nullptr && !line->placeholderText().isEmpty());
}

class Letters {
 public:
  void Add(const QString& caption, const QWidget* owner) {
    const QKeySequence keys = QKeySequence::mnemonic(caption);
    if (!keys.isEmpty()) owners_[keys.toString()] += Described(owner) + u" '"_s + caption + u'\'';
  }
  QStringList Shared() const {
    QStringList shared;
    for (auto letter = owners_.begin(); letter != owners_.end(); ++letter) {
      if (letter->size() > 1) shared += letter.key() + u": "_s + letter->join(u", "_s);
    }
    return shared;
  }

 private:
  QMap<QString, QStringList> owners_;
};

void AddCaptions(Letters& letters, const QWidget* widget) {
  if (const auto* button = qobject_cast<const QAbstractButton*>(widget)) letters.Add(button->text(), widget);
  if (const auto* group = qobject_cast<const QGroupBox*>(widget)) letters.Add(group->title(), widget);
  if (const auto* label = qobject_cast<const QLabel*>(widget); label != nullptr && label->buddy() != nullptr) {
    letters.Add(label->text(), widget);
  }
  if (const auto* tabs = qobject_cast<const QTabBar*>(widget)) {
    for (int tab = 0; tab < tabs->count(); ++tab)
      letters.Add(tabs->tabText(tab), widget);
  }
  if (const auto* bar = qobject_cast<const QMenuBar*>(widget)) {
    for (const QAction* action : bar->actions())
      letters.Add(action->text(), widget);
  }
}

// An open menu has its own mnemonics.
QStringList SharedWithin(const QMenu* menu) {
  Letters letters;
  for (const QAction* action : menu->actions())
    letters.Add(action->text(), menu);
  return letters.Shared();
}

// The positions of two controls, or of the different parts of the window that contain them.
std::pair<QRect, QRect> PlacesOf(const QWidget* first, const QWidget* second) {
  const auto inWindow = [](const QWidget* widget) {
    return QRect(widget->mapTo(widget->window(), QPoint(0, 0)), widget->size());
  };
  while (!first->parentWidget()->isAncestorOf(second))
    first = first->parentWidget();
  while (!second->parentWidget()->isAncestorOf(first))
    second = second->parentWidget();
  return {inWindow(first), inWindow(second)};
}

// In a group of radio buttons one is a tab stop; arrow keys reach the others.
bool GoTogether(const QWidget* one, const QWidget* other) {
  const auto* first = qobject_cast<const QRadioButton*>(one);
  const auto* second = qobject_cast<const QRadioButton*>(other);
  if (first == nullptr || second == nullptr) return false;
  if (first->group() != nullptr || second->group() != nullptr) return first->group() == second->group();
  return first->parentWidget() == second->parentWidget();
}

bool ReadsOn(const QRect& from, const QRect& to) {
  const bool above = to.bottom() < from.top();
  const bool sameLine = to.top() <= from.bottom() && to.bottom() >= from.top();
  if (sameLine) return to.left() >= from.right();
  // A step up is allowed only to a column further right.
  return !above || to.left() >= from.right();
}

}  // namespace

QString Described(const QWidget* control) {
  return QString::fromLatin1(control->metaObject()->className()) + u' ' + control->objectName();
}

QStringList Described(const QList<QWidget*>& controls) {
  QStringList described;
  for (const QWidget* control : controls)
    described += Described(control);
  return described;
}

QStringList Nameless(const QWidget& window) {
  QStringList nameless;
  for (QWidget* widget : Shown(window)) {
    if ((IsInstrument(widget) || IsActedOn(widget)) && PropertyOf(widget, QAccessible::Name).isEmpty()) {
      nameless += Described(widget);
    }
  }
  return nameless;
}

QStringList SharedNames(const QWidget& window) {
  QMap<QString, QStringList> owners;
  for (QWidget* widget : Shown(window)) {
    if (IsInstrument(widget) || IsActedOn(widget)) owners[PropertyOf(widget, QAccessible::Name)] += Described(widget);
  }
  QStringList shared;
  for (auto name = owners.begin(); name != owners.end(); ++name) {
    if (name->size() > 1) shared += name.key() + u": "_s + name->join(u", "_s);
  }
  return shared;
}

QStringList Undescribed(const QWidget& window) {
  QStringList undescribed;
  for (QWidget* widget : Shown(window)) {
    if (NeedsDescription(widget) && PropertyOf(widget, QAccessible::Description).isEmpty() &&
        PropertyOf(widget, QAccessible::Value).isEmpty())
      undescribed += Described(widget);
  }
  return undescribed;
}

QStringList SharedMnemonics(const QWidget& window) {
  Letters letters;
  QStringList shared;
  for (const QWidget* widget : Shown(window))
    AddCaptions(letters, widget);
  for (const QMenu* menu : window.findChildren<QMenu*>())
    shared += SharedWithin(menu);
  return letters.Shared() + shared;
}

QList<QWidget*> Operable(const QWidget& window) {
  QList<QWidget*> operable;
  for (QWidget* widget : Shown(window)) {
    if (IsActedOn(widget) && widget->isEnabled()) operable += widget;
  }
  return operable;
}

QList<QWidget*> Missed(const QWidget& window, const QList<QWidget*>& stops) {
  QList<QWidget*> missed = Operable(window);
  missed.removeIf([&](QWidget* control) {
    return std::any_of(stops.begin(), stops.end(),
                       [&](QWidget* stop) { return stop == control || GoTogether(stop, control); });
  });
  return missed;
}

QList<QWidget*> TabStops(QWidget& window) {
  QList<QWidget*> stops;
  constexpr int kMax = 200;
  for (int at = 0; at < kMax; ++at) {
    QWidget* now = window.focusWidget();
    if (now != nullptr && stops.contains(now)) break;
    if (now != nullptr && !now->isWindow()) stops += now;
    QTest::keyClick(now == nullptr ? &window : now, Qt::Key_Tab);
  }
  return stops;
}

QStringList Unmarked(QWidget& window, const QList<QWidget*>& stops) {
  constexpr int kRing = 6;  // around the control, logical pixels
  QStringList unmarked;
  for (qsizetype at = 0; at < stops.size() && stops.size() > 1; ++at) {
    QWidget* stop = stops[at];
    const auto look = [&](QWidget* focused) {
      focused->setFocus(Qt::TabFocusReason);
      QCoreApplication::processEvents();
      const QRect place(stop->mapTo(&window, QPoint(0, 0)), stop->size());
      return window.grab(place.adjusted(-kRing, -kRing, kRing, kRing)).toImage();
    };
    const QImage with = look(stop);
    const QImage without = look(stops[(at + 1) % stops.size()]);
    if (with == without) unmarked += Described(stop);
  }
  return unmarked;
}

QStringList AgainstReading(const QList<QWidget*>& order) {
  QStringList against;
  for (qsizetype at = 0; at < order.size() && order.size() > 1; ++at) {
    const QWidget* next = order[(at + 1) % order.size()];
    const auto [from, to] = PlacesOf(order[at], next);
    if (!ReadsOn(from, to)) against += Described(order[at]) + u" -> "_s + Described(next);
  }
  return against;
}

}  // namespace windows
