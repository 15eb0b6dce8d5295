#ifndef LUMIDEX_TESTS_ABI_FILES_H_
#define LUMIDEX_TESTS_ABI_FILES_H_

/* Input files in the current folder, written from bytes in code. */

#include <stddef.h>
#include <stdint.h>

#include "Abi.h"

enum { LARGEST_FILE = 4096 };

typedef struct {
  uint8_t bytes[LARGEST_FILE];
  size_t size;
} Content;

void Append(Content* content, const void* bytes, size_t size);

/* Writes a file; ends the program when the folder does not take it. */
void WriteInput(const char* name, const void* bytes, size_t size);

/* Reads a file of at most LARGEST_FILE bytes. */
Content ReadInput(const char* name);

/* Copies a file from anywhere into the current folder. Returns 0 when there is no such file. */
int CopyInput(const char* from, const char* name);

void RemoveInput(const char* name);

/* The name as the module wants it; the text stays until the next call but one. */
const WideChar* Wide(const char* name);

/* A JPEG of 640 x 480 without metadata. */
Content PlainJpeg(void);

/* The same with an XMP segment whose packet holds no property. */
Content XmpJpeg(void);

/* The same with a big-endian EXIF segment: IFD0 with Make "Example", Orientation 6, XResolution
 * 72/1 and an EXIF directory with ExposureTime 1/250 and ColorSpace 2. */
Content ExifJpeg(void);

/* A PNG signature, an iTXt chunk with an XMP packet of the given text, and IEND. */
Content PngWithXmp(const char* text);

#endif /* LUMIDEX_TESTS_ABI_FILES_H_ */
