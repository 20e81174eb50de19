// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>

class QKeyEvent;
class QLineEdit;
class QPushButton;

namespace controls {
class ListBox;
}

// The keys of an overview list: Ins, Enter and Del press Nieuw, Open and Verwijder; text typed in the list continues in
// the search box; Down and Enter return from there to the list, Esc first clears the box. Ctrl+F focuses the search
// box, F5 reads the list again.
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

  // `window` becomes the owner.
  OverviewKeys(const Targets& targets, QWidget* window);

 Q_SIGNALS:
  void refillRequested();

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  bool ListKey(QKeyEvent& event);
  bool SearchKey(const QKeyEvent& event);
  void GoToSearch();
  void GoToList();

  Targets targets_;
};
