// SPDX-License-Identifier: MIT
// No sequence of player operations may hang, crash or cause a data race.
#include "platform/audio/Error.h"
#include "platform/audio/MixDecoder.h"
#include "platform/audio/PlayerCore.h"
#include "platform/audio/SilentOutput.h"
#include "tests/platform/audio/support/EventLog.h"
#include "tests/platform/audio/support/PulledOutput.h"
#include "tests/platform/audio/support/SoundFiles.h"

#include <gtest/gtest.h>

#include <atomic>
#include <memory>
#include <random>
#include <string>
#include <thread>
#include <vector>

namespace {

using namespace audiotest;

class Storm {
 public:
  explicit Storm(audio::OutputFactory outputs) : outputs_(std::move(outputs)) {
    files_ = {MakeTone(folder_.File("a.wav"), 2), MakeTone(folder_.File("b.mp3"), 2),
              MakeTone(folder_.File("c.wav"), 0.02, 8000, 1), WriteBytes(folder_.File("leeg.mp3"), {})};
    Renew();
  }

  void Operate() {
    const auto choice = random_() % 14;
    const auto ms = static_cast<std::int32_t>(random_() % 3000) - 200;
    if (choice == 0) Open();
    if (choice == 1 && random_() % 4 == 0) Renew();
    if (choice == 2 && random_() % 4 == 0) player_->Close();
    if (choice == 3 || choice == 4) Start();
    if (choice == 5) player_->Stop();
    if (choice >= 6 && choice <= 8) Jump(ms);
    if (choice == 9) player_->SetPosition(ms);
    if (choice == 10) player_->Pause();
    if (choice == 11) player_->Resume();
    if (choice == 12) player_->SetSettings({static_cast<int>(random_() % 3) - 1, static_cast<int>(random_() % 70), ms});
    if (choice == 13) player_->TakeLevels();
    Check();
  }

 private:
  void Renew() { player_ = std::make_unique<audio::PlayerCore>(outputs_, log_.Listener()); }

  void Open() {
    if (random_() % 3 == 0) {
      return player_->Open(std::make_unique<audio::MixDecoder>(
                               std::vector<audio::MixClip>{{files_[0], 1500}, {files_[2], 5}, {files_[1], 0}}),
                           "blok");
    }
    try {
      player_->Open(files_[random_() % files_.size()]);
    } catch (const audio::Error&) {
      EXPECT_EQ(player_->State(), audio::kNoFile);
    }
  }

  void Start() {
    if (player_->FileName().empty()) {
      EXPECT_THROW(player_->Start(), audio::Error);
    } else {
      player_->Start();
    }
  }

  void Jump(std::int32_t ms) {
    player_->Pause();
    player_->SetPosition(ms);
    player_->Resume();
  }

  void Check() {
    ASSERT_GE(player_->Position(), 0);
    ASSERT_LE(player_->Position(), player_->Length());
    ASSERT_EQ(player_->FileName().empty(), player_->State() == audio::kNoFile);
  }

  TemporaryFolder folder_;
  std::vector<std::string> files_;
  EventLog log_;
  audio::OutputFactory outputs_;
  std::unique_ptr<audio::PlayerCore> player_;
  std::mt19937 random_{20};
};

TEST(RandomOperations, OnAPulledOutputSucceedAThousandTimes) {
  PulledOutput output;
  std::atomic<bool> over{false};
  std::thread device([&] {
    while (!over)
      output.PullNow(300);
  });
  {
    Storm storm(output.Factory());
    for (int i = 0; i < 1000; ++i)
      storm.Operate();
  }
  over = true;
  device.join();
  EXPECT_FALSE(output.IsRunning());
}

TEST(RandomOperations, OnASilentOutputSucceedAThousandTimes) {
  Storm storm([](const audio::OutputRequest& request) {
    return std::make_unique<audio::SilentOutput>(request.sampleRate, std::string());
  });
  for (int i = 0; i < 1000; ++i)
    storm.Operate();
}

}  // namespace
