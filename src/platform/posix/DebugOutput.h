#ifndef LUMIDEX_PLATFORM_POSIX_DEBUGOUTPUT_H_
#define LUMIDEX_PLATFORM_POSIX_DEBUGOUTPUT_H_

// Sends a text to the debugger output, which is stderr here.
void OutputDebugStringA(const char* text);

#endif  // LUMIDEX_PLATFORM_POSIX_DEBUGOUTPUT_H_
