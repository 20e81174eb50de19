// SPDX-License-Identifier: MIT
#pragma once

#include "data/Globals.h"

#include <QGroupBox>

class QPushButton;
namespace controls {
class ElidedLine;
}

// What the last export wrote, in the main window: file, number of statements and real folder, with a button that opens
// the folder. Hidden until there is an export.
class ExportResultPanel : public QGroupBox {
  Q_OBJECT

 public:
  explicit ExportResultPanel(QWidget* parent = nullptr);

  void Show(const ExportedLog& exported);

 Q_SIGNALS:
  void folderAsked(const QString& hostFolder);

 private:
  controls::ElidedLine* lblResultaat_;
  controls::ElidedLine* lblResultaatMap_;
  controls::ElidedLine* lblZelfdeNummers_;
  QString hostFolder_;
};
