// SPDX-License-Identifier: MIT
#pragma once

#include "media/SoundOutput.h"
#include "media/frmItemPinglesDetail.h"
#include "media/frmItemSpotsDetail.h"
#include "platform/audio/AudioPlayer.h"
#include "platform/desktop/MessageBox.h"
#include "tests/platform/audio/support/PulledOutput.h"
#include "tests/support/Child.h"
#include "tests/support/Station.h"

#include <QAbstractButton>
#include <QString>
#include <QTest>

#include <memory>

namespace media_testing {

// A 16-bit mono WAV of exactly that many milliseconds; small and quick to write. Returns the host path.
QString MakeWav(const QString& hostPath, qint64 ms, int sampleRate = 1000);
// A constant-bit-rate MP3 of that length.
QString MakeMp3(const QString& hostPath, double seconds);
void WriteBytes(const QString& hostPath, const QByteArray& bytes);
QByteArray ReadBytes(const QString& hostPath);

// A station whose editors play to an output that the test pulls by hand.
class EditorDesk {
 public:
  explicit EditorDesk(testing_support::Station::Mode mode = testing_support::Station::Mode::Online)
      : station(mode), scope_(output.Factory()) {}
  // A message box that the test did not expect fails it, instead of waiting for someone to answer.
  ~EditorDesk();

  // Host path of a file of that name in the audio folder.
  QString AudioFile(const QString& name) const { return station.AudioFolder() + u'/' + name; }
  // A WAV there; returns its path text.
  QString Wav(const QString& name, qint64 ms) const;

  // One row of the present mode's table.
  void AddSpot(int id, const QString& naam, const QString& path, const QString& more = {}) const;
  void AddPingle(int id, const QString& naam, const QString& path) const;
  dao::Recordset Spot(int id) const;
  dao::Recordset Pingle(int id) const;

  // The lines of "Audio.tae"; none when there is no such file.
  QStringList AudioList() const;

  // The editor, loaded and shown, on a record's ID or "NIEUW".
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
  // The editor of a spot 1 that is made for it, of that length.
  std::unique_ptr<frmItemSpotsDetail> OpenNewSpot(qint64 ms) const;
  std::unique_ptr<frmItemPinglesDetail> OpenPingle(const QString& selected) const {
    return Open<frmItemPinglesDetail>(selected);
  }

  testing_support::Station station;
  audiotest::PulledOutput output;

 private:
  static void SelectForOpening(const QString& selected);
  // Keys reach the shortcuts of an active window only.
  static void Activate(QWidget& editor);

  SoundOutputScope scope_;
  desktop::MessageBoxScript unexpected_;
};

void Click(const QWidget& editor, const QString& button);
void SetText(const QWidget& editor, const QString& field, const QString& text);
QString Text(const QWidget& editor, const QString& field);
int Led(const QWidget& editor, const QString& panel);
audio::AudioPlayer& Player(const QWidget& editor);
// Chooses a file (host path) through the file dialog of "Path ...".
void Choose(const QWidget& editor, const QString& hostPath);
// Name of the control that has the focus within the editor.
QString Focused(const QWidget& editor);

// What a new spot needs besides its file.
void FillValidSpot(const QWidget& editor, const QString& naam);

}  // namespace media_testing
