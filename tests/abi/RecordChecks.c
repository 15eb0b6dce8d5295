/* The record types as a host finds them in memory, on live parse results. */

#include <stddef.h>
#include <string.h>

#include "Abi.h"
#include "Checks.h"
#include "Files.h"

typedef struct {
  uint32_t group;
  uint32_t id;
  uint32_t type;
  uint32_t size;
  const void* data;
} ExpectedRecord;

static const uint32_t kWidth = 640;
static const uint32_t kHeight = 480;
static const uint32_t kOrientation = 6;
static const uint32_t kThree = 3;
static const uint32_t kTwo = 2;
static const uint32_t kResolution[] = {72, 1};
static const uint32_t kExposure[] = {1, 250};

/* The values of the EXIF test file; 3 is the default of samples per pixel and the code of a colour
 * space of 2. */
static const ExpectedRecord kExpected[] = {
    {1, 256, 0x1001, 4, &kWidth},       {1, 257, 0x1001, 4, &kHeight},
    {1, 274, 0x1001, 4, &kOrientation}, {1, 277, 0x1001, 4, &kThree},
    {1, 11, 0x1001, 4, &kThree},        {2, 271, 4, 8, "Example"},
    {2, 274, 0x1001, 4, &kOrientation}, {2, 282, 0x1002, 8, kResolution},
    {4, 0x829A, 0x1002, 8, kExposure},  {4, 0xA001, 0x1001, 4, &kTwo},
};
enum { EXPECTED_COUNT = sizeof kExpected / sizeof kExpected[0] };

enum {
  OFFSET_STATE = 8,
  OFFSET_RECORDS = 16,
  OFFSET_COUNT = 24,
  RECORD_SIZE = 32,
  OFFSET_DATA = 16,
  OFFSET_DOUBLE = 24
};

static uint32_t WordAt(const void* object, size_t offset) {
  uint32_t word;
  memcpy(&word, (const uint8_t*)object + offset, sizeof word);
  return word;
}

static const uint8_t* PointerAt(const void* object, size_t offset) {
  const uint8_t* pointer;
  memcpy(&pointer, (const uint8_t*)object + offset, sizeof pointer);
  return pointer;
}

static void* ListOf(void* info) {
  typedef void* (*Call)(void*);
  return ((Call)At(info, SLOT_GET_INFO_LIST))(info);
}

/* Hosts pass an output of their own, which the object ignores. */
static uint32_t StateOf(void* info) {
  typedef int32_t (*Call)(void*, uint32_t*);
  uint32_t ignored = 77;
  uint32_t state = (uint32_t)((Call)At(info, SLOT_GET_STATE))(info, &ignored);
  CHECK_EQUAL(77, ignored);
  return state;
}

static void CheckRecord(const uint8_t* record, const ExpectedRecord* expected) {
  CHECK_EQUAL(expected->group, WordAt(record, 0));
  CHECK_EQUAL(expected->id, WordAt(record, 4));
  CHECK_EQUAL(expected->type, WordAt(record, 8));
  CHECK_EQUAL(expected->size, WordAt(record, 12));
  CHECK(memcmp(PointerAt(record, OFFSET_DATA), expected->data, expected->size) == 0);
  CHECK_EQUAL(0, WordAt(record, OFFSET_DOUBLE));
  CHECK_EQUAL(0, WordAt(record, OFFSET_DOUBLE + 4));
}

static void CheckList(void* info) {
  const void* list = ListOf(info);
  CHECK_EQUAL(1, StateOf(info));
  CHECK_EQUAL(1, WordAt(list, OFFSET_STATE));
  CHECK_EQUAL(EXPECTED_COUNT, WordAt(list, OFFSET_COUNT));
  if (WordAt(list, OFFSET_COUNT) != EXPECTED_COUNT) return;
  const uint8_t* records = PointerAt(list, OFFSET_RECORDS);
  for (size_t i = 0; i < EXPECTED_COUNT; ++i) {
    CheckRecord(records + i * RECORD_SIZE, &kExpected[i]);
  }
}

static void* ParseBasic(void* object, const char* name) {
  void* info = NULL;
  CHECK_EQUAL(CODE_OK, CallPathOut(object, SLOT_PARSE_BASIC, Wide(name), &info));
  return info;
}

void CheckRecordList(void) {
  void* object = NewLumidex();
  Content jpeg = ExifJpeg();
  WriteInput("abi-exif.jpg", jpeg.bytes, jpeg.size);
  void* info = ParseBasic(object, "abi-exif.jpg");
  CHECK(info != NULL);
  if (info != NULL) {
    CheckList(info);
    CHECK_EQUAL(0, Release(info));
  }
  RemoveInput("abi-exif.jpg");
  Release(object);
}

void CheckResultLifetime(void) {
  void* object = NewLumidex();
  void* out = NULL;
  uint32_t value = 0;
  Content jpeg = ExifJpeg();
  WriteInput("abi-exif.jpg", jpeg.bytes, jpeg.size);
  void* first = ParseBasic(object, "abi-exif.jpg");
  void* second = ParseBasic(object, "abi-exif.jpg");
  RemoveInput("abi-exif.jpg");
  CHECK(first != NULL && second != NULL && first != second);
  if (first == NULL || second == NULL) return;
  CHECK(ListOf(first) != ListOf(second));

  /* The result belongs to the caller; the object itself has still none. */
  CHECK_EQUAL(CODE_INVALID_ARG, CallWord(object, SLOT_GET_INFO_16, &value));
  CHECK_EQUAL(0, Release(first));
  CHECK_EQUAL(0, Release(object));
  CHECK_EQUAL(CODE_FALSE, CanUnloadNow());

  CHECK_EQUAL(2, AddRef(second));
  CHECK_EQUAL(CODE_OK, QueryInterface(second, &kIidUnknown, &out));
  CHECK_EQUAL(2, Release(out));
  out = second;
  CHECK_EQUAL(CODE_NO_INTERFACE, QueryInterface(second, &kIidLumidex, &out));
  CHECK(out == NULL);
  CHECK_EQUAL(1, Release(second));
  CheckList(second);
  CHECK_EQUAL(0, Release(second));
  CHECK_EQUAL(CODE_OK, CanUnloadNow());
}
