#include <filesystem>

#include <gtest/gtest.h>

#include "support/Jpeg.h"
#include "tool/ToolTestSupport.h"

namespace {

using test::Argument;
using test::Bytes;
using test::RunTool;
using test::ToolRun;

constexpr std::size_t kKeptCharacters = 259;

// A file whose path has more characters than the object keeps, with one outside the basic plane.
class LongPath : public testing::Test {
 protected:
  LongPath() : m_folder(test::TempPath("")) {}
  ~LongPath() override {
    std::error_code ignored;
    std::filesystem::remove_all(m_folder, ignored);
  }

  std::string Write(const Bytes& bytes) {
    const auto folder = m_folder / std::string(130, 'a') / std::string(130, 'b');
    std::filesystem::create_directories(folder);
    const auto text = (folder / u"\U0001F304.file").u16string();
    const WideString path(text.begin(), text.end());
    test::WriteFile(path, bytes);
    EXPECT_GT(path.size(), kKeptCharacters);
    m_end = "; the path is too long, with " + std::to_string(path.size()) + " characters\n";
    return Argument(path);
  }

  std::filesystem::path m_folder;
  std::string m_end;  // of the line that says so
};

TEST_F(LongPath, AJpegIsReadAsAnyOther) {
  const std::string file = Write(test::Jpeg().Frame(4, 3).Build());
  EXPECT_EQ(RunTool({"type", file}).out, file + ": JPEG (1)\n");
  const ToolRun run = RunTool({"show", "--records", file});
  EXPECT_TRUE(run.out.starts_with(file + "\n")) << run.out;
  EXPECT_EQ(run.exitCode, 0);
}

TEST_F(LongPath, AnAnswerThatTheModuleCannotGiveIsOneLine) {
  const std::string file = Write({0x89, 'P', 'N', 'G', 0x0D, 0x0A, 0x1A, 0x0A});
  for (const char* command : {"panorama", "xmp"}) {
    const ToolRun run = RunTool({command, file});
    EXPECT_EQ(run.out, "") << command;
    EXPECT_TRUE(run.err.starts_with("lumidex: " + file + ": LMD_E_OPEN_FAILED")) << run.err;
    EXPECT_TRUE(run.err.ends_with(m_end)) << run.err;
    EXPECT_EQ(run.err.find('\n'), run.err.size() - 1);
    EXPECT_EQ(run.exitCode, 1);
  }
}

}  // namespace
