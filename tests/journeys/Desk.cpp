// SPDX-License-Identifier: MIT
#include "tests/journeys/Desk.h"

#include "platform/controls/ComboBox.h"
#include "platform/controls/ListBox.h"
#include "platform/desktop/FileChooser.h"
#include "tests/journeys/Hand.h"

#include <QAbstractButton>
#include <QAction>
#include <QApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QImage>
#include <QLineEdit>
#include <QPixmap>
#include <QPointer>
#include <QThread>
#include <QToolBar>

#include <exception>

using namespace Qt::StringLiterals;

namespace {

constexpr int kPatience = 60000;       // ms until a waiting step fails
constexpr int kMaxLooks = 12;          // limit for a window that never stops changing: its picture is taken anyway
constexpr unsigned long kCalm = 250;   // ms between comparisons of a picture
constexpr unsigned long kGlance = 10;  // ms between two checks

QWidget* FindWindow(const QString& name) {
  for (QWidget* window : QApplication::topLevelWidgets()) {
    if (window->objectName() == name && window->isVisible()) return window;
  }
  return nullptr;
}

QWidget& Window(const QString& name) {
  QWidget* window = FindWindow(name);
  if (window == nullptr) throw StepFailed(u"het venster %1 is niet open"_s.arg(name));
  return *window;
}

QWidget& Control(const QString& window, const QString& name) {
  auto* control = Window(window).findChild<QWidget*>(name);
  if (control == nullptr) throw StepFailed(u"%1 heeft geen %2"_s.arg(window, name));
  return *control;
}

QWidget& LiveControl(const QString& window, const QString& name) {
  QWidget& control = Control(window, name);
  if (!control.isVisible() || !control.isEnabled())
    throw StepFailed(u"%1.%2 kan niet gebruikt worden"_s.arg(window, name));
  return control;
}

bool TakesInput(const QString& name) {
  const QWidget* window = FindWindow(name);
  const QWidget* modal = QApplication::activeModalWidget();
  return window != nullptr && (modal == nullptr || modal == window);
}

QString Plain(QString caption) {
  return caption.remove(u'&');
}

int LineOf(const QStringList& lines, const QString& line) {
  const int at = static_cast<int>(lines.indexOf(line));
  if (at < 0) throw StepFailed(u"de lijst heeft geen regel '%1'"_s.arg(line));
  return at;
}

QStringList LinesOf(const QWidget& list) {
  QStringList lines;
  if (const auto* combo = qobject_cast<const controls::ComboBox*>(&list)) {
    for (int at = 0; at < combo->ListCount(); ++at)
      lines += combo->Text(at);
  } else if (const auto* box = qobject_cast<const controls::ListBox*>(&list)) {
    for (int at = 0; at < box->ListCount(); ++at)
      lines += box->Text(at);
  }
  return lines;
}

}  // namespace

void Desk::InWindows(const std::function<void()>& task) {
  std::exception_ptr failure;
  QMetaObject::invokeMethod(
      qApp,
      [&] {
        try {
          task();
        } catch (...) {
          failure = std::current_exception();
        }
      },
      Qt::BlockingQueuedConnection);
  if (failure) std::rethrow_exception(failure);
}

void Desk::WaitUntil(const QString& what, const std::function<bool()>& holds) const {
  QElapsedTimer time;
  time.start();
  for (;;) {
    bool done = false;
    InWindows([&] { done = holds(); });
    if (done) return;
    if (time.hasExpired(kPatience)) throw StepFailed(what);
    QThread::msleep(kGlance);
  }
}

void Desk::WaitForWindow(const QString& window) const {
  WaitUntil(u"het venster %1 ging niet open"_s.arg(window), [&] { return TakesInput(window); });
}

void Desk::WaitUntilGone(const QString& window) const {
  WaitUntil(u"het venster %1 ging niet dicht"_s.arg(window), [&] { return FindWindow(window) == nullptr; });
}

void Desk::Click(const QString& window, const QString& control) const {
  InWindows([&] { hand::Click(LiveControl(window, control)); });
}

void Desk::ClickAt(const QString& window, const QString& control, double share) const {
  InWindows([&] {
    QWidget& widget = LiveControl(window, control);
    hand::ClickAt(widget, QPoint(static_cast<int>(widget.width() * share), widget.height() / 2));
  });
}

void Desk::DoubleClick(const QString& window, const QString& control) const {
  InWindows([&] {
    auto* list = qobject_cast<controls::ListBox*>(&LiveControl(window, control));
    if (list == nullptr) throw StepFailed(control + u" is geen lijst"_s);
    const QModelIndex line = list->model()->index(list->ListIndex(), 0);
    hand::DoubleClick(*list->viewport(), list->visualRect(line).center());
  });
}

void Desk::ClickTool(const QString& window, const QString& action) const {
  InWindows([&] {
    auto* command = Window(window).findChild<QAction*>(action);
    auto* bar = Window(window).findChild<QToolBar*>();
    QWidget* button = bar == nullptr ? nullptr : bar->widgetForAction(command);
    if (button == nullptr || !button->isEnabled())
      throw StepFailed(u"de knop %1 kan niet gebruikt worden"_s.arg(action));
    hand::Click(*button);
  });
}

void Desk::Command(const QString& window, const QString& action) const {
  InWindows([&] {
    auto* command = Window(window).findChild<QAction*>(action);
    if (command == nullptr || !command->isEnabled())
      throw StepFailed(u"de opdracht %1 kan niet gegeven worden"_s.arg(action));
    QMetaObject::invokeMethod(command, &QAction::trigger, Qt::QueuedConnection);
  });
}

void Desk::Press(const QString& window, const QString& control, int key) const {
  InWindows([&] { hand::Press(LiveControl(window, control), key); });
}

void Desk::Type(const QString& window, const QString& control, const QString& text) const {
  InWindows([&] { hand::Replace(LiveControl(window, control), text); });
  WaitUntil(u"%1.%2 nam '%3' niet aan"_s.arg(window, control, text),
            [&] { return Control(window, control).property("text").toString() == text; });
}

void Desk::Choose(const QString& window, const QString& control, const QString& line) const {
  InWindows([&] {
    QWidget& list = LiveControl(window, control);
    const int at = LineOf(LinesOf(list), line);
    if (auto* combo = qobject_cast<controls::ComboBox*>(&list)) combo->SetListIndex(at);
    if (auto* box = qobject_cast<controls::ListBox*>(&list)) box->SetListIndex(at);
  });
}

QString Desk::Text(const QString& window, const QString& control) const {
  QString text;
  InWindows([&] { text = Find(window, control); });
  return text;
}

QString Desk::Find(const QString& window, const QString& control) const {
  const QWidget& widget = Control(window, control);
  const QVariant text = widget.property("text");
  return text.isValid() ? text.toString() : widget.accessibleName();
}

int Desk::Value(const QString& window, const QString& control) const {
  return Control(window, control).property("value").toInt();
}

QStringList Desk::LinesNow(const QString& window, const QString& list) const {
  return LinesOf(Control(window, list));
}

bool Desk::IsEnabled(const QString& window, const QString& control) const {
  return Control(window, control).isEnabled();
}

bool Desk::IsChecked(const QString& window, const QString& control) const {
  return Control(window, control).property("checked").toBool();
}

void Desk::ChooseFile(const QString& hostPath) const {
  InWindows([&] { files_.Choose(hostPath); });
}

QString Desk::Title(const QString& window) const {
  QString title;
  InWindows([&] { title = Window(window).windowTitle(); });
  return title;
}

QStringList Desk::Lines(const QString& window, const QString& list) const {
  QStringList lines;
  InWindows([&] { lines = LinesNow(window, list); });
  return lines;
}

void Desk::Answer(const QString& part, const QString& button) const {
  const QString box = u"messageBox"_s;
  WaitForWindow(box);
  QPointer<QWidget> shown;
  InWindows([&] {
    shown = &Window(box);
    const QString text = shown->accessibleDescription();
    if (!text.contains(part)) throw StepFailed(u"een ander bericht dan verwacht: %1"_s.arg(text));
    for (auto* choice : shown->findChildren<QAbstractButton*>()) {
      if (choice->isVisible() && Plain(choice->text()) == button) return hand::Click(*choice);
    }
    throw StepFailed(u"het bericht heeft geen knop %1"_s.arg(button));
  });
  WaitUntil(u"het bericht bleef staan"_s, [&] { return !shown || !shown->isVisible(); });
}

void Desk::AnswerInput(const QString& part, const QString& text) const {
  const QString box = u"inputBox"_s;
  WaitForWindow(box);
  InWindows([&] {
    auto* line = Window(box).findChild<QLineEdit*>();
    if (!line->accessibleName().contains(part))
      throw StepFailed(u"een andere vraag dan verwacht: "_s + line->accessibleName());
    hand::Replace(*line, text);
    hand::Press(*line, Qt::Key_Return);
  });
  WaitUntilGone(box);
}

void Desk::Expect(bool holds, const QString& what) const {
  if (!holds) throw StepFailed(what);
}

void Desk::SavePicture(QWidget& window, const QString& name) const {
  const QString path = pictureFolder_ + u'/' + name + u".png"_s;
  if (!window.grab().save(path)) throw StepFailed(u"kan %1 niet schrijven"_s.arg(path));
}

void Desk::WaitForText(const QString& window, const QString& control, const QString& text) const {
  WaitUntil(u"%1.%2 werd niet '%3'"_s.arg(window, control, text), [&] { return Find(window, control) == text; });
}

void Desk::WaitForLine(const QString& window, const QString& list, const QString& line) const {
  WaitUntil(u"'%1' staat niet in %2.%3"_s.arg(line, window, list),
            [&] { return LinesNow(window, list).contains(line); });
}

void Desk::Picture(const QString& window, const QString& name) const {
  QImage before;
  for (int look = 0; look < kMaxLooks; ++look) {
    QImage now;
    InWindows([&] { now = Window(window).grab().toImage(); });
    if (now == before) break;
    before = now;
    QThread::msleep(kCalm);
  }
  InWindows([&] { SavePicture(Window(window), name); });
}

void Desk::PictureBox(const QString& name) const {
  WaitForWindow(u"messageBox"_s);
  Picture(u"messageBox"_s, name);
}
