// SPDX-License-Identifier: MIT
#include "catalogue/frmOntbreekt.h"

#include "catalogue/ui_frmOntbreekt.h"
#include "data/Globals.h"
#include "data/forms/Screens.h"
#include "platform/desktop/Icons.h"
#include "platform/runtime/Clock.h"
#include "platform/runtime/Error.h"
#include "platform/runtime/Trapped.h"

#include <QLocale>
#include <QScreen>
#include <QShortcut>

using namespace Qt::StringLiterals;
using runtime::Trapped;
using Record = FileNotThere::Record;

namespace {

constexpr QSize kMissingSize(820, 560);

QString KindOf(Record record) {
  switch (record) {
    case Record::ItemSpot:
      return u"item-spot"_s;
    case Record::ItemPingle:
      return u"jingle"_s;
    case Record::Item:
      break;
  }
  return u"item"_s;
}

Screen EditorOf(Record record) {
  switch (record) {
    case Record::ItemSpot:
      return Screen::ItemSpotsDetail;
    case Record::ItemPingle:
      return Screen::ItemPinglesDetail;
    case Record::Item:
      break;
  }
  return Screen::ItemsDetail;
}

controls::LineDetails DetailsOf(const FileNotThere& file) {
  controls::LineDetails details;
  details.mark = file.aktief ? controls::LineMark::Cross : controls::LineMark::Dash;
  details.tone = file.aktief ? controls::LineTone::Wrong : controls::LineTone::Quiet;
  details.quietText = !file.aktief;
  details.word = KindOf(file.record) + (file.aktief ? QString() : u", niet aktief"_s);
  details.trailing = file.path.isEmpty() ? u"geen geluidsbestand gekozen"_s : file.path.section(u'\\', -1);
  details.toolTip = file.path.isEmpty() ? u"Er is geen geluidsbestand gekozen."_s : file.path;
  return details;
}

QString CountText(const FilesNotThere& found) {
  const auto count = found.files.size();
  QString text = count == 1
                     ? u"1 geluidsbestand ontbreekt"_s
                     : u"%1 geluidsbestanden ontbreken"_s.arg(QLocale(QLocale::Dutch).toString(qlonglong(count)));
  if (found.notReachable > 0) {
    text += u"; niet nagekeken, want de schijf of map is niet bereikbaar: "_s +
            QLocale(QLocale::Dutch).toString(found.notReachable);
  }
  return text;
}

}  // namespace

frmOntbreekt::frmOntbreekt(QWidget* owner) : Form(owner), ui_(std::make_unique<Ui::frmOntbreekt>()), task_(this) {
  ui_->setupUi(this);
  filler_ = new controls::ListFiller(*ui_->lstOntbreekt, this);
  ui_->cmdOpen->setIcon(desktop::Icon(u"open"_s));
  connect(ui_->lstOntbreekt, &controls::ListBox::clicked, this, [this] { ui_->cmdOpen->setEnabled(true); });
  connect(ui_->lstOntbreekt, &controls::ListBox::selectionLost, this, [this] { ui_->cmdOpen->setEnabled(false); });
  connect(ui_->lstOntbreekt, &controls::ListBox::doubleClicked, this, &frmOntbreekt::OpenRecord);
  for (const int key : {Qt::Key_Return, Qt::Key_Enter}) {
    const auto* enter = new QShortcut(QKeySequence(key), ui_->lstOntbreekt, nullptr, nullptr, Qt::WidgetShortcut);
    connect(enter, &QShortcut::activated, this, &frmOntbreekt::OpenRecord);
  }
  connect(ui_->cmdOpen, &QPushButton::clicked, this, &frmOntbreekt::OpenRecord);
  connect(ui_->cmdSluiten, &QPushButton::clicked, this, [this] { Unload(); });
  resize(kMissingSize.boundedTo(screen()->availableSize()));
}

frmOntbreekt::~frmOntbreekt() = default;

void frmOntbreekt::Form_Load() {
  Trapped(__func__, [&] { Read(); });
}

void frmOntbreekt::Read() {
  finished_ = false;
  filler_->Fill(0, {});
  ui_->cmdOpen->setEnabled(false);
  ui_->lstOntbreekt->SetEmptyText(u"De geluidsbestanden worden nagekeken ..."_s);
  ui_->lblAantal->setText({});
  task_.Send([this, catalogue = CurrentCatalogue(), now = runtime::Now()](const LatestTask::Token& token) {
    try {
      token.Post([this, found = std::make_shared<const FilesNotThere>(FindFilesNotThere(catalogue, now))] {
        ShowFiles(found);
      });
    } catch (const runtime::Error& error) {
      token.Post([this, reason = error.Description()] {
        finished_ = true;
        ui_->lstOntbreekt->SetEmptyText(u"De planning kan niet gelezen worden.\n"_s + reason);
      });
    }
  });
}

void frmOntbreekt::ShowFiles(std::shared_ptr<const FilesNotThere> found) {
  found_ = std::move(found);
  finished_ = true;
  ui_->lstOntbreekt->SetEmptyText(u"Er ontbreekt geen enkel geluidsbestand."_s);
  filler_->Fill(static_cast<int>(found_->files.size()), [found = found_](int index) -> controls::ListBox::Line {
    const FileNotThere& file = found->files[static_cast<std::size_t>(index)];
    return {file.naam, file.id, DetailsOf(file)};
  });
  ui_->lblAantal->setText(CountText(*found_));
}

void frmOntbreekt::OpenRecord() {
  Trapped(__func__, [&] {
    const int line = ui_->lstOntbreekt->ListIndex();
    if (line < 0) return;
    const FileNotThere file = found_->files[static_cast<std::size_t>(line)];
    if (!HasScreen(EditorOf(file.record))) return;
    global.gstrSelectedID = QString::number(file.id);
    ShowScreen(EditorOf(file.record), this);
    Read();
  });
}
