// SPDX-License-Identifier: MIT
#include "data/forms/Form.h"

#include "platform/controls/ComboBox.h"
#include "platform/controls/ListBox.h"
#include "platform/desktop/Lock.h"
#include "platform/desktop/WaitPointer.h"
#include "platform/runtime/Error.h"
#include "platform/runtime/Trapped.h"

#include <QCloseEvent>
#include <QScreen>

using namespace Qt::StringLiterals;

Form::Form(QWidget* owner) : QDialog(owner) {
  setWindowFlag(Qt::WindowContextHelpButtonHint, false);
  setModal(true);
}

void Form::ShowModal() {
  Form_Load();
  ShowLoaded();
}

void Form::ShowLoaded() {
  const desktop::ArrowPointer arrow;  // the caller may still show its wait pointer
  const QWidget* owner = parentWidget();
  if (owner != nullptr && !owner->isVisible()) Centre();
  exec();
  // When windows close in quick succession, some desktops activate none, and the keyboard stops working.
  if (owner != nullptr && owner->isVisible()) owner->window()->activateWindow();
}

// Centres the form on the screen; Qt's own placement is arbitrary while the owner is hidden.
void Form::Centre() {
  QRect place(QPoint(), size());
  place.moveCenter(screen()->availableGeometry().center());
  move(place.topLeft());
}

QWidget* Form::Named(const QString& name) const {
  auto* widget = findChild<QWidget*>(name);
  if (widget == nullptr) throw runtime::Error(u"Het veld '%1' bestaat niet op dit scherm."_s.arg(name));
  return widget;
}

void Form::LockControl(const QString& name, bool lock) {
  runtime::Trapped(__func__, [&] { desktop::SetLocked(Named(name), lock); });
}

void Form::SetCboTextWhereID(const QString& name, qint64 id) {
  runtime::Trapped(__func__, [&] {
    QWidget* widget = Named(name);
    if (auto* combo = qobject_cast<controls::ComboBox*>(widget)) {
      combo->SelectWhereItemData(id);
    } else if (auto* list = qobject_cast<controls::ListBox*>(widget)) {
      list->SelectWhereItemData(id);
    } else {
      throw runtime::Error(u"Het veld '%1' is geen lijst."_s.arg(name));
    }
  });
}

void Form::Unload() {
  if (unloading_) return;
  unloading_ = true;
  Form_Unload();
  done(QDialog::Accepted);
}

void Form::closeEvent(QCloseEvent* event) {
  if (unloading_) {
    QDialog::closeEvent(event);
    return;
  }
  CloseAsked();
  event->setAccepted(unloading_);
}
