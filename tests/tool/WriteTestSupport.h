#ifndef LUMIDEX_TESTS_TOOL_WRITETESTSUPPORT_H_
#define LUMIDEX_TESTS_TOOL_WRITETESTSUPPORT_H_

// What the tests of the writing commands share.

#include <string>
#include <string_view>
#include <vector>

#include <gtest/gtest.h>

#include "ResultNames.h"
#include "Text.h"
#include "support/TempFile.h"
#include "tool/ToolTestSupport.h"

namespace test {

// A path for a file that the tool is to write: nothing stands there before, nothing stays behind.
class OutputPath {
 public:
  explicit OutputPath(std::string_view ending = ".jpg")
      : m_path(TempPath("") + tool::WideFromUtf8(ending)) {}
  ~OutputPath() { RemoveFile(m_path); }
  OutputPath(const OutputPath&) = delete;
  OutputPath& operator=(const OutputPath&) = delete;

  std::string Argument() const { return tool::Utf8FromWide(m_path); }
  bool Exists() const { return GetFileAttributesW(m_path.c_str()) != INVALID_FILE_ATTRIBUTES; }
  Bytes Read() const { return ReadFile(m_path); }

 private:
  WideString m_path;
};

// Failures of the module: exit code 1, nothing on stdout, one line about one file.
inline void ExpectFailure(const std::vector<std::string>& arguments, const std::string& file,
                          HRESULT code) {
  const ToolRun run = RunTool(arguments);
  EXPECT_EQ(run.exitCode, 1);
  EXPECT_EQ(run.out, "");
  EXPECT_EQ(run.err, "lumidex: " + file + ": " + tool::DescribeResult(code) + "\n");
}

}  // namespace test

#endif  // LUMIDEX_TESTS_TOOL_WRITETESTSUPPORT_H_
