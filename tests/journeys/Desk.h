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

// Thrown by a step of a journey that did not have its effect.
class StepFailed : public std::runtime_error {
 public:
  explicit StepFailed(const QString& what) : std::runtime_error(what.toStdString()) {}
};

// What a user does and sees at the real windows. A journey runs in its own thread and reads as one sequence of steps,
// also across modal windows: each step is carried out in the user-interface thread, clicks and keys by posted events.
// Windows and controls are given by their object names. Every function throws StepFailed when it cannot do its step.
class Desk {
 public:
  // The script answers the file dialogs and must outlive the desk.
  Desk(const QString& pictureFolder, desktop::FileChooserScript& files)
      : pictureFolder_(pictureFolder), files_(files) {}

  // Waits until a window of that name is visible and accepts input, or is closed.
  void WaitForWindow(const QString& window) const;
  void WaitUntilGone(const QString& window) const;

  void Click(const QString& window, const QString& control) const;
  // A click at a fraction of the control's width, 0 to 1.
  void ClickAt(const QString& window, const QString& control, double share) const;
  void DoubleClick(const QString& window, const QString& control) const;
  // Triggers a command of the main window's toolbar through its button.
  void ClickTool(const QString& window, const QString& action) const;
  // Any command of the main window, through its action.
  void Command(const QString& window, const QString& action) const;
  void Press(const QString& window, const QString& control, int key) const;
  // Clears the field and types into it.
  void Type(const QString& window, const QString& control, const QString& text) const;
  // Selects the line of a list or combo with that text.
  void Choose(const QString& window, const QString& control, const QString& line) const;

  QString Text(const QString& window, const QString& control) const;
  QString Title(const QString& window) const;
  QStringList Lines(const QString& window, const QString& list) const;

  // The same inside of WaitUntil, which already runs in the user-interface thread.
  QString Find(const QString& window, const QString& control) const;
  int Value(const QString& window, const QString& control) const;
  QStringList LinesNow(const QString& window, const QString& list) const;
  bool IsEnabled(const QString& window, const QString& control) const;
  bool IsChecked(const QString& window, const QString& control) const;

  // The answer to the next file dialog (a host path).
  void ChooseFile(const QString& hostPath) const;

  // Waits for a message box, checks that its text contains `part`, and clicks the button with that caption.
  void Answer(const QString& part, const QString& button) const;

  // The same for a question for a text: types it and presses Enter.
  void AnswerInput(const QString& part, const QString& text) const;

  void Expect(bool holds, const QString& what) const;
  // Waits for a condition that background work makes true.
  void WaitUntil(const QString& what, const std::function<bool()>& holds) const;

  void WaitForText(const QString& window, const QString& control, const QString& text) const;
  void WaitForLine(const QString& window, const QString& list, const QString& line) const;

  // Once the window no longer changes between two checks: saves its picture as <picture folder>/<name>.png.
  void Picture(const QString& window, const QString& name) const;

  // The same for the message box that opens next.
  void PictureBox(const QString& name) const;

  // Runs a function in the user-interface thread and waits for it.
  static void InWindows(const std::function<void()>& task);
  // For use inside that thread.
  void SavePicture(QWidget& window, const QString& name) const;

 private:
  QString pictureFolder_;
  desktop::FileChooserScript& files_;
};
