// SPDX-License-Identifier: MIT
#include "platform/desktop/InputDialog.h"

#include "platform/desktop/InputBox.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTimer>
#include <QVBoxLayout>

#include <optional>

namespace desktop {

using namespace Qt::StringLiterals;

InputDialog::InputDialog(QWidget* owner, const QString& prompt, const QString& title, const QString& defaultText)
    : QDialog(owner),
      prompt_(prompt),
      defaultText_(defaultText),
      line_(new QLineEdit(defaultText)),
      ok_(new QPushButton(tr("&OK"))),
      cancel_(new QPushButton(tr("&Annuleren"))) {
  setObjectName(u"inputBox"_s);
  setWindowTitle(title);
  auto* label = new QLabel(prompt);
  label->setTextFormat(Qt::PlainText);
  label->setWordWrap(true);
  label->setBuddy(line_);
  line_->setAccessibleName(prompt);
  line_->setMinimumWidth(340);
  line_->selectAll();
  ok_->setDefault(true);
  connect(ok_, &QPushButton::clicked, this, &QDialog::accept);
  connect(cancel_, &QPushButton::clicked, this, &QDialog::reject);

  auto* buttons = new QHBoxLayout;
  buttons->addStretch();
  buttons->addWidget(ok_);
  buttons->addWidget(cancel_);
  auto* column = new QVBoxLayout(this);
  column->addWidget(label);
  column->addWidget(line_);
  column->addSpacing(8);
  column->addStretch();
  column->addLayout(buttons);
  line_->setFocus();
}

QString InputDialog::Typed() const {
  return line_->text();
}

void InputDialog::RunScript(InputBoxScript& script) {
  QTimer::singleShot(0, this, [this, &script] {
    script.shown_.push_back({windowTitle(), prompt_, defaultText_});
    const std::optional<QString> answer = script.TakeAnswer();
    if (answer) line_->setText(*answer);
    (answer ? ok_ : cancel_)->click();
  });
}

}  // namespace desktop
