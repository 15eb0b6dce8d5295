#include "container/XmpEmbedding.h"

#include <array>
#include <cstdint>

#include <lumidex/ResultCodes.h>

#include "base/FileStream.h"
#include "container/FileCopy.h"
#include "container/PngChunks.h"
#include "container/XmpLocators.h"
#include "container/XmpPacket.h"

namespace {

// How a file type finds the place of a packet and carries it.
struct PacketForm {
  HRESULT (*locate)(FileStream* stream, std::uint64_t* position);
  HRESULT (*readPacket)(FileStream& packet, PacketBytes* bytes);
};

constexpr PacketForm kJpegForm = {&LocateJpegXmp, &ReadAsXmpSegment};
constexpr PacketForm kPngForm = {&LocatePngXmp, &ReadAsXmpChunk};

// Everything before the first write: opens the packet file, finds the place, builds the bytes.
struct Embedding {
  std::uint64_t position = 0;
  PacketBytes packet;

  HRESULT Prepare(const PacketForm& form, FileStream& source, const WCHAR* packetPath) {
    FileStream packetFile;
    if (!packetFile.Open(packetPath, LMD_W("rb"))) return LMD_E_OPEN_FAILED;
    const HRESULT located = form.locate(&source, &position);
    if (FAILED(located)) return located;
    // The place that a broken search ends at is no place for a packet.
    return source.HasFailed() ? LMD_E_READ_FAILED : form.readPacket(packetFile, &packet);
  }
};

HRESULT EmbedIntoCopy(const PacketForm& form, FileStream& source, const WCHAR* output,
                      const WCHAR* packet) {
  Embedding embedding;
  HRESULT result = embedding.Prepare(form, source, packet);
  if (FAILED(result)) return result;
  BlockWriter copy;
  if (!copy.Open(output, LMD_W("wb"))) return LMD_E_OPEN_FAILED;
  result = CopyBytes(source, 0, embedding.position, copy);
  if (FAILED(result)) return result;
  if (!copy.Write(embedding.packet)) return LMD_E_WRITE_FAILED;
  result = CopyRest(source, embedding.position, copy);
  if (FAILED(result)) return result;
  return copy.Close() ? S_OK : LMD_E_WRITE_FAILED;
}

// Gives a PNG file back the end and the size that it had.
void PutBackEnd(FileStream& image, std::uint64_t size) {
  image.Truncate(size);
  image.Seek(size - kEndChunk.size());
  static_cast<void>(image.Write(kEndChunk));
}

}  // namespace

HRESULT EmbedIntoJpeg(FileStream& source, const WCHAR* output, const WCHAR* packet) {
  return EmbedIntoCopy(kJpegForm, source, output, packet);
}

HRESULT EmbedIntoPng(FileStream& source, const WCHAR* output, const WCHAR* packet) {
  return EmbedIntoCopy(kPngForm, source, output, packet);
}

HRESULT EmbedIntoSamePng(const WCHAR* image, const WCHAR* packet) {
  FileStream stream;
  Embedding embedding;
  if (!OpenForCopy(stream, image, LMD_W("r+b"))) return LMD_E_OPEN_FAILED;
  const HRESULT prepared = embedding.Prepare(kPngForm, stream, packet);
  if (FAILED(prepared)) return prepared;

  const std::uint64_t size = stream.Size();
  if (size < kEndChunk.size()) return LMD_E_BAD_FORMAT;
  std::array<std::uint8_t, kEndChunk.size()> end;
  stream.Seek(size - end.size());
  static_cast<void>(stream.Read(end));
  if (end != kEndChunk) return LMD_E_BAD_FORMAT;

  // One write, so that the file is without its end for as short a time as possible.
  embedding.packet.insert(embedding.packet.end(), end.begin(), end.end());
  stream.Seek(size - end.size());
  if (stream.Write(embedding.packet) && stream.Flush() && stream.Close()) return S_OK;
  if (stream.IsOpen() || stream.Open(image, LMD_W("r+b"))) PutBackEnd(stream, size);
  return LMD_E_WRITE_FAILED;
}
