// SPDX-License-Identifier: MIT
#pragma once

#include "catalogue/OverviewForm.h"

#include <QHash>
#include <QList>

#include <memory>

class BlockSurvey;

namespace Ui {
class frmItems;
}

// The list of items. Its Desaktiveer button is always enabled.
class frmItems : public OverviewForm {
  Q_OBJECT

 public:
  explicit frmItems(QWidget* owner);
  ~frmItems() override;

 protected:
  QString TableOf(const Catalogue& catalogue) const override { return catalogue.items; }
  QString BothFilter(const QString&) const override { return {}; }
  void InitCommands() override;
  void cmdVerwijder_Click() override;
  SetAktief Deactivator() const override;
  void Form_Unload() override;
  void OnRefilled() override;
  QString CountText() const override;
  QList<QPushButton*> LineButtons() const override;
  controls::ColumnTexts Captions() const override;
  std::vector<qint64> SortKeys(controls::LineColumn column) const override;

 private:
  void cmdBeluisteren_Click();
  void SurveyChanged(const QList<qint64>& ids);
  void SurveyFinished();

  std::unique_ptr<Ui::frmItems> ui_;
  std::unique_ptr<BlockSurvey> survey_;
  bool sorted_ = false;       // by all marks
  QHash<qint64, int> lines_;  // line of an ID
};
