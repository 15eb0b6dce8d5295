#include <gtest/gtest.h>

#include "CommandLine.h"
#include "tool/ToolTestSupport.h"

namespace {

using test::Contains;
using test::RunTool;
using test::ToolRun;

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
  ExpectUsageError({"show", "--json", "--cut", "80", "a.jpg"});
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

TEST(CommandLine, CutIsAPositiveNumber) {
  for (const char* text : {"0", "-1", "many", "80x", ""}) {
    ExpectUsageError({"show", "--cut", text, "a.jpg"});
  }
}

TEST(CommandLine, HelpGoesToStdout) {
  const ToolRun all = RunTool({"--help"});
  EXPECT_EQ(all.exitCode, 0);
  EXPECT_EQ(all.err, "");
  for (const char* command : {"show", "type", "panorama", "mark", "xmp", "embed", "write"}) {
    EXPECT_TRUE(Contains(all.out, command)) << command;
  }
  const ToolRun show = RunTool({"show", "--help"});
  EXPECT_EQ(show.exitCode, 0);
  EXPECT_TRUE(Contains(show.out, "Usage: lumidex show "));
  for (const char* option :
       {"--records", "--json", "--raw", "--store", "--trace", "--cut", "--mask"}) {
    EXPECT_TRUE(Contains(show.out, option)) << option;
  }
}

TEST(CommandLine, HelpOfWriteNamesItsOptions) {
  const ToolRun write = RunTool({"write", "--help"});
  EXPECT_EQ(write.exitCode, 0);
  EXPECT_TRUE(Contains(write.out, "Usage: lumidex write [OPTIONS] SRC DST")) << write.out;
  for (const char* option : {"--set NAME=VALUE", "--thumbnail JPEG", "--xmp FILE", "--overwrite",
                             "--show", "GPSPosition"}) {
    EXPECT_TRUE(Contains(write.out, option)) << option;
  }
}

TEST(CommandLine, WritingCommandsNeedAllTheirFiles) {
  ExpectUsageError({"xmp"});
  ExpectUsageError({"xmp", "a.jpg", "b.jpg"});
  ExpectUsageError({"embed", "a.jpg", "a.xmp"});
  ExpectUsageError({"embed", "a.jpg", "a.xmp", "b.jpg", "c.jpg"});
  ExpectUsageError({"embed", "a.jpg", "a.xmp", "b.jpg", "--overwrite"});
  ExpectUsageError({"write", "a.jpg", "--set", "Make=A"});
  ExpectUsageError({"write", "a.jpg", "b.jpg", "c.jpg", "--set", "Make=A"});
}

void ExpectUsageMessage(const std::vector<std::string>& arguments, const std::string& message) {
  ExpectUsageError(arguments);
  EXPECT_EQ(RunTool(arguments).err, "lumidex: " + message + "; see lumidex write --help\n");
}

TEST(CommandLine, WriteNeedsSomethingToWrite) {
  ExpectUsageMessage({"write", "a.jpg", "b.jpg"}, "--set or --xmp is required");
  ExpectUsageMessage({"write", "a.jpg", "b.jpg", "--xmp", "p.xmp", "--thumbnail", "t.jpg"},
                     "--thumbnail requires --set");
}

TEST(CommandLine, WrongAssignmentIsWrongUsage) {
  ExpectUsageMessage({"write", "a.jpg", "b.jpg", "--set", "Make"},
                     "--set: 'Make' is not NAME=VALUE");
  ExpectUsageMessage({"write", "a.jpg", "b.jpg", "--set", "Foo=1"},
                     "--set: 'Foo' is no tag that show names");
  ExpectUsageMessage({"write", "a.jpg", "b.jpg", "--set", "Make=A", "--set", "LensMake=A"},
                     "--set: 'LensMake' is a tag that is not written");
  ExpectUsageMessage({"write", "a.jpg", "b.jpg", "--set", "FNumber=f/\n"},
                     "--set: FNumber: 'f/\\n' is no number from 0 to 4294967295, such as 2.8 or "
                     "28/10");
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

TEST(CommandLine, AssignmentsMayStandAnywhere) {
  for (const std::vector<std::string>& arguments : std::vector<std::vector<std::string>>{
           {"write", "--set", "Make=A", "a.jpg", "b.jpg", "--overwrite", "--set", "Model=[B]"},
           {"write", "a.jpg", "--set=Make=A", "b.jpg", "--set", "Model=[B]", "--overwrite"}}) {
    const tool::Options options = Parsed(arguments);
    EXPECT_EQ(options.command, tool::Command::Write);
    EXPECT_EQ(options.source, "a.jpg");
    EXPECT_EQ(options.output, "b.jpg");
    ASSERT_EQ(options.newRecords.size(), 2U);
    EXPECT_EQ(options.newRecords[0].m_nId, 271U);
    EXPECT_EQ(options.newRecords[1].m_nSize, 4U);
    EXPECT_TRUE(options.overwrite);
    EXPECT_FALSE(options.showOutput || options.packet || options.thumbnail);
  }
}

TEST(CommandLine, FilesOfTheWritingCommands) {
  const tool::Options embed = Parsed({"embed", "a.jpg", "p.xmp", "b.jpg", "--show"});
  EXPECT_EQ(embed.source, "a.jpg");
  EXPECT_EQ(embed.packet, "p.xmp");
  EXPECT_EQ(embed.output, "b.jpg");
  EXPECT_TRUE(embed.showOutput);

  const tool::Options write = Parsed(
      {"write", "a.jpg", "b.jpg", "--set", "Make=A", "--thumbnail", "t.jpg", "--xmp", "p.xmp"});
  EXPECT_EQ(write.packet, "p.xmp");
  EXPECT_EQ(write.thumbnail, "t.jpg");
  EXPECT_EQ(Parsed({"xmp", "mark"}).source, "mark");
}

TEST(CommandLine, EachCommandIsRecognised) {
  EXPECT_EQ(Parsed({"show", "a"}).command, tool::Command::Show);
  EXPECT_EQ(Parsed({"type", "a"}).command, tool::Command::Type);
  EXPECT_EQ(Parsed({"panorama", "a"}).command, tool::Command::Panorama);
  EXPECT_EQ(Parsed({"mark", "a"}).command, tool::Command::Mark);
  EXPECT_EQ(Parsed({"xmp", "a"}).command, tool::Command::Xmp);
  EXPECT_EQ(Parsed({"embed", "a", "b", "c"}).command, tool::Command::Embed);
  EXPECT_EQ(Parsed({"write", "a", "b", "--xmp", "c"}).command, tool::Command::Write);
}

}  // namespace
