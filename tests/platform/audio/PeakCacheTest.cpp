// SPDX-License-Identifier: MIT
// Cached waveforms are found again, and ignored when they are damaged or of another file.
#include "platform/audio/PeakCache.h"

#include "platform/audio/Peaks.h"
#include "tests/platform/audio/support/SoundFiles.h"

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <chrono>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace {

namespace fs = std::filesystem;
using namespace audiotest;
using audio::PeakCache;

class PeakCacheTest : public ::testing::Test {
 protected:
  void SetUp() override { PeakCache::ForgetMemory(); }

  TemporaryFolder folder_;
  std::string path_ = MakeTone(folder_.File("a.wav"), 0.1);
  audio::FileStamp stamp_ = audio::FileStamp::Of(path_);
  audio::Peaks peaks_ = audio::ReadPeaks(path_, [](const audio::Peaks&, std::size_t) { return true; });
  std::string kept_ = folder_.File("cache");
  PeakCache cache_{kept_};

  // Without the memory, as in another run of the program.
  std::optional<audio::Peaks> FindOnDisk(const audio::FileStamp& stamp) const {
    PeakCache::ForgetMemory();
    return cache_.Find(stamp);
  }

  std::vector<fs::path> Kept() const { return {fs::directory_iterator(kept_), fs::directory_iterator()}; }

  audio::FileStamp Named(int number) const { return {"/spots/" + std::to_string(number) + ".mp3", number, 0}; }
};

TEST_F(PeakCacheTest, FindsStoredPeaksInMemoryAndOnDisk) {
  EXPECT_FALSE(cache_.Find(stamp_));
  cache_.Store(stamp_, peaks_);
  ASSERT_TRUE(cache_.Find(stamp_));
  const auto found = FindOnDisk(stamp_);
  ASSERT_TRUE(found);
  EXPECT_EQ(found->bins, peaks_.bins);
  EXPECT_EQ(found->lengthMs, peaks_.lengthMs);
}

TEST_F(PeakCacheTest, ChangedFileIsNotFound) {
  cache_.Store(stamp_, peaks_);
  audio::FileStamp touched = stamp_;
  touched.modifiedNs += 1;
  EXPECT_FALSE(cache_.Find(touched));
  audio::FileStamp grown = stamp_;
  grown.size += 1;
  EXPECT_FALSE(cache_.Find(grown));
}

// Two files whose stamps have the same checksum have the same name in the folder.
TEST_F(PeakCacheTest, PeaksOfAnotherFileWithTheSameNameAreIgnored) {
  cache_.Store(stamp_, peaks_);
  const fs::path mine = Kept().front();
  fs::remove(mine);
  audio::FileStamp other = stamp_;
  other.path.back() = 'x';
  cache_.Store(other, peaks_);
  fs::rename(Kept().front(), mine);
  EXPECT_FALSE(FindOnDisk(stamp_));
}

TEST_F(PeakCacheTest, DamagedFileIsIgnoredAndReplaced) {
  cache_.Store(stamp_, peaks_);
  const std::string file = Kept().front();
  const Bytes good = ReadBytes(file);
  for (std::size_t at = 0; at < good.size(); ++at) {
    Bytes bad = good;
    bad[at] ^= 0x10;
    WriteBytes(file, bad);
    ASSERT_FALSE(FindOnDisk(stamp_)) << "byte " << at;
  }
  for (std::size_t size = 0; size < good.size(); ++size) {
    WriteBytes(file, Bytes(good.begin(), good.begin() + static_cast<std::ptrdiff_t>(size)));
    ASSERT_FALSE(FindOnDisk(stamp_)) << size << " bytes";
  }
  cache_.Store(stamp_, peaks_);
  EXPECT_EQ(ReadBytes(file), good);
}

TEST_F(PeakCacheTest, FolderThatCannotBeCreatedIsIgnored) {
  const PeakCache nowhere(path_ + "/is/geen/map");
  nowhere.Store(stamp_, peaks_);
  PeakCache::ForgetMemory();
  EXPECT_FALSE(nowhere.Find(stamp_));
}

// A folder, and a pipe without a writer.
TEST_F(PeakCacheTest, OtherObjectsWithTheFilesNameAreIgnored) {
  cache_.Store(stamp_, peaks_);
  const fs::path file = Kept().front();
  fs::remove(file);
  fs::create_directories(file / "vol");
  cache_.Store(stamp_, peaks_);
  EXPECT_FALSE(FindOnDisk(stamp_));
  EXPECT_EQ(Kept(), std::vector{file}) << "nothing unfinished stays";
  fs::remove_all(file);
  ASSERT_EQ(::mkfifo(file.c_str(), 0600), 0);
  EXPECT_FALSE(FindOnDisk(stamp_));
}

TEST_F(PeakCacheTest, ReadsFromAReadOnlyFolder) {
  cache_.Store(stamp_, peaks_);
  fs::permissions(folder_.Path(), fs::perms(0755));
  fs::permissions(Kept().front(), fs::perms(0444));
  fs::permissions(kept_, fs::perms(0555));
  const auto answer = [&] {
    constexpr uid_t kNobody = 65534;
    if (::geteuid() == 0 && ::setuid(kNobody) != 0) return 2;
    if (!FindOnDisk(stamp_)) return 3;
    cache_.Store(Named(1), peaks_);
    return FindOnDisk(Named(1)) ? 4 : 0;
  };
  EXPECT_EXIT(::_exit(answer()), ::testing::ExitedWithCode(0), "");
  EXPECT_EQ(Kept().size(), 1U);
  fs::permissions(kept_, fs::perms(0755));
}

TEST_F(PeakCacheTest, LimitsTheFoldersSize) {
  constexpr std::uintmax_t kBlocks = 20;
  const PeakCache small(kept_, kBlocks * PeakCache::kBlockBytes);
  for (int i = 0; i < 50; ++i)
    small.Store(Named(i), peaks_);
  EXPECT_EQ(Kept().size(), kBlocks) << "each takes one block";
  PeakCache::ForgetMemory();
  EXPECT_TRUE(small.Find(Named(49)));
}

TEST_F(PeakCacheTest, DeletesTheLeastRecentlyUsedFileFirst) {
  const PeakCache two(kept_, 2 * PeakCache::kBlockBytes);
  const auto age = [&](int hours) {
    for (const fs::path& file : Kept())
      fs::last_write_time(file, fs::last_write_time(file) - std::chrono::hours(hours));
  };
  two.Store(Named(1), peaks_);
  age(1);
  two.Store(Named(2), peaks_);
  age(1);
  PeakCache::ForgetMemory();
  ASSERT_TRUE(two.Find(Named(1)));  // used now, so the other one is the least recently used
  age(1);
  two.Store(Named(3), peaks_);
  EXPECT_TRUE(FindOnDisk(Named(1)));
  EXPECT_FALSE(FindOnDisk(Named(2)));
  EXPECT_TRUE(FindOnDisk(Named(3)));
}

TEST_F(PeakCacheTest, DeletesIncompleteFilesAndKeepsForeignOnes) {
  fs::create_directories(kept_);
  const std::string half =
      WriteBytes(kept_ + "/.0123456789abcdef.peaks.0123456789abcdef.spotrooster-tmp", Bytes(PeakCache::kBlockBytes));
  const std::string foreign = WriteBytes(kept_ + "/brief.txt", Bytes(PeakCache::kBlockBytes));
  for (const std::string& file : {half, foreign})
    fs::last_write_time(file, fs::last_write_time(file) - std::chrono::hours(1));
  PeakCache(kept_, PeakCache::kBlockBytes).Store(stamp_, peaks_);
  EXPECT_FALSE(fs::exists(half));
  EXPECT_TRUE(fs::exists(foreign));
  EXPECT_TRUE(FindOnDisk(stamp_));
}

TEST_F(PeakCacheTest, FileLargerThanTheLimitIsNotRead) {
  cache_.Store(stamp_, peaks_);
  PeakCache::ForgetMemory();
  EXPECT_FALSE(PeakCache(kept_, 100).Find(stamp_));
}

}  // namespace
