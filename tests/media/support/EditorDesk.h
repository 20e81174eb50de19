// SPDX-License-Identifier: MIT
#pragma once

#include "media/SoundOutput.h"
#include "media/frmItemPinglesDetail.h"
#include "media/frmItemSpotsDetail.h"
#include "platform/audio/AudioPlayer.h"
#include "platform/desktop/MessageBox.h"
#include "tests/platform/audio/support/PulledOutput.h"
#include "tests/support/Station.h"
#include "tests/support/Ui.h"

#include <QAbstractButton>
#include <QString>
#include <QTest>

#include <memory>

namespace media_testing {

// Writes a small 16-bit mono WAV of exactly that many milliseconds. Returns the host path.
QString MakeWav(const QString& hostPath, qint64 ms, int sampleRate = 1000);
// Writes a constant-bit-rate MP3 of that length.
QString MakeMp3(const QString& hostPath, double seconds);
void WriteBytes(const QString& hostPath, const QByteArray& bytes);
QByteArray ReadBytes(const QString& hostPath);

// A station whose editors play to an output from which the test pulls the audio.
class EditorDesk {
 public:
  explicit EditorDesk(testing_support::Station::Mode mode = testing_support::Station::Mode::Online)
      : station(mode), scope_(output.Factory()) {}
  // An unexpected message box fails the test instead of waiting for an answer.
  ~EditorDesk();

  // Host path for a file name in the audio folder.
  QString AudioFile(const QString& name) const { return station.AudioFolder() + u'/' + name; }
  // Writes a WAV there; returns its path text.
  QString Wav(const QString& name, qint64 ms) const;

  // One row of the current mode's table.
  void AddSpot(int id, const QString& naam, const QString& path, const QString& more = {}) const;
  void AddPingle(int id, const QString& naam, const QString& path) const;
  dao::Recordset Spot(int id) const;
  dao::Recordset Pingle(int id) const;

  // The lines of "Audio.tae"; empty when the file does not exist.
  QStringList AudioList() const;

  // Loads and shows the editor for a record's ID or "NIEUW".
  template <class Editor>
  std::unique_ptr<Editor> Open(const QString& selected) const {
    SelectForOpening(selected);
    auto editor = std::make_unique<Editor>();
    editor->Form_Load();
    editor->show();
    Activate(*editor);
    return editor;
  }
  std::unique_ptr<frmItemSpotsDetail> OpenSpot(const QString& selected) const {
    return Open<frmItemSpotsDetail>(selected);
  }
  // Inserts spot 1 with a file of that length and opens its editor.
  std::unique_ptr<frmItemSpotsDetail> OpenNewSpot(qint64 ms) const;
  std::unique_ptr<frmItemPinglesDetail> OpenPingle(const QString& selected) const {
    return Open<frmItemPinglesDetail>(selected);
  }

  testing_support::Station station;
  audiotest::PulledOutput output;

 private:
  static void SelectForOpening(const QString& selected);
  // Shortcuts work in an active window only.
  static void Activate(QWidget& editor);

  SoundOutputScope scope_;
  desktop::MessageBoxScript unexpected_;
};

using testing_support::Click;
using testing_support::Focused;
using testing_support::SetText;
using testing_support::Text;

int Led(const QWidget& editor, const QString& panel);
audio::AudioPlayer& Player(const QWidget& editor);
// Chooses a file (host path) through the file dialog of "Path ...".
void Choose(const QWidget& editor, const QString& hostPath);

// Fills the required fields of a new spot except its file.
void FillValidSpot(const QWidget& editor, const QString& naam);

}  // namespace media_testing
