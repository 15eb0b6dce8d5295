#ifndef LUMIDEX_ILUMIDEX_H_
#define LUMIDEX_ILUMIDEX_H_

// The one interface of the module, for hosts in C11 and C++17. This header needs nothing but its
// neighbours in this folder. A host gets the class factory of CLSID_Lumidex from DllGetClassObject,
// creates an object with IID_ILumidex, opens a photograph, and reads values. In C, define
// COBJMACROS before the include to get a call macro for each method, as with the system's own
// headers:
//
//   photo->Open(path)                C++
//   ILumidex_Open(photo, path)       C
//
// DllGetClassObject hands out the class factory as IClassFactory or IUnknown: E_POINTER for a null
// output, E_NOINTERFACE, CLASS_E_CLASSNOTAVAILABLE, E_OUTOFMEMORY, S_OK. DllCanUnloadNow answers
// S_FALSE while an object, a parse result or a factory lives or LockServer holds the module, else
// S_OK. The class can be aggregated; its interface is ILumidex.
//
// What holds for every method:
//
// Threads. Calls on one object come from one thread at a time; separate objects may live on
// separate threads, and an object may be handed from one thread to another. AddRef and Release may
// be called on any thread, those of a class factory on one at a time. No method starts a thread or
// waits for anything but files.
//
// Text. Paths are zero-terminated UTF-16. The object keeps at most 259 characters of a path; the
// file itself is opened by the whole path.
//
// Ownership. What a host passes, it keeps: nothing is read or written there after the call. Values
// are copied into the host's buffers. The one thing that a host is given is the reference of
// ParseBasic, which it releases. No file stays open between calls, and no exception leaves one.
//
// Results. Codes stand in the order in which they are decided; LMD_RESULT_CODES says what each
// means. Where memory runs out and no code is named for it, the result is E_OUTOFMEMORY. On failure
// an output keeps what it held unless a method says otherwise. Sizes are in bytes.

#include <stdint.h>

#include "ComTypes.h"
#include "Guids.h"
#include "ImageInfo.h"
#include "ResultCodes.h"

// The answers of GetFileType.
enum LMD_OF_UINT32 {
  LMD_FILE_UNKNOWN = 0,
  LMD_FILE_JPEG = 1,
  LMD_FILE_TIFF = 2,
  LMD_FILE_PNG = 5,
};

// The class, for __uuidof(Lumidex); nothing more is known of it.
#if defined(_WIN32) && defined(__cplusplus)
class DECLSPEC_UUID("9652D740-CF49-448C-A53F-76EC91FDCA16") Lumidex;
#endif

// clang-format off
#undef INTERFACE
#define INTERFACE ILumidex
#if defined(__cplusplus) && !defined(CINTERFACE)
MIDL_INTERFACE("E998C207-72DD-4BA3-AD62-7DD14DDA8293") ILumidex : public IUnknown
#else
LMD_C_INTERFACE(ILumidex)
#endif
{
  LMD_UNKNOWN_METHODS

  // What the first 8 bytes of a file say: LMD_FILE_JPEG (FF D8, ITU-T T.81 section B.1.1.3),
  // LMD_FILE_TIFF ("II*\0" or "MM\0*", TIFF 6.0 section 2), LMD_FILE_PNG (the signature, PNG
  // specification section 5.2), or LMD_FILE_UNKNOWN: anything else, a file shorter than 8 bytes,
  // and one that cannot be opened. The answer is no result code. The object stays as it is. Slot 3.
  STDMETHOD_(int32_t, GetFileType)(THIS_ const WCHAR* path) PURE;

  // Makes a file the object's current one. A JPEG is parsed whole (EXIF 2.32, TIFF 6.0, XMP,
  // IPTC-IIM 4.2, ICC.1) and the records of an earlier parse are released; a PNG is only noted:
  // IsPanorama and the packet readers serve it. A refused file leaves the one before, but for its
  // type. Slot 4.
  //   LMD_E_SRC_NOT_FOUND   the path does not exist or is no regular file
  //   LMD_E_BAD_FORMAT      neither JPEG nor PNG, or path is null
  //   LMD_E_INVALID_ARG     the object could not create its parser
  //   LMD_E_OUT_OF_MEMORY   the parse ran out of memory
  //   S_OK                  also when the file holds no metadata, or is damaged
  STDMETHOD(Open)(THIS_ const WCHAR* path) PURE;

  // The slots 5 to 8, 12 to 15 and 23 to 25 read the maker-note tags 0x0010 to 0x0015 of the
  // current JPEG, of the vendors that the module knows. No public standard says what these mean.

  // The first 32-bit word of tag 0x0010, in the host's byte order. Slot 5.
  //   LMD_E_NOT_FOUND         the current file is a PNG
  //   LMD_E_INVALID_ARG       no parse result, or pValue is null
  //   LMD_E_NOT_FOUND         no such record
  //   LMD_E_TYPE_MISMATCH_16  the record is not of unsigned 32-bit integers
  STDMETHOD(GetInfo16)(THIS_ uint32_t* pValue) PURE;

  // The size in bytes of tag 0x0011. Slot 6.
  //   LMD_E_NOT_FOUND         the current file is a PNG
  //   LMD_E_INVALID_ARG       no parse result, or pSize is null
  //   LMD_E_NOT_FOUND         no such record
  //   LMD_E_TYPE_MISMATCH_17  the record is not of signed rationals
  STDMETHOD(GetInfo17Size)(THIS_ uint32_t* pSize) PURE;

  // Tag 0x0011 as three quotients. The first record of exactly 24 bytes is read. Slot 7.
  //   LMD_E_NOT_FOUND         the current file is a PNG
  //   LMD_E_INVALID_ARG       no parse result, or a pointer is null
  //   LMD_E_TYPE_MISMATCH_17  a record that is not of signed rationals comes first
  //   LMD_E_NOT_FOUND         no record of 24 bytes
  //   E_FAIL                  a denominator is 0
  STDMETHOD(GetInfo17Triple)(THIS_ double* p1, double* p2, double* p3) PURE;

  // The bytes of tag 0x0011: pairs of signed 32-bit integers in the host's byte order. *pSize is
  // the buffer's size in bytes on entry and the number of bytes written on success. Slot 8.
  //   LMD_E_NOT_FOUND         the current file is a PNG
  //   LMD_E_INVALID_ARG       no parse result, or a pointer is null
  //   LMD_E_NOT_FOUND         no such record
  //   LMD_E_TYPE_MISMATCH_17  the record is not of signed rationals
  //   LMD_E_BUFFER_TOO_SMALL  *pSize is smaller than the value; nothing is written
  STDMETHOD(GetInfo17Data)(THIS_ uint32_t* pSize, uint8_t* pBuffer) PURE;

  // Writes a copy of a JPEG or PNG with the packet of an XMP file, unchanged, in an APP1 segment or
  // an iTXt chunk (XMP part 3). A PNG whose output is named by the very text that names the source
  // gets it in place. A partial output stays; a PNG written in place gets its old contents back.
  // The object's file type becomes that of src even when the call is refused, its path becomes src
  // once the output is accepted; its parse result stays. Slot 9.
  //   LMD_E_SRC_NOT_FOUND     src or xmp is given and does not exist or is no regular file
  //   LMD_E_BAD_FORMAT        src is neither JPEG nor PNG, cannot be opened, or is null
  //   LMD_E_DST_EXISTS        dst exists, a folder included, or is null, unless a PNG is written in
  //                           place; or it is the same file as xmp, by whatever name, or may be
  //   LMD_E_OPEN_FAILED       xmp, or a PNG to be written in place, cannot be opened, or xmp is null
  //   LMD_E_BAD_FORMAT        src does not begin as its type does
  //   LMD_E_XMP_FOUND         a JPEG with a packet, or a PNG with one that holds "equirectangular"
  //   LMD_E_OUT_OF_MEMORY     while a PNG was searched
  //   LMD_E_READ_FAILED       src could not be searched to its end
  //   LMD_E_BUFFER_TOO_SMALL  the XMP file has more than 65504 bytes for a JPEG, 65505 for a PNG
  //   LMD_E_READ_FAILED       the XMP file cannot be read
  //   in place:
  //   LMD_E_BAD_FORMAT        the last 12 bytes are not the IEND chunk
  //   LMD_E_WRITE_FAILED      the chunk could not be written
  //   else:
  //   LMD_E_OPEN_FAILED       dst cannot be created
  //   LMD_E_READ_FAILED, LMD_E_WRITE_FAILED, whichever comes first
  STDMETHOD(EmbedXmpFile)(THIS_ const WCHAR* src, const WCHAR* dst, const WCHAR* xmp) PURE;

  // Whether the current file is marked as a panorama by a GPano projection type (the Photo Sphere
  // XMP properties), whatever its value. *pFlag becomes 1 or 0; it is 0 on every failure but a null
  // pointer. Slot 10.
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
  STDMETHOD(IsPanorama)(THIS_ uint32_t* pFlag) PURE;

  // Appends the fixed 64-byte trailer block to a file. The file type is not checked. The object
  // stays as it is. No public standard describes the block. Slot 11.
  //   LMD_E_SRC_NOT_FOUND     the path does not exist or is no regular file
  //   LMD_E_OPEN_FAILED       the file cannot be opened for writing, or path is null
  //   LMD_E_READ_FAILED       the file is shorter than 64 bytes
  //   LMD_E_ALREADY_MARKED    the file ends with the block
  //   LMD_E_WRITE_FAILED      the block could not be written; the file keeps its old size
  STDMETHOD(AppendTrailer)(THIS_ const WCHAR* path) PURE;

  // The size in bytes of tag 0x0012. Slot 12.
  //   as GetInfo17Size, with LMD_E_TYPE_MISMATCH_18 for a record that is neither of signed 32-bit
  //   integers nor of bytes
  STDMETHOD(GetInfo18Size)(THIS_ uint32_t* pSize) PURE;

  // The bytes of tag 0x0012, with the sizes of GetInfo17Data. Slot 13.
  //   LMD_E_INVALID_ARG       no parse result (a PNG included), or a pointer is null
  //   LMD_E_NOT_FOUND         no such record
  //   LMD_E_TYPE_MISMATCH_18  the record is neither of signed 32-bit integers nor of bytes
  //   LMD_E_BUFFER_TOO_SMALL  *pSize is smaller than the value; nothing is written
  STDMETHOD(GetInfo18Data)(THIS_ uint32_t* pSize, uint8_t* pBuffer) PURE;

  // The size in bytes of tag 0x0013. Slot 14.
  //   as GetInfo17Size, with LMD_E_TYPE_MISMATCH_19 for a record that is not of bytes
  STDMETHOD(GetInfo19Size)(THIS_ uint32_t* pSize) PURE;

  // The bytes of tag 0x0013. Slot 15.
  //   as GetInfo17Data, with LMD_E_TYPE_MISMATCH_19 for a record that is not of bytes
  STDMETHOD(GetInfo19Data)(THIS_ uint32_t* pSize, uint8_t* pBuffer) PURE;

  // Writes a copy of a JPEG with a new EXIF segment built from `count` records (EXIF 2.32,
  // TIFF 6.0), the packet of an XMP file (XMP part 3), or both. A thumbnail, a whole JPEG stream,
  // has opt32 bytes at the address opt64; there is none when either is 0. Records of the groups
  // LMD_GROUP_IFD0, _EXIF and _GPS are written, their integers in 32 bits each; what is not
  // accepted is dropped without a message. Nothing of the source's EXIF is merged: the source's own
  // segment follows the new one, so that a parse of the copy finds the old values, and what stood
  // before it is left out. With overwrite other than 0, dst may exist and src may have an EXIF
  // segment. A partial output stays. The object's file type becomes that of src even when the call
  // is refused, its path becomes src once the arguments are accepted; its parse result stays.
  // Slot 16.
  //   LMD_E_SRC_NOT_FOUND     src does not exist, is no regular file, or is null
  //   LMD_E_BAD_FORMAT        src is no JPEG, or cannot be opened
  //   LMD_E_DST_EXISTS        without overwrite: dst exists, a folder included, or is null
  //   LMD_E_DST_EXISTS        dst is the same file as src or xmp, by whatever name, or may be, as
  //                           far as the system tells
  //   LMD_E_INVALID_ARG       items with a count of 0, or neither items nor xmp
  //   LMD_E_SRC_NOT_FOUND     xmp is given and does not exist or is no regular file
  //   with items:
  //   LMD_E_BAD_FORMAT        src does not begin as a JPEG does
  //   LMD_E_HAS_EXIF          src has an EXIF segment, without overwrite
  //   with xmp:
  //   LMD_E_OPEN_FAILED       xmp cannot be opened
  //   LMD_E_BAD_FORMAT        src does not begin as a JPEG does
  //   LMD_E_XMP_FOUND         src has a packet
  //   LMD_E_BUFFER_TOO_SMALL  the XMP file has more than 65504 bytes
  //   LMD_E_READ_FAILED       the XMP file cannot be read
  //   in all cases:
  //   LMD_E_BUFFER_TOO_SMALL  records and thumbnail need a TIFF block of more than 64000 bytes
  //   LMD_E_READ_FAILED       src could not be searched to its end
  //   LMD_E_OPEN_FAILED       dst cannot be created, or is null
  //   LMD_E_READ_FAILED, LMD_E_WRITE_FAILED, whichever comes first
  STDMETHOD(WriteMetadata)(THIS_ const WCHAR* src, const WCHAR* dst, uint32_t count,
                           const CInfoRecord* items, uint32_t opt32, uint64_t opt64,
                           const WCHAR* xmp, uint32_t overwrite) PURE;

  // How many bytes of buffer GetXmpPacket needs for the current file. The packet is looked for
  // where EmbedXmpFile puts it (XMP part 3). For a JPEG this is the segment's length, 31 more than
  // the packet has; for a PNG what its chunk tells, even if the file has less. Slot 17.
  //   LMD_E_INVALID_ARG       there is no current file, or pSize is null
  //   LMD_E_OPEN_FAILED       the file cannot be opened
  //   LMD_E_NOT_FOUND         the last file whose type was told is neither JPEG nor PNG
  //   LMD_E_BAD_FORMAT        the file does not begin as its type does
  //   LMD_E_OUT_OF_MEMORY     while a PNG was searched
  //   LMD_E_NOT_FOUND         no packet, or in a PNG none that holds "equirectangular"
  //   LMD_E_BAD_FORMAT        the chunk of a PNG is too short for a packet
  //   LMD_E_READ_FAILED       the length of a JPEG's segment cannot be read
  STDMETHOD(GetXmpPacketSize)(THIS_ uint32_t* pSize) PURE;

  // The bytes of the current file's XMP packet. The buffer has at least the size that
  // GetXmpPacketSize last told of this file: no more is written, whatever the file has become.
  // Without such an answer the buffer is not checked. *pSize is only written; for a JPEG it becomes
  // 2 more than the number of bytes written to the buffer, for a PNG that number. Slot 18.
  //   as GetXmpPacketSize, LMD_E_INVALID_ARG for a null pBuffer as well, then
  //   LMD_E_BAD_FORMAT        the segment of a JPEG is too short for a packet
  //   LMD_E_BUFFER_TOO_SMALL  the packet has more bytes than GetXmpPacketSize last told
  //   LMD_E_READ_FAILED       the file ends inside the packet, or cannot be read
  STDMETHOD(GetXmpPacket)(THIS_ uint32_t* pSize, uint8_t* pBuffer) PURE;

  // The panorama pose angles in degrees: GPano PoseHeadingDegrees, PosePitchDegrees and
  // PoseRollDegrees (the Photo Sphere XMP properties). A text that is no number reads as 0.
  // Slots 19, 20, 21.
  //   LMD_E_INVALID_ARG       no parse result (a PNG included), or pValue is null
  //   LMD_E_NOT_FOUND         no such text record
  STDMETHOD(GetPoseHeading)(THIS_ float* pValue) PURE;
  STDMETHOD(GetPosePitch)(THIS_ float* pValue) PURE;
  STDMETHOD(GetPoseRoll)(THIS_ float* pValue) PURE;

  // Parses a JPEG for its records of the groups LMD_GROUP_BASICS, _IFD0, _EXIF and _GPS alone and
  // hands the result to the caller, who owns one reference and releases it. The file becomes the
  // one that IsPanorama and the packet readers look at; the object's own parse result, which the
  // other getters read, stays. *ppInfo is set to null first; it stays null for a PNG. On a failure
  // inside the parse it may hold an empty result, which is released as well. Slot 22.
  //   LMD_E_SRC_NOT_FOUND   the path does not exist or is no regular file
  //   LMD_E_BAD_FORMAT      neither JPEG nor PNG, or path is null
  //   LMD_E_INVALID_ARG     the object could not create its parser
  //   E_POINTER             a JPEG, and ppInfo is null
  //   LMD_E_OUT_OF_MEMORY   the parse ran out of memory
  //   S_OK                  also when the file holds no metadata, or is damaged
  STDMETHOD(ParseBasic)(THIS_ const WCHAR* path, IImageInfo** ppInfo) PURE;

  // The size in bytes of tag 0x0015. Slot 23.
  //   as GetInfo17Size, with LMD_E_TYPE_MISMATCH_21 for a record that is not of bytes
  STDMETHOD(GetInfo21Size)(THIS_ uint32_t* pSize) PURE;

  // The bytes of tag 0x0015. Slot 24.
  //   as GetInfo17Data, with LMD_E_TYPE_MISMATCH_21 for a record that is not of bytes
  STDMETHOD(GetInfo21Data)(THIS_ uint32_t* pSize, uint8_t* pBuffer) PURE;

  // Tag 0x0014 as three 32-bit words. The first record of exactly 12 bytes is read. Slot 25.
  //   LMD_E_NOT_FOUND         the current file is a PNG
  //   LMD_E_INVALID_ARG       no parse result, or a pointer is null
  //   LMD_E_TYPE_MISMATCH_20  a record that is not of signed 32-bit integers comes first
  //   LMD_E_NOT_FOUND         no record of 12 bytes
  STDMETHOD(GetInfo20Triple)(THIS_ uint32_t* p1, uint32_t* p2, uint32_t* p3) PURE;
};
// clang-format on

// For __uuidof(ILumidex) and IID_PPV_ARGS with compilers that have no identifiers of their own.
#if defined(__CRT_UUID_DECL) && defined(__cplusplus) && !defined(CINTERFACE)
__CRT_UUID_DECL(Lumidex, 0x9652D740, 0xCF49, 0x448C, 0xA5, 0x3F, 0x76, 0xEC, 0x91, 0xFD, 0xCA, 0x16)
__CRT_UUID_DECL(ILumidex, 0xE998C207, 0x72DD, 0x4BA3, 0xAD, 0x62, 0x7D, 0xD1, 0x4D, 0xDA, 0x82,
                0x93)
#endif

#if defined(COBJMACROS) && (!defined(__cplusplus) || defined(CINTERFACE))
#define ILumidex_QueryInterface(This, riid, ppv) (This)->lpVtbl->QueryInterface(This, riid, ppv)
#define ILumidex_AddRef(This) (This)->lpVtbl->AddRef(This)
#define ILumidex_Release(This) (This)->lpVtbl->Release(This)
#define ILumidex_GetFileType(This, path) (This)->lpVtbl->GetFileType(This, path)
#define ILumidex_Open(This, path) (This)->lpVtbl->Open(This, path)
#define ILumidex_GetInfo16(This, pValue) (This)->lpVtbl->GetInfo16(This, pValue)
#define ILumidex_GetInfo17Size(This, pSize) (This)->lpVtbl->GetInfo17Size(This, pSize)
#define ILumidex_GetInfo17Triple(This, p1, p2, p3) (This)->lpVtbl->GetInfo17Triple(This, p1, p2, p3)
#define ILumidex_GetInfo17Data(This, pSize, pBuffer) \
  (This)->lpVtbl->GetInfo17Data(This, pSize, pBuffer)
#define ILumidex_EmbedXmpFile(This, src, dst, xmp) (This)->lpVtbl->EmbedXmpFile(This, src, dst, xmp)
#define ILumidex_IsPanorama(This, pFlag) (This)->lpVtbl->IsPanorama(This, pFlag)
#define ILumidex_AppendTrailer(This, path) (This)->lpVtbl->AppendTrailer(This, path)
#define ILumidex_GetInfo18Size(This, pSize) (This)->lpVtbl->GetInfo18Size(This, pSize)
#define ILumidex_GetInfo18Data(This, pSize, pBuffer) \
  (This)->lpVtbl->GetInfo18Data(This, pSize, pBuffer)
#define ILumidex_GetInfo19Size(This, pSize) (This)->lpVtbl->GetInfo19Size(This, pSize)
#define ILumidex_GetInfo19Data(This, pSize, pBuffer) \
  (This)->lpVtbl->GetInfo19Data(This, pSize, pBuffer)
#define ILumidex_WriteMetadata(This, src, dst, count, items, opt32, opt64, xmp, overwrite) \
  (This)->lpVtbl->WriteMetadata(This, src, dst, count, items, opt32, opt64, xmp, overwrite)
#define ILumidex_GetXmpPacketSize(This, pSize) (This)->lpVtbl->GetXmpPacketSize(This, pSize)
#define ILumidex_GetXmpPacket(This, pSize, pBuffer) \
  (This)->lpVtbl->GetXmpPacket(This, pSize, pBuffer)
#define ILumidex_GetPoseHeading(This, pValue) (This)->lpVtbl->GetPoseHeading(This, pValue)
#define ILumidex_GetPosePitch(This, pValue) (This)->lpVtbl->GetPosePitch(This, pValue)
#define ILumidex_GetPoseRoll(This, pValue) (This)->lpVtbl->GetPoseRoll(This, pValue)
#define ILumidex_ParseBasic(This, path, ppInfo) (This)->lpVtbl->ParseBasic(This, path, ppInfo)
#define ILumidex_GetInfo21Size(This, pSize) (This)->lpVtbl->GetInfo21Size(This, pSize)
#define ILumidex_GetInfo21Data(This, pSize, pBuffer) \
  (This)->lpVtbl->GetInfo21Data(This, pSize, pBuffer)
#define ILumidex_GetInfo20Triple(This, p1, p2, p3) (This)->lpVtbl->GetInfo20Triple(This, p1, p2, p3)
#endif

#endif  // LUMIDEX_ILUMIDEX_H_
