// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>

class QKeyEvent;
class QLineEdit;
class QPushButton;

namespace controls {
class ListBox;
}

// The keys of an overview list: Ins, Enter and Del press Nieuw, Open and Verwijder; what is typed in the list goes on
// in the search box; from there Down and Enter lead back to the list and Esc empties the box first. Ctrl+F goes to the
// search box, F5 asks for a refill.
class OverviewKeys : public QObject {
  Q_OBJECT

 public:
  struct Targets {
    controls::ListBox* list = nullptr;
    QLineEdit* search = nullptr;
    QPushButton* nieuw = nullptr;
    QPushButton* open = nullptr;
    QPushButton* verwijder = nullptr;
  };

  // `window` owns it.
  OverviewKeys(const Targets& targets, QWidget* window);

 Q_SIGNALS:
  void refillAsked();

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  bool ListKey(QKeyEvent& event);
  bool SearchKey(const QKeyEvent& event);
  void GoToSearch();
  void GoToList();

  Targets targets_;
};
