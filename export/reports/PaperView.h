// SPDX-License-Identifier: MIT
#pragma once

#include <QTextBrowser>

// Preview of a printed text: black on white, also in the dark theme.
class PaperView : public QTextBrowser {
  Q_OBJECT

 public:
  explicit PaperView(QWidget* parent = nullptr);
};
