#include "Writing.h"

#include "Files.h"
#include "Floor.h"
#include "Measure.h"
#include "Module.h"
#include "Text.h"
#include "inputs/XmpPackets.h"
#include "support/Jpeg.h"
#include "support/Png.h"
#include "support/Records.h"
#include "support/TempFile.h"
#include "support/Tiff.h"

namespace bench {
namespace {

constexpr Patience kPatience = {std::chrono::seconds(10), 11, 201};
constexpr std::size_t kPacketSize = 4096;
constexpr std::size_t kLargeFile = 8U * 1024 * 1024;
constexpr std::int32_t kJpegType = 1;

constexpr std::uint32_t kIfd0Group = 2;
constexpr std::uint32_t kExifGroup = 4;
constexpr std::uint32_t kGpsGroup = 8;

test::Records TypicalRecords() {
  test::Records records;
  records.Ascii(kIfd0Group, 271, "Maker")
      .Ascii(kIfd0Group, 272, "Camera 300")
      .Integers(kIfd0Group, 274, {1})
      .Ascii(kIfd0Group, 306, "2023:02:23 19:35:15")
      .Rationals(kExifGroup, 33434, {{1, 250}})
      .Rationals(kExifGroup, 33437, {{28, 10}})
      .Integers(kExifGroup, 34855, {400})
      .Ascii(kExifGroup, 36867, "2023:02:23 19:35:15")
      .Rationals(kExifGroup, 37386, {{700, 10}})
      .Ascii(kGpsGroup, 1, "N")
      .Rationals(kGpsGroup, 2, {{44, 1}, {24, 1}, {1234, 100}})
      .Ascii(kGpsGroup, 3, "E")
      .Rationals(kGpsGroup, 4, {{8, 1}, {54, 1}, {5678, 100}});
  return records;
}

// What every write of a run shares.
struct Writer {
  ILumidex& lumidex;
  const test::Records& records;
  const WCHAR* packet;
  WideString output;

  HRESULT Write(const WCHAR* source) const {
    return lumidex.WriteMetadata(source, output.c_str(), records.Count(), records.Data(), 0, 0,
                                 nullptr, TRUE);
  }
  HRESULT Embed(const WCHAR* source) const {
    return lumidex.EmbedXmpFile(source, output.c_str(), packet);
  }
  void RemoveOutput() const { test::RemoveFile(output); }
};

// An operation that begins without an output, like every other.
void Add(Subject& subject, const std::string& name, const Writer& writer,
         std::function<void()> run) {
  subject.operations.push_back({name, std::move(run), [&writer] { writer.RemoveOutput(); }});
}

// `kind` ends the names of what is written into the file.
Subject SubjectOf(const std::string& name, const WCHAR* path, const std::string& kind,
                  const Writer& writer) {
  Subject subject = {name, {}};
  Add(subject, "copy", writer, [path, &writer] { CopyFile64K(path, writer.output.c_str()); });
  writer.RemoveOutput();
  if (SUCCEEDED(writer.Write(path))) {
    Add(subject, "WriteMetadata, " + kind, writer, [path, &writer] { writer.Write(path); });
  }
  writer.RemoveOutput();
  if (SUCCEEDED(writer.Embed(path))) {
    Add(subject, "EmbedXmpFile, " + kind, writer, [path, &writer] { writer.Embed(path); });
  }
  return subject;
}

std::vector<Subject> SubjectsOf(const std::vector<File>& files, const Writer& writer) {
  std::vector<Subject> subjects;
  for (const File& file : files) {
    const WCHAR* const path = file.path.c_str();
    const bool isJpeg = writer.lumidex.GetFileType(path) == kJpegType;
    subjects.push_back(SubjectOf(file.name, path, isJpeg ? "JPEG" : "PNG", writer));
    if (subjects.back().operations.size() == 1) subjects.pop_back();
  }
  return subjects;
}

test::Bytes LargeJpeg() {
  const test::Tiff tiff(ByteOrder::LittleEndian);
  return test::Jpeg()
      .Exif(tiff.Build({tiff.Ascii(271, "Maker")}))
      .Frame(4000, 3000)
      .Scan()
      .Raw(test::Zeros(kLargeFile))
      .Build();
}

test::Bytes LargePng() {
  return test::Png().Header().Chunk("IDAT", test::Zeros(kLargeFile)).End().Build();
}

}  // namespace

void MeasureWriting(const std::string& module, const std::string& folder,
                    const std::string& outputs) {
  const auto lumidex = CreateFromModule(module);
  const test::Records records = TypicalRecords();
  const test::TempFile packet(test::Text(FlatPacket(kPacketSize)), ".xmp");
  const Writer writer = {*lumidex, records, packet.Path(), tool::WideFromUtf8(outputs + "/output")};
  const std::vector<File> files = FilesOf(folder, tool::FolderFiles::Images);
  const test::TempFile jpeg(LargeJpeg());
  const test::TempFile png(LargePng(), ".png");
  std::vector<Subject> subjects = SubjectsOf(files, writer);
  subjects.push_back(SubjectOf("large JPEG", jpeg.Path(), "JPEG of 8 MiB", writer));
  subjects.push_back(SubjectOf("large PNG", png.Path(), "PNG of 8 MiB", writer));
  Measure(subjects, kPatience);
  writer.RemoveOutput();
}

}  // namespace bench
