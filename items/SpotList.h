#pragma once
#include <QHash>
#include <QString>

namespace controls {
class ListBox;
}

// Helps the list of an item's spots to show lengths: an aid beside the told texts, which it never touches.
class SpotLengths {
 public:
  // Reads the lengths of all item-spots of the present catalogue. No error box: without them the list shows none.
  void Read();

  // Puts each listed spot's length at the end of its line.
  void Show(controls::ListBox& list) const;

  // "5 item-spots, samen 2:29".
  QString Total(const controls::ListBox& list) const;

 private:
  QHash<qint64, int> seconds_;
};
