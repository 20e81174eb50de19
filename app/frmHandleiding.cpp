// SPDX-License-Identifier: MIT
#include "app/frmHandleiding.h"

#include "app/ui_frmHandleiding.h"
#include "platform/runtime/Error.h"
#include "platform/runtime/Trapped.h"

#include <QFile>
#include <QRegularExpression>
#include <QTextDocument>
#include <QTextTable>

// Q_INIT_RESOURCE must be used outside any namespace. It is needed since the resource is in a static library.
static void NeedManual() {
  Q_INIT_RESOURCE(handleiding);
}

using namespace Qt::StringLiterals;
using runtime::Trapped;

namespace {

constexpr double kPageMargin = 20;
constexpr double kCellPadding = 4;

// Pictures are for readers of the file; users of the program can open the windows themselves.
QString WithoutPictures(QString markdown) {
  static const QRegularExpression picture(u"^!\\[.*\\]\\(.*\\)\n"_s, QRegularExpression::MultilineOption);
  return markdown.remove(picture);
}

QString ManualText() {
  NeedManual();
  QFile file(u":/spotrooster/handleiding.md"_s);
  if (!file.open(QIODevice::ReadOnly)) throw runtime::Error(u"De handleiding ontbreekt in dit programma."_s);
  return WithoutPictures(QString::fromUtf8(file.readAll()));
}

// Space instead of rules.
void LightenTables(QTextDocument& document) {
  for (QTextFrame* frame : document.rootFrame()->childFrames()) {
    auto* table = qobject_cast<QTextTable*>(frame);
    if (table == nullptr) continue;
    QTextTableFormat format = table->format();
    format.setBorder(0);
    format.setCellSpacing(0);
    format.setCellPadding(kCellPadding);
    table->setFormat(format);
  }
}

}  // namespace

frmHandleiding::frmHandleiding(QWidget* owner) : Form(owner), ui_(std::make_unique<Ui::frmHandleiding>()) {
  ui_->setupUi(this);
  connect(ui_->cmdSluiten, &QPushButton::clicked, this, &frmHandleiding::cmdSluiten_Click);
  constexpr QSize kOpeningSize(760, 620);
  resize(kOpeningSize);
}

frmHandleiding::~frmHandleiding() = default;

void frmHandleiding::Form_Load() {
  Trapped(__func__, [&] {
    ui_->txtHandleiding->setMarkdown(ManualText());
    ui_->txtHandleiding->document()->setDocumentMargin(kPageMargin);
    LightenTables(*ui_->txtHandleiding->document());
  });
}

void frmHandleiding::cmdSluiten_Click() {
  Trapped(__func__, [&] { Unload(); });
}
