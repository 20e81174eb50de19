// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

#include <deque>
#include <optional>
#include <vector>

class QWidget;

namespace desktop {

// Asks for one line of text; nullopt when cancelled. `owner` null: the active modal window, or else the active window.
// The default text is selected, so that typing replaces it. User-interface thread only.
std::optional<QString> AskText(QWidget* owner, const QString& prompt, const QString& title, const QString& defaultText);

struct ShownInputBox {
  QString title;
  QString prompt;
  QString defaultText;
};

// For tests and the screenshot tour: while an instance exists, each input box is shown as usual, and the next answer is
// typed and its real button clicked. Without an answer left the box is cancelled. Nests: the newest instance is used.
class InputBoxScript {
 public:
  InputBoxScript();
  ~InputBoxScript();
  InputBoxScript(const InputBoxScript&) = delete;
  InputBoxScript& operator=(const InputBoxScript&) = delete;

  void Type(const QString& text) { answers_.emplace_back(text); }
  void Cancel() { answers_.emplace_back(std::nullopt); }
  const std::vector<ShownInputBox>& Shown() const { return shown_; }

  static InputBoxScript* Active();

 private:
  friend class InputDialog;
  std::optional<QString> TakeAnswer();

  std::deque<std::optional<QString>> answers_;
  std::vector<ShownInputBox> shown_;
  InputBoxScript* previous_;
  static inline InputBoxScript* active_ = nullptr;
};

}  // namespace desktop
