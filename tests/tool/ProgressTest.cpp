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

std::string After(std::size_t index, std::size_t count, std::chrono::milliseconds elapsed) {
  return tool::ProgressText(index, count, elapsed, "a.jpg");
}

TEST(Progress, TellsRateAndRemainingTime) {
  EXPECT_EQ(After(51, 100, seconds(10)), "51 of 100  5 files/s  10 s left  a.jpg");
  EXPECT_EQ(After(4, 10, seconds(2)), "4 of 10  1.5 files/s  5 s left  a.jpg");
  EXPECT_EQ(After(21, 251, seconds(20)), "21 of 251  1 files/s  3 min 51 s left  a.jpg");
  EXPECT_EQ(After(11, 10010, seconds(5)), "11 of 10010  2 files/s  1 h 23 min left  a.jpg");
  EXPECT_EQ(After(1001, 1120, seconds(2)), "1001 of 1120  500 files/s  1 s left  a.jpg");
  EXPECT_EQ(After(11, 70, seconds(10)), "11 of 70  1 files/s  1 min 0 s left  a.jpg");
}

TEST(Progress, NoRateBeforeASecondOrTheFirstFile) {
  EXPECT_EQ(After(50, 100, std::chrono::milliseconds(999)), "50 of 100  a.jpg");
  EXPECT_EQ(After(1, 100, seconds(5)), "1 of 100  a.jpg");
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
