#include "platform/posix/DebugOutput.h"

#include <cstdio>

void OutputDebugStringA(const char* text) {
  std::fputs(text, stderr);
}
