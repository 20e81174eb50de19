// SPDX-License-Identifier: MIT
#pragma once

#include <QTextBrowser>

// A text as it looks on paper: black on white, also in the dark variant.
class PaperView : public QTextBrowser {
  Q_OBJECT

 public:
  explicit PaperView(QWidget* parent = nullptr);
};
