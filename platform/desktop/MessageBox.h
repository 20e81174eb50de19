#pragma once

#include <QString>
#include <QStringList>

#include <deque>
#include <functional>
#include <initializer_list>
#include <vector>

class QWidget;

namespace desktop {

// What a message box answers. The frame and Esc give no answer to a box with Yes and No only.
inline constexpr int kAnswerOk = 1;
inline constexpr int kAnswerCancel = 2;
inline constexpr int kAnswerYes = 6;
inline constexpr int kAnswerNo = 7;

// Shows a modal message box and returns the answer. `style` is the sum of
//   buttons  0 OK, 3 Yes/No/Cancel, 4 Yes/No (anything else: OK)
//   icon     16 critical, 32 question, 48 exclamation, 64 information (0: none)
//   default  0 first button, 256 second, 512 third
// so 36, 35, 292, 64, 48, 16 and 0 are the usual ones. `owner` null: the active modal window, or the active one.
// The wait pointer is lifted while the box is open. User-interface thread only.
int ShowMessageBox(QWidget* owner, const QString& text, int style, const QString& title);

// While one lives, boxes are told to it instead of being shown, and it answers: for a program that has no windows. The
// answer to a box that asks nothing does not matter. Scopes nest.
class MessageBoxOutlet {
 public:
  using Tell = std::function<int(const QString& text, int style, const QString& title)>;
  explicit MessageBoxOutlet(Tell tell);
  ~MessageBoxOutlet();
  MessageBoxOutlet(const MessageBoxOutlet&) = delete;
  MessageBoxOutlet& operator=(const MessageBoxOutlet&) = delete;

 private:
  Tell previous_;
};

// What was on screen, as a script saw it.
struct ShownMessageBox {
  QString title;
  QString text;
  int style = 0;
  QStringList buttons;    // captions from left to right, without mnemonics
  int defaultAnswer = 0;  // what Enter would have answered
  int answer = 0;         // what was clicked
};

// For tests and tours: while one lives, each box is opened as usual and its real button is clicked as soon as the box
// runs. Answers are taken in the order given; without one, the default button is clicked. Scripts nest: the
// youngest answers.
class MessageBoxScript {
 public:
  MessageBoxScript();
  explicit MessageBoxScript(std::initializer_list<int> answers);
  ~MessageBoxScript();
  MessageBoxScript(const MessageBoxScript&) = delete;
  MessageBoxScript& operator=(const MessageBoxScript&) = delete;

  void Answer(int answer) { answers_.push_back(answer); }
  const std::vector<ShownMessageBox>& Shown() const { return shown_; }
  const ShownMessageBox& Last() const { return shown_.at(shown_.size() - 1); }
  // Answers that no box has asked for yet.
  std::size_t Left() const { return answers_.size(); }

  static MessageBoxScript* Active();

 private:
  friend class MessageDialog;
  int TakeAnswer(int defaultAnswer);

  std::deque<int> answers_;
  std::vector<ShownMessageBox> shown_;
  MessageBoxScript* older_;
};

}  // namespace desktop
