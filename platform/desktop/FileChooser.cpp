// SPDX-License-Identifier: MIT
#include "platform/desktop/FileChooser.h"

#include "platform/desktop/DutchFileModel.h"
#include "platform/desktop/FolderMemory.h"
#include "platform/desktop/WaitPointer.h"
#include "platform/desktop/Windows.h"

#include <QDir>
#include <QFileDialog>
#include <QFileIconProvider>
#include <QFileInfo>
#include <QHeaderView>
#include <QScreen>
#include <QSplitter>
#include <QTreeView>

namespace desktop {
namespace {

using namespace Qt::StringLiterals;

// The host's file names are case-sensitive, but the users' files have extensions in either case.
QString BothCases(const QString& patterns) {
  QStringList all;
  for (const QString& pattern : patterns.split(u';', Qt::SkipEmptyParts))
    for (const QString& form : {pattern.trimmed(), pattern.trimmed().toLower(), pattern.trimmed().toUpper()})
      if (!all.contains(form)) all << form;
  return all.join(u' ');
}

// Qt's Dutch translation lacks the file type "folder".
class DutchSorts : public QFileIconProvider {
 public:
  QString type(const QFileInfo& file) const override {
    return file.isDir() && !file.isRoot() ? u"Map"_s : QFileIconProvider::type(file);
  }
};

// The patterns in both letter cases are appended to the description; the dialog hides them.
void SetFilters(QFileDialog& dialog, const QString& filter) {
  dialog.setOption(QFileDialog::HideNameFilterDetails);
  dialog.setNameFilters(NameFilters(filter));
}

// The first filter that matches files with this suffix, so that the user need not choose it for each file.
void SelectFilterFor(QFileDialog& dialog, const QString& suffix) {
  const QString pattern = u"*."_s + suffix.toLower();
  for (const QString& filter : dialog.nameFilters()) {
    const QStringList patterns = filter.section(u'(', -1).chopped(1).split(u' ');
    if (patterns.contains(pattern)) return dialog.selectNameFilter(filter);
  }
}

// Widens the columns of Qt's own dialog, which cut off names, dates and places. A native dialog has none of these
// parts.
void MakeRoom(QFileDialog& dialog) {
  constexpr QSize kOpeningSize(860, 540);
  constexpr int kPlaces = 150;  // width of the list of places
  const QSize frame(0, dialog.style()->pixelMetric(QStyle::PM_TitleBarHeight));
  dialog.resize(kOpeningSize.boundedTo(dialog.screen()->availableSize() - frame));
  if (auto* parts = dialog.findChild<QSplitter*>(u"splitter"_s)) parts->setSizes({kPlaces, dialog.width() - kPlaces});
  const auto* files = dialog.findChild<QTreeView*>(u"treeView"_s);
  if (files == nullptr) return;
  for (int column = 0; column < files->header()->count(); ++column)
    files->header()->setSectionResizeMode(column, column == 0 ? QHeaderView::Stretch : QHeaderView::ResizeToContents);
}

QString Answer(QFileDialog& dialog) {
  const ArrowPointer arrow;
  static auto* const sorts = new DutchSorts;  // never deleted: Qt's folder-reading thread may use it after the dialog
  dialog.setIconProvider(sorts);
  dialog.setProxyModel(new DutchFileModel(&dialog));
  MakeRoom(dialog);
  if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty()) return {};
  return dialog.selectedFiles().constFirst();
}

}  // namespace

QStringList NameFilters(const QString& filter) {
  const QStringList parts = filter.split(u'|');
  QStringList filters;
  for (qsizetype i = 0; i + 1 < parts.size(); i += 2) {
    filters << QString(parts[i].trimmed() + u" ("_s + BothCases(parts[i + 1]) + u')');
  }
  return filters;
}

QString FileChooser::FirstFolder() const {
  if (!fileName_.isEmpty()) return QFileInfo(fileName_).path();
  if (!startFolder_.isEmpty()) return startFolder_;
  const QString before = FolderMemory::FolderOf(kind_);
  return before.isEmpty() ? QDir::homePath() : before;
}

QString FileChooser::ShowOpen(QWidget* owner) {
  const QString folder = FirstFolder();
  QString chosen;
  if (FileChooserScript* script = FileChooserScript::Active()) {
    chosen = script->Take({title_, filter_, folder});
  } else {
    QFileDialog dialog(OwnerOrActive(owner), title_, folder);
    dialog.setFileMode(QFileDialog::ExistingFile);
    SetFilters(dialog, filter_);
    SelectFilterFor(dialog, fileName_.isEmpty() ? FolderMemory::SuffixOf(kind_) : QFileInfo(fileName_).suffix());
    if (!fileName_.isEmpty()) dialog.selectFile(fileName_);
    chosen = Answer(dialog);
  }
  if (chosen.isEmpty()) return fileName_;
  fileName_ = chosen;
  FolderMemory::Chosen(kind_, chosen);
  return fileName_;
}

QString ChooseFolder(QWidget* owner, const QString& prompt, const QString& startFolder, bool mayCreate) {
  QString chosen;
  if (FileChooserScript* script = FileChooserScript::Active()) {
    chosen = script->Take({prompt, {}, startFolder, mayCreate});
  } else {
    QFileDialog dialog(OwnerOrActive(owner), prompt, startFolder);
    dialog.setFileMode(QFileDialog::Directory);
    dialog.setOption(QFileDialog::ShowDirsOnly);
    dialog.setOption(QFileDialog::ReadOnly, !mayCreate);
    chosen = Answer(dialog);
  }
  return chosen.isEmpty() ? startFolder : chosen;
}

QString ChooseSaveFile(QWidget* owner, const QString& title, const QString& filter, const QString& proposal) {
  if (FileChooserScript* script = FileChooserScript::Active()) return script->Take({title, filter, proposal});
  QFileDialog dialog(OwnerOrActive(owner), title, QFileInfo(proposal).path());
  dialog.setAcceptMode(QFileDialog::AcceptSave);
  SetFilters(dialog, filter);
  dialog.setDefaultSuffix(QFileInfo(proposal).suffix());
  dialog.selectFile(proposal);
  return Answer(dialog);
}

FileChooserScript::FileChooserScript() : previous_(active_) {
  active_ = this;
}

FileChooserScript::~FileChooserScript() {
  active_ = previous_;
}

FileChooserScript* FileChooserScript::Active() {
  return active_;
}

QString FileChooserScript::Take(const ShownFileChooser& request) {
  shown_.push_back(request);
  if (answers_.empty()) return {};
  QString answer = answers_.front();
  answers_.pop_front();
  return answer;
}

}  // namespace desktop
