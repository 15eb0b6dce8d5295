#include <filesystem>

#include <gtest/gtest.h>

#include "FileList.h"
#include "support/Jpeg.h"
#include "tool/ToolTestSupport.h"

namespace {

using test::Argument;
using test::Bytes;

// A folder with files of the given names, removed when the test ends.
class Folder {
 public:
  explicit Folder(const std::vector<std::string>& names) : m_path(test::TempPath("")) {
    std::filesystem::create_directories(m_path);
    for (const std::string& name : names) {
      const auto path = m_path / name;
      std::filesystem::create_directories(path.parent_path());
      const auto text = path.u16string();
      test::WriteFile({text.begin(), text.end()}, test::Jpeg().Frame(4, 3).Build());
    }
  }
  ~Folder() {
    std::error_code ignored;
    std::filesystem::remove_all(m_path, ignored);
  }
  Folder(const Folder&) = delete;
  Folder& operator=(const Folder&) = delete;

  std::string Path() const {
    const auto text = m_path.u16string();
    return Argument(WideString(text.begin(), text.end()));
  }

 private:
  std::filesystem::path m_path;
};

std::vector<std::string> List(const std::vector<std::string>& arguments,
                              tool::FolderFiles wanted = tool::FolderFiles::Images) {
  test::CaptureConsole console;
  tool::Progress progress(console);
  return tool::ListFiles(arguments, wanted, progress);
}

TEST(FileList, FolderStandsForItsPhotographsInOrder) {
  const Folder folder({"b.JPG", "a.png", "notes.txt", "sub/c.tiff", "sub/deep/d.jif", "e.jpe",
                       "f.jfif", "g.tif", "h.jpeg", "jpg", "i.jpg.bak", "j.exif"});
  const std::string root = folder.Path() + "/";
  EXPECT_EQ(List({folder.Path()}),
            (std::vector<std::string>{
                root + "a.png", root + "b.JPG", root + "e.jpe", root + "f.jfif", root + "g.tif",
                root + "h.jpeg", root + "j.exif", root + "sub/c.tiff", root + "sub/deep/d.jif"}));
}

TEST(FileList, SlashAtTheEndIsNotDoubled) {
  const Folder folder({"a.jpg"});
  EXPECT_EQ(List({folder.Path() + "/"}), std::vector<std::string>{folder.Path() + "/a.jpg"});
}

TEST(FileList, NamedFilesStayAsGivenAndInOrder) {
  EXPECT_EQ(List({"z.txt", "missing.jpg", "a.jpg"}),
            (std::vector<std::string>{"z.txt", "missing.jpg", "a.jpg"}));
}

TEST(FileList, OnlyJpegsWhereOnlyJpegsAreWanted) {
  const Folder folder({"a.jpg", "b.png", "c.tif"});
  EXPECT_EQ(List({folder.Path()}, tool::FolderFiles::Jpegs),
            std::vector<std::string>{folder.Path() + "/a.jpg"});
}

TEST(FileList, FolderMayBeNamedLikeAPhotograph) {
  const Folder folder({"d.jpg/e.jpg"});
  EXPECT_EQ(List({folder.Path()}), std::vector<std::string>{folder.Path() + "/d.jpg/e.jpg"});
}

TEST(FileList, NamesAreUtf8) {
  test::CaptureConsole console;
  const Folder folder({});
  const std::string name = folder.Path() + "/\xC3\xBC\xE5\xB1\xB1.jpg";
  test::WriteFile(tool::WideFromUtf8(name), test::Jpeg().Frame(4, 3).Build());
  EXPECT_EQ(List({folder.Path()}), std::vector<std::string>{name});
  EXPECT_EQ(test::RunTool({"type", name}).out, name + ": JPEG (1)\n");
}

TEST(FileList, FolderWithoutPhotographsIsReported) {
  const Folder folder({"notes.txt"});
  const test::ToolRun run = test::RunTool({"show", "--json", folder.Path()});
  EXPECT_EQ(run.out, "{\"file\":" + test::JsonText(folder.Path()) +
                         ",\"type\":0,\"result\":\"0x8004C001\",\"records\":[]}\n");
  EXPECT_EQ(run.exitCode, 1);
}

}  // namespace
