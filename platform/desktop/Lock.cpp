// SPDX-License-Identifier: MIT
#include "platform/desktop/Lock.h"

#include <QApplication>
#include <QComboBox>
#include <QKeyEvent>
#include <QLineEdit>
#include <QVariant>

namespace desktop {
namespace {

using namespace Qt::StringLiterals;

constexpr char kLocked[] = "locked";

bool LeavesAlone(const QKeyEvent& key) {
  switch (key.key()) {
    case Qt::Key_Tab:
    case Qt::Key_Backtab:
    case Qt::Key_Escape:
    case Qt::Key_Return:
    case Qt::Key_Enter:
      return true;
    default:
      return false;
  }
}

// Event filter of a field that has been locked once: updates its colours and blocks input to a locked combo box.
class FieldLock : public QObject {
 public:
  explicit FieldLock(QWidget* field) : QObject(field), field_(field) {
    setObjectName(u"fieldLock"_s);
    field->installEventFilter(this);
  }

  void Apply(bool locked) {
    field_->setProperty(kLocked, locked);
    if (auto* combo = qobject_cast<QComboBox*>(field_)) {
      if (combo->isEditable()) combo->lineEdit()->setReadOnly(locked);
    } else {
      field_->setProperty("readOnly", locked);
    }
    Colour();
    field_->update();
  }

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override {
    const auto type = event->type();
    if (type == QEvent::PaletteChange || type == QEvent::ApplicationPaletteChange) Colour();
    return IsLocked(field_) && qobject_cast<QComboBox*>(watched) != nullptr && ChangesCombo(*event);
  }

 private:
  bool ChangesCombo(const QEvent& event) const {
    switch (event.type()) {
      case QEvent::MouseButtonPress:
        field_->setFocus(Qt::MouseFocusReason);
        return true;
      case QEvent::MouseButtonDblClick:
      case QEvent::Wheel:
        return true;
      case QEvent::KeyPress:
        return !LeavesAlone(static_cast<const QKeyEvent&>(event));
      default:
        return false;
    }
  }

  void Colour() {
    if (colouring_) return;
    colouring_ = true;
    const QPalette current = QApplication::palette(field_);
    const QPalette::ColorRole role = IsLocked(field_) ? QPalette::Button : QPalette::Base;
    QPalette own = field_->palette();
    for (const auto group : {QPalette::Active, QPalette::Inactive, QPalette::Disabled})
      own.setColor(group, QPalette::Base, current.color(group, role));
    field_->setPalette(own);
    colouring_ = false;
  }

  QWidget* field_;
  bool colouring_ = false;
};

}  // namespace

void SetLocked(QWidget* field, bool locked) {
  QObject* lock = field->findChild<QObject*>(u"fieldLock"_s, Qt::FindDirectChildrenOnly);
  if (lock == nullptr) lock = new FieldLock(field);
  static_cast<FieldLock*>(lock)->Apply(locked);
}

bool IsLocked(const QWidget* field) {
  return field->property(kLocked).toBool();
}

QColor FieldBackground(const QWidget* field) {
  return field->palette().color(QPalette::Base);
}

}  // namespace desktop
