// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>

#include <optional>

class QApplication;
class QString;

namespace desktop {

enum class Variant { Light, Dark };

// Converts "light" or "dark", the values of the start option --theme; nullopt for any other text.
std::optional<Variant> VariantFromText(const QString& text);

// Sets the application's style and palette: LookStyle instead of Fusion, and the light or dark palette. A style chosen
// by the user or the desktop is kept, with its own colours unless a variant is requested. Create one in main(), right
// after the QApplication, with the same lifetime.
class Theme : public QObject {
  Q_OBJECT

 public:
  // `requested` is the start option; without it the desktop's preference is used, and followed when it changes.
  Theme(QApplication& application, std::optional<Variant> requested);

  Variant Current() const { return current_; }
  // Sets the palette of a variant.
  void Use(Variant variant);

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  Q_SLOT void UpdateFromDesktop();
  void FollowDesktop();

  QApplication& application_;
  Variant platform_;  // the variant of the platform's own palette
  Variant current_;
  bool followsDesktop_ = false;
  bool updateScheduled_ = false;
};

}  // namespace desktop
