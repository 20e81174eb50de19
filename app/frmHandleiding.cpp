// SPDX-License-Identifier: MIT
#include "app/frmHandleiding.h"

#include "app/ui_frmHandleiding.h"
#include "platform/runtime/Error.h"
#include "platform/runtime/Trapped.h"

#include <QAbstractTextDocumentLayout>
#include <QFile>
#include <QRegularExpression>
#include <QScreen>
#include <QScrollBar>
#include <QShortcut>
#include <QTextBlock>
#include <QTextCursor>
#include <QTextDocument>
#include <QTextTable>

// Q_INIT_RESOURCE must be used outside any namespace. It is needed since the resource is in a static library.
static void NeedManual() {
  Q_INIT_RESOURCE(handleiding);
}

using namespace Qt::StringLiterals;
using runtime::Trapped;

namespace {

constexpr QSize kManualSize(960, 660);
constexpr double kPageMargin = 20;
constexpr double kAboveHeading = 8;
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
  setModal(false);
  setAttribute(Qt::WA_QuitOnClose, false);
  connect(ui_->lstInhoud, &controls::ListBox::clicked, this, &frmHandleiding::lstInhoud_Click);
  connect(ui_->txtZoek, &QLineEdit::textChanged, this, &frmHandleiding::txtZoek_Change);
  connect(ui_->cmdVolgende, &QPushButton::clicked, this, &frmHandleiding::cmdVolgende_Click);
  connect(ui_->cmdVorige, &QPushButton::clicked, this, &frmHandleiding::cmdVorige_Click);
  connect(ui_->cmdSluiten, &QPushButton::clicked, this, [this] { Unload(); });
  const auto* find = new QShortcut(QKeySequence::Find, this);
  connect(find, &QShortcut::activated, ui_->txtZoek, [this] {
    ui_->txtZoek->setFocus(Qt::ShortcutFocusReason);
    ui_->txtZoek->selectAll();
  });
  resize(kManualSize.boundedTo(screen()->availableSize()));
}

frmHandleiding::~frmHandleiding() = default;

void frmHandleiding::Form_Load() {
  Trapped(__func__, [&] {
    ui_->txtHandleiding->setMarkdown(ManualText());
    ui_->txtHandleiding->document()->setDocumentMargin(kPageMargin);
    LightenTables(*ui_->txtHandleiding->document());
    FillContents();
    txtZoek_Change();
  });
}

// The line's number is that of the heading's block.
void frmHandleiding::FillContents() {
  ui_->lstInhoud->Clear();
  for (QTextBlock block = ui_->txtHandleiding->document()->begin(); block.isValid(); block = block.next()) {
    const int level = block.blockFormat().headingLevel();
    if (level < 2) continue;
    ui_->lstInhoud->AddItem((level == 2 ? QString() : u"    "_s) + block.text(), block.blockNumber());
  }
}

void frmHandleiding::GoTo(const QString& heading) {
  for (int line = 0; line < ui_->lstInhoud->ListCount(); ++line) {
    if (ui_->lstInhoud->Text(line).trimmed() == heading) return ui_->lstInhoud->SetListIndex(line);
  }
}

void frmHandleiding::lstInhoud_Click() {
  Trapped(__func__, [&] {
    const int line = ui_->lstInhoud->ListIndex();
    if (line < 0) return;
    QTextDocument& document = *ui_->txtHandleiding->document();
    const QTextBlock block = document.findBlockByNumber(static_cast<int>(ui_->lstInhoud->ItemData(line)));
    const double top = document.documentLayout()->blockBoundingRect(block).top();
    ui_->txtHandleiding->verticalScrollBar()->setValue(static_cast<int>(top - kAboveHeading));
  });
}

void frmHandleiding::txtZoek_Change() {
  Trapped(__func__, [&] {
    const QString text = ui_->txtZoek->text();
    const QTextDocument& document = *ui_->txtHandleiding->document();
    found_.clear();
    for (QTextCursor at = document.find(text); !text.isEmpty() && !at.isNull(); at = document.find(text, at))
      found_ += at;
    shown_ = 0;
    MarkFound();
    if (!found_.isEmpty()) Show(found_.first());
  });
}

void frmHandleiding::MarkFound() {
  QList<QTextEdit::ExtraSelection> marks;
  for (const QTextCursor& cursor : found_) {
    QTextEdit::ExtraSelection mark;
    mark.cursor = cursor;
    mark.format.setFontUnderline(true);
    mark.format.setUnderlineStyle(QTextCharFormat::SingleUnderline);
    marks += mark;
  }
  ui_->txtHandleiding->setExtraSelections(marks);
  const bool any = !found_.isEmpty();
  ui_->cmdVolgende->setEnabled(any);
  ui_->cmdVorige->setEnabled(any);
  if (!any) {
    ui_->txtHandleiding->setTextCursor(QTextCursor(ui_->txtHandleiding->document()));
    ui_->lblGevonden->setText(ui_->txtZoek->text().isEmpty() ? QString() : u"niet gevonden"_s);
  }
}

void frmHandleiding::Show(const QTextCursor& found) {
  ui_->txtHandleiding->setTextCursor(found);
  ui_->txtHandleiding->ensureCursorVisible();
  ui_->lblGevonden->setText(u"%1 van %2"_s.arg(shown_ + 1).arg(found_.size()));
}

void frmHandleiding::cmdVolgende_Click() {
  Trapped(__func__, [&] {
    if (found_.isEmpty()) return;
    shown_ = (shown_ + 1) % found_.size();
    Show(found_[shown_]);
  });
}

void frmHandleiding::cmdVorige_Click() {
  Trapped(__func__, [&] {
    if (found_.isEmpty()) return;
    shown_ = (shown_ + found_.size() - 1) % found_.size();
    Show(found_[shown_]);
  });
}
