// A maker note anywhere in a file, with any make, byte order and bounds, through both ways of the
// front end.

#include <cstdint>
#include <memory>
#include <string>
#include <utility>

#include "FuzzChecks.h"
#include "FuzzInput.h"
#include "MemoryFiles.h"
#include "base/FileStream.h"
#include "makernote/VxMakerNoteParser.h"

namespace {

using fuzz::Require;

// The camera and the place of its note.
struct Note {
  std::string make;
  ByteOrder order = ByteOrder::LittleEndian;
  std::uint32_t position = 0;
  std::uint32_t base = 0;
  std::uint32_t lower = 0;
  std::uint32_t upper = 0;
};

Note TakeNote(fuzz::FuzzInput& input) {
  constexpr std::uint8_t kBigEndianBit = 1;
  constexpr std::uint8_t kOtherMakeBit = 2;
  const std::uint8_t choice = input.TakeU8();
  Note note;
  note.make = (choice & kOtherMakeBit) != 0 ? "Maker" : "SAMSUNG TECHWIN";
  if ((choice & kBigEndianBit) != 0) note.order = ByteOrder::BigEndian;
  note.position = input.TakeU16();
  note.base = input.TakeU32();
  note.lower = input.TakeU32();
  note.upper = input.TakeU32();
  return note;
}

std::string TextOf(const std::unique_ptr<char[]>& text) {
  return text ? text.get() : "";
}

// Holds for the walk over the entries, and copies them.
test::Bytes WalkEntries(CVxMakerNoteParser& parser) {
  constexpr std::size_t kMaxEntries = 256;
  test::Bytes dump;
  std::size_t count = 0;
  std::uint32_t last = 0;
  for (bool more = parser.FirstEntry(); more; more = parser.NextEntry()) {
    const TagEntry* const entry = parser.CurrentEntry();
    if (entry == nullptr) break;
    Require(count == 0 || entry->m_nTag > last, "the entries ascend by tag");
    Require(++count <= kMaxEntries, "a directory has no more entries than its limit");
    last = entry->m_nTag;
    fuzz::RequireSoundValue(*entry);
    fuzz::AppendEntry(dump, last, *entry);
  }
  Require(parser.CurrentEntry() == nullptr, "the walk ends behind the last entry");
  return dump;
}

// What a parse answers: its entries, and the summary in words.
std::pair<test::Bytes, std::string> Answer(CVxMakerNoteParser& parser,
                                           std::unique_ptr<MakerNoteInfo> info) {
  std::string summary = "none";
  if (info) {
    Require((info->pPreview == nullptr) == (info->nPreviewSize == 0),
            "a preview has a size when there is one");
    summary = std::to_string(info->nVendorCode) + ' ' + std::to_string(info->nLensId) + ' ' +
              TextOf(info->pszLensName) + ' ' + TextOf(info->pszPictureStyle);
  }
  parser.FreeMakerNoteInfo(std::move(info));
  return {WalkEntries(parser), summary};
}

auto ReadStream(const WCHAR* path, const Note& note) {
  CVxMakerNoteParser parser(0);
  Require(parser.SetCameraInfo(note.make, "NX10") == (note.make != "Maker"),
          "a vendor parser serves the makes that it knows");
  parser.SetExtraInfo("1.0", 50);
  FileStream stream;
  Require(stream.Open(path, LMD_W("rb")), "a file in memory can be opened");
  stream.Seek(note.position);
  return Answer(parser,
                parser.ParseMakerNote(stream, note.base, note.order, note.lower, note.upper));
}

auto ReadPath(const WCHAR* path, const Note& note) {
  CVxMakerNoteParser parser(0);
  parser.SetCameraInfo(note.make, "NX10");
  return Answer(parser, parser.ParseMakerNote(path, note.position, note.base, note.order));
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static fuzz::MemoryFiles files;
  static const WCHAR* const path = files.Add();

  const fuzz::RunChecks checks;
  const fuzz::OpenLog log;
  fuzz::FuzzInput input(data, size);
  Note note = TakeNote(input);
  files.Put(path, input.TakeRest());
  Require(ReadStream(path, note) == ReadStream(path, note), "a second parse answers the same");

  note.lower = 0;
  note.upper = 0;
  Require(ReadStream(path, note) == ReadPath(path, note),
          "a path answers as a stream without bounds");
  return 0;
}
