// SPDX-License-Identifier: MIT
// A short run of the fuzz target over files and their mutations: reading always ends, at most with an Error.
#include "tests/fuzz/FuzzTarget.h"
#include "tests/fuzz/PageMutator.h"
#include "tests/platform/jet/SpotsImage.h"
#include "tests/platform/jet/support/Samples.h"

#include <gtest/gtest.h>

#include <fstream>
#include <iterator>
#include <string>

namespace {

using jet::Bytes;
void RunMutations(const Bytes& file, unsigned seed, int count) {
  fuzz::PageMutator mutator(seed);
  for (int i = 0; i < count; ++i) {
    Bytes mutated = file;
    mutator.Mutate(mutated);
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
