// SPDX-License-Identifier: MIT
#include "platform/desktop/TextAsToolTip.h"

#include <QLineEdit>

namespace desktop {

void ShowTextAsToolTip(QLineEdit* field) {
  const auto showToolTip = [field, own = field->toolTip()](const QString& text) {
    field->setToolTip(text.isEmpty() ? own : text);
  };
  QObject::connect(field, &QLineEdit::textChanged, field, showToolTip);
  showToolTip(field->text());
}

}  // namespace desktop
