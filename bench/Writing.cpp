#include "Writing.h"

#include <memory>
#include <string>

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
  std::string outputs;
};

// A source and the output that is made of it: each file has its own, as when a folder is written.
struct Job {
  const Writer& writer;
  const WCHAR* source;
  WideString output;

  void Copy() const { CopyFile64K(source, output.c_str()); }
  HRESULT Write() const {
    return writer.lumidex.WriteMetadata(source, output.c_str(), writer.records.Count(),
                                        writer.records.Data(), 0, 0, nullptr, TRUE);
  }
  HRESULT Embed() const {
    return writer.lumidex.EmbedXmpFile(source, output.c_str(), writer.packet);
  }
  void RemoveOutput() const { test::RemoveFile(output); }
};

// An operation that begins without an output, like every other.
void Add(Subject& subject, const std::string& name, const std::shared_ptr<const Job>& job,
         std::function<void()> run) {
  subject.operations.push_back({name, std::move(run), [job] { job->RemoveOutput(); }});
}

// `kind` ends the names of what is written into the file, `number` is that of its output. What is
// written last stays in the folder.
Subject SubjectOf(const std::string& name, const WCHAR* path, const std::string& kind,
                  const Writer& writer, std::size_t number) {
  const WideString output = tool::WideFromUtf8(writer.outputs + "/" + std::to_string(number));
  const auto job = std::make_shared<const Job>(Job{writer, path, output});
  Subject subject = {name, {}};
  Add(subject, "copy", job, [job] { job->Copy(); });
  if (SUCCEEDED(job->Write())) {
    Add(subject, "WriteMetadata, " + kind, job, [job] { job->Write(); });
  }
  job->RemoveOutput();
  if (SUCCEEDED(job->Embed())) {
    Add(subject, "EmbedXmpFile, " + kind, job, [job] { job->Embed(); });
  }
  return subject;
}

std::vector<Subject> SubjectsOf(const std::vector<File>& files, const Writer& writer) {
  std::vector<Subject> subjects;
  for (const File& file : files) {
    const WCHAR* const path = file.path.c_str();
    const bool isJpeg = writer.lumidex.GetFileType(path) == kJpegType;
    subjects.push_back(
        SubjectOf(file.name, path, isJpeg ? "JPEG" : "PNG", writer, subjects.size()));
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
  const Writer writer = {*lumidex, records, packet.Path(), outputs};
  const std::vector<File> files = FilesOf(folder, tool::FolderFiles::Images);
  const test::TempFile jpeg(LargeJpeg());
  const test::TempFile png(LargePng(), ".png");
  std::vector<Subject> subjects = SubjectsOf(files, writer);
  subjects.push_back(
      SubjectOf("large JPEG", jpeg.Path(), "JPEG of 8 MiB", writer, subjects.size()));
  subjects.push_back(SubjectOf("large PNG", png.Path(), "PNG of 8 MiB", writer, subjects.size()));
  Measure(subjects, kPatience);
}

}  // namespace bench
