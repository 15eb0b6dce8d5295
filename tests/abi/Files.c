#include "Files.h"

#include <stdio.h>
#include <stdlib.h>
#include <string.h>

static const uint8_t kStart[] = {0xFF, 0xD8};
static const uint8_t kFrame[] = {0xFF, 0xC0, 0x00, 0x0B, 8, 0x01, 0xE0, 0x02, 0x80, 1, 1, 0x11, 0};
static const uint8_t kScanToEnd[] = {0xFF, 0xDA, 0x00, 0x08, 1,    1,    0,   0,
                                     63,   0,    0x12, 0x34, 0x56, 0xFF, 0xD9};

/* clang-format off */
static const uint8_t kExifSegment[] = {
    0xFF, 0xE1, 0x00, 0x7C, 'E', 'x', 'i', 'f', 0, 0,
    'M', 'M', 0x00, 0x2A, 0x00, 0x00, 0x00, 0x08,
    /*  8 */ 0x00, 0x04,
    /* 10 */ 0x01, 0x0F, 0x00, 0x02, 0x00, 0x00, 0x00, 0x08, 0x00, 0x00, 0x00, 0x3E,
    /* 22 */ 0x01, 0x12, 0x00, 0x03, 0x00, 0x00, 0x00, 0x01, 0x00, 0x06, 0x00, 0x00,
    /* 34 */ 0x01, 0x1A, 0x00, 0x05, 0x00, 0x00, 0x00, 0x01, 0x00, 0x00, 0x00, 0x46,
    /* 46 */ 0x87, 0x69, 0x00, 0x04, 0x00, 0x00, 0x00, 0x01, 0x00, 0x00, 0x00, 0x4E,
    /* 58 */ 0x00, 0x00, 0x00, 0x00,
    /* 62 */ 'E', 'x', 'a', 'm', 'p', 'l', 'e', 0,
    /* 70 */ 0x00, 0x00, 0x00, 0x48, 0x00, 0x00, 0x00, 0x01,
    /* 78 */ 0x00, 0x02,
    /* 80 */ 0x82, 0x9A, 0x00, 0x05, 0x00, 0x00, 0x00, 0x01, 0x00, 0x00, 0x00, 0x6C,
    /* 92 */ 0xA0, 0x01, 0x00, 0x03, 0x00, 0x00, 0x00, 0x01, 0x00, 0x02, 0x00, 0x00,
    /* 104 */ 0x00, 0x00, 0x00, 0x00,
    /* 108 */ 0x00, 0x00, 0x00, 0x01, 0x00, 0x00, 0x00, 0xFA,
};
/* clang-format on */

void Append(Content* content, const void* bytes, size_t size) {
  if (size > sizeof content->bytes - content->size) {
    fprintf(stderr, "abi_host: an input is larger than %d bytes\n", (int)LARGEST_FILE);
    exit(1);
  }
  memcpy(content->bytes + content->size, bytes, size);
  content->size += size;
}

static FILE* OpenOrExit(const char* name, const char* mode) {
  FILE* file = fopen(name, mode);
  if (file != NULL) return file;
  fprintf(stderr, "abi_host: cannot open %s\n", name);
  exit(1);
}

void WriteInput(const char* name, const void* bytes, size_t size) {
  FILE* file = OpenOrExit(name, "wb");
  if (fwrite(bytes, 1, size, file) != size) {
    fprintf(stderr, "abi_host: cannot write %s\n", name);
    exit(1);
  }
  fclose(file);
}

Content ReadInput(const char* name) {
  Content content = {.size = 0};
  FILE* file = OpenOrExit(name, "rb");
  content.size = fread(content.bytes, 1, sizeof content.bytes, file);
  fclose(file);
  return content;
}

int CopyInput(const char* from, const char* name) {
  char block[LARGEST_FILE];
  size_t size;
  FILE* source = fopen(from, "rb");
  if (source == NULL) return 0;
  FILE* copy = OpenOrExit(name, "wb");
  while ((size = fread(block, 1, sizeof block, source)) > 0) fwrite(block, 1, size, copy);
  fclose(copy);
  fclose(source);
  return 1;
}

void RemoveInput(const char* name) {
  remove(name);
}

const WideChar* Wide(const char* name) {
  static WideChar texts[2][260];
  static unsigned turn;
  WideChar* text = texts[turn++ % 2];
  size_t i = 0;
  for (; name[i] != 0 && i < 259; ++i) text[i] = (WideChar)(unsigned char)name[i];
  text[i] = 0;
  return text;
}

static Content JpegWith(const void* segment, size_t size) {
  Content content = {.size = 0};
  Append(&content, kStart, sizeof kStart);
  Append(&content, segment, size);
  Append(&content, kFrame, sizeof kFrame);
  Append(&content, kScanToEnd, sizeof kScanToEnd);
  return content;
}

Content PlainJpeg(void) {
  return JpegWith("", 0);
}

Content XmpJpeg(void) {
  /* The length field counts itself, the 29 bytes of the namespace with its zero, and the packet. */
  static const char segment[] = "\xFF\xE1\x00\x23http://ns.adobe.com/xap/1.0/\0<x/>";
  return JpegWith(segment, sizeof segment - 1);
}

Content ExifJpeg(void) {
  return JpegWith(kExifSegment, sizeof kExifSegment);
}

Content PngWithXmp(const char* text) {
  static const uint8_t signature[] = {0x89, 'P', 'N', 'G', 0x0D, 0x0A, 0x1A, 0x0A};
  static const uint8_t end[] = {0, 0, 0, 0, 'I', 'E', 'N', 'D', 0xAE, 0x42, 0x60, 0x82};
  static const char keyword[] = "iTXtXML:com.adobe.xmp\0\0\0\0";
  const uint8_t length[] = {0, 0, 0, (uint8_t)(22 + strlen(text))};
  static const uint8_t anyCrc[] = {0, 0, 0, 0};
  Content content = {.size = 0};
  Append(&content, signature, sizeof signature);
  Append(&content, length, sizeof length);
  Append(&content, keyword, sizeof keyword);
  Append(&content, text, strlen(text));
  Append(&content, anyCrc, sizeof anyCrc);
  Append(&content, end, sizeof end);
  return content;
}
