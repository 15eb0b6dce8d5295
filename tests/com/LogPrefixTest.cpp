// The debug log's prefix as object creation sets it.

#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "ComTest.h"
#include "core/DebugLog.h"

namespace test {
namespace {

// What the module holds before anything has used it.
const std::string g_prefixAtLoad = g_strLogPrefix;
const WideString g_widePrefixAtLoad = g_wstrLogPrefix;

std::vector<std::string> g_lines;

void KeepLine(const char* line) {
  g_lines.emplace_back(line);
}

class LogPrefixTest : public ComTest {
 protected:
  LogPrefixTest() : m_sinkBefore(SetDebugLogSink(&KeepLine)) { g_lines.clear(); }
  ~LogPrefixTest() override {
    g_bDebugLogEnabled = 0;
    SetDebugLogSink(m_sinkBefore);
  }

 private:
  DebugLogSink m_sinkBefore;
};

TEST_F(LogPrefixTest, IsTheDefaultUntilAnObjectIsCreated) {
  EXPECT_EQ(g_prefixAtLoad, "[DEFAULT]");
  EXPECT_EQ(g_widePrefixAtLoad, LMD_W("[DEFAULT]"));
}

TEST_F(LogPrefixTest, AFactoryLeavesItAlone) {
  SetDebugLogPrefix("[other]");
  NewFactory();
  EXPECT_STREQ(g_strLogPrefix, "[other]");
}

TEST_F(LogPrefixTest, EveryCreationSetsBothCopies) {
  for (int i = 0; i < 2; ++i) {
    SetDebugLogPrefix("[other]");
    NewLumidex();
    EXPECT_STREQ(g_strLogPrefix, "[ImgCodec]");
    EXPECT_EQ(WideString(g_wstrLogPrefix), LMD_W("[ImgCodec]"));
  }
}

TEST_F(LogPrefixTest, LineAfterCreationHasThePrefixDirectlyInFront) {
  SetDebugLogPrefix("[DEFAULT]");
  g_bDebugLogEnabled = 1;
  DebugLog("abc %d", 5);
  NewLumidex();
  DebugLog("abc %d", 5);
  EXPECT_EQ(g_lines, (std::vector<std::string>{"[DEFAULT]abc 5\n", "[ImgCodec]abc 5\n"}));
}

TEST_F(LogPrefixTest, NoOperationOpensTheGate) {
  const Ref<ILumidex> object = NewLumidex();
  std::uint32_t value = 0;
  object->Open(nullptr);
  object->GetInfo16(&value);
  EXPECT_EQ(g_bDebugLogEnabled, 0);
  EXPECT_TRUE(g_lines.empty());
}

}  // namespace
}  // namespace test
