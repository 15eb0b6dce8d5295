// EmbedXmpFile from any packet file into any image: a copy, a PNG in place, or a refusal. The
// outcome is worked out from the bytes alone, result code, output and all.
//
// Input: the case (1 byte), the packet's padding (1), its length (2), the packet, the image.

#include <algorithm>
#include <array>
#include <cstdint>
#include <optional>

#include <lumidex/ResultCodes.h>

#include "FuzzChecks.h"
#include "FuzzInput.h"
#include "FuzzObject.h"
#include "LocatorChecks.h"
#include "MemoryFiles.h"
#include "PacketModel.h"
#include "core/VxMetadataWrapper.h"

namespace {

using fuzz::FuzzObject;
using fuzz::MemoryFiles;
using fuzz::Require;
using fuzz::View;
using test::Bytes;

enum class Case { Copy, InPlace, OutputExists, OutputIsPacket, NoOutput, NoPacketFile, NoPacket };

// Refusals need little time; most inputs are to get past them.
Case CaseOf(std::uint8_t number) {
  constexpr std::array kRefusals = {Case::OutputExists, Case::OutputIsPacket, Case::NoOutput,
                                    Case::NoPacketFile, Case::NoPacket};
  const std::size_t step = number % 32;
  if (step < kRefusals.size()) return kRefusals[step];
  return step % 2 == 0 ? Case::InPlace : Case::Copy;
}

struct Request {
  Case kind = Case::Copy;
  Bytes packet;
  Bytes image;
};

// A packet as it stands, or with blanks up to one of the sizes about the limits.
Request Read(fuzz::FuzzInput& input) {
  constexpr std::size_t kFirstLimit = 65503;
  constexpr std::uint8_t kFirstPadding = 251;
  Request request;
  request.kind = CaseOf(input.TakeU8());
  const std::uint8_t padding = input.TakeU8();
  const View packet = input.Take(input.TakeU16());
  request.packet.assign(packet.begin(), packet.end());
  if (padding >= kFirstPadding) request.packet.resize(kFirstLimit + padding - kFirstPadding, ' ');
  const View image = input.TakeRest();
  request.image.assign(image.begin(), image.end());
  return request;
}

struct Outcome {
  HRESULT result = S_OK;
  Bytes image;
  std::optional<Bytes> output;

  bool operator==(const Outcome&) const = default;
};

Bytes Insert(View image, std::size_t position, const Bytes& piece) {
  Bytes bytes(image.begin(), image.end());
  bytes.insert(bytes.begin() + static_cast<std::ptrdiff_t>(position), piece.begin(), piece.end());
  return bytes;
}

// What is decided before the image's contents count.
HRESULT Refusal(const Request& request, std::uint32_t type) {
  const bool isPng = type == FILETYPE_PNG;
  if (request.kind == Case::NoPacketFile) return LMD_E_SRC_NOT_FOUND;
  if (!isPng && type != FILETYPE_JPEG) return LMD_E_BAD_FORMAT;
  if (request.kind == Case::OutputExists || request.kind == Case::OutputIsPacket ||
      request.kind == Case::NoOutput || (request.kind == Case::InPlace && !isPng)) {
    return LMD_E_DST_EXISTS;
  }
  return request.kind == Case::NoPacket ? LMD_E_OPEN_FAILED : S_OK;
}

Outcome Refused(const Request& request, HRESULT result) {
  Outcome outcome = {result, request.image, std::nullopt};
  if (request.kind == Case::OutputExists) outcome.output = Bytes{};
  return outcome;
}

// The outcome as the documentation has it. A copy that the image is too short for gives only the
// result; the output is whatever was written.
Outcome Expected(const Request& request) {
  constexpr std::string_view kEnd("\0\0\0\0IEND\xAE\x42\x60\x82", 12);
  const std::uint32_t type = fuzz::TypeOfFile(request.image);
  const bool isPng = type == FILETYPE_PNG;
  if (const HRESULT refusal = Refusal(request, type); FAILED(refusal)) {
    return Refused(request, refusal);
  }
  const fuzz::Place place = fuzz::PlaceOfXmp(request.image);
  if (FAILED(place.result)) return Refused(request, place.result);
  if (request.packet.size() > (isPng ? 65505U : 65504U)) {
    return Refused(request, LMD_E_BUFFER_TOO_SMALL);
  }
  const Bytes piece = isPng ? fuzz::ChunkOf(request.packet) : fuzz::SegmentOf(request.packet);
  const std::size_t size = request.image.size();
  if (request.kind == Case::InPlace) {
    if (size < kEnd.size() || !fuzz::HoldsAt(request.image, size - kEnd.size(), kEnd)) {
      return Refused(request, LMD_E_BAD_FORMAT);
    }
    return {S_OK, Insert(request.image, size - kEnd.size(), piece), std::nullopt};
  }
  if (place.position > size) return {LMD_E_READ_FAILED, request.image, std::nullopt};
  return {S_OK, request.image,
          Insert(request.image, static_cast<std::size_t>(place.position), piece)};
}

class Embedding {
 public:
  Outcome Run(const Request& request) {
    m_files.Put(m_image, request.image);
    m_files.Put(m_packet, request.packet);
    m_files.Remove(m_output);
    if (request.kind == Case::OutputExists) m_files.Put(m_output, {});
    if (request.kind == Case::NoPacketFile) m_files.Remove(m_packet);

    Outcome outcome;
    {
      const FuzzObject object;
      outcome.result = object->EmbedXmpFile(m_image, OutputOf(request.kind),
                                            request.kind == Case::NoPacket ? nullptr : m_packet);
      outcome.image = m_files.Get(m_image);
    }
    if (m_files.Exists(m_output)) outcome.output = m_files.Get(m_output);
    if (request.kind != Case::NoPacketFile) {
      Require(m_files.Get(m_packet) == request.packet, "the packet file stays as it was");
    }
    return outcome;
  }

  // Reads the packet back from the output of the last run. A copy carries it where it is looked
  // for; in place it stands before the end of the file, which another chunk may hide.
  void RequireReadBack(const Request& request, const Outcome& outcome) {
    const bool isCopy = outcome.output.has_value();
    const Bytes& written = isCopy ? *outcome.output : outcome.image;
    const std::uint32_t type = fuzz::TypeOfFile(written);
    const FuzzObject object;
    Require(fuzz::MakeCurrent(object, isCopy ? m_output : m_image, m_unused),
            "the output is of the image's type");
    fuzz::RequirePacket(object, written, type);
    const bool isHidden =
        type == FILETYPE_PNG
            ? !isCopy || !fuzz::NamesPanorama(request.packet)
            : fuzz::IsPlaceInHead(request.image, fuzz::PlaceOfJpegXmp(request.image));
    if (isHidden) return;
    const fuzz::PacketAnswer answer = fuzz::PacketOf(written, type);
    Require(SUCCEEDED(answer.result), "the packet is found again");
    Require(std::ranges::equal(answer.bytes, request.packet), "the packet comes back unchanged");
  }

 private:
  const WCHAR* OutputOf(Case kind) const {
    if (kind == Case::InPlace) return m_image;
    if (kind == Case::OutputIsPacket) return m_packet;
    return kind == Case::NoOutput ? nullptr : m_output;
  }

  MemoryFiles m_files;
  const WCHAR* m_image = m_files.Add();
  const WCHAR* m_packet = m_files.Add();
  const WCHAR* m_output = m_files.Add();
  const WCHAR* m_unused = m_files.Add();
};

// What stays of a copy that was given up is a part of the image.
void RequirePartialCopy(const Request& request, const Outcome& outcome) {
  Require(outcome.output.has_value(), "a copy that was begun stays");
  const auto [left, right] = std::ranges::mismatch(*outcome.output, request.image);
  Require(left == outcome.output->end(), "a copy that was begun holds what the image does");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static Embedding embedding;

  const fuzz::RunChecks checks;
  fuzz::FuzzInput input(data, size);
  const Request request = Read(input);
  const Outcome outcome = embedding.Run(request);
  const Outcome expected = Expected(request);
  Require(outcome.result == expected.result, "the result is the documented one");
  Require(outcome.image == expected.image, "the image holds what it is to hold");
  if (expected.result == LMD_E_READ_FAILED) {
    RequirePartialCopy(request, outcome);
  } else {
    Require(outcome.output == expected.output, "the output holds what it is to hold");
  }
  Require(embedding.Run(request) == outcome, "a second call does the same");
  if (SUCCEEDED(outcome.result)) embedding.RequireReadBack(request, outcome);
  return 0;
}
