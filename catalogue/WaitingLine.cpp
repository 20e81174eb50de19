// SPDX-License-Identifier: MIT
#include "catalogue/WaitingLine.h"

#include "platform/controls/ElidedLine.h"
#include "platform/controls/StateMark.h"
#include "platform/desktop/ThemeColours.h"
#include "platform/runtime/Counted.h"

#include <QHBoxLayout>
#include <QPushButton>

using namespace Qt::StringLiterals;

namespace {

class AmberLine : public controls::ElidedLine {
 public:
  using ElidedLine::ElidedLine;

 protected:
  QColor Colour() const override { return desktop::ThemeColoursFor(palette()).ends; }
};

}  // namespace

WaitingLine::WaitingLine(QWidget* parent) : QWidget(parent), lblWachten_(new AmberLine(this)) {
  lblWachten_->setObjectName(u"lblWachten"_s);
  auto* mark = new controls::StateMark(this);
  mark->Show(controls::LineMark::Triangle, controls::LineTone::Ends);
  auto* cmdTonen = new QPushButton(u"&Tonen"_s, this);
  cmdTonen->setObjectName(u"cmdTonen"_s);
  cmdTonen->setToolTip(u"De wijzigingen tonen die op een export wachten"_s);
  cmdTonen->setAutoDefault(false);
  connect(cmdTonen, &QPushButton::clicked, this, &WaitingLine::showAsked);
  auto* line = new QHBoxLayout(this);
  line->setContentsMargins({});
  line->setSpacing(8);
  line->addWidget(mark);
  line->addWidget(lblWachten_, 1);
  line->addWidget(cmdTonen);
  setFocusProxy(cmdTonen);
  hide();
}

void WaitingLine::Show(int changes, const QString& note) {
  const QString text =
      runtime::Counted(changes, u"wijziging wacht"_s, u"wijzigingen wachten"_s) + u" op export; "_s + note;
  lblWachten_->setText(text);
  lblWachten_->setToolTip(text);
  setVisible(changes > 0);
}
