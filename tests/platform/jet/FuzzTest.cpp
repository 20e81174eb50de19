// A short run of the fuzz target over files and their mutations: whatever lies in a file, reading it ends, with an
// Error at most.
#include <gtest/gtest.h>

#include <fstream>
#include <iterator>
#include <random>

#include "tests/platform/jet/SpotsImage.h"
#include "tests/platform/jet/support/Samples.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace {

using jet::Bytes;
using Random = std::mt19937;

std::size_t Below(Random& random, std::size_t end) {
  return random() % end;
}

// Changes a few bytes, mostly to values that hurt: near zero, near the largest, one bit off, a copy of another place.
void Mutate(Bytes& file, Random& random) {
  const std::size_t changes = 1 + Below(random, 8);
  for (std::size_t i = 0; i < changes; ++i) {
    // Page heads are where offsets and counts lie.
    const std::size_t page = Below(random, file.size() / 4096) * 4096;
    const std::size_t at = page + Below(random, Below(random, 2) == 0 ? 64 : 4096);
    switch (Below(random, 5)) {
      case 0:
        file[at] ^= static_cast<std::uint8_t>(1 << Below(random, 8));
        break;
      case 1:
        file[at] = static_cast<std::uint8_t>(Below(random, 4));
        break;
      case 2:
        file[at] = static_cast<std::uint8_t>(0xFF - Below(random, 2));
        break;
      case 3:
        file[at] = file[Below(random, file.size())];
        break;
      default:
        file[at] = static_cast<std::uint8_t>(random());
    }
  }
}

void RunMutations(const Bytes& file, unsigned seed, int count) {
  Random random(seed);
  for (int i = 0; i < count; ++i) {
    Bytes mutated = file;
    Mutate(mutated, random);
    LLVMFuzzerTestOneInput(mutated.data(), mutated.size());
  }
}

TEST(ReadingWithoutTrust, MutationsOfAMadeFileEnd) {
  const Bytes file = SpotsImage().image.File();
  RunMutations(file, 1, 3000);
}

TEST(ReadingWithoutTrust, EveryTruncationEnds) {
  const Bytes file = SpotsImage().image.File();
  for (std::size_t size = 0; size < file.size(); size += 97)
    LLVMFuzzerTestOneInput(file.data(), size);
}

TEST(ReadingWithoutTrust, MutationsOfRealFilesEnd) {
  if (!witness::SampleFolder()) GTEST_SKIP() << "SPOTROOSTER_MDB_SAMPLES names no folder of sample files";
  for (const std::string& name : witness::SampleNames()) {
    std::ifstream stream(*witness::SampleFolder() + "/" + name + ".mdb", std::ios::binary);
    const Bytes file((std::istreambuf_iterator<char>(stream)), std::istreambuf_iterator<char>());
    RunMutations(file, 2, file.size() > 1000000 ? 5 : 60);
  }
}

}  // namespace
