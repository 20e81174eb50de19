// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>

#include <optional>

class QApplication;
class QString;

namespace desktop {

enum class Variant { Light, Dark };

// "light" or "dark", as the start option --theme takes them; nothing for any other text.
std::optional<Variant> VariantFromText(const QString& text);

// Gives the application its look: LookStyle in place of Fusion, and the light or the dark palette. A style chosen by
// the user or the desktop stays, with its own colours unless a variant is asked for. Make one in main(), right after
// the QApplication, and keep it.
class Theme : public QObject {
  Q_OBJECT

 public:
  // `asked`: the start option; without it the desktop's wish is taken, and followed when it changes.
  Theme(QApplication& application, std::optional<Variant> asked);

  Variant Current() const { return current_; }
  // Puts the palette of one variant in use.
  void Use(Variant variant);

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  Q_SLOT void AskDesktop();
  void FollowDesktop();

  QApplication& application_;
  Variant platform_;  // what the platform's own palette was before ours
  Variant current_;
  bool follows_ = false;
  bool asking_ = false;
};

}  // namespace desktop
