/* The writing slots and what they leave in files, byte by byte. */

#include <stddef.h>
#include <string.h>

#include "Abi.h"
#include "Checks.h"
#include "Files.h"
#include "Module.h"

enum { SOI_SIZE = 2, PACKET_SIZE = 4 };

static const char kPacket[] = "<x/>";

/* A name with a letter of Latin-1, a Cyrillic and a Chinese one. */
static const WideChar kForeignName[] = {'a',    'b', 'i', '-', 0xE9, 0x416,
                                        0x4E2D, '.', 'j', 'p', 'g',  0};

/* A text for IFD0, and a number for the EXIF directory that comes as 32 bits. */
static const uint8_t kMake[] = {'C', 'a', 'm', 0};
static const uint8_t kSensitivity[] = {0x90, 0x01, 0, 0};
static const uint8_t kThumbnail[] = {0xFF, 0xD8, 0xFF, 0xD9};
static const WriteRecord kRecords[] = {
    {4, 34855, 0x1001, sizeof kSensitivity, kSensitivity, 0},
    {2, 271, 4, sizeof kMake, kMake, 0},
};

/* clang-format off */
static const uint8_t kNewSegment[] = {
    0xFF, 0xE1, 0x00, 0x40, 'E', 'x', 'i', 'f', 0, 0,
    'I', 'I', 42, 0, 8, 0, 0, 0,
    /*  8 */ 2, 0,
    /* 10 */ 0x0F, 0x01, 2, 0, 4, 0, 0, 0, 'C', 'a', 'm', 0,
    /* 22 */ 0x69, 0x87, 4, 0, 1, 0, 0, 0, 38, 0, 0, 0,
    /* 34 */ 0, 0, 0, 0,
    /* 38 */ 1, 0,
    /* 40 */ 0x27, 0x88, 3, 0, 1, 0, 0, 0, 0x90, 0x01, 0, 0,
    /* 52 */ 0, 0, 0, 0,
};

/* What a thumbnail adds at 56. */
static const uint8_t kThumbnailDirectory[] = {
    /*  56 */ 6, 0,
    /*  58 */ 0x03, 0x01, 3, 0, 1, 0, 0, 0, 6, 0, 0, 0,
    /*  70 */ 0x1A, 0x01, 5, 0, 1, 0, 0, 0, 134, 0, 0, 0,
    /*  82 */ 0x1B, 0x01, 5, 0, 1, 0, 0, 0, 142, 0, 0, 0,
    /*  94 */ 0x28, 0x01, 3, 0, 1, 0, 0, 0, 2, 0, 0, 0,
    /* 106 */ 0x01, 0x02, 4, 0, 1, 0, 0, 0, 150, 0, 0, 0,
    /* 118 */ 0x02, 0x02, 4, 0, 1, 0, 0, 0, 4, 0, 0, 0,
    /* 130 */ 0, 0, 0, 0,
    /* 134 */ 72, 0, 0, 0, 1, 0, 0, 0,
    /* 142 */ 72, 0, 0, 0, 1, 0, 0, 0,
    /* 150 */ 0xFF, 0xD8, 0xFF, 0xD9,
};
/* clang-format on */

static const char kPacketSegment[] = "\xFF\xE1\x00\x23http://ns.adobe.com/xap/1.0/\0<x/>";

/* A name that stays, unlike those of Wide(). */
typedef struct {
  WideChar text[32];
} Name;

static Name NameOf(const char* ascii) {
  Name name = {{0}};
  for (size_t i = 0; ascii[i] != 0; ++i) name.text[i] = (WideChar)ascii[i];
  return name;
}

static WriteArguments Arguments(const WideChar* source, const WideChar* output) {
  WriteArguments arguments = {0};
  arguments.source = source;
  arguments.output = output;
  arguments.count = sizeof kRecords / sizeof kRecords[0];
  arguments.records = kRecords;
  return arguments;
}

static void CheckContent(const char* name, const Content* expected) {
  Content actual = ReadInput(name);
  CHECK_EQUAL(expected->size, actual.size);
  CHECK(memcmp(expected->bytes, actual.bytes, expected->size) == 0);
}

/* A JPEG's start, and everything behind it. */
static Content StartOf(const Content* jpeg) {
  Content content = {.size = 0};
  Append(&content, jpeg->bytes, SOI_SIZE);
  return content;
}

static void AppendRest(Content* content, const Content* jpeg) {
  Append(content, jpeg->bytes + SOI_SIZE, jpeg->size - SOI_SIZE);
}

static void CheckThumbnail(void* object, const Content* jpeg) {
  WriteArguments arguments = Arguments(Wide("abi-write.jpg"), Wide("abi-new.jpg"));
  arguments.thumbnailLength = sizeof kThumbnail;
  arguments.thumbnailAddress = (uint64_t)(uintptr_t)kThumbnail;
  CHECK_EQUAL(CODE_OK, CallWrite(object, &arguments));

  Content expected = StartOf(jpeg);
  size_t start = expected.size;
  Append(&expected, kNewSegment, sizeof kNewSegment);
  Append(&expected, kThumbnailDirectory, sizeof kThumbnailDirectory);
  expected.bytes[start + 3] = sizeof kNewSegment - 2 + sizeof kThumbnailDirectory;
  expected.bytes[start + 10 + 34] = 56;
  AppendRest(&expected, jpeg);
  CheckContent("abi-new.jpg", &expected);
  RemoveInput("abi-new.jpg");
}

void CheckWriting(void) {
  void* object = NewLumidex();
  Content jpeg = PlainJpeg();
  WriteInput("abi-write.jpg", jpeg.bytes, jpeg.size);
  WriteInput("abi.xmp", kPacket, PACKET_SIZE);

  /* Records and a packet. */
  Name packet = NameOf("abi.xmp");
  WriteArguments arguments = Arguments(Wide("abi-write.jpg"), Wide("abi-new.jpg"));
  arguments.packet = packet.text;
  CHECK_EQUAL(CODE_OK, CallWrite(object, &arguments));
  Content expected = StartOf(&jpeg);
  Append(&expected, kNewSegment, sizeof kNewSegment);
  Append(&expected, kPacketSegment, sizeof kPacketSegment - 1);
  AppendRest(&expected, &jpeg);
  CheckContent("abi-new.jpg", &expected);

  /* Both segments are present now. */
  arguments.source = Wide("abi-new.jpg");
  arguments.output = Wide("abi-twice.jpg");
  CHECK_EQUAL(CODE_HAS_EXIF, CallWrite(object, &arguments));
  arguments.overwrite = 1;
  CHECK_EQUAL(CODE_XMP_FOUND, CallWrite(object, &arguments));
  RemoveInput("abi-new.jpg");

  CheckThumbnail(object, &jpeg);
  CheckContent("abi-write.jpg", &jpeg);
  RemoveInput("abi-write.jpg");
  RemoveInput("abi.xmp");
  Release(object);
  CHECK_EQUAL(CODE_OK, CanUnloadNow());
}

static void CheckPacketOfJpeg(void* object, const char* name) {
  uint32_t size = 0;
  uint8_t buffer[64] = {0};
  CHECK_EQUAL(CODE_OK, CallPath(object, SLOT_OPEN, Wide(name)));
  CHECK_EQUAL(CODE_OK, CallWord(object, SLOT_GET_XMP_PACKET_SIZE, &size));
  CHECK_EQUAL(PACKET_SIZE + 31, size);
  CHECK_EQUAL(CODE_OK, CallBuffer(object, SLOT_GET_XMP_PACKET, &size, buffer));
  CHECK_EQUAL(PACKET_SIZE + 2, size);
  CHECK(memcmp(buffer, kPacket, PACKET_SIZE) == 0);
  CHECK_EQUAL(0, buffer[PACKET_SIZE]);
}

/* A PNG gets its chunk in place, before IEND. */
static void CheckPngInPlace(void* object) {
  enum { END_SIZE = 12, CHUNK_SIZE = 34 + 15 };
  static const char word[] = "equirectangular";
  Content before = PngWithXmp("flat");
  WriteInput("abi.png", before.bytes, before.size);
  WriteInput("abi.xmp", word, sizeof word - 1);
  Name name = NameOf("abi.png");
  CHECK_EQUAL(CODE_OK, CallEmbed(object, name.text, name.text, Wide("abi.xmp")));
  Content after = ReadInput("abi.png");
  size_t place = before.size - END_SIZE;
  CHECK_EQUAL(before.size + CHUNK_SIZE, after.size);
  CHECK(memcmp(before.bytes, after.bytes, place) == 0);
  CHECK(memcmp(before.bytes + place, after.bytes + place + CHUNK_SIZE, END_SIZE) == 0);

  uint32_t size = 0;
  uint8_t buffer[64] = {0};
  CHECK_EQUAL(CODE_OK, CallWord(object, SLOT_GET_XMP_PACKET_SIZE, &size));
  CHECK_EQUAL(sizeof word - 1, size);
  CHECK_EQUAL(CODE_OK, CallBuffer(object, SLOT_GET_XMP_PACKET, &size, buffer));
  CHECK_EQUAL(sizeof word - 1, size);
  CHECK(memcmp(buffer, word, sizeof word) == 0);
  CHECK_EQUAL(CODE_XMP_FOUND, CallEmbed(object, name.text, name.text, Wide("abi.xmp")));
  RemoveInput("abi.png");
}

void CheckEmbedding(void) {
  enum { OLD_SEGMENT_SIZE = 0x7C + 2 };
  void* object = NewLumidex();
  Content jpeg = ExifJpeg();
  WriteInput("abi-embed.jpg", jpeg.bytes, jpeg.size);
  WriteInput("abi.xmp", kPacket, PACKET_SIZE);
  WriteArguments arguments = Arguments(Wide("abi-embed.jpg"), kForeignName);
  arguments.overwrite = 1;
  CHECK_EQUAL(CODE_OK, CallWrite(object, &arguments));
  CHECK_EQUAL(CODE_OK, CallPath(object, SLOT_OPEN, kForeignName));
  CHECK_EQUAL(CODE_OK, CallEmbed(object, kForeignName, Wide("abi-new.jpg"), Wide("abi.xmp")));

  /* The packet stands behind both EXIF segments, whose bytes begin what follows. */
  Content after = ReadInput("abi-new.jpg");
  size_t place = SOI_SIZE + sizeof kNewSegment + OLD_SEGMENT_SIZE;
  CHECK_EQUAL(jpeg.size + sizeof kNewSegment + sizeof kPacketSegment - 1, after.size);
  CHECK(memcmp(after.bytes + SOI_SIZE, kNewSegment, sizeof kNewSegment) == 0);
  CHECK(memcmp(after.bytes + place, kPacketSegment, sizeof kPacketSegment - 1) == 0);
  CheckPacketOfJpeg(object, "abi-new.jpg");

  CheckPngInPlace(object);
  RemoveInput("abi-embed.jpg");
  RemoveInput("abi-new.jpg");
  RemoveInput("abi.xmp");
  RemoveWide(kForeignName);
  Release(object);
  CHECK_EQUAL(CODE_OK, CanUnloadNow());
}

void CheckRefusedWrites(void) {
  void* object = NewLumidex();
  WriteArguments arguments = {0};
  CHECK_EQUAL(CODE_BAD_FORMAT, CallEmbed(object, NULL, NULL, NULL));
  CHECK_EQUAL(CODE_SRC_NOT_FOUND, CallWrite(object, &arguments));

  Content jpeg = PlainJpeg();
  WriteInput("abi-write.jpg", jpeg.bytes, jpeg.size);
  Name name = NameOf("abi-write.jpg");
  CHECK_EQUAL(CODE_DST_EXISTS, CallEmbed(object, name.text, name.text, NULL));
  CHECK_EQUAL(CODE_OPEN_FAILED, CallEmbed(object, name.text, Wide("abi-new.jpg"), NULL));

  arguments = Arguments(name.text, name.text);
  CHECK_EQUAL(CODE_DST_EXISTS, CallWrite(object, &arguments));
  arguments.overwrite = 1;
  CHECK_EQUAL(CODE_DST_EXISTS, CallWrite(object, &arguments));
  arguments.output = Wide("./abi-write.jpg");
  CHECK_EQUAL(CODE_DST_EXISTS, CallWrite(object, &arguments));
  arguments.output = Wide(".");
  CHECK_EQUAL(CODE_OPEN_FAILED, CallWrite(object, &arguments));
  arguments.output = NULL;
  CHECK_EQUAL(CODE_OPEN_FAILED, CallWrite(object, &arguments));
  arguments.overwrite = 0;
  CHECK_EQUAL(CODE_DST_EXISTS, CallWrite(object, &arguments));
  arguments.output = Wide("abi-new.jpg");
  arguments.count = 0;
  CHECK_EQUAL(CODE_INVALID_ARG, CallWrite(object, &arguments));
  CheckContent("abi-write.jpg", &jpeg);
  RemoveInput("abi-write.jpg");
  Release(object);
}
