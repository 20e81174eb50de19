// SPDX-License-Identifier: MIT
#include "platform/desktop/FileChooser.h"

#include "platform/desktop/FolderMemory.h"
#include "platform/desktop/Owner.h"
#include "platform/desktop/WaitPointer.h"

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

// The host tells upper from lower case, the people who named the files did not.
QString BothCases(const QString& patterns) {
  QStringList all;
  for (const QString& pattern : patterns.split(u';', Qt::SkipEmptyParts))
    for (const QString& form : {pattern.trimmed(), pattern.trimmed().toLower(), pattern.trimmed().toUpper()})
      if (!all.contains(form)) all << form;
  return all.join(u' ');
}

// Qt has no Dutch word for a folder where it tells the sorts of files.
class DutchSorts : public QFileIconProvider {
 public:
  QString type(const QFileInfo& file) const override {
    return file.isDir() && !file.isRoot() ? u"Map"_s : QFileIconProvider::type(file);
  }
};

// The description stands as it was given; the patterns in both letter cases behind it are for the dialog alone.
void SetFilters(QFileDialog& dialog, const QString& filter) {
  dialog.setOption(QFileDialog::HideNameFilterDetails);
  dialog.setNameFilters(NameFilters(filter));
}

// Of several filters the one that shows files of that suffix, so that nobody chooses it anew for each file.
void SelectFilterFor(QFileDialog& dialog, const QString& suffix) {
  const QString pattern = u"*."_s + suffix.toLower();
  for (const QString& filter : dialog.nameFilters()) {
    const QStringList patterns = filter.section(u'(', -1).chopped(1).split(u' ');
    if (patterns.contains(pattern)) return dialog.selectNameFilter(filter);
  }
}

// Qt's own dialog cuts names, dates and places short. A desktop's own one has none of these parts.
void MakeRoom(QFileDialog& dialog) {
  constexpr QSize kOpeningSize(860, 540);
  constexpr int kPlaces = 150;  // width of the list of places
  dialog.resize(kOpeningSize.boundedTo(dialog.screen()->availableSize()));
  if (auto* parts = dialog.findChild<QSplitter*>(u"splitter"_s)) parts->setSizes({kPlaces, dialog.width() - kPlaces});
  const auto* files = dialog.findChild<QTreeView*>(u"treeView"_s);
  if (files == nullptr) return;
  for (int column = 0; column < files->header()->count(); ++column)
    files->header()->setSectionResizeMode(column, column == 0 ? QHeaderView::Stretch : QHeaderView::ResizeToContents);
}

QString Answer(QFileDialog& dialog) {
  const ArrowPointer arrow;
  static auto* const sorts = new DutchSorts;  // the thread that reads folders may ask it after the dialog has gone
  dialog.setIconProvider(sorts);
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

FileChooserScript::FileChooserScript() : older_(youngest_) {
  youngest_ = this;
}

FileChooserScript::~FileChooserScript() {
  youngest_ = older_;
}

FileChooserScript* FileChooserScript::Active() {
  return youngest_;
}

QString FileChooserScript::Take(const ShownFileChooser& request) {
  shown_.push_back(request);
  if (answers_.empty()) return {};
  QString answer = answers_.front();
  answers_.pop_front();
  return answer;
}

}  // namespace desktop
