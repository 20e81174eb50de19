// SPDX-License-Identifier: MIT
#include "platform/desktop/WholeText.h"

#include <QLineEdit>

namespace desktop {

void ShowTextAsToolTip(QLineEdit* field) {
  const auto tell = [field, own = field->toolTip()](const QString& text) {
    field->setToolTip(text.isEmpty() ? own : text);
  };
  QObject::connect(field, &QLineEdit::textChanged, field, tell);
  tell(field->text());
}

}  // namespace desktop
