// SPDX-License-Identifier: MIT
#include "tests/media/support/EditorDesk.h"

#include "data/Catalogue.h"
#include "data/Globals.h"
#include "platform/audio/Synth.h"
#include "platform/controls/LedPanel.h"
#include "platform/desktop/FileChooser.h"
#include "platform/runtime/HostPath.h"

#include <QFile>
#include <QLineEdit>
#include <QPushButton>

#include <gtest/gtest.h>
#include <sndfile.h>

#include <algorithm>
#include <stdexcept>
#include <vector>

using namespace Qt::StringLiterals;
using testing_support::Child;

namespace media_testing {

QString MakeWav(const QString& hostPath, qint64 ms, int sampleRate) {
  SF_INFO info{};
  info.samplerate = sampleRate;
  info.channels = 1;
  info.format = SF_FORMAT_WAV | SF_FORMAT_PCM_16;
  SNDFILE* file = sf_open(QFile::encodeName(hostPath).constData(), SFM_WRITE, &info);
  if (file == nullptr) throw std::runtime_error(sf_strerror(nullptr));
  std::vector<short> block(65536);
  for (std::size_t i = 0; i < block.size(); ++i)
    block[i] = static_cast<short>(static_cast<int>(i * 97 % 20011) - 10005);
  for (qint64 left = ms * sampleRate / 1000; left > 0;) {
    const auto count = std::min<qint64>(left, static_cast<qint64>(block.size()));
    sf_writef_short(file, block.data(), count);
    left -= count;
  }
  sf_close(file);
  return hostPath;
}

QString MakeMp3(const QString& hostPath, double seconds) {
  audio::ToneOptions options;
  options.seconds = seconds;
  audio::WriteToneFile(hostPath.toStdString(), options);
  return hostPath;
}

void WriteBytes(const QString& hostPath, const QByteArray& bytes) {
  QFile file(hostPath);
  if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size()) throw std::runtime_error("write failed");
}

QByteArray ReadBytes(const QString& hostPath) {
  QFile file(hostPath);
  if (!file.open(QIODevice::ReadOnly)) throw std::runtime_error("cannot open " + hostPath.toStdString());
  return file.readAll();
}

EditorDesk::~EditorDesk() {
  for (const desktop::ShownMessageBox& box : unexpected_.Shown()) {
    ADD_FAILURE() << "unexpected box " << box.title.toStdString() << ": " << box.text.toStdString();
  }
}

std::unique_ptr<frmItemSpotsDetail> EditorDesk::OpenNewSpot(qint64 ms) const {
  AddSpot(1, u"Spot"_s, Wav(u"spot.wav"_s, ms));
  return OpenSpot(u"1"_s);
}

QString EditorDesk::Wav(const QString& name, qint64 ms) const {
  return runtime::PathText(MakeWav(AudioFile(name), ms));
}

void EditorDesk::AddSpot(int id, const QString& naam, const QString& path, const QString& more) const {
  const QString values = more.isEmpty() ? u"7, 0, 0, 45658, 6, 45700, 22, 0, 1"_s : more;
  station.OnCurrent(u"INSERT INTO "_s + CurrentCatalogue().itemSpots +
                    u" (ID, Naam, Path, LengteSec, StartPunt, Mixpunt, StartDatum, StartUur, EindDatum, EindUur, "
                    u"AantalGedraaid, Aktief) VALUES (" +
                    QString::number(id) + u", \"" + naam + u"\", \"" + path + u"\", " + values + u")");
}

void EditorDesk::AddPingle(int id, const QString& naam, const QString& path) const {
  station.OnCurrent(u"INSERT INTO "_s + CurrentCatalogue().itemPingles +
                    u" (ID, Naam, Path, LengteSec, StartPunt, MixPunt, Aktief) VALUES (" + QString::number(id) +
                    u", \"" + naam + u"\", \"" + path + u"\", 7, 0, 250, 1)");
}

dao::Recordset EditorDesk::Spot(int id) const {
  return station.CurrentRows(u"SELECT * FROM "_s + CurrentCatalogue().itemSpots + u" WHERE ID = " +
                             QString::number(id));
}

dao::Recordset EditorDesk::Pingle(int id) const {
  return station.CurrentRows(u"SELECT * FROM "_s + CurrentCatalogue().itemPingles + u" WHERE ID = " +
                             QString::number(id));
}

QStringList EditorDesk::AudioList() const {
  QFile file(station.ExportFolder() + u"/Audio.tae"_s);
  if (!file.open(QIODevice::ReadOnly)) return {};
  return QString::fromLatin1(file.readAll()).split(u"\r\n"_s, Qt::SkipEmptyParts);
}

void EditorDesk::SelectForOpening(const QString& selected) {
  global.gstrSelectedID = selected;
}

void EditorDesk::Activate(QWidget& editor) {
  editor.activateWindow();
  if (!QTest::qWaitForWindowActive(&editor)) throw std::runtime_error("the window does not become active");
}

int Led(const QWidget& editor, const QString& panel) {
  return Child<controls::LedPanel>(editor, panel).Value();
}

audio::AudioPlayer& Player(const QWidget& editor) {
  return Child<audio::AudioPlayer>(editor, u"Player"_s);
}

void Choose(const QWidget& editor, const QString& hostPath) {
  desktop::FileChooserScript script;
  script.Choose(hostPath);
  Click(editor, u"cmdPath"_s);
}

void FillValidSpot(const QWidget& editor, const QString& naam) {
  SetText(editor, u"txtNaam"_s, naam);
  SetText(editor, u"cobStart"_s, u"01-01-2025"_s);
  SetText(editor, u"cobStop"_s, u"31-01-2025"_s);
}

}  // namespace media_testing
