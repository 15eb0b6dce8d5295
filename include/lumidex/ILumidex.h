#ifndef LUMIDEX_ILUMIDEX_H_
#define LUMIDEX_ILUMIDEX_H_

#include <cstdint>

#include <lumidex/ComTypes.h>
#include <lumidex/Guids.h>
#include <lumidex/ImageInfo.h>
#include <lumidex/ResultCodes.h>

// The one interface of the module. A host gets the class factory of CLSID_Lumidex from
// DllGetClassObject, creates an object with IID_ILumidex, opens a photograph, and reads values.
//
// Paths are zero-terminated UTF-16 texts. The object keeps at most 259 characters of a path; the
// file itself is opened by the whole path. No file stays open between calls. Nothing throws.
//
// Calls on one object come from one thread at a time; separate objects may live on separate
// threads.
//
// Result codes stand in the order in which they are decided; where memory runs out and no code is
// named for it, the result is E_OUTOFMEMORY. On failure an output keeps what it held unless a
// method says otherwise.
struct ILumidex : public IUnknown {
  // What the first 8 bytes of a file say: 1 JPEG (FF D8), 2 TIFF ("II*\0" or "MM\0*", TIFF 6.0
  // section 2), 5 PNG (the signature of the PNG specification, section 5.2), 0 anything else, a
  // file shorter than 8 bytes, or one that cannot be opened. Slot 3.
  virtual std::int32_t STDMETHODCALLTYPE GetFileType(const WCHAR* path) = 0;

  // Makes a file the object's current one. A JPEG is parsed whole and the records of an earlier
  // parse are released; a PNG is only noted (IsPanorama and the packet readers serve it). Slot 4.
  //   LMD_E_SRC_NOT_FOUND   the path does not exist or is no regular file
  //   LMD_E_BAD_FORMAT      neither JPEG nor PNG, or path is null
  //   LMD_E_INVALID_ARG     the object could not create its parser
  //   LMD_E_OUT_OF_MEMORY   the parse ran out of memory
  //   E_POINTER             the store of the parse could not be created
  //   S_OK                  also when the file holds no metadata, or is damaged
  virtual HRESULT STDMETHODCALLTYPE Open(const WCHAR* path) = 0;

  // The first 32-bit word of maker-note tag 0x0010. Slot 5.
  //   LMD_E_NOT_FOUND         the current file is a PNG
  //   LMD_E_INVALID_ARG       no parse result, or pValue is null
  //   LMD_E_NOT_FOUND         no such record
  //   LMD_E_TYPE_MISMATCH_16  the record is not of unsigned 32-bit integers
  virtual HRESULT STDMETHODCALLTYPE GetInfo16(std::uint32_t* pValue) = 0;

  // The size in bytes of maker-note tag 0x0011. Slot 6.
  //   as GetInfo16, with LMD_E_TYPE_MISMATCH_17 for a record that is not of signed rationals
  virtual HRESULT STDMETHODCALLTYPE GetInfo17Size(std::uint32_t* pSize) = 0;

  // Maker-note tag 0x0011 as three quotients. The first record of exactly 24 bytes is read. Slot 7.
  //   LMD_E_NOT_FOUND         the current file is a PNG
  //   LMD_E_INVALID_ARG       no parse result, or a pointer is null
  //   LMD_E_TYPE_MISMATCH_17  a record that is not of signed rationals comes first
  //   LMD_E_NOT_FOUND         no record of 24 bytes
  //   E_FAIL                  a denominator is 0
  virtual HRESULT STDMETHODCALLTYPE GetInfo17Triple(double* p1, double* p2, double* p3) = 0;

  // The bytes of maker-note tag 0x0011. *pSize is the buffer's size on entry and the number of
  // bytes written on success. Slot 8.
  //   as GetInfo17Size, then
  //   LMD_E_BUFFER_TOO_SMALL  *pSize is smaller than the value; nothing is written
  virtual HRESULT STDMETHODCALLTYPE GetInfo17Data(std::uint32_t* pSize, std::uint8_t* pBuffer) = 0;

  // Writes a copy of a JPEG or PNG with the packet of an XMP file, unchanged, in an APP1 segment or
  // an iTXt chunk (XMP part 3). A PNG whose output is named by the very text that names the source
  // gets it in place. A partial output stays; a PNG written in place gets its old contents back.
  // The object's file type becomes that of src even when the call is refused, its path becomes src
  // once the output is accepted; its parse result stays. Slot 9.
  //   LMD_E_SRC_NOT_FOUND     src or xmp is given and does not exist or is no regular file
  //   LMD_E_BAD_FORMAT        src is neither JPEG nor PNG, or null
  //   LMD_E_DST_EXISTS        dst exists, a folder included, or is null, unless a PNG is written in
  //                           place; or it is the same file as xmp, by whatever name, or may be
  //   LMD_E_OPEN_FAILED       src or xmp cannot be opened, or xmp is null
  //   LMD_E_BAD_FORMAT        src does not begin as its type does
  //   LMD_E_XMP_FOUND         a JPEG with a packet, or a PNG with one that holds "equirectangular"
  //   LMD_E_OUT_OF_MEMORY     while a PNG was searched
  //   LMD_E_READ_FAILED       src could not be searched to its end
  //   LMD_E_BUFFER_TOO_SMALL  the XMP file has more than 65504 bytes for a JPEG, 65505 for a PNG,
  //                           or its size cannot be told
  //   LMD_E_READ_FAILED       the XMP file ended early
  //   in place:
  //   LMD_E_BAD_FORMAT        the last 12 bytes are not the IEND chunk
  //   LMD_E_WRITE_FAILED
  //   else:
  //   LMD_E_OPEN_FAILED       dst cannot be created
  //   LMD_E_READ_FAILED, LMD_E_WRITE_FAILED
  virtual HRESULT STDMETHODCALLTYPE EmbedXmpFile(const WCHAR* src, const WCHAR* dst,
                                                 const WCHAR* xmp) = 0;

  // Whether the current file is marked as a panorama by a GPano projection type, whatever its
  // value. *pFlag becomes 1 or 0; it is 0 on every failure but a null pointer. Slot 10.
  //   LMD_E_INVALID_ARG       pFlag is null
  //   PNG: S_OK               1 when an uncompressed XMP chunk holds "equirectangular", else 0
  //        LMD_E_NOT_FOUND    the file can no longer be opened
  //        LMD_E_BAD_FORMAT   the file is no longer a PNG
  //        LMD_E_OUT_OF_MEMORY
  //   LMD_E_NOT_FOUND         no JPEG is open
  //   LMD_E_INVALID_ARG       no parse result
  //   JPEG: S_OK              1: a projection type is among the records
  //         LMD_E_NOT_PANORAMA  XMP is present without a projection type
  //         LMD_E_NOT_FOUND     no XMP, or the file can no longer be opened
  virtual HRESULT STDMETHODCALLTYPE IsPanorama(std::uint32_t* pFlag) = 0;

  // Appends the fixed 64-byte trailer block to a file. The file type is not checked. Slot 11.
  //   LMD_E_SRC_NOT_FOUND     the path does not exist or is no regular file
  //   LMD_E_OPEN_FAILED       the file cannot be opened for writing, or path is null
  //   LMD_E_READ_FAILED       the file is shorter than 64 bytes
  //   LMD_E_ALREADY_MARKED    the file ends with the block
  //   LMD_E_WRITE_FAILED      the block could not be written; the file keeps its old size
  virtual HRESULT STDMETHODCALLTYPE AppendTrailer(const WCHAR* path) = 0;

  // The size in bytes of maker-note tag 0x0012. Slot 12.
  //   as GetInfo16, with LMD_E_TYPE_MISMATCH_18 for a record that is neither of signed 32-bit
  //   integers nor of bytes
  virtual HRESULT STDMETHODCALLTYPE GetInfo18Size(std::uint32_t* pSize) = 0;

  // The bytes of maker-note tag 0x0012, as GetInfo17Data. Slot 13.
  //   LMD_E_INVALID_ARG       no parse result (a PNG included), or a pointer is null
  //   LMD_E_NOT_FOUND         no such record
  //   LMD_E_TYPE_MISMATCH_18, LMD_E_BUFFER_TOO_SMALL
  virtual HRESULT STDMETHODCALLTYPE GetInfo18Data(std::uint32_t* pSize, std::uint8_t* pBuffer) = 0;

  // The size in bytes of maker-note tag 0x0013. Slot 14.
  //   as GetInfo16, with LMD_E_TYPE_MISMATCH_19 for a record that is not of bytes
  virtual HRESULT STDMETHODCALLTYPE GetInfo19Size(std::uint32_t* pSize) = 0;

  // The bytes of maker-note tag 0x0013, as GetInfo17Data with LMD_E_TYPE_MISMATCH_19. Slot 15.
  virtual HRESULT STDMETHODCALLTYPE GetInfo19Data(std::uint32_t* pSize, std::uint8_t* pBuffer) = 0;

  // Writes a copy of a JPEG with a new EXIF segment built from records (EXIF 2.32, TIFF 6.0), the
  // packet of an XMP file, or both. A thumbnail, a whole JPEG stream, has opt32 bytes at the
  // address opt64; there is none when either is 0. Records of the groups 2 (IFD0), 4 (EXIF) and 8
  // (GPS) are written, their integers in 32 bits each; what is not accepted is dropped without a
  // message. The source's own EXIF segment follows the new one, and what stood before it is left
  // out. A partial output stays. The object's file type becomes that of src even when the call is
  // refused, its path becomes src once the arguments are accepted; its parse result stays. Slot 16.
  //   LMD_E_SRC_NOT_FOUND     src does not exist, is no regular file, or is null
  //   LMD_E_BAD_FORMAT        src is no JPEG
  //   LMD_E_DST_EXISTS        without overwrite: dst exists, a folder included, or is null
  //   LMD_E_DST_EXISTS        dst is the same file as src or xmp, by whatever name, or may be, as
  //                           far as the system tells
  //   LMD_E_INVALID_ARG       items with a count of 0, or neither items nor xmp
  //   LMD_E_SRC_NOT_FOUND     xmp is given and does not exist or is no regular file
  //   LMD_E_OPEN_FAILED       src cannot be opened
  //   with items:
  //   LMD_E_BAD_FORMAT        src does not begin as a JPEG does
  //   LMD_E_HAS_EXIF          src has an EXIF segment, without overwrite
  //   with xmp:
  //   LMD_E_OPEN_FAILED       xmp cannot be opened
  //   LMD_E_BAD_FORMAT        src does not begin as a JPEG does
  //   LMD_E_XMP_FOUND         src has a packet
  //   LMD_E_BUFFER_TOO_SMALL  the XMP file has more than 65504 bytes, or its size cannot be told
  //   LMD_E_READ_FAILED       the XMP file ended early
  //   in all cases:
  //   LMD_E_BUFFER_TOO_SMALL  records and thumbnail need a TIFF block of more than 64000 bytes
  //   LMD_E_READ_FAILED       src could not be searched to its end
  //   LMD_E_OPEN_FAILED       dst cannot be created, or is null
  //   LMD_E_READ_FAILED, LMD_E_WRITE_FAILED
  virtual HRESULT STDMETHODCALLTYPE WriteMetadata(const WCHAR* src, const WCHAR* dst,
                                                  std::uint32_t count, const CInfoRecord* items,
                                                  std::uint32_t opt32, std::uint64_t opt64,
                                                  const WCHAR* xmp, std::uint32_t overwrite) = 0;

  // How large a buffer GetXmpPacket needs for the current file. The packet is looked for where
  // EmbedXmpFile puts it. For a JPEG this is the segment's length, 31 more than the packet has; for
  // a PNG the size of the packet. Slot 17.
  //   LMD_E_INVALID_ARG       there is no current file, or pSize is null
  //   LMD_E_OPEN_FAILED       the file cannot be opened
  //   LMD_E_NOT_FOUND         the last file whose type was told is neither JPEG nor PNG
  //   LMD_E_BAD_FORMAT        the file does not begin as its type does
  //   LMD_E_OUT_OF_MEMORY     while a PNG was searched
  //   LMD_E_NOT_FOUND         no packet, or in a PNG none that holds "equirectangular"
  //   LMD_E_BAD_FORMAT        the chunk of a PNG is too short for a packet
  //   LMD_E_READ_FAILED       the length of a JPEG's segment cannot be read
  virtual HRESULT STDMETHODCALLTYPE GetXmpPacketSize(std::uint32_t* pSize) = 0;

  // The bytes of the current file's XMP packet. The buffer has at least the size that
  // GetXmpPacketSize last told of this file: no more is written, whatever the file has become.
  // Without such an answer the buffer is not checked. *pSize is only written; for a JPEG it becomes
  // 2 more than the number of bytes written to the buffer, for a PNG that number. Slot 18.
  //   as GetXmpPacketSize, LMD_E_INVALID_ARG for a null pBuffer as well, then
  //   LMD_E_BAD_FORMAT        the segment of a JPEG is too short for a packet
  //   LMD_E_BUFFER_TOO_SMALL  the packet has more bytes than GetXmpPacketSize last told
  //   LMD_E_READ_FAILED       the file ends inside the packet, or cannot be read
  virtual HRESULT STDMETHODCALLTYPE GetXmpPacket(std::uint32_t* pSize, std::uint8_t* pBuffer) = 0;

  // The panorama pose angles in degrees: GPano PoseHeadingDegrees, PosePitchDegrees and
  // PoseRollDegrees (XMP part 3 for the packet). A text that is no number reads as 0.
  // Slots 19, 20, 21.
  //   LMD_E_INVALID_ARG       no parse result (a PNG included), or pValue is null
  //   LMD_E_NOT_FOUND         no such text record
  virtual HRESULT STDMETHODCALLTYPE GetPoseHeading(float* pValue) = 0;
  virtual HRESULT STDMETHODCALLTYPE GetPosePitch(float* pValue) = 0;
  virtual HRESULT STDMETHODCALLTYPE GetPoseRoll(float* pValue) = 0;

  // Parses a JPEG for its basic, IFD0, EXIF and GPS records alone and hands the result to the
  // caller, who owns one reference. The object's own parse result stays. *ppInfo is set to null
  // first; it stays null for a PNG. Slot 22.
  //   as Open, with E_POINTER for a JPEG when ppInfo is null
  virtual HRESULT STDMETHODCALLTYPE ParseBasic(const WCHAR* path, IImageInfo** ppInfo) = 0;

  // The size in bytes of maker-note tag 0x0015. Slot 23.
  //   as GetInfo16, with LMD_E_TYPE_MISMATCH_21 for a record that is not of bytes
  virtual HRESULT STDMETHODCALLTYPE GetInfo21Size(std::uint32_t* pSize) = 0;

  // The bytes of maker-note tag 0x0015, as GetInfo17Data with LMD_E_TYPE_MISMATCH_21. Slot 24.
  virtual HRESULT STDMETHODCALLTYPE GetInfo21Data(std::uint32_t* pSize, std::uint8_t* pBuffer) = 0;

  // Maker-note tag 0x0014 as three 32-bit words. The first record of exactly 12 bytes is read.
  // Slot 25.
  //   LMD_E_NOT_FOUND         the current file is a PNG
  //   LMD_E_INVALID_ARG       no parse result, or a pointer is null
  //   LMD_E_TYPE_MISMATCH_20  a record that is not of signed 32-bit integers comes first
  //   LMD_E_NOT_FOUND         no record of 12 bytes
  virtual HRESULT STDMETHODCALLTYPE GetInfo20Triple(std::uint32_t* p1, std::uint32_t* p2,
                                                    std::uint32_t* p3) = 0;
};

#endif  // LUMIDEX_ILUMIDEX_H_
