// Eight threads at once, each with its own object: they answer what one thread answers alone. Under
// ThreadSanitizer the same program shows that nothing which they share is used without a guard.

#include <array>
#include <atomic>
#include <cstddef>
#include <string>
#include <string_view>
#include <thread>
#include <vector>

#include <gtest/gtest.h>

#include "HostRound.h"
#include "com/ComTest.h"
#include "support/Jpeg.h"
#include "support/TempFile.h"

namespace test {
namespace {

constexpr std::size_t kThreads = 8;
constexpr std::size_t kRounds = 4;

// A line for each call: the result code in hexadecimal, then the values.
constexpr std::string_view kAnswers =
    "DllGetClassObject 0\n"
    "CreateInstance 0\n"
    "GetFileType 1\n"
    "Open 0\n"
    "GetInfo16 0 7\n"
    "GetInfo17Triple 0 0.5 -0.75 -0.625\n"
    "GetInfo20Triple 0 1 2 3\n"
    "GetInfo17 0 0 24 0100000002000000fdffffff0400000005000000f8ffffff\n"
    "GetInfo18 0 0 3 010203\n"
    "GetInfo19 0 0 2 0405\n"
    "GetInfo21 0 0 1 06\n"
    "IsPanorama 0 1\n"
    "GetPoseHeading 0 350.5\n"
    "GetPosePitch 0 -1.5\n"
    "GetPoseRoll 0 2\n"
    "ParseBasic 0 8\n"  // five basics, Make, Model, the maker note's bytes
    "EmbedXmpFile 0\n"
    "Open 0\n"
    "GetXmpPacketSize 0 53\n"  // 22 characters and 31
    "GetXmpPacket 0 24\n"
    "EmbedXmpFile 0\n"
    "Open 0\n"
    "IsPanorama 0 1\n"
    "GetPoseHeading 8004c012 0\n"  // a PNG has no parse result
    "GetPosePitch 8004c012 0\n"
    "GetPoseRoll 8004c012 0\n"
    "GetXmpPacketSize 0 22\n"
    "GetXmpPacket 0 22\n"
    "WriteMetadata 0\n"
    "AppendTrailer 0\n"
    "AppendTrailer 8004c032\n"  // marked already
    "Open 0\n"
    "ParseBasic 0 8\n";  // five basics and the three records that were written

const std::vector<std::string> kLog = {
    "[ImgCodec]m_fnParseIPTC in \n\n",
    "[ImgCodec]m_fnParseIPTC out\n\n",
    "[ImgCodec][MDTEST2] LensName: Merge XMP -> MakerNote\n",
};

// Runs a function on all threads; none begins before all are there. They do not sleep meanwhile:
// one that slept would begin late, and the mingw-w64 runtime at times never wakes a thread from a
// latch.
template <class Function>
void OnAllThreads(const Function& function) {
  std::atomic<std::size_t> missing = kThreads;
  std::vector<std::thread> threads;
  for (std::size_t i = 0; i < kThreads; ++i) {
    threads.emplace_back([&missing, &function, i] {
      --missing;
      while (missing != 0) std::this_thread::yield();
      function(i);
    });
  }
  for (std::thread& thread : threads) thread.join();
}

class ThreadsTest : public ComTest {
 private:
  LogOfRounds m_log;
};

TEST_F(ThreadsTest, OneThreadAlone) {
  const HostRound round = PlayHostRound();
  EXPECT_EQ(round.answers, kAnswers);
  EXPECT_EQ(round.log, kLog);
  EXPECT_EQ(round.written.size(), 5U);
}

TEST_F(ThreadsTest, EightThreadsAnswerAsOne) {
  const HostRound alone = PlayHostRound();
  std::array<std::array<HostRound, kRounds>, kThreads> rounds;
  OnAllThreads([&rounds](std::size_t thread) {
    for (HostRound& round : rounds[thread]) round = PlayHostRound();
  });
  for (std::size_t thread = 0; thread < kThreads; ++thread) {
    for (const HostRound& round : rounds[thread]) {
      EXPECT_EQ(round.answers, alone.answers) << "thread " << thread;
      EXPECT_EQ(round.log, alone.log) << "thread " << thread;
      EXPECT_TRUE(round.written == alone.written) << "thread " << thread;
    }
  }
}

TEST_F(ThreadsTest, ReferencesOfOneObjectAreCountedFromAnyThread) {
  Ref<ILumidex> object = NewLumidex();
  OnAllThreads([&object](std::size_t) {
    for (int i = 0; i < 1000; ++i) {
      object->AddRef();
      object->Release();
    }
  });
  EXPECT_EQ(object->AddRef(), 2U);
  EXPECT_EQ(object->Release(), 1U);
}

// Each creation sets the prefix that every line has in front.
TEST_F(ThreadsTest, LinesAreWholeWhileObjectsAreCreated) {
  std::array<HostRound, kThreads> rounds;
  OnAllThreads([&rounds](std::size_t thread) { rounds[thread] = PlayLoggingRound(100); });
  for (const HostRound& round : rounds) {
    ASSERT_EQ(round.log.size(), 100U);
    for (std::size_t i = 0; i < round.log.size(); ++i) {
      EXPECT_EQ(round.log[i], "[ImgCodec]line " + std::to_string(i) + "\n");
    }
  }
}

// Whichever thread comes last deletes the object; the fixture sees that none is left.
TEST_F(ThreadsTest, AnyThreadMayReleaseTheLastReference) {
  const TempFile file(Jpeg().Frame(8, 8).Scan().Build());
  for (int round = 0; round < 20; ++round) {
    Ref<IImageInfo> info;
    ASSERT_EQ(NewLumidex()->ParseBasic(file.Path(), info.Out()), S_OK);
    for (std::size_t i = 1; i < kThreads; ++i) info->AddRef();
    std::atomic<int> deletions = 0;
    OnAllThreads([&, shared = info.Detach()](std::size_t) {
      if (shared->Release() == 0) ++deletions;
    });
    EXPECT_EQ(deletions, 1);
  }
}

}  // namespace
}  // namespace test
