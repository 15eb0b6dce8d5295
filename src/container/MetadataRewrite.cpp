#include "container/MetadataRewrite.h"

#include <array>

#include <lumidex/ResultCodes.h>

#include "base/FileStream.h"
#include "container/ExifLocator.h"
#include "container/FileCopy.h"
#include "container/XmpLocators.h"
#include "container/XmpPacket.h"
#include "exif/JpegMarkers.h"
#include "writer/VxMetadataWriter.h"

namespace {

class Rewrite {
 public:
  explicit Rewrite(const RewriteRequest& request)
      : m_request(request), m_source(*request.source), m_writer(request.writerOption) {}

  HRESULT Run() {
    HRESULT result = FindOldExif();
    if (SUCCEEDED(result)) result = PreparePacket();
    if (SUCCEEDED(result)) result = PrepareExif();
    if (FAILED(result)) return result;
    // The place that a broken search ends at says nothing about the source.
    if (m_source.HasFailed()) return LMD_E_READ_FAILED;
    if (!m_output.Open(m_request.output, LMD_W("w+b"))) return LMD_E_OPEN_FAILED;
    result = WriteHead();
    if (FAILED(result)) return result;
    if (!m_packet.empty() && !m_output.Write(m_packet)) return LMD_E_WRITE_FAILED;
    result = CopyRest(m_source, m_copyFrom, m_output);
    if (FAILED(result)) return result;
    return m_output.Close() ? S_OK : LMD_E_WRITE_FAILED;
  }

 private:
  bool HasRecords() const { return m_request.records != nullptr; }

  HRESULT FindOldExif() {
    if (!HasRecords()) return S_OK;
    const HRESULT located = LocateJpegExif(m_source, &m_copyFrom);
    return located == LMD_E_HAS_EXIF && m_request.overwrite ? S_OK : located;
  }

  // With records the packet goes behind the new EXIF segment, whatever the locator's position is.
  HRESULT PreparePacket() {
    if (m_request.packet == nullptr) return S_OK;
    FileStream file;
    if (!file.Open(m_request.packet, LMD_W("rb"))) return LMD_E_OPEN_FAILED;
    std::uint64_t position = 0;
    const HRESULT located = LocateJpegXmp(&m_source, &position);
    if (FAILED(located)) return located;
    if (!HasRecords()) m_copyFrom = position;
    return ReadAsXmpSegment(file, &m_packet);
  }

  HRESULT PrepareExif() {
    if (!HasRecords()) return S_OK;
    m_writer.SetThumbnail(m_request.thumbnail, m_request.thumbnailLength);
    const HRESULT sorted = m_writer.SetRecords(m_request.records, m_request.recordCount);
    return FAILED(sorted) ? sorted : m_writer.BuildBlock();
  }

  // What stands before the packet.
  HRESULT WriteHead() {
    constexpr std::array<std::uint8_t, 2> kStart = {kMarkerPrefix, kSoiMarker};
    if (!HasRecords()) return CopyBytes(m_source, 0, m_copyFrom, m_output);
    if (!m_output.Write(kStart)) return LMD_E_WRITE_FAILED;
    m_writer.SetOutput(&m_output);
    return m_writer.WriteExifSegment();
  }

  const RewriteRequest& m_request;
  FileStream& m_source;
  VxMetadataWriter m_writer;
  BlockWriter m_output;
  PacketBytes m_packet;
  std::uint64_t m_copyFrom = 0;
};

}  // namespace

HRESULT RewriteMetadata(const RewriteRequest& request) {
  return Rewrite(request).Run();
}
