// SPDX-License-Identifier: MIT
#include "app/ManualOpener.h"

#include "app/ManualSections.h"
#include "app/frmHandleiding.h"

#include <QApplication>
#include <QKeyEvent>
#include <QWindow>

ManualOpener::ManualOpener() {
  qApp->installEventFilter(this);
}

ManualOpener::~ManualOpener() = default;

void ManualOpener::Open() {
  const QWidget* used = QApplication::activeWindow();
  if (manual_ != nullptr && used == manual_.get()) return;
  const QString section = used == nullptr ? QString() : ManualSectionOf(used->objectName());
  if (manual_ == nullptr || !manual_->isVisible()) {
    manual_ = std::make_unique<frmHandleiding>(nullptr);
    manual_->Form_Load();
    manual_->show();
  }
  PutAboveModalWindow();
  if (!section.isEmpty()) manual_->GoTo(section);
  manual_->raise();
  manual_->activateWindow();
}

// A modal window blocks all others except those above it.
void ManualOpener::PutAboveModalWindow() {
  const QWidget* modal = QApplication::activeModalWidget();
  if (modal != nullptr && modal != manual_.get()) manual_->windowHandle()->setTransientParent(modal->windowHandle());
}

bool ManualOpener::eventFilter(QObject* watched, QEvent* event) {
  const bool isShown = manual_ != nullptr && manual_->isVisible();
  const bool isBlocked = isShown && event->type() == QEvent::WindowBlocked && watched == manual_->windowHandle();
  const bool modalCloses =
      isShown && event->type() == QEvent::Hide && watched->isWidgetType() && static_cast<QWidget*>(watched)->isModal();
  if (isBlocked || modalCloses) {
    PutAboveModalWindow();  // below a modal window that closes there may be another one
  } else if (event->type() == QEvent::KeyPress && watched->isWidgetType()) {
    const auto& key = static_cast<const QKeyEvent&>(*event);
    if (key.key() != Qt::Key_F1 || key.modifiers() != Qt::NoModifier) return false;
    if (!key.isAutoRepeat()) Open();
    return true;
  }
  return false;
}
