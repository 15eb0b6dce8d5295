#include "write/WriteCommands.h"

#include <limits>

#include "Text.h"
#include "base/ByteBuffer.h"
#include "base/FileStream.h"
#include "com/FilePaths.h"
#include "container/XmpPacket.h"
#include "core/VxMetadataWrapper.h"
#include "show/Photo.h"

namespace tool {
namespace {

bool IsReadable(const std::string& file) {
  const WideString path = PathOf(file);
  FileStream stream;
  return IsUsableFile(path.c_str()) && stream.Open(path.c_str(), LMD_W("rb"));
}

std::uint64_t SizeOf(const std::string& file) {
  FileStream stream;
  return stream.Open(PathOf(file).c_str(), LMD_W("rb")) ? stream.Size() : 0;
}

const std::string& UnreadableFile(const Options& options) {
  if (!IsReadable(options.source)) return options.source;
  return options.packet && !IsReadable(*options.packet) ? *options.packet : options.output;
}

const std::string& TooLargeFile(const Options& options) {
  const bool hasLargePacket = options.packet && SizeOf(*options.packet) > kMaxSegmentPacket;
  if (hasLargePacket) return *options.packet;
  return options.thumbnail ? *options.thumbnail : options.source;
}

// The interface is told of several files and answers with one code.
const std::string& FileOf(HRESULT failure, const Options& options) {
  switch (failure) {
    case LMD_E_DST_EXISTS:
    case LMD_E_WRITE_FAILED:
      return options.output;
    case LMD_E_SRC_NOT_FOUND:
    case LMD_E_OPEN_FAILED:
      return UnreadableFile(options);
    case LMD_E_BUFFER_TOO_SMALL:
      return TooLargeFile(options);
    default:
      return options.source;
  }
}

HRESULT ReadThumbnail(ILumidex& lumidex, const std::string& file, ByteBuffer& bytes) {
  const WideString path = PathOf(file);
  FileStream stream;
  if (!stream.Open(path.c_str(), LMD_W("rb"))) return LMD_E_OPEN_FAILED;
  if (lumidex.GetFileType(path.c_str()) != FILETYPE_JPEG) return LMD_E_BAD_FORMAT;
  if (stream.Size() > std::numeric_limits<std::uint32_t>::max()) return LMD_E_BUFFER_TOO_SMALL;
  bytes = ByteBuffer(static_cast<std::size_t>(stream.Size()));
  bytes.Shrink(stream.Read(bytes.Bytes()));
  return S_OK;
}

HRESULT Embed(const Options& options, ILumidex& lumidex) {
  const WideString source = PathOf(options.source);
  const WideString output = PathOf(options.output);
  const WideString packet = PathOf(options.packet.value_or(""));
  return lumidex.EmbedXmpFile(source.c_str(), output.c_str(), packet.c_str());
}

HRESULT Rewrite(const Options& options, ILumidex& lumidex, const ByteBuffer& thumbnail) {
  const WideString source = PathOf(options.source);
  const WideString output = PathOf(options.output);
  const WideString packet = PathOf(options.packet.value_or(""));
  const auto& records = options.newRecords;
  const auto address = reinterpret_cast<std::uintptr_t>(thumbnail.Bytes().data());
  return lumidex.WriteMetadata(
      source.c_str(), output.c_str(), static_cast<std::uint32_t>(records.size()),
      records.empty() ? nullptr : records.data(), static_cast<std::uint32_t>(thumbnail.Size()),
      address, options.packet ? packet.c_str() : nullptr, options.overwrite ? 1 : 0);
}

}  // namespace

HRESULT PrintPacket(ILumidex& lumidex, const std::string& file, Progress& output) {
  const WideString path = PathOf(file);
  HRESULT result = lumidex.Open(path.c_str());
  if (SUCCEEDED(result) && IsCut(path)) return LMD_E_OPEN_FAILED;
  std::uint32_t size = 0;
  if (SUCCEEDED(result)) result = lumidex.GetXmpPacketSize(&size);
  if (FAILED(result)) return result;
  ByteBuffer buffer(size);
  result = lumidex.GetXmpPacket(&size, buffer.Bytes().data());
  if (FAILED(result)) return result;
  // By design two bytes more than were copied are reported for a JPEG.
  if (lumidex.GetFileType(path.c_str()) == FILETYPE_JPEG) size -= 2;
  output.Out(TextFromBytes(buffer.Bytes().first(size)));
  return S_OK;
}

bool WritesFile(Command command) {
  return command == Command::Embed || command == Command::Write;
}

HRESULT WriteFile(const Options& options, ILumidex& lumidex, std::string& file) {
  ByteBuffer thumbnail;
  if (options.thumbnail) {
    file = *options.thumbnail;
    const HRESULT read = ReadThumbnail(lumidex, *options.thumbnail, thumbnail);
    if (FAILED(read)) return read;
  }
  file = options.source;
  const bool isEmbedding = options.command == Command::Embed;
  const HRESULT result =
      isEmbedding ? Embed(options, lumidex) : Rewrite(options, lumidex, thumbnail);
  if (FAILED(result)) file = FileOf(result, options);
  return result;
}

}  // namespace tool
