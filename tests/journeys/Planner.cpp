// SPDX-License-Identifier: MIT
#include "tests/journeys/Planner.h"

using namespace Qt::StringLiterals;
using namespace window;

namespace {

const QString kList = u"lstOverzicht"_s;

QString Written(QDate date) {
  return date.toString(u"dd-MM-yyyy"_s);
}

}  // namespace

void Planner::ChooseStation(const QString& station) const {
  desk_.WaitForWindow(kStation);
  desk_.Choose(kStation, u"cboRadio"_s, station);
  look_(kStation);
  desk_.Click(kStation, u"cmdOk"_s);
  desk_.WaitForWindow(kMain);
}

void Planner::GoOffline() const {
  Open(u"actInstellingen"_s, kSettings);
  Check(kSettings, u"optOffline"_s);
  look_(kSettings);
  desk_.Click(kSettings, u"cmdOk"_s);
  desk_.WaitUntilGone(kSettings);
  desk_.WaitForText(kMain, u"pnlModus"_s, u"Offline"_s);
}

void Planner::GoOnline() const {
  Open(u"actInstellingen"_s, kSettings);
  desk_.Click(kSettings, u"optOnline"_s);
  desk_.Answer(u"dient u meteen ook te exporteren"_s, u"OK"_s);
  desk_.Click(kSettings, u"cmdOk"_s);
  desk_.WaitForWindow(kExport);
}

void Planner::StartExport() const {
  look_(kExport);
  desk_.Click(kExport, u"cmdOk"_s);
}

void Planner::EndExport() const {
  desk_.Answer(u"De export is beëindigd"_s, u"OK"_s);
  desk_.WaitUntilGone(kExport);
}

void Planner::Leave() const {
  desk_.ClickTool(kMain, u"actAfsluiten"_s);
  desk_.WaitUntilGone(kMain);
}

void Planner::Open(const QString& action, const QString& list) const {
  desk_.WaitForWindow(kMain);
  desk_.Command(kMain, action);
  desk_.WaitForWindow(list);
}

void Planner::Close(const QString& list) const {
  desk_.Click(list, u"cmdSluiten"_s);
  desk_.WaitUntilGone(list);
}

void Planner::MakeSpot(const SpotWork& work, const std::function<void()>& more) const {
  desk_.Click(kSpots, u"cmdNieuw"_s);
  desk_.WaitForWindow(kSpot);
  TakeSound(kSpot, work.sound);
  desk_.Type(kSpot, u"txtNaam"_s, work.naam);
  desk_.Type(kSpot, u"cobStart"_s, Written(work.first));
  desk_.Type(kSpot, u"cobStop"_s, Written(work.last));
  if (more) more();
  Save(kSpot);
  desk_.WaitForLine(kSpots, kList, work.naam);
}

void Planner::ChangeSpotEnd(const QString& spot, QDate last) const {
  Edit(kSpots, spot, kSpot);
  desk_.Type(kSpot, u"cobStop"_s, Written(last));
  Save(kSpot);
  WaitForRefill(kSpots);
}

void Planner::MakeJingle(const JingleWork& work) const {
  desk_.Click(kJingles, u"cmdNieuw"_s);
  desk_.WaitForWindow(kJingle);
  TakeSound(kJingle, work.sound);
  desk_.Type(kJingle, u"txtNaam"_s, work.naam);
  Save(kJingle);
  desk_.WaitForLine(kJingles, kList, work.naam);
}

void Planner::RenameJingle(const QString& jingle, const QString& naam) const {
  Edit(kJingles, jingle, kJingle);
  desk_.Type(kJingle, u"txtNaam"_s, naam);
  Save(kJingle);
  desk_.WaitForLine(kJingles, kList, naam);
}

void Planner::RemoveJingle(const QString& jingle) const {
  desk_.Choose(kJingles, kList, jingle);
  desk_.Click(kJingles, u"cmdVerwijder"_s);
  desk_.Answer(u'"' + jingle + u"\" verwijderen uit de lijst"_s, u"Ja"_s);
  WaitForRefill(kJingles);
}

void Planner::MakeListItem(const BlockWork& work, const QStringList& spots) const {
  desk_.Click(kItems, u"cmdNieuw"_s);
  desk_.WaitForWindow(kItem);
  for (const QString& spot : spots) {
    desk_.Click(kItem, u"cmdOpt1Toevoegen"_s);
    desk_.WaitForWindow(kEntry);
    desk_.Choose(kEntry, u"cboItemSpot"_s, spot);
    look_(kEntry);
    desk_.Click(kEntry, u"cmdOk"_s);
    desk_.WaitUntilGone(kEntry);
    desk_.WaitForLine(kItem, u"lstOpt1ItemSpots"_s, spot);
  }
  FillBlock(work);
  Save(kItem);
  desk_.WaitForLine(kItems, kList, work.naam);
}

void Planner::MakePatternItem(const BlockWork& work, const PatternWork& pattern) const {
  desk_.Click(kItems, u"cmdNieuw"_s);
  desk_.WaitForWindow(kItem);
  Check(kItem, u"opt2"_s);
  ChooseFolder(pattern.folders);
  desk_.Type(kItem, u"txtOpt2VastNaamGedeelte"_s, pattern.fixedPart);
  desk_.Choose(kItem, u"cboOpt2VariabelNaamGedeelte"_s, pattern.variablePart);
  if (!pattern.firstDay.isEmpty()) desk_.Choose(kItem, u"cboOpt2Eerstedagvanweek"_s, pattern.firstDay);
  desk_.Type(kItem, u"txtOpt2FileExtensie"_s, pattern.extension);
  FillMixPoint(pattern.mixPoint);
  FillBlock(work);
  desk_.Type(kItem, u"txtMaxAantalSpots"_s, QString::number(pattern.most));
  Save(kItem);
  desk_.WaitForLine(kItems, kList, work.naam);
}

void Planner::RemoveEntry(const QString& item, const QString& spot) const {
  Edit(kItems, item, kItem);
  desk_.Choose(kItem, u"lstOpt1ItemSpots"_s, spot);
  desk_.Click(kItem, u"cmdOpt1Verwijderen"_s);
  desk_.WaitUntil(u"'%1' bleef in het item"_s.arg(spot),
                  [&] { return !desk_.LinesNow(kItem, u"lstOpt1ItemSpots"_s).contains(spot); });
  Save(kItem);
  WaitForRefill(kItems);
}

void Planner::Deactivate(const QString& list, const QString& line) const {
  desk_.Choose(list, kList, line);
  desk_.Click(list, u"cmdDesaktiveer"_s);
  desk_.WaitUntil(u"'%1' bleef aktief"_s.arg(line), [&] { return !desk_.LinesNow(list, kList).contains(line); });
}

void Planner::CleanUp(const QString& list, const QString& line, const QStringList& boxes) const {
  const QString& cleanup = list == kItems ? kItemCleanup : kSpotCleanup;
  desk_.Choose(list, kList, line);
  desk_.Click(list, u"cmdVerwijder"_s);
  desk_.WaitForWindow(cleanup);
  desk_.WaitForText(cleanup, u"txtOpruimenVan"_s, line);
  for (const QString& box : boxes)
    Check(cleanup, box);
  look_(cleanup);
  desk_.Click(cleanup, u"cmdOk"_s);
  desk_.Answer(u"Opruimen is uitgevoerd."_s, u"OK"_s);
  desk_.WaitUntilGone(cleanup);
  WaitForRefill(list);
}

void Planner::Edit(const QString& list, const QString& line, const QString& editor) const {
  desk_.Choose(list, kList, line);
  desk_.DoubleClick(list, kList);
  desk_.WaitForWindow(editor);
  desk_.WaitForText(editor, u"txtNaam"_s, line);
}

void Planner::Save(const QString& editor) const {
  look_(editor);
  desk_.Click(editor, u"cmdOk"_s);
  desk_.WaitUntilGone(editor);
}

// The states of the buttons are set after the refill; a line chosen before it would be deselected.
void Planner::WaitForRefill(const QString& list) const {
  desk_.WaitForWindow(list);
  desk_.WaitUntil(u"%1 werd niet opnieuw gevuld"_s.arg(list), [&] { return !desk_.IsEnabled(list, u"cmdOpen"_s); });
}

void Planner::Check(const QString& window, const QString& box) const {
  desk_.Click(window, box);
  desk_.WaitUntil(u"%1.%2 werd niet gekozen"_s.arg(window, box), [&] { return desk_.IsChecked(window, box); });
}

void Planner::TakeSound(const QString& editor, const QString& sound) const {
  desk_.ChooseFile(sound);
  desk_.Click(editor, u"cmdPath"_s);
  desk_.WaitUntil(u"het geluidsbestand werd niet genomen"_s,
                  [&] { return !desk_.Find(editor, u"txtPath"_s).isEmpty(); });
  desk_.Expect(desk_.Text(editor, u"txtLengteSec"_s).toInt() > 0, u"de lengte werd niet gemeten"_s);
}

// Each folder of the tree is opened with Enter; the last one selected is the choice.
void Planner::ChooseFolder(const QStringList& folders) const {
  desk_.Click(kItem, u"cmdDirectory"_s);
  desk_.WaitForWindow(kFolder);
  QString indent;
  for (const QString& folder : folders) {
    indent += u"   ";
    desk_.WaitForLine(kFolder, u"lstDir"_s, indent + folder);
    desk_.Choose(kFolder, u"lstDir"_s, indent + folder);
    desk_.Press(kFolder, u"lstDir"_s, Qt::Key_Return);
    desk_.WaitUntil(u"%1 ging niet open"_s.arg(folder),
                    [&] { return desk_.Find(kFolder, u"lblGekozen"_s).endsWith(folder); });
  }
  look_(kFolder);
  desk_.Click(kFolder, u"cmdOk"_s);
  desk_.WaitUntilGone(kFolder);
  desk_.WaitUntil(u"de map werd niet overgenomen"_s,
                  [&] { return desk_.Find(kItem, u"txtOpt2Directory"_s).endsWith(folders.last()); });
}

void Planner::FillBlock(const BlockWork& work) const {
  desk_.Type(kItem, u"txtNaam"_s, work.naam);
  Check(kItem, u"optMeerdereSpots"_s);
  desk_.Type(kItem, u"txtAantalSpots"_s, QString::number(work.count));
  const std::pair<QString, QString> jingles[] = {
      {u"OpenerPingle"_s, work.opener}, {u"MiddenPingle"_s, work.middle}, {u"SluiterPingle"_s, work.closer}};
  for (const auto& [place, jingle] : jingles) {
    Check(kItem, u"chk"_s + place);
    desk_.Choose(kItem, u"cbo"_s + place, jingle);
  }
}

void Planner::FillMixPoint(int mixPoint) const {
  desk_.Click(kItem, u"ledMix"_s);
  desk_.AnswerInput(u"Geef een numerische waarde"_s, QString::number(mixPoint));
  desk_.WaitUntil(u"het mixpunt werd niet ingevuld"_s, [&] { return desk_.Value(kItem, u"ledMix"_s) == mixPoint; });
}
