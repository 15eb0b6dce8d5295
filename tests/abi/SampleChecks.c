/* The values of the sample photographs, as the generator put them in. */

#include "SampleChecks.h"

#include <stddef.h>
#include <stdio.h>
#include <string.h>

#include "Abi.h"
#include "Checks.h"
#include "Files.h"

static const char* g_folder;

/* An object with a copy of the sample open. */
static void* OpenSample(const char* name) {
  char path[1024];
  void* object = NewLumidex();
  snprintf(path, sizeof path, "%s/%s", g_folder, name);
  CHECK(CopyInput(path, name));
  CHECK_EQUAL(CODE_OK, CallPath(object, SLOT_OPEN, Wide(name)));
  return object;
}

static void CloseSample(void* object, const char* name) {
  RemoveInput(name);
  CHECK_EQUAL(0, Release(object));
}

static void CheckPanoramaFlag(const char* name, uint32_t expected, uint32_t expectedFlag) {
  void* object = OpenSample(name);
  uint32_t flag = 99;
  CHECK_EQUAL(expected, CallWord(object, SLOT_IS_PANORAMA, &flag));
  CHECK_EQUAL(expectedFlag, flag);
  CloseSample(object, name);
}

static void CheckPanoramas(void) {
  CheckPanoramaFlag("panorama.jpg", CODE_OK, 1);
  CheckPanoramaFlag("panorama.png", CODE_OK, 1);
  CheckPanoramaFlag("panorama-rated.jpg", CODE_NOT_PANORAMA, 0);
  CheckPanoramaFlag("landscape-le.jpg", CODE_NOT_FOUND, 0);
}

static void CheckPose(void) {
  void* object = OpenSample("panorama.jpg");
  float heading = 0;
  float pitch = 0;
  float roll = 0;
  CHECK_EQUAL(CODE_OK, CallFloat(object, SLOT_GET_POSE_HEADING, &heading));
  CHECK_EQUAL(CODE_OK, CallFloat(object, SLOT_GET_POSE_PITCH, &pitch));
  CHECK_EQUAL(CODE_OK, CallFloat(object, SLOT_GET_POSE_ROLL, &roll));
  CHECK(heading == 123.5F);
  CHECK(pitch == -4.25F);
  CHECK(roll == 0.75F);
  CHECK_EQUAL(CODE_INVALID_ARG, CallFloat(object, SLOT_GET_POSE_ROLL, NULL));
  CloseSample(object, "panorama.jpg");
}

static void CheckMakerNoteNumbers(void) {
  void* object = OpenSample("maker-note.jpg");
  uint32_t word = 0;
  uint32_t words[3] = {0};
  double quotients[3] = {0};
  CHECK_EQUAL(CODE_OK, CallWord(object, SLOT_GET_INFO_16, &word));
  CHECK_EQUAL(5, word);
  CHECK_EQUAL(CODE_OK, CallDoubles(object, SLOT_GET_INFO_17_TRIPLE, &quotients[0], &quotients[1],
                                   &quotients[2]));
  CHECK(quotients[0] == 2.5 && quotients[1] == -0.25 && quotients[2] == 3.0);
  CHECK_EQUAL(CODE_OK, CallWords(object, SLOT_GET_INFO_20_TRIPLE, &words[0], &words[1], &words[2]));
  CHECK(words[0] == 100 && words[1] == 200 && words[2] == 300);
  CloseSample(object, "maker-note.jpg");
}

/* A value through its size and its data method: a buffer one byte too small is left alone, an exact
 * one is filled, and of a larger one no more is written. */
static void CheckBytes(void* object, unsigned sizeSlot, unsigned dataSlot, const void* expected,
                       uint32_t expectedSize) {
  uint8_t buffer[64];
  uint32_t size = 0;
  CHECK_EQUAL(CODE_OK, CallWord(object, sizeSlot, &size));
  CHECK_EQUAL(expectedSize, size);
  memset(buffer, 0xEE, sizeof buffer);

  size = expectedSize - 1;
  CHECK_EQUAL(CODE_BUFFER_TOO_SMALL, CallBuffer(object, dataSlot, &size, buffer));
  CHECK_EQUAL(expectedSize - 1, size);
  CHECK(buffer[0] == 0xEE);

  size = expectedSize;
  CHECK_EQUAL(CODE_OK, CallBuffer(object, dataSlot, &size, buffer));
  CHECK_EQUAL(expectedSize, size);
  CHECK(memcmp(buffer, expected, expectedSize) == 0);

  size = sizeof buffer;
  CHECK_EQUAL(CODE_OK, CallBuffer(object, dataSlot, &size, buffer));
  CHECK_EQUAL(expectedSize, size);
  CHECK(buffer[expectedSize] == 0xEE);
}

static void CheckMakerNoteBytes(void) {
  static const int32_t quotients[] = {25, 10, -1, 4, 3, 1};
  uint8_t counting[20];
  for (unsigned i = 0; i < sizeof counting; ++i) counting[i] = (uint8_t)(i + 1);
  void* object = OpenSample("maker-note.jpg");
  CheckBytes(object, SLOT_GET_INFO_17_SIZE, SLOT_GET_INFO_17_DATA, quotients, sizeof quotients);
  CheckBytes(object, SLOT_GET_INFO_18_SIZE, SLOT_GET_INFO_18_DATA, counting, 16);
  CheckBytes(object, SLOT_GET_INFO_19_SIZE, SLOT_GET_INFO_19_DATA, counting, 8);
  CheckBytes(object, SLOT_GET_INFO_21_SIZE, SLOT_GET_INFO_21_DATA, counting, 20);
  CloseSample(object, "maker-note.jpg");
}

void RunSampleGroups(const char* folder) {
  g_folder = folder;
  RunGroup("sample panoramas", CheckPanoramas);
  RunGroup("sample pose angles", CheckPose);
  RunGroup("sample maker note: numbers", CheckMakerNoteNumbers);
  RunGroup("sample maker note: sizes and bytes", CheckMakerNoteBytes);
}
