#ifndef LUMIDEX_TESTS_ABI_CHECKS_H_
#define LUMIDEX_TESTS_ABI_CHECKS_H_

/* Counted checks in named groups. A failed check prints one line and the run goes on. */

#include <stdint.h>

/* A group's checks: it prints one line when they are done. */
void RunGroup(const char* name, void (*checks)(void));

/* The number of failed checks of all groups. */
unsigned FailedChecks(void);

void CheckTrue(int condition, const char* text, const char* file, int line);
void CheckEqual(uint32_t expected, uint32_t actual, const char* text, const char* file, int line);

#define CHECK(condition) CheckTrue((condition) ? 1 : 0, #condition, __FILE__, __LINE__)
#define CHECK_EQUAL(expected, actual) \
  CheckEqual((uint32_t)(expected), (uint32_t)(actual), #actual, __FILE__, __LINE__)

/* The groups. */
void CheckClassObjects(void);
void CheckFactory(void);
void CheckIdentity(void);
void CheckAggregation(void);
void CheckUnloading(void);
void CheckFileTypes(void);
void CheckBeforeOpen(void);
void CheckPlainJpeg(void);
void CheckXmpJpeg(void);
void CheckPng(void);
void CheckBadFiles(void);
void CheckTrailer(void);
void CheckWriting(void);
void CheckEmbedding(void);
void CheckRefusedWrites(void);
void CheckRecordList(void);
void CheckResultLifetime(void);

#endif /* LUMIDEX_TESTS_ABI_CHECKS_H_ */
