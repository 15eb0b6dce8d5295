#ifndef LUMIDEX_FUZZ_LOCATORCHECKS_H_
#define LUMIDEX_FUZZ_LOCATORCHECKS_H_

// What the targets of the two locators share.

#include <algorithm>
#include <vector>

#include <lumidex/ResultCodes.h>

#include "FuzzChecks.h"
#include "FuzzObject.h"
#include "MemoryFiles.h"
#include "PacketModel.h"
#include "base/FileStream.h"
#include "core/VxMetadataWrapper.h"

namespace fuzz {

// Runs a locator on an open file: from a stream that stands anywhere, with read-aheads that let
// texts and numbers lie across their ends, it answers what the model says.
template <class Locator>
void RequirePlace(const WCHAR* path, const Place& expected, Locator&& locate) {
  for (const std::size_t window : {std::size_t{5}, std::size_t{4096}, FileStream::kWindowSize}) {
    FileStream stream;
    Require(stream.Open(path, LMD_W("rb"), window), "the file opens");
    stream.Seek(window);
    for (int i = 0; i < 2; ++i) {
      Place place;
      place.result = locate(stream, &place.position);
      Require(place == expected, "the locator tells the place that the bytes tell");
    }
  }
}

// Reads the packet of an object's current file into a buffer of exactly the size that was told.
inline void RequirePacket(const FuzzObject& object, View file, std::uint32_t type) {
  constexpr std::uint32_t kUntouched = 0xA5A5A5A5;
  constexpr std::uint8_t kFill = 0xA5;
  const PacketAnswer expected = PacketOf(file, type);
  std::uint32_t size = kUntouched;
  Require(object->GetXmpPacketSize(&size) == expected.sizeResult,
          "the packet's size is told, or why there is none");
  Require(size == (FAILED(expected.sizeResult) ? kUntouched : expected.size),
          "the packet's size is that of its segment or chunk");
  // One that claims more than the file has is not read at all.
  if (FAILED(expected.sizeResult) || size > file.size()) size = 1;

  std::vector<std::uint8_t> buffer(size, kFill);
  std::uint32_t told = kUntouched;
  Require(object->GetXmpPacket(&told, buffer.data()) == expected.result,
          "the packet is read, or it is told why not");
  Require(told == (FAILED(expected.result) ? kUntouched : expected.told),
          "the size told with the packet is the documented one");
  Require(expected.bytes.size() <= buffer.size(), "the packet fits the size that was told");
  const View bytes(buffer);
  Require(std::ranges::equal(expected.bytes, bytes.first(expected.bytes.size())),
          "the packet is that of the file");
  const View behind = bytes.subspan(expected.bytes.size());
  Require(std::ranges::count(behind, kFill) == std::ssize(behind),
          "nothing is written behind the packet");
}

// Makes a file the current one of an object without a parse: the call is refused for the lack of a
// packet file, behind the place where the path is kept.
inline bool MakeCurrent(const FuzzObject& object, const WCHAR* path, const WCHAR* unusedPath) {
  const HRESULT result = object->EmbedXmpFile(path, unusedPath, nullptr);
  Require(result == LMD_E_OPEN_FAILED || result == LMD_E_BAD_FORMAT,
          "without a packet file there is nothing to embed");
  return result == LMD_E_OPEN_FAILED;
}

// The packet reader on a file that may be of either type or of none.
inline void RequirePacketOf(const WCHAR* path, const WCHAR* unusedPath, View file) {
  const FuzzObject object;
  const std::uint32_t type = TypeOfFile(file);
  const bool isOurs = type == FILETYPE_JPEG || type == FILETYPE_PNG;
  Require(object->GetFileType(path) == static_cast<std::int32_t>(type),
          "the first bytes tell the type");
  Require(MakeCurrent(object, path, unusedPath) == isOurs, "a JPEG or a PNG becomes current");
  if (isOurs) return RequirePacket(object, file, type);
  std::uint32_t size = 0;
  Require(object->GetXmpPacketSize(&size) == LMD_E_INVALID_ARG, "nothing else does");
}

}  // namespace fuzz

#endif  // LUMIDEX_FUZZ_LOCATORCHECKS_H_
