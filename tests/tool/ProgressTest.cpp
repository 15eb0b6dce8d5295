#include <gtest/gtest.h>

#include "Progress.h"
#include "tool/ToolTestSupport.h"

namespace {

using std::chrono::seconds;

constexpr const char* kErase = "\r\x1B[K";

TEST(Progress, ShowsAndClearsItsLineOnATerminal) {
  test::CaptureConsole console(true);
  tool::Progress progress(console, seconds(0), seconds(0));
  progress.Working(2, 10, "b.jpg");
  EXPECT_EQ(console.err, std::string(kErase) + "2 of 10  b.jpg");
  progress.Out("text\n");
  EXPECT_EQ(console.err, std::string(kErase) + "2 of 10  b.jpg" + kErase);
  EXPECT_EQ(console.out, "text\n");
}

TEST(Progress, CountsTheFilesThatAWalkFinds) {
  test::CaptureConsole console(true);
  tool::Progress progress(console, seconds(0), seconds(0));
  progress.Found(7);
  EXPECT_EQ(console.err, std::string(kErase) + "7 files found");
}

TEST(Progress, IsGoneAtTheEnd) {
  test::CaptureConsole console(true);
  { tool::Progress(console, seconds(0), seconds(0)).Working(1, 2, "a.jpg"); }
  EXPECT_TRUE(console.err.ends_with(kErase));
}

TEST(Progress, ShortWorkShowsNothing) {
  test::CaptureConsole console(true);
  tool::Progress progress(console, seconds(3600), seconds(0));
  progress.Working(1, 10, "a.jpg");
  progress.Err("text\n");
  EXPECT_EQ(console.err, "text\n");
}

TEST(Progress, ASingleFileShowsNothing) {
  test::CaptureConsole console(true);
  tool::Progress progress(console, seconds(0), seconds(0));
  progress.Working(1, 1, "a.jpg");
  EXPECT_EQ(console.err, "");
}

TEST(Progress, ShowsNothingWithoutATerminal) {
  test::CaptureConsole console(false);
  tool::Progress progress(console, seconds(0), seconds(0));
  progress.Working(1, 10, "a.jpg");
  progress.Found(7);
  EXPECT_EQ(console.err, "");
}

TEST(Progress, DoesNotFlicker) {
  test::CaptureConsole console(true);
  tool::Progress progress(console, seconds(0), seconds(3600));
  progress.Working(1, 10, "a.jpg");
  progress.Working(2, 10, "b.jpg");
  EXPECT_EQ(console.err, std::string(kErase) + "1 of 10  a.jpg");
}

}  // namespace
