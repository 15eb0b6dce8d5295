#include <gtest/gtest.h>

#include <lumidex/ResultCodes.h>

#include "container/FileCopy.h"
#include "support/TempFile.h"

namespace test {
namespace {

Bytes Pattern(std::size_t size) {
  Bytes bytes(size);
  for (std::size_t i = 0; i < size; ++i) bytes[i] = static_cast<std::uint8_t>(i % 251);
  return bytes;
}

// A source of some size and an empty output, both open.
struct Files {
  explicit Files(std::size_t size, const WCHAR* outputMode = LMD_W("wb"))
      : contents(Pattern(size)), sourceFile(contents), outputFile({}) {
    EXPECT_TRUE(OpenForCopy(source, sourceFile.Path(), LMD_W("rb")));
    EXPECT_TRUE(output.Open(outputFile.Path(), outputMode));
  }

  Bytes Part(std::size_t position, std::size_t count) const {
    const auto begin = contents.begin() + static_cast<std::ptrdiff_t>(position);
    return {begin, begin + static_cast<std::ptrdiff_t>(count)};
  }
  Bytes Written() {
    EXPECT_TRUE(output.Close());
    return outputFile.Read();
  }

  Bytes contents;
  TempFile sourceFile;
  TempFile outputFile;
  FileStream source;
  BlockWriter output;
};

TEST(FileCopy, CopiesAnyPart) {
  for (const std::size_t count : {0U, 1U, 65535U, 65536U, 65537U, 200000U}) {
    for (const std::size_t position : {0U, 1U, 5000U}) {
      Files files(300000);
      EXPECT_EQ(CopyBytes(files.source, position, count, files.output), S_OK);
      EXPECT_EQ(files.Written(), files.Part(position, count)) << position << " " << count;
    }
  }
}

TEST(FileCopy, PartsFollowEachOther) {
  Files files(1000);
  EXPECT_EQ(CopyBytes(files.source, 500, 100, files.output), S_OK);
  ASSERT_TRUE(files.output.Write(Text("between")));
  EXPECT_EQ(CopyRest(files.source, 900, files.output), S_OK);
  EXPECT_EQ(files.Written(), Join({files.Part(500, 100), Text("between"), files.Part(900, 100)}));
}

// The parts belong to one state of the file.
TEST(FileCopy, FileInMemoryIsCopiedAsItWasRead) {
  for (const std::size_t now : {0U, 600U, 2000U}) {
    Files files(1000);
    WriteFile(files.sourceFile.Path(), Bytes(now, 'n'));
    EXPECT_EQ(CopyBytes(files.source, 0, 700, files.output), S_OK);
    EXPECT_EQ(CopyRest(files.source, 700, files.output), S_OK);
    EXPECT_EQ(files.Written(), files.contents) << now;
  }
}

TEST(FileCopy, LargerFileThatShrinksIsAFailedRead) {
  for (const std::size_t now : {0U, 65536U, 99999U}) {
    Files files(200000);
    WriteFile(files.sourceFile.Path(), Bytes(now, 'n'));
    EXPECT_EQ(CopyBytes(files.source, 0, 100000, files.output), LMD_E_READ_FAILED) << now;
    EXPECT_EQ(CopyRest(files.source, 100000, files.output), LMD_E_READ_FAILED) << now;
  }
}

TEST(FileCopy, RestOfAFileMayBeEmpty) {
  Files files(1000);
  EXPECT_EQ(CopyRest(files.source, 1000, files.output), S_OK);
  EXPECT_TRUE(files.Written().empty());
}

// It was longer when the position was found.
TEST(FileCopy, RestOfAFileThatEndsBeforeItIsAFailedRead) {
  Files files(1000);
  EXPECT_EQ(CopyRest(files.source, 1001, files.output), LMD_E_READ_FAILED);
  EXPECT_EQ(CopyRest(files.source, 5000, files.output), LMD_E_READ_FAILED);
  EXPECT_TRUE(files.Written().empty());
}

TEST(FileCopy, MissingBytesAreAFailedRead) {
  Files files(1000);
  EXPECT_EQ(CopyBytes(files.source, 0, 1001, files.output), LMD_E_READ_FAILED);
  EXPECT_EQ(CopyBytes(files.source, 2000, 1, files.output), LMD_E_READ_FAILED);
}

TEST(FileCopy, OutputThatTakesNothingShowsOnClosing) {
  Files files(1000, LMD_W("rb"));
  EXPECT_EQ(CopyBytes(files.source, 0, 1000, files.output), S_OK);
  EXPECT_FALSE(files.output.Close());
}

TEST(FileCopy, OutputThatTakesNoBlockIsAFailedWrite) {
  Files files(100000, LMD_W("rb"));
  EXPECT_EQ(CopyBytes(files.source, 0, 100000, files.output), LMD_E_WRITE_FAILED);
}

// What came before the failure is in the file.
TEST(FileCopy, FailedReadLeavesWhatWasCopied) {
  const TempFile outputFile({});
  {
    Files files(100000);
    BlockWriter output;
    ASSERT_TRUE(output.Open(outputFile.Path(), LMD_W("wb")));
    ASSERT_TRUE(output.Write(Text("head")));
    EXPECT_EQ(CopyBytes(files.source, 0, 100001, output), LMD_E_READ_FAILED);
  }
  EXPECT_EQ(outputFile.Read(), Join({Text("head"), Pattern(65536 - 4)}));
}

}  // namespace
}  // namespace test
