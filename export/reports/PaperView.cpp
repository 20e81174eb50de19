// SPDX-License-Identifier: MIT
#include "export/reports/PaperView.h"

PaperView::PaperView(QWidget* parent) : QTextBrowser(parent) {
  QPalette paper = palette();
  paper.setColor(QPalette::Base, Qt::white);
  paper.setColor(QPalette::Text, Qt::black);
  viewport()->setPalette(paper);
  setPalette(paper);
}
