#ifndef LUMIDEX_COM_LUMIDEX_H_
#define LUMIDEX_COM_LUMIDEX_H_

#include <cstdint>
#include <memory>
#include <span>

#include <lumidex/ILumidex.h>

#include "base/FileStream.h"
#include "com/Unknown.h"
#include "container/ImageContainer.h"
#include "platform/Win32.h"

// The object that a host creates: one current file and the records of its last parse. The methods
// are documented with the interface.
class CLumidex final : public ComObject<ILumidex> {
 public:
  static constexpr std::size_t kPathCapacity = 260;

  // The creation function of the class factory.
  static INonDelegatingUnknown* CreateInstance(IUnknown* pUnkOuter, HRESULT* phr);

  explicit CLumidex(IUnknown* pUnkOuter);
  ~CLumidex() override;

  HRESULT STDMETHODCALLTYPE NonDelegatingQueryInterface(REFIID riid, void** ppv) override;

  // The current file (Lumidex.cpp).
  std::int32_t STDMETHODCALLTYPE GetFileType(const WCHAR* path) noexcept override;
  HRESULT STDMETHODCALLTYPE Open(const WCHAR* path) noexcept override;
  HRESULT STDMETHODCALLTYPE ParseBasic(const WCHAR* path, IImageInfo** ppInfo) noexcept override;
  HRESULT STDMETHODCALLTYPE AppendTrailer(const WCHAR* path) noexcept override;

  // Its records (LumidexReadMethods.cpp).
  HRESULT STDMETHODCALLTYPE GetInfo16(std::uint32_t* pValue) noexcept override;
  HRESULT STDMETHODCALLTYPE GetInfo17Size(std::uint32_t* pSize) noexcept override;
  HRESULT STDMETHODCALLTYPE GetInfo17Triple(double* p1, double* p2, double* p3) noexcept override;
  HRESULT STDMETHODCALLTYPE GetInfo17Data(std::uint32_t* pSize,
                                          std::uint8_t* pBuffer) noexcept override;
  HRESULT STDMETHODCALLTYPE GetInfo18Size(std::uint32_t* pSize) noexcept override;
  HRESULT STDMETHODCALLTYPE GetInfo18Data(std::uint32_t* pSize,
                                          std::uint8_t* pBuffer) noexcept override;
  HRESULT STDMETHODCALLTYPE GetInfo19Size(std::uint32_t* pSize) noexcept override;
  HRESULT STDMETHODCALLTYPE GetInfo19Data(std::uint32_t* pSize,
                                          std::uint8_t* pBuffer) noexcept override;
  HRESULT STDMETHODCALLTYPE GetInfo20Triple(std::uint32_t* p1, std::uint32_t* p2,
                                            std::uint32_t* p3) noexcept override;
  HRESULT STDMETHODCALLTYPE GetInfo21Size(std::uint32_t* pSize) noexcept override;
  HRESULT STDMETHODCALLTYPE GetInfo21Data(std::uint32_t* pSize,
                                          std::uint8_t* pBuffer) noexcept override;
  HRESULT STDMETHODCALLTYPE GetPoseHeading(float* pValue) noexcept override;
  HRESULT STDMETHODCALLTYPE GetPosePitch(float* pValue) noexcept override;
  HRESULT STDMETHODCALLTYPE GetPoseRoll(float* pValue) noexcept override;
  HRESULT STDMETHODCALLTYPE IsPanorama(std::uint32_t* pFlag) noexcept override;

  // Writing, and the raw packet (LumidexWriteMethods.cpp).
  HRESULT STDMETHODCALLTYPE EmbedXmpFile(const WCHAR* src, const WCHAR* dst,
                                         const WCHAR* xmp) noexcept override;
  HRESULT STDMETHODCALLTYPE WriteMetadata(const WCHAR* src, const WCHAR* dst, std::uint32_t count,
                                          const CInfoRecord* items, std::uint32_t opt32,
                                          std::uint64_t opt64, const WCHAR* xmp,
                                          std::uint32_t overwrite) noexcept override;
  HRESULT STDMETHODCALLTYPE GetXmpPacketSize(std::uint32_t* pSize) noexcept override;
  HRESULT STDMETHODCALLTYPE GetXmpPacket(std::uint32_t* pSize,
                                         std::uint8_t* pBuffer) noexcept override;

 private:
  struct InfoRecord;
  static const InfoRecord kInfo16;
  static const InfoRecord kInfo17;
  static const InfoRecord kInfo18;
  static const InfoRecord kInfo19;
  static const InfoRecord kInfo20;
  static const InfoRecord kInfo21;

  using Records = std::span<const CInfoRecord>;

  bool HasParseResult() const;
  HRESULT GetRecords(Records* records) const;
  HRESULT FindInfo(const InfoRecord& info, const CInfoRecord** record) const;
  HRESULT FindInfoOfSize(const InfoRecord& info, std::uint32_t size,
                         const CInfoRecord** record) const;
  HRESULT GetInfoSize(const InfoRecord& info, std::uint32_t* pSize) const;
  HRESULT GetInfoData(const InfoRecord& info, std::uint32_t* pSize, std::uint8_t* pBuffer) const;
  HRESULT GetPose(std::uint32_t id, float* pValue) const;
  HRESULT IsPanoramaPng(std::uint32_t* pFlag) const;
  HRESULT IsPanoramaJpeg(std::uint32_t* pFlag) const;
  HRESULT OpenSource(FileStream& source, const WCHAR* path) noexcept;
  void KeepPaths(const WCHAR* src, const WCHAR* dst, const WCHAR* xmp);
  std::uint32_t PacketRoom() const;

  std::unique_ptr<CImageContainerBase> m_pContainer;
  IImageInfo* m_pImageInfo = nullptr;  // one reference
  WCHAR m_szSrcPath[kPathCapacity] = {};
  WCHAR m_szDstPath[kPathCapacity] = {};
  WCHAR m_szXmpPath[kPathCapacity] = {};
  std::uint32_t m_nFileType = FILETYPE_UNKNOWN;
  std::uint32_t m_nWriterOption = 0;

  // The packet size that GetXmpPacketSize told last, and of which file.
  WCHAR m_szPacketPath[kPathCapacity] = {};
  std::uint32_t m_nPacketSize = 0;
};

#endif  // LUMIDEX_COM_LUMIDEX_H_
