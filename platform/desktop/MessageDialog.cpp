// SPDX-License-Identifier: MIT
#include "platform/desktop/MessageDialog.h"

#include "platform/desktop/Icons.h"
#include "platform/desktop/MessageBox.h"

#include <QClipboard>
#include <QGridLayout>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QMimeData>
#include <QScreen>
#include <QScrollBar>
#include <QTextDocumentFragment>
#include <QTextEdit>
#include <QTimer>

#include <algorithm>

namespace desktop {
namespace {

using namespace Qt::StringLiterals;

constexpr int kMargin = 20;
constexpr int kIconSize = 36;
constexpr int kMinTextWidth = 340;
constexpr int kMaxTextWidth = 440;

struct Sign {
  QString icon;
  IconTint tint = IconTint::Text;
};

Sign SignOf(int style) {
  switch (style & 0xf0) {
    case 16:
      return {u"fout"_s, IconTint::Danger};
    case 32:
      return {u"vraag"_s, IconTint::Accent};
    case 48:
      return {u"let-op"_s, IconTint::Warning};
    case 64:
      return {u"info"_s, IconTint::Accent};
    default:
      return {};
  }
}

std::vector<int> AnswersOf(int style) {
  switch (style & 0x0f) {
    case 3:
      return {kAnswerYes, kAnswerNo, kAnswerCancel};
    case 4:
      return {kAnswerYes, kAnswerNo};
    default:
      return {kAnswerOk};
  }
}

QString CaptionOf(int answer) {
  switch (answer) {
    case kAnswerYes:
      return MessageDialog::tr("&Ja");
    case kAnswerNo:
      return MessageDialog::tr("&Nee");
    case kAnswerCancel:
      return MessageDialog::tr("&Annuleren");
    default:
      return MessageDialog::tr("&OK");
  }
}

// Prevents a line break between the two backslashes of a network path.
constexpr QChar kWordJoiner(0x2060);

class MessageText : public QTextEdit {
 public:
  using QTextEdit::QTextEdit;

 protected:
  // Copied text must equal the original message.
  QMimeData* createMimeDataFromSelection() const override {
    auto* copied = new QMimeData;
    copied->setText(textCursor().selection().toPlainText().remove(kWordJoiner));
    return copied;
  }

  // Without a selection Ctrl+C copies the whole message: the dialog does that.
  void keyPressEvent(QKeyEvent* event) override {
    if (event->matches(QKeySequence::Copy) && !textCursor().hasSelection()) return event->ignore();
    QTextEdit::keyPressEvent(event);
  }
};

QString Displayed(QString text) {
  text.replace(u"\r\n"_s, u"\n"_s);
  return text.replace(u"\\\\"_s, u"\\"_s + kWordJoiner + u'\\');
}

}  // namespace

MessageDialog::MessageDialog(QWidget* owner, const QString& text, int style, const QString& title)
    : QDialog(owner), style_(style), text_(text) {
  setObjectName(u"messageBox"_s);
  setWindowTitle(title);
  setAccessibleName(title);
  setAccessibleDescription(text);

  auto* grid = new QGridLayout(this);
  grid->setContentsMargins(kMargin, kMargin, kMargin, kMargin - 4);
  grid->setHorizontalSpacing(kMargin - 4);
  grid->setVerticalSpacing(kMargin - 4);
  if (QWidget* icon = MakeIcon()) grid->addWidget(icon, 0, 0, Qt::AlignTop);
  grid->addWidget(MakeText(text), 0, 1);
  auto* buttonRow = new QHBoxLayout;
  buttonRow->setSpacing(8);
  buttonRow->addStretch();
  AddButtons(buttonRow);
  grid->addLayout(buttonRow, 1, 0, 1, 2);
  grid->setSizeConstraint(QLayout::SetFixedSize);
}

QWidget* MessageDialog::MakeIcon() const {
  const Sign sign = SignOf(style_);
  if (sign.icon.isEmpty()) return nullptr;
  auto* label = new QLabel;
  label->setObjectName(u"messageIcon"_s);
  label->setPixmap(Icon(sign.icon, sign.tint).pixmap(QSize(kIconSize, kIconSize), devicePixelRatioF()));
  return label;
}

// A text edit, not a label: it also wraps a long path, and scrolls a text that is higher than the screen.
QTextEdit* MessageDialog::MakeText(const QString& text) {
  auto* edit = new MessageText(this);
  edit->setObjectName(u"messageText"_s);
  edit->setAccessibleName(tr("Melding"));
  edit->setFrameShape(QFrame::NoFrame);
  edit->setReadOnly(true);
  edit->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
  edit->setTabChangesFocus(true);
  edit->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  edit->viewport()->setAutoFillBackground(false);
  edit->setWordWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
  edit->document()->setDocumentMargin(0);
  edit->setPlainText(Displayed(text));

  // Measured on a copy, because the edit would lay out its own document again for every width tried.
  QTextDocument measured;
  measured.setDefaultFont(edit->font());
  measured.setDocumentMargin(0);
  measured.setDefaultTextOption(QTextOption(edit->document()->defaultTextOption()));
  measured.setPlainText(edit->toPlainText());
  int width = std::clamp(static_cast<int>(measured.idealWidth()) + 2, kMinTextWidth, kMaxTextWidth);
  measured.setTextWidth(width);
  const int screenHeight = screen() != nullptr ? screen()->availableGeometry().height() : 800;
  const int wanted = std::max(kIconSize, static_cast<int>(measured.size().height()) + 2);
  const int height = std::min(wanted, screenHeight / 2);
  if (height < wanted) width += edit->verticalScrollBar()->sizeHint().width();
  edit->setFixedSize(width, height);
  return edit;
}

void MessageDialog::AddButtons(QHBoxLayout* row) {
  const std::size_t byStyle = static_cast<std::size_t>((style_ >> 8) & 3);
  const std::vector<int> answers = AnswersOf(style_);
  for (std::size_t i = 0; i < answers.size(); ++i) {
    auto* button = new QPushButton(CaptionOf(answers[i]), this);
    const int answer = answers[i];
    connect(button, &QPushButton::clicked, this, [this, answer] { done(answer); });
    row->addWidget(button);
    choices_.push_back({button, answer});
    if (i != (byStyle < answers.size() ? byStyle : 0)) continue;
    button->setDefault(true);
    button->setFocus();
  }
}

QPushButton* MessageDialog::ButtonOf(int answer) const {
  for (const Choice& choice : choices_)
    if (choice.answer == answer) return choice.button;
  return nullptr;
}

int MessageDialog::DefaultAnswer() const {
  for (const Choice& choice : choices_)
    if (choice.button->isDefault()) return choice.answer;
  return choices_.front().answer;
}

// Esc and closing the window: Cancel if there is one, OK if it is the only button, else no effect.
void MessageDialog::reject() {
  if (ButtonOf(kAnswerCancel) != nullptr) done(kAnswerCancel);
  if (choices_.size() == 1) done(choices_.front().answer);
}

// Ctrl+C copies title and text. The mnemonic letter of a button works without Alt too.
void MessageDialog::keyPressEvent(QKeyEvent* event) {
  if (event->matches(QKeySequence::Copy)) {
    QString text = text_;
    text.replace(u"\r\n"_s, u"\n"_s);
    return QGuiApplication::clipboard()->setText(windowTitle() + u"\n\n"_s + text);
  }
  const bool plain = (event->modifiers() & ~Qt::ShiftModifier) == Qt::NoModifier && !event->text().isEmpty();
  for (const Choice& choice : choices_) {
    const QString caption = choice.button->text();
    if (plain && caption.mid(caption.indexOf(u'&') + 1, 1).compare(event->text(), Qt::CaseInsensitive) == 0)
      return choice.button->click();
  }
  QDialog::keyPressEvent(event);
}

void MessageDialog::RunScript(MessageBoxScript& script) {
  QTimer::singleShot(0, this, [this, &script] {
    ShownMessageBox shown{windowTitle(), text_, style_, {}, DefaultAnswer(), 0};
    for (const Choice& choice : choices_)
      shown.buttons << QString(choice.button->text()).remove(u'&');
    shown.answer = script.TakeAnswer(shown.defaultAnswer);
    QPushButton* button = ButtonOf(shown.answer);
    if (button == nullptr) {
      qWarning("The box \"%s\" has no button for answer %d", qPrintable(text_), shown.answer);
      shown.answer = shown.defaultAnswer;
      button = ButtonOf(shown.answer);
    }
    script.shown_.push_back(shown);
    button->click();
  });
}

}  // namespace desktop
