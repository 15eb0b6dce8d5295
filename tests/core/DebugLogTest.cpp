#include <atomic>
#include <mutex>
#include <new>
#include <string>
#include <thread>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "core/DebugLog.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

// What the module holds before anything has used it.
const int g_gateAtLoad = g_bDebugLogEnabled;
const std::string g_prefixAtLoad = g_strLogPrefix;
const WideString g_widePrefixAtLoad = g_wstrLogPrefix;

std::vector<std::string> g_lines;

void KeepLine(const char* line) {
  g_lines.emplace_back(line);
}

class DebugLogTest : public testing::Test {
 protected:
  DebugLogTest() : m_prefixBefore(g_strLogPrefix), m_sinkBefore(SetDebugLogSink(&KeepLine)) {
    g_lines.clear();
    g_bDebugLogEnabled = 1;
    SetDebugLogPrefix("[DEFAULT]");
  }
  ~DebugLogTest() override {
    g_bDebugLogEnabled = m_gateBefore;
    SetDebugLogPrefix(m_prefixBefore.c_str());
    SetDebugLogSink(m_sinkBefore);
  }

 private:
  int m_gateBefore = g_bDebugLogEnabled;
  std::string m_prefixBefore;
  DebugLogSink m_sinkBefore;
};

TEST_F(DebugLogTest, StartsSilentWithTheDefaultPrefix) {
  EXPECT_EQ(g_gateAtLoad, 0);
  EXPECT_EQ(g_prefixAtLoad, "[DEFAULT]");
  EXPECT_EQ(g_widePrefixAtLoad, LMD_W("[DEFAULT]"));
}

TEST_F(DebugLogTest, ClosedGateLetsNothingThroughWhateverTheFormat) {
  g_bDebugLogEnabled = 0;
  DebugLog("plain");
  DebugLog("abc %d %s %f\n", 5, "text", 1.5);
  DebugLog("");
  DebugLog("%s", std::string(5000, 'x').c_str());
  EXPECT_THAT(g_lines, IsEmpty());
}

TEST_F(DebugLogTest, ClosedGateDoesNotTouchTheArguments) {
  g_bDebugLogEnabled = 0;
  int written = -1;
  DebugLog("abc%n", &written);
  EXPECT_EQ(written, -1);
}

TEST_F(DebugLogTest, AnyValueButZeroOpensTheGate) {
  for (const int gate : {1, 2, -1}) {
    g_bDebugLogEnabled = gate;
    DebugLog("%d", gate);
  }
  EXPECT_THAT(g_lines, ElementsAre("[DEFAULT]1\n", "[DEFAULT]2\n", "[DEFAULT]-1\n"));
}

TEST_F(DebugLogTest, LineIsPrefixMessageAndLineFeed) {
  DebugLog("abc %d", 5);
  SetDebugLogPrefix("[ImgCodec]");
  DebugLog("abc %d", 5);
  EXPECT_THAT(g_lines, ElementsAre("[DEFAULT]abc 5\n", "[ImgCodec]abc 5\n"));
}

TEST_F(DebugLogTest, MessageIsNotChanged) {
  DebugLog("");
  DebugLog("m_fnParseIPTC in \n");
  DebugLog("[Tag] %s %u %04X %.2f %%", "text", 7U, 0x2AU, 0.5);
  EXPECT_THAT(g_lines, ElementsAre("[DEFAULT]\n", "[DEFAULT]m_fnParseIPTC in \n\n",
                                   "[DEFAULT][Tag] text 7 002A 0.50 %\n"));
}

TEST_F(DebugLogTest, PrefixIsSetInBothCopies) {
  SetDebugLogPrefix("[ImgCodec]");
  EXPECT_STREQ(g_strLogPrefix, "[ImgCodec]");
  EXPECT_EQ(WideString(g_wstrLogPrefix), LMD_W("[ImgCodec]"));
  SetDebugLogPrefix("[A]");
  EXPECT_STREQ(g_strLogPrefix, "[A]");
  EXPECT_EQ(WideString(g_wstrLogPrefix), LMD_W("[A]"));
}

TEST_F(DebugLogTest, EmptyPrefixLeavesTheMessageAlone) {
  SetDebugLogPrefix("");
  DebugLog("abc");
  EXPECT_THAT(g_lines, ElementsAre("abc\n"));
}

TEST_F(DebugLogTest, LongPrefixIsCut) {
  SetDebugLogPrefix(std::string(100, 'p').c_str());
  DebugLog("%s", std::string(2000, 'x').c_str());
  EXPECT_THAT(g_lines, ElementsAre(std::string(63, 'p') + std::string(1022, 'x') + "\n"));
  EXPECT_EQ(WideString(g_wstrLogPrefix), WideString(63, LMD_W('p')));
}

TEST_F(DebugLogTest, MessageOf1022CharactersFits) {
  DebugLog("%s", (std::string(1021, 'x') + "y").c_str());
  EXPECT_THAT(g_lines, ElementsAre("[DEFAULT]" + std::string(1021, 'x') + "y\n"));
}

TEST_F(DebugLogTest, LongerMessageIsCutAndKeepsPrefixAndLineFeed) {
  const std::string fits(1022, 'x');
  for (const std::size_t length : {1023U, 1024U, 5000U}) {
    g_lines.clear();
    DebugLog("%s", (fits + std::string(length - fits.size(), 'y')).c_str());
    EXPECT_THAT(g_lines, ElementsAre("[DEFAULT]" + fits + "\n")) << length;
  }
}

TEST_F(DebugLogTest, SinkThatThrowsLosesTheLineOnly) {
  SetDebugLogSink([](const char*) { throw std::bad_alloc(); });
  EXPECT_NO_THROW(DebugLog("lost"));
  SetDebugLogSink(&KeepLine);
  DebugLog("kept");
  EXPECT_THAT(g_lines, ElementsAre("[DEFAULT]kept\n"));
}

TEST_F(DebugLogTest, ReplacingTheSinkReturnsTheOneBefore) {
  EXPECT_EQ(SetDebugLogSink(nullptr), &KeepLine);
  const DebugLogSink standard = SetDebugLogSink(&KeepLine);
  EXPECT_NE(standard, nullptr);
  EXPECT_NE(standard, &KeepLine);
}

TEST_F(DebugLogTest, LineHasAWholePrefixWhileAnotherThreadChangesIt) {
  static constexpr int kLines = 2000;
  std::atomic<bool> isDone = false;
  std::thread changer([&isDone] {
    while (!isDone) {
      SetDebugLogPrefix("[AAAAAAAA]");
      SetDebugLogPrefix("[B]");
    }
  });
  SetDebugLogPrefix("[B]");
  for (int i = 0; i < kLines; ++i) DebugLog("x");
  isDone = true;
  changer.join();
  ASSERT_EQ(g_lines.size(), std::size_t{kLines});
  for (const std::string& line : g_lines) {
    EXPECT_TRUE(line == "[AAAAAAAA]x\n" || line == "[B]x\n") << line;
  }
}

}  // namespace
