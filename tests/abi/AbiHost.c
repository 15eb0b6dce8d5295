/* A host in plain C: loads the module by path and calls every slot by number, without any of the
 * project's headers. Input files are written into the current folder.
 *
 *   abi_host MODULE [SAMPLES_FOLDER] */

#include <stdio.h>

#include "Checks.h"
#include "Module.h"
#include "SampleChecks.h"

static const struct {
  const char* name;
  void (*checks)(void);
} kGroups[] = {
    {"class objects by class and interface", CheckClassObjects},
    {"class factory", CheckFactory},
    {"identity and reference counts", CheckIdentity},
    {"aggregation", CheckAggregation},
    {"locks and unloading", CheckUnloading},
    {"file types", CheckFileTypes},
    {"slots before a file is open", CheckBeforeOpen},
    {"slots with a JPEG without metadata", CheckPlainJpeg},
    {"slots with a JPEG with an empty XMP packet", CheckXmpJpeg},
    {"slots with a PNG", CheckPng},
    {"missing and refused files", CheckBadFiles},
    {"trailer block", CheckTrailer},
    {"writing metadata", CheckWriting},
    {"embedding and reading packets", CheckEmbedding},
    {"refused writes", CheckRefusedWrites},
    {"record list in memory", CheckRecordList},
    {"lifetime of parse results", CheckResultLifetime},
};

int main(int argc, char** argv) {
  if (argc < 2 || argc > 3) {
    fprintf(stderr, "usage: abi_host MODULE [SAMPLES_FOLDER]\n");
    return 2;
  }
  if (!OpenModule(argv[1])) return 1;
  for (size_t i = 0; i < sizeof kGroups / sizeof kGroups[0]; ++i) {
    RunGroup(kGroups[i].name, kGroups[i].checks);
  }
  if (argc == 3) RunSampleGroups(argv[2]);
  CloseModule();
  if (FailedChecks() == 0) return 0;
  printf("%u checks failed\n", FailedChecks());
  return 1;
}
