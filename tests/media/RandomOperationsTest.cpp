// SPDX-License-Identifier: MIT
// Random operations in any order: the editor neither hangs nor shows an error for valid files.
#include "platform/controls/LedPanel.h"
#include "platform/controls/PositionSlider.h"
#include "platform/desktop/MessageBox.h"
#include "tests/media/support/EditorDesk.h"

#include <gtest/gtest.h>

#include <array>
#include <memory>
#include <random>

using namespace Qt::StringLiterals;
using namespace media_testing;
using testing_support::Child;

namespace {

template <class Editor>
class RandomUser {
 public:
  RandomUser(EditorDesk& desk, unsigned seed) : desk_(desk), random_(seed) {
    files_ = {MakeWav(desk.AudioFile(u"kort.wav"_s), 700), MakeWav(desk.AudioFile(u"lang.wav"_s), 95'000, 8000),
              MakeMp3(desk.AudioFile(u"lied.mp3"_s), 3.2)};
    Open();
  }

  void Act() {
    static const std::array buttons = {u"cmdPlay"_s, u"cmdSTOP"_s, u"cmdRREW"_s,     u"cmdREW"_s,    u"cmdFFW"_s,
                                       u"cmdFFFW"_s, u"cmdMix"_s,  u"cmdResetMix"_s, u"cmdTestMix"_s};
    const auto what = random_() % 14;
    if (what < buttons.size()) {
      Click(*editor_, buttons[what]);
    } else if (what == 9) {
      Choose(*editor_, files_[random_() % files_.size()]);
    } else if (what == 10) {
      PressSlider();
    } else if (what == 11) {
      Child<controls::LedPanel>(*editor_, u"ledMix"_s).SetValue(static_cast<int>(random_() % 20'000));
    } else if (what == 12 && desk_.output.IsRunning()) {
      desk_.output.Pull(random_() % 200);
    } else if (what == 13) {
      Open();  // closes the previous editor, playing or not
    }
    QCoreApplication::processEvents();
  }

  const Editor& OpenEditor() const { return *editor_; }

 private:
  void Open() { editor_ = desk_.Open<Editor>(u"NIEUW"_s); }

  void PressSlider() {
    auto& slider = Child<controls::PositionSlider>(*editor_, u"sliPlay"_s);
    QTest::mouseClick(&slider, Qt::LeftButton, Qt::NoModifier,
                      QPoint(static_cast<int>(random_() % static_cast<unsigned>(slider.width())), 8));
  }

  EditorDesk& desk_;
  std::mt19937 random_;
  std::array<QString, 3> files_;
  std::unique_ptr<Editor> editor_;
};

template <class Editor>
void ExpectSoundAfter(int operations, unsigned seed) {
  EditorDesk desk;
  // Without a file only "play" and "test" show a text.
  const desktop::MessageBoxScript boxes;
  RandomUser<Editor> user(desk, seed);
  for (int i = 0; i < operations; ++i) {
    user.Act();
    const audio::AudioPlayer& player = Player(user.OpenEditor());
    ASSERT_GE(player.Position(), 0) << "operation " << i;
    ASSERT_LE(player.Position(), player.Length()) << "operation " << i;
  }
  for (const desktop::ShownMessageBox& box : boxes.Shown()) {
    EXPECT_TRUE(box.title == u"cmdPlay_Click"_s || box.title == u"cmdTestMix_Click"_s) << box.text.toStdString();
  }
}

}  // namespace

TEST(RandomOperations, ItemSpotEditorSurvives) {
  ExpectSoundAfter<frmItemSpotsDetail>(300, 1);
}
TEST(RandomOperations, ItemPingleEditorSurvives) {
  ExpectSoundAfter<frmItemPinglesDetail>(300, 2);
}
