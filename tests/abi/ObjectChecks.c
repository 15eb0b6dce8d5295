/* Every slot of the object in each of its states: before a file is open, with a JPEG, with a PNG.
 */

#include <stddef.h>
#include <string.h>

#include "Abi.h"
#include "Checks.h"
#include "Files.h"

typedef enum { WORD, FLOAT, BUFFER, THREE_WORDS, THREE_DOUBLES } Shape;

typedef struct {
  unsigned slot;
  Shape shape;
  int asksForPng; /* answers for a PNG before it looks at anything else */
} ReadMethod;

static const ReadMethod kReadMethods[] = {
    {SLOT_GET_INFO_16, WORD, 1},
    {SLOT_GET_INFO_17_SIZE, WORD, 1},
    {SLOT_GET_INFO_17_TRIPLE, THREE_DOUBLES, 1},
    {SLOT_GET_INFO_17_DATA, BUFFER, 1},
    {SLOT_GET_INFO_18_SIZE, WORD, 1},
    {SLOT_GET_INFO_18_DATA, BUFFER, 0},
    {SLOT_GET_INFO_19_SIZE, WORD, 1},
    {SLOT_GET_INFO_19_DATA, BUFFER, 1},
    {SLOT_GET_POSE_HEADING, FLOAT, 0},
    {SLOT_GET_POSE_PITCH, FLOAT, 0},
    {SLOT_GET_POSE_ROLL, FLOAT, 0},
    {SLOT_GET_INFO_21_SIZE, WORD, 1},
    {SLOT_GET_INFO_21_DATA, BUFFER, 1},
    {SLOT_GET_INFO_20_TRIPLE, THREE_WORDS, 1},
};

/* The outputs of one call, and what they hold when a call leaves them alone. */
typedef struct {
  double doubles[3];
  uint32_t words[3];
  float number;
  uint8_t bytes[16];
} Outputs;

static Outputs FreshOutputs(void) {
  Outputs outputs;
  memset(&outputs, 0x5A, sizeof outputs);
  return outputs;
}

static int AreFresh(const Outputs* outputs) {
  for (size_t i = 0; i < sizeof *outputs; ++i) {
    if (((const uint8_t*)outputs)[i] != 0x5A) return 0;
  }
  return 1;
}

static unsigned OutputCount(Shape shape) {
  if (shape == BUFFER) return 2;
  return shape == THREE_WORDS || shape == THREE_DOUBLES ? 3 : 1;
}

/* Calls a read method; the output of the given number, from 0, is a null pointer. */
static uint32_t CallWithNull(void* object, const ReadMethod* method, Outputs* outputs,
                             unsigned null) {
  uint32_t* w[3];
  double* d[3];
  for (unsigned i = 0; i < 3; ++i) {
    w[i] = i == null ? NULL : &outputs->words[i];
    d[i] = i == null ? NULL : &outputs->doubles[i];
  }
  switch (method->shape) {
    case WORD:
      return CallWord(object, method->slot, w[0]);
    case FLOAT:
      return CallFloat(object, method->slot, null == 0 ? NULL : &outputs->number);
    case BUFFER:
      return CallBuffer(object, method->slot, w[0], null == 1 ? NULL : outputs->bytes);
    case THREE_WORDS:
      return CallWords(object, method->slot, w[0], w[1], w[2]);
    case THREE_DOUBLES:
      return CallDoubles(object, method->slot, d[0], d[1], d[2]);
  }
  return 0;
}

/* Every read method, with all its outputs and with each of them missing. */
static void CheckReads(void* object, uint32_t whole, uint32_t nullArgument, uint32_t unasked) {
  enum { NO_NULL = 3 };
  Outputs outputs = FreshOutputs();
  for (size_t i = 0; i < sizeof kReadMethods / sizeof kReadMethods[0]; ++i) {
    const ReadMethod* method = &kReadMethods[i];
    uint32_t expected = method->asksForPng ? whole : unasked;
    uint32_t expectedNull = method->asksForPng ? nullArgument : CODE_INVALID_ARG;
    CHECK_EQUAL(expected, CallWithNull(object, method, &outputs, NO_NULL));
    for (unsigned null = 0; null < OutputCount(method->shape); ++null) {
      CHECK_EQUAL(expectedNull, CallWithNull(object, method, &outputs, null));
    }
  }
  CHECK(AreFresh(&outputs));
}

static void CheckPanorama(void* object, uint32_t expected, uint32_t expectedFlag) {
  uint32_t flag = 99;
  CHECK_EQUAL(expected, CallWord(object, SLOT_IS_PANORAMA, &flag));
  CHECK_EQUAL(expectedFlag, flag);
  CHECK_EQUAL(CODE_INVALID_ARG, CallWord(object, SLOT_IS_PANORAMA, NULL));
}

/* The packet methods, with all their outputs and with each of them missing. */
static void CheckPacketReads(void* object, uint32_t expected) {
  uint32_t size = 99;
  uint8_t buffer[64] = {0};
  CHECK_EQUAL(expected, CallWord(object, SLOT_GET_XMP_PACKET_SIZE, &size));
  CHECK_EQUAL(expected, CallBuffer(object, SLOT_GET_XMP_PACKET, &size, buffer));
  CHECK((size == 99) == (expected != CODE_OK));
  CHECK_EQUAL(CODE_INVALID_ARG, CallWord(object, SLOT_GET_XMP_PACKET_SIZE, NULL));
  CHECK_EQUAL(CODE_INVALID_ARG, CallBuffer(object, SLOT_GET_XMP_PACKET, NULL, buffer));
  CHECK_EQUAL(CODE_INVALID_ARG, CallBuffer(object, SLOT_GET_XMP_PACKET, &size, NULL));
}

void CheckBeforeOpen(void) {
  void* object = NewLumidex();
  CheckReads(object, CODE_INVALID_ARG, CODE_INVALID_ARG, CODE_INVALID_ARG);
  CheckPanorama(object, CODE_NOT_FOUND, 0);
  CheckPacketReads(object, CODE_INVALID_ARG);
  Release(object);
}

/* A JPEG without a maker note and without XMP properties. */
static void CheckJpegWithoutValues(const Content* jpeg, uint32_t panorama, uint32_t packet) {
  void* object = NewLumidex();
  WriteInput("abi.jpg", jpeg->bytes, jpeg->size);
  CHECK_EQUAL(CODE_OK, CallPath(object, SLOT_OPEN, Wide("abi.jpg")));
  CheckReads(object, CODE_NOT_FOUND, CODE_INVALID_ARG, CODE_NOT_FOUND);
  CheckPanorama(object, panorama, 0);
  CheckPacketReads(object, packet);

  /* Nothing but a parse result is needed for the values; the locators need the file. */
  RemoveInput("abi.jpg");
  CheckReads(object, CODE_NOT_FOUND, CODE_INVALID_ARG, CODE_NOT_FOUND);
  CheckPanorama(object, CODE_NOT_FOUND, 0);
  CheckPacketReads(object, CODE_OPEN_FAILED);
  Release(object);
  CHECK_EQUAL(CODE_OK, CanUnloadNow());
}

void CheckPlainJpeg(void) {
  Content jpeg = PlainJpeg();
  CheckJpegWithoutValues(&jpeg, CODE_NOT_FOUND, CODE_NOT_FOUND);
}

void CheckXmpJpeg(void) {
  Content jpeg = XmpJpeg();
  CheckJpegWithoutValues(&jpeg, CODE_NOT_PANORAMA, CODE_OK);
}

static void OpenPng(void* object, const char* text) {
  Content png = PngWithXmp(text);
  WriteInput("abi.png", png.bytes, png.size);
  CHECK_EQUAL(CODE_OK, CallPath(object, SLOT_OPEN, Wide("abi.png")));
}

void CheckPng(void) {
  void* object = NewLumidex();
  OpenPng(object, "flat");
  CheckReads(object, CODE_NOT_FOUND, CODE_NOT_FOUND, CODE_INVALID_ARG);
  CheckPanorama(object, CODE_OK, 0);
  CheckPacketReads(object, CODE_NOT_FOUND);

  OpenPng(object, "so equirectangular!");
  CheckReads(object, CODE_NOT_FOUND, CODE_NOT_FOUND, CODE_INVALID_ARG);
  CheckPanorama(object, CODE_OK, 1);
  CheckPacketReads(object, CODE_OK);

  /* A JPEG before the PNG leaves nothing behind. */
  Content jpeg = ExifJpeg();
  WriteInput("abi.jpg", jpeg.bytes, jpeg.size);
  CHECK_EQUAL(CODE_OK, CallPath(object, SLOT_OPEN, Wide("abi.jpg")));
  CheckReads(object, CODE_NOT_FOUND, CODE_INVALID_ARG, CODE_NOT_FOUND);
  OpenPng(object, "flat");
  CheckReads(object, CODE_NOT_FOUND, CODE_NOT_FOUND, CODE_INVALID_ARG);

  void* info = object;
  CHECK_EQUAL(CODE_OK, CallPathOut(object, SLOT_PARSE_BASIC, Wide("abi.png"), &info));
  CHECK(info == NULL);
  CHECK_EQUAL(CODE_OK, CallPathOut(object, SLOT_PARSE_BASIC, Wide("abi.png"), NULL));

  RemoveInput("abi.png");
  CheckPanorama(object, CODE_NOT_FOUND, 0);
  RemoveInput("abi.jpg");
  Release(object);
  CHECK_EQUAL(CODE_OK, CanUnloadNow());
}

void CheckFileTypes(void) {
  static const struct {
    const char* name;
    uint8_t bytes[8];
    size_t size;
    uint32_t type;
  } files[] = {
      {"abi-type.jpg", {0xFF, 0xD8, 1, 2, 3, 4, 5, 6}, 8, 1},
      {"abi-type.any", {0xFF, 0xD8, 1, 2, 3, 4, 5, 6}, 8, 1},
      {"abi-type.jpg", {0xFF, 0xD8, 1, 2, 3, 4, 5}, 7, 0},
      {"abi-type.jpg", {0xFF, 0xD9, 1, 2, 3, 4, 5, 6}, 8, 0},
      {"abi-type.any", {0xFF, 0xD9, 1, 2, 3, 4, 5, 6}, 8, 0},
      {"abi-type.tif", {'I', 'I', 0x2A, 0, 8, 0, 0, 0}, 8, 2},
      {"abi-type.tif", {'M', 'M', 0, 0x2A, 0, 0, 0, 8}, 8, 2},
      {"abi-type.jpg", {'M', 'M', 0, 0x2A, 0, 0, 0, 8}, 8, 2},
      {"abi-type.tif", {'I', 'I', 0x2A, 1, 8, 0, 0, 0}, 8, 0},
      {"abi-type.png", {0x89, 'P', 'N', 'G', 0x0D, 0x0A, 0x1A, 0x0A}, 8, 5},
      {"abi-type.png", {0x89, 'P', 'N', 'G', 0x0D, 0x0A, 0x1A, 0x0B}, 8, 0},
      {"abi-type.jpg", {0}, 0, 0},
  };
  void* object = NewLumidex();
  for (size_t i = 0; i < sizeof files / sizeof files[0]; ++i) {
    WriteInput(files[i].name, files[i].bytes, files[i].size);
    CHECK_EQUAL(files[i].type, CallPath(object, SLOT_GET_FILE_TYPE, Wide(files[i].name)));
    RemoveInput(files[i].name);
  }
  CHECK_EQUAL(0, CallPath(object, SLOT_GET_FILE_TYPE, Wide("abi-none.jpg")));
  CHECK_EQUAL(0, CallPath(object, SLOT_GET_FILE_TYPE, NULL));
  Release(object);
}

void CheckBadFiles(void) {
  static const uint8_t tiff[] = {'I', 'I', 0x2A, 0, 8, 0, 0, 0};
  void* object = NewLumidex();
  void* info = object;
  CHECK_EQUAL(CODE_SRC_NOT_FOUND, CallPath(object, SLOT_OPEN, Wide("abi-none.jpg")));
  CHECK_EQUAL(CODE_SRC_NOT_FOUND, CallPath(object, SLOT_OPEN, Wide(".")));
  CHECK_EQUAL(CODE_BAD_FORMAT, CallPath(object, SLOT_OPEN, NULL));
  CHECK_EQUAL(CODE_SRC_NOT_FOUND,
              CallPathOut(object, SLOT_PARSE_BASIC, Wide("abi-none.jpg"), &info));
  CHECK(info == NULL);
  info = object;
  CHECK_EQUAL(CODE_BAD_FORMAT, CallPathOut(object, SLOT_PARSE_BASIC, NULL, &info));
  CHECK(info == NULL);
  CHECK_EQUAL(CODE_BAD_FORMAT, CallPathOut(object, SLOT_PARSE_BASIC, NULL, NULL));
  CHECK_EQUAL(CODE_SRC_NOT_FOUND, CallPath(object, SLOT_APPEND_TRAILER, Wide("abi-none.jpg")));
  CHECK_EQUAL(CODE_OPEN_FAILED, CallPath(object, SLOT_APPEND_TRAILER, NULL));
  CheckReads(object, CODE_INVALID_ARG, CODE_INVALID_ARG, CODE_INVALID_ARG);

  /* A refused file leaves the parse result of the one before. */
  Content jpeg = PlainJpeg();
  WriteInput("abi.jpg", jpeg.bytes, jpeg.size);
  CHECK_EQUAL(CODE_OK, CallPath(object, SLOT_OPEN, Wide("abi.jpg")));
  CHECK_EQUAL(CODE_POINTER, CallPathOut(object, SLOT_PARSE_BASIC, Wide("abi.jpg"), NULL));
  CHECK_EQUAL(CODE_SRC_NOT_FOUND, CallPath(object, SLOT_OPEN, Wide("abi-none.jpg")));
  CheckPanorama(object, CODE_NOT_FOUND, 0);
  WriteInput("abi.tif", tiff, sizeof tiff);
  CHECK_EQUAL(CODE_BAD_FORMAT, CallPath(object, SLOT_OPEN, Wide("abi.tif")));
  CheckReads(object, CODE_NOT_FOUND, CODE_INVALID_ARG, CODE_NOT_FOUND);
  CheckPanorama(object, CODE_NOT_FOUND, 0);
  RemoveInput("abi.tif");
  RemoveInput("abi.jpg");
  Release(object);
  CHECK_EQUAL(CODE_OK, CanUnloadNow());
}

void CheckTrailer(void) {
  /* clang-format off */
  static const uint8_t trailer[64] = {
      0, 0, 0x50, 0x0A, 15, 0, 0, 0,
      'J', 'p', 'e', 'g', '3', '6', '0', '_', '2', 'D', '_', 'I', 'n', 'f', 'o',
      'J', 'p', 'e', 'g', '3', '6', '0', '2', 'D',
      'S', 'E', 'F', 'H', 101, 0, 0, 0, 1, 0, 0, 0,
      0, 0, 0x50, 0x0A, 32, 0, 0, 0, 32, 0, 0, 0,
      24, 0, 0, 0, 'S', 'E', 'F', 'T'};
  /* clang-format on */
  void* object = NewLumidex();
  Content before = ExifJpeg();
  WriteInput("abi-mark.jpg", before.bytes, before.size);
  CHECK_EQUAL(CODE_OK, CallPath(object, SLOT_APPEND_TRAILER, Wide("abi-mark.jpg")));
  Content after = ReadInput("abi-mark.jpg");
  CHECK_EQUAL(before.size + 64, after.size);
  CHECK(memcmp(before.bytes, after.bytes, before.size) == 0);
  CHECK(memcmp(trailer, after.bytes + before.size, sizeof trailer) == 0);
  CHECK_EQUAL(CODE_ALREADY_MARKED, CallPath(object, SLOT_APPEND_TRAILER, Wide("abi-mark.jpg")));
  CHECK_EQUAL(after.size, ReadInput("abi-mark.jpg").size);

  WriteInput("abi-mark.jpg", before.bytes, 63);
  CHECK_EQUAL(CODE_READ_FAILED, CallPath(object, SLOT_APPEND_TRAILER, Wide("abi-mark.jpg")));
  CHECK_EQUAL(63, ReadInput("abi-mark.jpg").size);
  WriteInput("abi-mark.jpg", "no image, and yet sixty-four bytes long, which is what it takes..",
             64);
  CHECK_EQUAL(CODE_OK, CallPath(object, SLOT_APPEND_TRAILER, Wide("abi-mark.jpg")));
  CHECK_EQUAL(128, ReadInput("abi-mark.jpg").size);
  RemoveInput("abi-mark.jpg");
  Release(object);
}
