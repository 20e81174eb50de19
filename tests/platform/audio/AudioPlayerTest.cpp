// SPDX-License-Identifier: MIT
// Signals through the event loop, and errors as runtime::Error.
#include "platform/audio/AudioPlayer.h"

#include "platform/runtime/Error.h"
#include "tests/platform/audio/support/PulledOutput.h"
#include "tests/platform/audio/support/SoundFiles.h"

#include <QSignalSpy>
#include <QStringList>
#include <QThread>

#include <gtest/gtest.h>

namespace {

using namespace Qt::StringLiterals;
using namespace audiotest;

class PlayerSignals : public ::testing::Test {
 protected:
  void SetUp() override {
    for (QObject* object : {static_cast<QObject*>(&player_)})
      EXPECT_EQ(object->thread(), QThread::currentThread());
    QObject::connect(&player_, &audio::AudioPlayer::started, [this] { Note(u"started"_s); });
    QObject::connect(&player_, &audio::AudioPlayer::stopped, [this] { Note(u"stopped"_s); });
    QObject::connect(&player_, &audio::AudioPlayer::failed, [this] { Note(u"failed"_s); });
  }

  void Note(const QString& what) {
    EXPECT_EQ(QThread::currentThread(), player_.thread());
    heard_ << what;
  }
  QString Tone(double seconds) { return QString::fromStdString(MakeTone(folder_.File("toon.wav"), seconds)); }

  TemporaryFolder folder_;
  PulledOutput output_;
  audio::AudioPlayer player_{output_.Factory()};
  QStringList heard_;
};

TEST_F(PlayerSignals, SignalsStartAndTheEndOfTheFileThroughTheEventLoop) {
  player_.Open(Tone(0.5));
  QSignalSpy stopped(&player_, &audio::AudioPlayer::stopped);
  player_.Start();
  EXPECT_TRUE(heard_.isEmpty());
  output_.PullToEnd();
  ASSERT_TRUE(stopped.wait(10000));
  EXPECT_EQ(heard_, QStringList({u"started"_s, u"stopped"_s}));
  EXPECT_EQ(player_.Position(), 500);
}

TEST_F(PlayerSignals, RestartEndsWithStarted) {
  player_.Open(Tone(2));
  player_.Start();
  player_.Stop();
  player_.Start();
  QCoreApplication::processEvents();
  EXPECT_EQ(heard_, QStringList({u"started"_s, u"stopped"_s, u"started"_s}));
  EXPECT_EQ(player_.State(), 6);
}

TEST_F(PlayerSignals, RethrowsErrorsAsRuntimeError) {
  player_.Open(Tone(1));
  try {
    player_.Open(u"/nergens/spot.mp3"_s);
    ADD_FAILURE() << "a file that is not there was opened";
  } catch (const runtime::Error& error) {
    EXPECT_TRUE(error.Description().contains(u"'/nergens/spot.mp3'"_s));
  }
  EXPECT_TRUE(player_.FileName().isEmpty());
  EXPECT_THROW(player_.Start(), runtime::Error);
}

TEST_F(PlayerSignals, LostDeviceIsReportedOnceAndStopsPlayback) {
  player_.Open(Tone(5));
  player_.Start();
  output_.Pull(100);
  QSignalSpy stopped(&player_, &audio::AudioPlayer::stopped);
  output_.Unplug();
  ASSERT_TRUE(stopped.wait(10000));
  EXPECT_EQ(heard_, QStringList({u"started"_s, u"failed"_s, u"stopped"_s}));
}

TEST_F(PlayerSignals, StatusSaysWhyItIsSilent) {
  output_.SetStatus("Stil.");
  QSignalSpy status(&player_, &audio::AudioPlayer::statusChanged);
  player_.Open(Tone(1));
  player_.Start();
  ASSERT_TRUE(status.wait(10000));
  EXPECT_EQ(status.first().first().toString(), u"Stil."_s);
  EXPECT_EQ(player_.StatusText(), u"Stil."_s);
}

TEST_F(PlayerSignals, StoresEverySetting) {
  player_.SetDeviceID(2);
  player_.SetCallBackMode(1);
  player_.SetNumBuffers(30);
  player_.SetBufferSize(4096);
  player_.SetSeekSetting(50);
  EXPECT_EQ(player_.DeviceID(), 2);
  EXPECT_EQ(player_.CallBackMode(), 1);
  EXPECT_EQ(player_.NumBuffers(), 30);
  EXPECT_EQ(player_.BufferSize(), 4096);
  EXPECT_EQ(player_.SeekSetting(), 50);
  player_.Open(Tone(1));
  player_.Start();
  output_.Pull(1);
  EXPECT_EQ(output_.LastRequest().device, 2);
}

}  // namespace
