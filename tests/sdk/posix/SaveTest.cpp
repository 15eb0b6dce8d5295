// What saving keeps of a file besides its bytes, and what it leaves when it cannot end.

#include <chrono>
#include <csignal>
#include <random>
#include <string>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

#include <gtest/gtest.h>

#include "WrapperTest.h"
#include "support/Jpeg.h"

namespace test {
namespace {

namespace fs = std::filesystem;

// Large enough that a rewrite takes a while.
Bytes LargeJpeg() {
  return Jpeg().Frame(640, 480).Scan().Raw(Zeros(2'000'000)).Build();
}

lumidex::Edit NameEdit() {
  lumidex::Edit edit;
  edit.records = {{LMD_GROUP_IFD0, 315, std::string("A. Photographer")}};
  return edit;
}

TEST(SaveOnPosix, PermissionsAreKept) {
  const PhotoFolder folder(LargeJpeg());
  ASSERT_EQ(chmod(folder.Photo().c_str(), 0640), 0);
  lumidex::Save(LoadModule(), folder.Photo(), NameEdit());
  EXPECT_EQ(fs::status(folder.Photo()).permissions(), static_cast<fs::perms>(0640));
}

TEST(SaveOnPosix, LinkStaysALink) {
  const PhotoFolder folder(LargeJpeg());
  const fs::path link = folder.Photo().parent_path() / "link.jpg";
  fs::create_symlink("photo.jpg", link);
  lumidex::Save(LoadModule(), link, NameEdit());
  EXPECT_TRUE(fs::is_symlink(link));
  EXPECT_NE(folder.Read(), LargeJpeg());
}

// A limit on the size of files, as a disk without room.
TEST(SaveOnPosix, FullDiskLeavesThePhotograph) {
  const PhotoFolder folder(LargeJpeg());
  const auto module = LoadModule();
  rlimit before = {};
  ASSERT_EQ(getrlimit(RLIMIT_FSIZE, &before), 0);
  const rlimit small = {1'000'000, before.rlim_max};
  const auto handler = std::signal(SIGXFSZ, SIG_IGN);
  ASSERT_EQ(setrlimit(RLIMIT_FSIZE, &small), 0);
  const HRESULT result = CodeOf([&] { lumidex::Save(module, folder.Photo(), NameEdit()); });
  ASSERT_EQ(setrlimit(RLIMIT_FSIZE, &before), 0);
  std::signal(SIGXFSZ, handler);
  EXPECT_EQ(result, LMD_E_WRITE_FAILED);
  EXPECT_EQ(folder.Read(), LargeJpeg());
  EXPECT_EQ(folder.FileCount(), 1);
}

TEST(SaveOnPosix, KillLeavesTheOldFileOrTheNewOne) {
  const Bytes before = LargeJpeg();
  const PhotoFolder reference(before);
  const auto module = LoadModule();
  const auto start = std::chrono::steady_clock::now();
  lumidex::Save(module, reference.Photo(), NameEdit());
  const auto duration = std::chrono::duration_cast<std::chrono::microseconds>(
      std::chrono::steady_clock::now() - start);
  const Bytes after = reference.Read();

  std::mt19937 random(20260101);
  for (int round = 0; round < 40; ++round) {
    const PhotoFolder folder(before);
    const pid_t child = fork();
    ASSERT_GE(child, 0);
    if (child == 0) {
      lumidex::Save(module, folder.Photo(), NameEdit());
      _exit(0);
    }
    std::uniform_int_distribution<std::int64_t> moment(0, 3 * duration.count() / 2);
    std::this_thread::sleep_for(std::chrono::microseconds(moment(random)));
    kill(child, SIGKILL);
    ASSERT_EQ(waitpid(child, nullptr, 0), child);
    const Bytes found = folder.Read();
    EXPECT_TRUE(found == before || found == after) << "round " << round;
  }
}

}  // namespace
}  // namespace test
