#ifndef LUMIDEX_CORE_DEBUGLOG_H_
#define LUMIDEX_CORE_DEBUGLOG_H_

// The module's one diagnostic channel: a line for the debugger output behind a switch that is off
// and that the module itself never turns on. With the switch off a call costs one comparison.
// Nothing here allocates memory or throws, and all of it works before any other initialisation.

#include <cstddef>

#include "platform/Win32.h"

// Non-zero lets lines through. A build option sets the start value.
extern int g_bDebugLogEnabled;

// The text in front of every line, module-wide, and its wide copy, which no line uses. Both are
// "[DEFAULT]" at load; only SetDebugLogPrefix changes them.
inline constexpr std::size_t kDebugLogPrefixSize = 64;
extern char g_strLogPrefix[kDebugLogPrefixSize];
extern WCHAR g_wstrLogPrefix[kDebugLogPrefixSize];

// Formats a message as printf does, cuts it at 1022 characters, and sends prefix, message and a
// line feed as one text to the sink. A message that cannot be formatted is dropped.
void DebugLog(const char* format, ...);

// Sets both copies of the prefix to an ASCII text, cut at 63 characters.
void SetDebugLogPrefix(const char* prefix);

// Where finished lines go; OutputDebugStringA unless a test or a tool replaces it.
using DebugLogSink = void (*)(const char* line);

// Replaces the sink, or with null restores the default. Returns the one before.
DebugLogSink SetDebugLogSink(DebugLogSink sink);

#endif  // LUMIDEX_CORE_DEBUGLOG_H_
