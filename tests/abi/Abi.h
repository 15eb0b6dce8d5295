#ifndef LUMIDEX_TESTS_ABI_ABI_H_
#define LUMIDEX_TESTS_ABI_ABI_H_

/* The module's binary interface as a host without its headers sees it: numbers of slots, codes,
 * identifiers and offsets. Nothing here comes from include/lumidex, so that a change of layout
 * there cannot go unnoticed. */

#include <stdint.h>

typedef uint16_t WideChar;
typedef int32_t Result;

typedef struct {
  uint32_t data1;
  uint16_t data2;
  uint16_t data3;
  uint8_t data4[8];
} Guid;

extern const Guid kIidUnknown;
extern const Guid kIidClassFactory;
extern const Guid kIidLumidex;
extern const Guid kClsidLumidex;
extern const Guid kUnusedGuid;

/* IUnknown */
enum { SLOT_QUERY_INTERFACE = 0, SLOT_ADD_REF = 1, SLOT_RELEASE = 2 };

/* IClassFactory */
enum { SLOT_CREATE_INSTANCE = 3, SLOT_LOCK_SERVER = 4 };

/* IImageInfo */
enum { SLOT_GET_STATE = 3, SLOT_GET_INFO_LIST = 4 };

/* ILumidex */
enum {
  SLOT_GET_FILE_TYPE = 3,
  SLOT_OPEN = 4,
  SLOT_GET_INFO_16 = 5,
  SLOT_GET_INFO_17_SIZE = 6,
  SLOT_GET_INFO_17_TRIPLE = 7,
  SLOT_GET_INFO_17_DATA = 8,
  SLOT_EMBED_XMP_FILE = 9,
  SLOT_IS_PANORAMA = 10,
  SLOT_APPEND_TRAILER = 11,
  SLOT_GET_INFO_18_SIZE = 12,
  SLOT_GET_INFO_18_DATA = 13,
  SLOT_GET_INFO_19_SIZE = 14,
  SLOT_GET_INFO_19_DATA = 15,
  SLOT_WRITE_METADATA = 16,
  SLOT_GET_XMP_PACKET_SIZE = 17,
  SLOT_GET_XMP_PACKET = 18,
  SLOT_GET_POSE_HEADING = 19,
  SLOT_GET_POSE_PITCH = 20,
  SLOT_GET_POSE_ROLL = 21,
  SLOT_PARSE_BASIC = 22,
  SLOT_GET_INFO_21_SIZE = 23,
  SLOT_GET_INFO_21_DATA = 24,
  SLOT_GET_INFO_20_TRIPLE = 25
};

#define CODE_OK 0x00000000U
#define CODE_FALSE 0x00000001U
#define CODE_NO_INTERFACE 0x80004002U
#define CODE_POINTER 0x80004003U
#define CODE_CLASS_NOT_AVAILABLE 0x80040111U
#define CODE_SRC_NOT_FOUND 0x8004C001U
#define CODE_DST_EXISTS 0x8004C002U
#define CODE_OPEN_FAILED 0x8004C003U
#define CODE_READ_FAILED 0x8004C004U
#define CODE_BUFFER_TOO_SMALL 0x8004C011U
#define CODE_INVALID_ARG 0x8004C012U
#define CODE_XMP_FOUND 0x8004C021U
#define CODE_BAD_FORMAT 0x8004C022U
#define CODE_NOT_FOUND 0x8004C025U
#define CODE_NOT_PANORAMA 0x8004C026U
#define CODE_HAS_EXIF 0x8004C029U
#define CODE_ALREADY_MARKED 0x8004C032U

/* A function of no known type: what a table of an object holds, and what a module exports. */
typedef void (*Function)(void);

/* What an object's table holds in a slot. */
Function At(void* object, unsigned slot);

/* The two exports. */
Result GetClassObject(const Guid* classId, const Guid* interfaceId, void** object);
Result CanUnloadNow(void);

/* Calls through the table, by slot and argument types. Results are unsigned so that codes compare
 * as they are written. */
uint32_t QueryInterface(void* object, const Guid* interfaceId, void** out);
uint32_t AddRef(void* object);
uint32_t Release(void* object);
uint32_t CreateInstance(void* factory, void* outer, const Guid* interfaceId, void** out);
uint32_t LockServer(void* factory, int32_t lock);
uint32_t CallPath(void* object, unsigned slot, const WideChar* path);
uint32_t CallPathOut(void* object, unsigned slot, const WideChar* path, void** out);
uint32_t CallWord(void* object, unsigned slot, uint32_t* value);
uint32_t CallFloat(void* object, unsigned slot, float* value);
uint32_t CallBuffer(void* object, unsigned slot, uint32_t* size, uint8_t* buffer);
uint32_t CallWords(void* object, unsigned slot, uint32_t* p1, uint32_t* p2, uint32_t* p3);
uint32_t CallDoubles(void* object, unsigned slot, double* p1, double* p2, double* p3);

/* One value for slot 16, as it lies in memory. */
typedef struct {
  uint32_t group;
  uint32_t id;
  uint32_t type;
  uint32_t size;
  const uint8_t* data;
  double value;
} WriteRecord;

/* The arguments of slot 16 in their order. */
typedef struct {
  const WideChar* source;
  const WideChar* output;
  uint32_t count;
  const WriteRecord* records;
  uint32_t thumbnailLength;
  uint64_t thumbnailAddress;
  const WideChar* packet;
  uint32_t overwrite;
} WriteArguments;

uint32_t CallEmbed(void* object, const WideChar* source, const WideChar* output,
                   const WideChar* packet);
uint32_t CallWrite(void* object, const WriteArguments* arguments);

/* A class factory, and an object of the class as ILumidex with a count of 1. They end the program
 * when the module does not give them. */
void* NewFactory(void);
void* NewLumidex(void);

#endif /* LUMIDEX_TESTS_ABI_ABI_H_ */
