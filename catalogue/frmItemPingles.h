// SPDX-License-Identifier: MIT
#pragma once

#include "catalogue/OverviewForm.h"
#include "data/forms/LatestTask.h"

#include <QHash>

#include <memory>
#include <optional>

namespace Ui {
class frmItemPingles;
}

// The list of item-pingles: no filter, and a question instead of a cleanup dialog.
class frmItemPingles : public OverviewForm {
  Q_OBJECT

 public:
  explicit frmItemPingles(QWidget* owner);
  ~frmItemPingles() override;

 protected:
  QString TableOf(const Catalogue& catalogue) const override { return catalogue.itemPingles; }
  QString BothFilter(const QString&) const override { return {}; }
  void InitForm() override {}
  void InitCommands() override;
  void cmdVerwijder_Click() override;
  void Form_Unload() override;
  void OnRefilled() override;
  controls::ColumnTexts Captions() const override;
  std::vector<qint64> SortKeys(controls::LineColumn column) const override;

 private:
  void ShowUsage();
  struct Sound {
    QString path;
    std::optional<qint32> lengteSec;
  };
  // By ID. Throws runtime::Error. Any thread.
  static QHash<qint64, Sound> ReadSounds(const Catalogue& catalogue);
  void ShowSounds(QHash<qint64, Sound> sounds);

  std::unique_ptr<Ui::frmItemPingles> ui_;
  QHash<qint64, Sound> sounds_;
  bool read_ = false;
  LatestTask usage_;
  LatestTask reading_;
};
