#include <gtest/gtest.h>

#include "CommandLine.h"
#include "tool/ToolTestSupport.h"

namespace {

using test::RunTool;
using test::ToolRun;

bool Contains(const std::string& text, const std::string& part) {
  return text.find(part) != std::string::npos;
}

// Usage errors: exit code 2, nothing on stdout, one line on stderr.
void ExpectUsageError(const std::vector<std::string>& arguments) {
  const ToolRun run = RunTool(arguments);
  EXPECT_EQ(run.exitCode, 2);
  EXPECT_EQ(run.out, "");
  EXPECT_TRUE(run.err.starts_with("lumidex: ")) << run.err;
  EXPECT_EQ(run.err.find('\n'), run.err.size() - 1) << run.err;
}

TEST(CommandLine, WrongUsageExitsWithTwo) {
  ExpectUsageError({});
  ExpectUsageError({"destroy", "a.jpg"});
  ExpectUsageError({"show"});
  ExpectUsageError({"type"});
  ExpectUsageError({"show", "--colour", "a.jpg"});
  ExpectUsageError({"type", "--json", "a.jpg"});
}

TEST(CommandLine, OptionsThatContradictEachOtherAreWrongUsage) {
  ExpectUsageError({"show", "--json", "--records", "a.jpg"});
  ExpectUsageError({"show", "--raw", "a.jpg"});
  ExpectUsageError({"show", "--store", "a.jpg"});
  ExpectUsageError({"show", "--records", "--trace", "a.jpg"});
}

TEST(CommandLine, MaskMustBeANumberOf32Bits) {
  EXPECT_EQ(tool::ParseMask("0"), 0U);
  EXPECT_EQ(tool::ParseMask("1247"), 1247U);
  EXPECT_EQ(tool::ParseMask("0x4DF"), 0x4DFU);
  EXPECT_EQ(tool::ParseMask("0XeFf"), 0xEFFU);
  EXPECT_EQ(tool::ParseMask("010"), 10U);
  EXPECT_EQ(tool::ParseMask("4294967295"), 0xFFFFFFFFU);
  for (const char* text : {"", "0x", "4294967296", "-1", "+1", "1f", " 1", "1 "}) {
    EXPECT_EQ(tool::ParseMask(text), std::nullopt) << text;
  }
  ExpectUsageError({"show", "--mask", "many", "a.jpg"});
}

TEST(CommandLine, HelpGoesToStdout) {
  const ToolRun all = RunTool({"--help"});
  EXPECT_EQ(all.exitCode, 0);
  EXPECT_EQ(all.err, "");
  for (const char* command : {"show", "type", "panorama", "mark"}) {
    EXPECT_TRUE(Contains(all.out, command)) << command;
  }
  const ToolRun show = RunTool({"show", "--help"});
  EXPECT_EQ(show.exitCode, 0);
  EXPECT_TRUE(Contains(show.out, "Usage: lumidex show "));
  for (const char* option : {"--records", "--json", "--raw", "--store", "--trace", "--mask"}) {
    EXPECT_TRUE(Contains(show.out, option)) << option;
  }
}

TEST(CommandLine, VersionIsPrinted) {
  const ToolRun run = RunTool({"--version"});
  EXPECT_EQ(run.exitCode, 0);
  EXPECT_TRUE(run.out.starts_with("lumidex ")) << run.out;
}

tool::Options Parsed(const std::vector<std::string>& arguments) {
  test::CaptureConsole console;
  tool::Options options;
  EXPECT_EQ(tool::ParseCommandLine(arguments, console, options), std::nullopt) << console.err;
  return options;
}

TEST(CommandLine, OptionsAndFilesMix) {
  const tool::Options options =
      Parsed({"show", "a.jpg", "--json", "--raw", "--mask", "0x20", "b.jpg", "--store", "--trace"});
  EXPECT_EQ(options.command, tool::Command::Show);
  EXPECT_EQ(options.files, (std::vector<std::string>{"a.jpg", "b.jpg"}));
  EXPECT_TRUE(options.json && options.raw && options.store && options.trace);
  EXPECT_FALSE(options.records);
  EXPECT_EQ(options.mask, 0x20U);
}

TEST(CommandLine, PathMayBeginWithASlash) {
  EXPECT_EQ(Parsed({"type", "/photos/a.jpg"}).files, std::vector<std::string>{"/photos/a.jpg"});
}

TEST(CommandLine, FileMayHaveTheNameOfACommand) {
  const tool::Options options = Parsed({"show", "type", "mark"});
  EXPECT_EQ(options.command, tool::Command::Show);
  EXPECT_EQ(options.files, (std::vector<std::string>{"type", "mark"}));
}

TEST(CommandLine, FileMayLookLikeAnOptionAfterTwoDashes) {
  EXPECT_EQ(Parsed({"mark", "--", "--json"}).files, std::vector<std::string>{"--json"});
}

TEST(CommandLine, EachCommandIsRecognised) {
  EXPECT_EQ(Parsed({"show", "a"}).command, tool::Command::Show);
  EXPECT_EQ(Parsed({"type", "a"}).command, tool::Command::Type);
  EXPECT_EQ(Parsed({"panorama", "a"}).command, tool::Command::Panorama);
  EXPECT_EQ(Parsed({"mark", "a"}).command, tool::Command::Mark);
}

}  // namespace
