// SPDX-License-Identifier: MIT
#pragma once

#include <QList>
#include <QString>
#include <QWidget>

#include <functional>
#include <memory>

// Every window of the program.
namespace windows {

// IDs of records that the current catalogue must contain.
struct Records {
  qint32 itemOption1 = 0;
  qint32 itemOption2 = 0;
  qint32 itemSpot = 0;
  qint32 itemPingle = 0;
};

// A loaded, hidden window, with the objects that it needs.
class Window {
 public:
  explicit Window(std::unique_ptr<QWidget> widget, std::shared_ptr<QWidget> owner = {})
      : owner_(std::move(owner)), widget_(std::move(widget)) {}
  QWidget& Widget() const { return *widget_; }

 private:
  std::shared_ptr<QWidget> owner_;
  std::unique_ptr<QWidget> widget_;
};

struct Opening {
  QString name;
  std::function<Window()> open;
};

QList<Opening> All(const Records& records);

}  // namespace windows
