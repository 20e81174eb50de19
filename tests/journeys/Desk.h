// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <QStringList>

#include <functional>
#include <stdexcept>

class QWidget;
namespace desktop {
class FileChooserScript;
}

// A step of a journey that did not do what it should.
class StepFailed : public std::runtime_error {
 public:
  explicit StepFailed(const QString& what) : std::runtime_error(what.toStdString()) {}
};

// The hands and eyes of a user at the real windows. A journey runs in a thread of its own and reads as one line of
// steps, also across modal windows: each step is carried out in the user-interface thread, clicks and keys by posted
// events. Windows and controls are named by their object names. Every function throws StepFailed when it cannot do its
// part.
class Desk {
 public:
  // The script answers the file dialogs and must outlive the desk.
  Desk(const QString& pictureFolder, desktop::FileChooserScript& files)
      : pictureFolder_(pictureFolder), files_(files) {}

  // Waits until a window of that name is visible and takes input, or is gone.
  void WaitForWindow(const QString& window) const;
  void WaitUntilGone(const QString& window) const;

  void Click(const QString& window, const QString& control) const;
  // A click at a share of the control's width, 0 to 1.
  void ClickAt(const QString& window, const QString& control, double share) const;
  void DoubleClick(const QString& window, const QString& control) const;
  // Triggers a command of the main window's toolbar by its button.
  void ClickTool(const QString& window, const QString& action) const;
  // Any command of the main window, as its menu would trigger it.
  void Command(const QString& window, const QString& action) const;
  void Press(const QString& window, const QString& control, int key) const;
  // Empties the field and types into it.
  void Type(const QString& window, const QString& control, const QString& text) const;
  // Chooses the line of a list or combo with that text.
  void Choose(const QString& window, const QString& control, const QString& line) const;

  QString Text(const QString& window, const QString& control) const;
  QString Title(const QString& window) const;
  QStringList Lines(const QString& window, const QString& list) const;

  // The same within WaitUntil, where the user-interface thread already runs.
  QString Find(const QString& window, const QString& control) const;
  int Value(const QString& window, const QString& control) const;
  QStringList LinesNow(const QString& window, const QString& list) const;
  bool IsEnabled(const QString& window, const QString& control) const;
  bool IsChecked(const QString& window, const QString& control) const;

  // What the next file dialog will be answered with (a host path).
  void ChooseFile(const QString& hostPath) const;

  // Waits for a message box, checks that its text holds `part`, and clicks the button of that caption.
  void Answer(const QString& part, const QString& button) const;

  // The same of a question for a text: types it and presses Enter.
  void AnswerInput(const QString& part, const QString& text) const;

  void Expect(bool holds, const QString& what) const;
  // Waits until something holds that takes its time in the background.
  void WaitUntil(const QString& what, const std::function<bool()>& holds) const;

  void WaitForText(const QString& window, const QString& control, const QString& text) const;
  void WaitForLine(const QString& window, const QString& list, const QString& line) const;

  // Once it no longer changes from one look to the next: saves what the window shows as <picture folder>/<name>.png.
  void Picture(const QString& window, const QString& name) const;

  // The same of the message box that opens next.
  void PictureBox(const QString& name) const;

  // Runs something in the user-interface thread and waits for it.
  static void InWindows(const std::function<void()>& task);
  // The same for use within that thread.
  void SavePicture(QWidget& window, const QString& name) const;

 private:
  QString pictureFolder_;
  desktop::FileChooserScript& files_;
};
