// SPDX-License-Identifier: MIT
#pragma once

#include "data/forms/Form.h"
#include "data/forms/LatestTask.h"
#include "export/apply/Apply.h"

#include <memory>
#include <optional>
#include <vector>

class FolderSelect;
namespace Ui {
class frmExportsVerwerken;
}

// Carries out the exports of workstations on the shared database: the files of a folder and their state, what each
// would do, and the conflicts that wait for a choice. The rules are those of apply::CarryOut.
class frmExportsVerwerken : public Form {
  Q_OBJECT

 public:
  explicit frmExportsVerwerken(QWidget* owner);
  ~frmExportsVerwerken() override;

  void Form_Load() override;

  // The folder and the shared database were read, or the window says why they cannot be.
  bool IsRead() const { return read_; }

 protected:
  void CloseAsked() override;

 private:
  // One export file of the folder.
  struct Entry {
    QString path;
    std::optional<apply::ExportFile> file;  // none: it cannot be read
    QString trouble;                        // why not
    std::optional<apply::Processed> processed;
    std::optional<apply::Result> result;  // planned or done since the folder was read
  };
  struct Contents {
    std::vector<Entry> files;
    QList<apply::Conflict> conflicts;
    QString trouble;  // the folder or the database cannot be read
  };
  static Contents ReadContents(const QString& folder, const QString& database, const QString& source);

  void SetUpIcons();
  void ConnectEvents();
  void InitCommands();
  void Read();
  void ShowContents(Contents contents);
  void ShowFiles();
  void ShowCounts();
  void ShowLine(int line);
  void ShowExplanation();
  void PlanChosen(Entry& entry);
  void ShowConflicts();
  void ShowDifferences();
  bool IsDue(const Entry& entry) const;
  apply::Options OptionsFor(const Entry& entry);

  void lstBestanden_Click();
  void lstBotsingen_Click();
  void cmdMap_Click();
  void cmdVerwerken_Click();
  int Process();
  void Settle(apply::Side side);
  void ShowProgress(const QString& text);

  std::unique_ptr<Ui::frmExportsVerwerken> ui_;
  FolderSelect* isFolder_;
  QString folder_;
  Contents contents_;
  bool read_ = false;
  bool busy_ = false;
  LatestTask task_;
};
