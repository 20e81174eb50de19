// A short run of the fuzz target "open, check, edit, save", and the damages that it once found the writer to fall for.
#include "fuzz/EditDamaged.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <random>

#include "tests/platform/jet/support/Rounds.h"

namespace jet {
namespace {

TEST(EditingDamagedFiles, MakesNothingWorse) {
  const int inputs = test::Rounds("SPOTROOSTER_EDITS", 2000);
  std::mt19937 random(static_cast<unsigned>(test::Rounds("SPOTROOSTER_SEED", 1)));
  int damaged = 0;
  int committed = 0;
  int refused = 0;
  for (int i = 0; i < inputs; ++i) {
    std::vector<std::uint8_t> input(5 + random() % 55);
    for (std::uint8_t& byte : input)
      byte = static_cast<std::uint8_t>(random());
    try {
      const fuzz::EditOutcome outcome = fuzz::EditDamaged(input);
      damaged += outcome.damaged ? 1 : 0;
      committed += outcome.committed;
      refused += outcome.refused;
    } catch (const std::logic_error& broken) {
      ADD_FAILURE() << "input " << i << ": " << broken.what();
    }
  }
  std::printf("%d inputs, %d damaged files, %d statements carried out, %d refused\n", inputs, damaged, committed,
              refused);
  EXPECT_GT(damaged, inputs / 4);
  EXPECT_GT(committed, inputs / 4);
  EXPECT_GT(refused, inputs / 20);
}

}  // namespace
}  // namespace jet
