// SPDX-License-Identifier: MIT
#include "platform/desktop/ViewMemory.h"

#include <QSettings>

namespace desktop {

ViewMemory::ViewMemory(const QString& file)
    : views_(std::make_unique<QSettings>(file, QSettings::IniFormat)), previous_(active_) {
  active_ = this;
}

ViewMemory::~ViewMemory() {
  active_ = previous_;
}

QString ViewMemory::ChoiceOf(const QString& view) {
  return active_ == nullptr ? QString() : active_->views_->value(view).toString();
}

void ViewMemory::Chosen(const QString& view, const QString& choice) {
  if (active_ != nullptr) active_->views_->setValue(view, choice);
}

}  // namespace desktop
