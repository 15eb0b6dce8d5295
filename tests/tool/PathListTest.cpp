#include <gtest/gtest.h>

#include "PathList.h"
#include "support/Jpeg.h"
#include "tool/ToolTestSupport.h"

namespace {

using test::Argument;
using test::Jpeg;
using test::TempFile;
using test::ToolRun;
using tool::PathsOfList;

using Paths = std::vector<std::string>;

ToolRun RunWithInput(const std::vector<std::string>& arguments,
                     const std::optional<std::string>& input) {
  test::CaptureConsole console;
  console.in = input;
  const int exitCode = tool::RunTool(arguments, console);
  return {exitCode, console.out, console.err};
}

TEST(PathList, EachLineIsAPath) {
  EXPECT_EQ(PathsOfList("a.jpg\nb c.jpg\n"), (Paths{"a.jpg", "b c.jpg"}));
  EXPECT_EQ(PathsOfList("a.jpg\nb.jpg"), (Paths{"a.jpg", "b.jpg"}));
  EXPECT_EQ(PathsOfList("a.jpg\r\nb.jpg\r\n"), (Paths{"a.jpg", "b.jpg"}));
  EXPECT_EQ(PathsOfList("\n\na.jpg\n\r\n"), Paths{"a.jpg"});
  EXPECT_EQ(PathsOfList(""), Paths{});
}

TEST(PathList, NamesAreTakenAsTheyStand) {
  EXPECT_EQ(PathsOfList(" a.jpg \n-\n--json\n\"q\"\n"), (Paths{" a.jpg ", "-", "--json", "\"q\""}));
  EXPECT_EQ(PathsOfList("\xEF\xBB\xBF\xF0\x9F\x8F\x94.jpg\n"), Paths{"\xF0\x9F\x8F\x94.jpg"});
}

TEST(PathList, StandardInputIsAList) {
  const TempFile first(Jpeg().Frame(4, 3).Build());
  const TempFile second(Jpeg().Frame(4, 3).Build());
  const ToolRun run =
      RunWithInput({"type", Argument(first), "-"}, Argument(second) + "\r\nmissing.jpg\n");
  EXPECT_EQ(run.out, Argument(first) + ": JPEG (1)\n" + Argument(second) + ": JPEG (1)\n");
  EXPECT_TRUE(run.err.starts_with("lumidex: missing.jpg: LMD_E_SRC_NOT_FOUND")) << run.err;
  EXPECT_EQ(run.exitCode, 1);
}

TEST(PathList, AFileIsAListBehindTheNamedFiles) {
  const TempFile photo(Jpeg().Frame(4, 3).Build());
  const TempFile other(Jpeg().Frame(4, 3).Build());
  const TempFile list(test::Text(Argument(photo) + "\n"), ".txt");
  const ToolRun run = RunWithInput({"type", "-@", Argument(list), Argument(other)}, std::nullopt);
  EXPECT_EQ(run.out, Argument(other) + ": JPEG (1)\n" + Argument(photo) + ": JPEG (1)\n");
  EXPECT_EQ(run.exitCode, 0);
}

TEST(PathList, AListMayBeEmpty) {
  const ToolRun run = RunWithInput({"show", "--json", "-"}, "");
  EXPECT_EQ(run.out + run.err, "");
  EXPECT_EQ(run.exitCode, 0);
}

TEST(PathList, AListThatCannotBeReadEndsTheRun) {
  const ToolRun input = RunWithInput({"type", "-"}, std::nullopt);
  EXPECT_TRUE(input.err.starts_with("lumidex: -: LMD_E_READ_FAILED")) << input.err;
  EXPECT_EQ(input.exitCode, 1);
  const ToolRun file = RunWithInput({"type", "-@", "missing.txt", "a.jpg"}, std::nullopt);
  EXPECT_TRUE(file.err.starts_with("lumidex: missing.txt: LMD_E_SRC_NOT_FOUND")) << file.err;
  EXPECT_EQ(file.err.find('\n'), file.err.size() - 1);
  EXPECT_EQ(file.exitCode, 1);
}

TEST(PathList, WithoutAnyFileIsWrongUsage) {
  const ToolRun run = RunWithInput({"show"}, "a.jpg\n");
  EXPECT_EQ(run.err, "lumidex: FILE or -@ is required; see lumidex show --help\n");
  EXPECT_EQ(run.exitCode, 2);
}

}  // namespace
