// SPDX-License-Identifier: MIT
#pragma once

#include <QList>
#include <QObject>

class QMenu;
class QPushButton;

namespace controls {
class ListBox;
}

// The context menu of an overview list, by the right mouse button, the menu key or Shift+F10. Its entries press the
// buttons of the list that are visible and enabled.
class OverviewMenu : public QObject {
  Q_OBJECT

 public:
  // `own`: buttons that act on the selected line alone. They name it while several lines are marked.
  OverviewMenu(controls::ListBox& list, QList<QPushButton*> own, QList<QPushButton*> others);

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void Show(const QPoint& at);
  void Add(QMenu& menu, QPushButton& button, const QString& line) const;

  controls::ListBox& list_;
  QList<QPushButton*> own_;
  QList<QPushButton*> others_;
};
