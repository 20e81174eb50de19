// SPDX-License-Identifier: MIT
#include "app/ExportResultPanel.h"

#include "data/Text.h"
#include "platform/controls/ElidedLine.h"
#include "platform/controls/QuietLine.h"
#include "platform/desktop/Icons.h"
#include "platform/desktop/ThemeColours.h"
#include "platform/runtime/Counted.h"
#include "platform/runtime/HostPath.h"

#include <QGridLayout>
#include <QPushButton>

using namespace Qt::StringLiterals;

namespace {

class WarningLine : public controls::ElidedLine {
 public:
  using ElidedLine::ElidedLine;

 protected:
  QColor Colour() const override { return desktop::ThemeColoursFor(palette()).ends; }
};

void SetLine(controls::ElidedLine& line, const QString& text) {
  line.setText(text);
  line.setToolTip(text);
  line.setVisible(!text.isEmpty());
}

}  // namespace

ExportResultPanel::ExportResultPanel(QWidget* parent)
    : QGroupBox(u"Laatste export"_s, parent),
      lblResultaat_(new controls::ElidedLine(this)),
      lblResultaatMap_(new controls::QuietLine(this)),
      lblZelfdeNummers_(new WarningLine(this)) {
  lblResultaat_->setObjectName(u"lblResultaat"_s);
  lblResultaatMap_->setObjectName(u"lblResultaatMap"_s);
  lblResultaatMap_->SetElideMode(Qt::ElideMiddle);
  lblZelfdeNummers_->setObjectName(u"lblZelfdeNummers"_s);
  auto* cmdMapOpenen = new QPushButton(desktop::Icon(u"map"_s), u"Ma&p openen"_s, this);
  cmdMapOpenen->setObjectName(u"cmdMapOpenen"_s);
  cmdMapOpenen->setToolTip(u"De map met het exportbestand openen"_s);
  cmdMapOpenen->setProperty("textBesideIcon", true);
  connect(cmdMapOpenen, &QPushButton::clicked, this, [this] { Q_EMIT folderAsked(hostFolder_); });
  auto* grid = new QGridLayout(this);
  grid->setContentsMargins(16, -1, 16, -1);
  grid->setVerticalSpacing(2);
  grid->addWidget(lblResultaat_, 0, 0);
  grid->addWidget(lblResultaatMap_, 1, 0);
  grid->addWidget(cmdMapOpenen, 0, 1, 2, 1, Qt::AlignVCenter);
  grid->addWidget(lblZelfdeNummers_, 2, 0, 1, 2);
  grid->setColumnStretch(0, 1);
  hide();
}

void ExportResultPanel::Show(const ExportedLog& exported) {
  const QString host = runtime::HostPath(exported.path);
  hostFolder_ = host.left(host.lastIndexOf(u'/'));
  SetLine(*lblResultaat_,
          GetFile(exported.path) + u": "_s + runtime::Counted(exported.changes, u"wijziging"_s, u"wijzigingen"_s));
  SetLine(*lblResultaatMap_, hostFolder_);
  SetLine(*lblZelfdeNummers_,
          exported.sameNumbers.isEmpty()
              ? QString()
              : u"Hetzelfde nummer voor verschillende nieuwe records: "_s + exported.sameNumbers.join(u"; "_s));
  if (!exported.warning.isEmpty()) lblZelfdeNummers_->setToolTip(exported.warning);
  show();
}
