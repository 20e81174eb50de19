// SPDX-License-Identifier: MIT
#include "catalogue/OverviewActions.h"

#include "catalogue/OverviewBar.h"
#include "catalogue/frmGeldigheid.h"
#include "data/Messages.h"
#include "platform/controls/ListBox.h"
#include "platform/desktop/WaitPointer.h"
#include "platform/runtime/Dates.h"
#include "platform/runtime/Error.h"
#include "platform/runtime/Trapped.h"

#include <QLocale>
#include <QProgressDialog>
#include <QSet>
#include <QShortcut>

#include <utility>

using namespace Qt::StringLiterals;
using runtime::Trapped;

namespace {

constexpr int kQuickCount = 20;  // so many records are usually written before a window would be read
constexpr qsizetype kNamesShown = 5;

QString InQuotes(const QString& naam) {
  return u"‘"_s + naam + u"’"_s;
}

QString DutchNumber(qsizetype count) {
  return QLocale(QLocale::Dutch).toString(static_cast<qlonglong>(count));
}

QString SomeNames(const QStringList& names) {
  QString text = names.first(qMin(names.size(), kNamesShown)).join(u"\r\n"_s);
  if (names.size() > kNamesShown) text += u"\r\nen nog "_s + DutchNumber(names.size() - kNamesShown);
  return text;
}

}  // namespace

OverviewActions::OverviewActions(const Subject& subject, controls::ListBox& list, OverviewBar& bar,
                                 std::function<void()> refill, QWidget* window)
    : QObject(window), subject_(subject), list_(list), bar_(bar), refill_(std::move(refill)), window_(window) {
  list_.SetMarkable(true);
  connect(&list_, &controls::ListBox::markedChanged, this, &OverviewActions::UpdateMarked);
  connect(&list_, &controls::ListBox::selectionLost, this, &OverviewActions::UpdateMarked);
  connect(&bar_, &OverviewBar::deactivateRequested, this, &OverviewActions::cmdDesaktiveerAlle_Click);
  connect(&bar_, &OverviewBar::eindDatumRequested, this, &OverviewActions::cmdEinddatum_Click);
  connect(&bar_, &OverviewBar::urenRequested, this, &OverviewActions::cmdUren_Click);
  connect(&bar_, &OverviewBar::duplicateRequested, this, &OverviewActions::cmdDupliceren_Click);
  connect(&bar_, &OverviewBar::undoRequested, this, &OverviewActions::cmdOngedaan_Click);
  const auto* undo = new QShortcut(QKeySequence::Undo, window);
  connect(undo, &QShortcut::activated, this, &OverviewActions::cmdOngedaan_Click);
  const auto* copy = new QShortcut(QKeySequence(Qt::CTRL | Qt::Key_D), window);
  connect(copy, &QShortcut::activated, this, &OverviewActions::cmdDupliceren_Click);
}

void OverviewActions::UpdateMarked() {
  bar_.ShowMarked(list_.MarkedCount());
}

void OverviewActions::Forget() {
  undo_.clear();
  bar_.ShowResult({}, false);
}

// --- one line, by the list's own button

// Optional, so an error only means that nothing can be undone.
std::optional<qint32> OverviewActions::AktiefNow(qint32 id) const {
  try {
    return ReadAktief(subject_.kind, id);
  } catch (const runtime::Error&) {
    return std::nullopt;
  }
}

void OverviewActions::Deactivated(qint32 id, const QString& naam, std::optional<qint32> before, bool written) {
  Forget();
  if (!written || !before) return;
  if (*before == 0) return bar_.ShowResult(InQuotes(naam) + u" was al niet aktief"_s, false);
  undo_.push_back({id, naam, *before});
  bar_.ShowResult(InQuotes(naam) + u" is niet meer aktief"_s, true);
}

void OverviewActions::ShowEdited(const QList<qint32>& ids) {
  const QSet<qint64> edited(ids.begin(), ids.end());
  std::vector<int> lines;
  for (int line = 0; !edited.isEmpty() && line < list_.ListCount(); ++line) {
    if (edited.contains(list_.ItemData(line))) lines.push_back(line);
  }
  list_.ShowEdited(lines);
}

// --- all marked lines

std::vector<OverviewActions::Marked> OverviewActions::MarkedLines() const {
  std::vector<Marked> lines;
  for (const int line : list_.Marked())
    lines.push_back({static_cast<qint32>(list_.ItemData(line)), list_.Text(line)});
  return lines;
}

OverviewActions::Tally OverviewActions::Run(const char* procedure, const QString& doing,
                                            const std::vector<Marked>& lines, const Edit& edit) {
  Tally tally;
  tally.asked = static_cast<int>(lines.size());
  const desktop::WaitPointer wait;
  QProgressDialog progress(doing, u"Stoppen"_s, 0, tally.asked, window_);
  progress.setObjectName(u"dlgVoortgang"_s);
  progress.setWindowTitle(window_->windowTitle());
  progress.setWindowModality(Qt::WindowModal);
  progress.setMinimumDuration(tally.asked > kQuickCount ? 0 : 1000);
  for (int done = 0; done < tally.asked; ++done) {
    progress.setLabelText(doing + u"\n%1 van %2"_s.arg(DutchNumber(done), DutchNumber(tally.asked)));
    progress.setValue(done);
    if (progress.wasCanceled()) break;
    const Marked& line = lines[static_cast<std::size_t>(done)];
    const EditOutcome outcome = Trapped(procedure, EditOutcome::Failed, [&] { return edit(line); });
    if (outcome == EditOutcome::Failed) break;
    if (outcome == EditOutcome::Written) ++tally.written, tally.ids += line.id;
    if (outcome == EditOutcome::Same) ++tally.same;
    if (outcome == EditOutcome::NotThere) tally.gone += line.naam;
    if (outcome == EditOutcome::Refused) tally.refused += line.naam;
  }
  return tally;
}

QString OverviewActions::Count(qsizetype count) const {
  return DutchNumber(count) + u' ' + (count == 1 ? subject_.one : subject_.many);
}

QString OverviewActions::Remarks(const Tally& tally) const {
  QStringList remarks;
  if (tally.same > 0) remarks += DutchNumber(tally.same) + (tally.same == 1 ? u" was al zo"_s : u" waren al zo"_s);
  const qsizetype left = tally.asked - tally.written - tally.same - tally.gone.size() - tally.refused.size();
  if (left > 0) remarks += u"gestopt, nog "_s + DutchNumber(left) + u" niet gedaan"_s;
  return remarks.isEmpty() ? QString() : u" ("_s + remarks.join(u", "_s) + u')';
}

void OverviewActions::Finish(const Tally& tally, const QString& done, bool canUndo) {
  refill_();
  ShowEdited(tally.ids);
  bar_.ShowResult(done + Remarks(tally), canUndo);
  QString skipped;
  if (!tally.gone.isEmpty()) skipped += u"Intussen verwijderd:\r\n"_s + SomeNames(tally.gone);
  if (!tally.refused.isEmpty()) {
    if (!skipped.isEmpty()) skipped += u"\r\n\r\n"_s;
    skipped +=
        u"Niet gewijzigd, want het record heeft geen naam of geen geluidsbestand:\r\n"_s + SomeNames(tally.refused);
  }
  if (!skipped.isEmpty()) ShowItemsMessage(skipped, kStyleExclamation);
}

void OverviewActions::cmdDesaktiveerAlle_Click() {
  const char* const procedure = __func__;
  Trapped(procedure, [&] {
    Forget();
    const Tally tally = Run(procedure, u"Desaktiveren ..."_s, MarkedLines(), [&](const Marked& line) {
      const std::optional<qint32> before = ReadAktief(subject_.kind, line.id);
      const EditOutcome outcome = WriteAktief(subject_.kind, line.id, 0);
      if (outcome == EditOutcome::Written) undo_.push_back({line.id, line.naam, before.value_or(1)});
      return outcome;
    });
    const QString are = tally.written == 1 ? u" is niet meer aktief"_s : u" zijn niet meer aktief"_s;
    Finish(tally, Count(tally.written) + are, !undo_.empty());
  });
}

void OverviewActions::cmdEinddatum_Click() {
  const char* const procedure = __func__;
  Trapped(procedure, [&] {
    const std::vector<Marked> lines = MarkedLines();
    frmGeldigheid form(window_, frmGeldigheid::Part::EindDatum, Count(static_cast<qsizetype>(lines.size())));
    form.ShowModal();
    if (!form.IsAccepted()) return;
    Forget();
    const QDate day = form.EindDatum();
    const Tally tally = Run(procedure, u"Einddatum wijzigen ..."_s, lines,
                            [&](const Marked& line) { return WriteEindDatum(line.id, day); });
    Finish(tally, u"Einddatum "_s + runtime::DateText(day) + u" bij "_s + Count(tally.written));
  });
}

void OverviewActions::cmdUren_Click() {
  const char* const procedure = __func__;
  Trapped(procedure, [&] {
    const std::vector<Marked> lines = MarkedLines();
    frmGeldigheid form(window_, frmGeldigheid::Part::Uren, Count(static_cast<qsizetype>(lines.size())));
    form.ShowModal();
    if (!form.IsAccepted()) return;
    Forget();
    const qint32 start = form.StartUur();
    const qint32 end = form.EindUur();
    const Tally tally = Run(procedure, u"Uren wijzigen ..."_s, lines,
                            [&](const Marked& line) { return WriteUren(line.id, start, end); });
    Finish(tally, u"Uren %1 tot en met %2 bij "_s.arg(start).arg(end) + Count(tally.written));
  });
}

// The copies are marked lightly, not the originals.
void OverviewActions::cmdDupliceren_Click() {
  const char* const procedure = __func__;
  Trapped(procedure, [&] {
    const std::vector<Marked> lines = MarkedLines();
    if (lines.empty()) return;
    Forget();
    QList<qint32> copies;
    QString naam;
    Tally tally = Run(procedure, u"Dupliceren ..."_s, lines, [&](const Marked& line) {
      const Duplicated copy = Duplicate(subject_.kind, line.id);
      if (copy.id != 0) {
        copies += copy.id;
        naam = copy.naam;
      }
      // The message of a refused copy was shown; the others would get the same kind of message one after another.
      return copy.outcome == EditOutcome::Refused ? EditOutcome::Failed : copy.outcome;
    });
    tally.ids = copies;
    tally.written = static_cast<int>(copies.size());
    const QString added =
        tally.written == 1 ? InQuotes(naam) + u" is toegevoegd"_s : Count(tally.written) + u" toegevoegd"_s;
    Finish(tally, added);
  });
}

// Once: what cannot be written back now is named, and not offered again.
void OverviewActions::cmdOngedaan_Click() {
  const char* const procedure = __func__;
  Trapped(procedure, [&] {
    const std::vector<Former> undo = std::exchange(undo_, {});
    if (undo.empty()) return;
    std::vector<Marked> lines;
    lines.reserve(undo.size());
    for (const Former& former : undo)
      lines.push_back({former.id, former.naam});
    std::size_t next = 0;
    const Tally tally = Run(procedure, u"Opnieuw aktief maken ..."_s, lines, [&](const Marked& line) {
      return WriteAktief(subject_.kind, line.id, undo[next++].aktief);
    });
    const QString what = tally.written == 1 ? InQuotes(undo.front().naam) : Count(tally.written);
    Finish(tally, what + (tally.written == 1 ? u" is weer aktief"_s : u" zijn weer aktief"_s));
  });
}
