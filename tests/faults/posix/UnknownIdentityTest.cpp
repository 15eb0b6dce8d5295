// Files that the system does not identify: there is no memory for the answer.

#include <filesystem>
#include <sys/stat.h>

#include <gtest/gtest.h>

#include "base/FileIdentity.h"
#include "com/WriteTestSupport.h"
#include "faults/Allocations.h"
#include "faults/Fault.h"
#include "faults/posix/FailingFiles.h"
#include "support/Jpeg.h"

namespace test {
namespace {

constexpr std::size_t kAnswerSize = sizeof(struct stat);

TEST(UnknownIdentity, AnyTwoFilesMayBeOne) {
  const TempFile first(Text("x"));
  const TempFile second(Text("x"));
  EXPECT_FALSE(IsSameFile(first.Path(), {second.Path()}));
  const NoMemoryOf noMemory(kAnswerSize);
  EXPECT_TRUE(IsSameFile(first.Path(), {second.Path()}));
  EXPECT_TRUE(IsSameFile(first.Path(), {first.Path()}));
}

TEST(UnknownIdentity, NothingAndAFolderAreNoFile) {
  const TempFile file(Text("x"));
  const NewPath missing;
  const auto folder = std::filesystem::path(file.Path()).parent_path().u16string();
  const NoMemoryOf noMemory(kAnswerSize);
  EXPECT_FALSE(IsSameFile(file.Path(), {missing.Path()}));
  EXPECT_FALSE(IsSameFile(missing.Path(), {file.Path()}));
  EXPECT_FALSE(IsSameFile(file.Path(), {folder.c_str()}));
  EXPECT_FALSE(IsSameFile(folder.c_str(), {file.Path()}));
}

TEST(UnknownIdentity, SourceIsNotWrittenOver) {
  const LumidexObject object;
  const Bytes contents = Jpeg().Scan().Build();
  const TempFile source(contents);
  Records records;
  records.Ascii(2, 271, "Cam");
  const NoMemoryOf noMemory(kAnswerSize);
  EXPECT_EQ(object.Write(source.Path(), source.Path(), records, true), LMD_E_DST_EXISTS);
  EXPECT_EQ(source.Read(), contents);
}

// The third attribute test is that of the output, which is the source.
TEST(UnknownIdentity, SourceThatSeemsNotToExistIsNotWrittenOver) {
  const LumidexObject object;
  const Bytes contents = Jpeg().Scan().Build();
  const TempFile source(contents);
  const TempFile packet(Text("<x:xmpmeta/>"), ".xmp");
  const FailingFiles files;
  const Fault fault(Call::Attributes, 3, false);
  EXPECT_EQ(object->EmbedXmpFile(source.Path(), source.Path(), packet.Path()), LMD_E_DST_EXISTS);
  EXPECT_TRUE(fault.WasMet());
  EXPECT_EQ(source.Read(), contents);
}

}  // namespace
}  // namespace test
