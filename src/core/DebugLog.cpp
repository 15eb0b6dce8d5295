#include "core/DebugLog.h"

#include <array>
#include <atomic>
#include <cstdarg>
#include <cstdio>
#include <cstring>
#include <mutex>
#include <string_view>

#if defined(LUMIDEX_DEBUG_LOG)
int g_bDebugLogEnabled = 1;
#else
int g_bDebugLogEnabled = 0;
#endif

// Arrays, not strings: they need no constructor, so that a line logged while the module loads finds
// them, and setting them cannot fail.
char g_strLogPrefix[kDebugLogPrefixSize] = "[DEFAULT]";
WCHAR g_wstrLogPrefix[kDebugLogPrefixSize] = LMD_W("[DEFAULT]");

namespace {

// The room for a formatted message with its final zero.
constexpr std::size_t kMessageSize = 1023;

// On Windows the address of a system function is not a constant before the module is loaded.
void SendToDebugger(const char* line) {
  OutputDebugStringA(line);
}

constinit std::atomic<DebugLogSink> g_sink = &SendToDebugger;

// Made by its first user: some runtimes have a mutex that needs a constructor.
std::mutex& PrefixLock() {
  static std::mutex lock;
  return lock;
}

// Room for the longest prefix, the longest message, a line feed and a final zero.
using Line = std::array<char, (kDebugLogPrefixSize - 1) + (kMessageSize - 1) + 2>;

std::size_t CopyPrefix(Line& line) {
  const std::lock_guard guard(PrefixLock());
  return std::string_view(g_strLogPrefix).copy(line.data(), line.size());
}

void SendLine(const char* format, std::va_list arguments) {
  Line line;
  const std::size_t prefixLength = CopyPrefix(line);
  char* const message = line.data() + prefixLength;
  if (std::vsnprintf(message, kMessageSize, format, arguments) < 0) return;
  std::size_t length = prefixLength + std::strlen(message);
  line[length++] = '\n';
  line[length] = '\0';
  g_sink.load()(line.data());
}

}  // namespace

void DebugLog(const char* format, ...) {
  if (g_bDebugLogEnabled == 0) return;
  std::va_list arguments;
  va_start(arguments, format);
  try {
    SendLine(format, arguments);
  } catch (...) {
    // A sink that ran out of memory loses the line; the caller goes on as if the switch were off.
  }
  va_end(arguments);
}

void SetDebugLogPrefix(const char* prefix) {
  const std::string_view text = std::string_view(prefix).substr(0, kDebugLogPrefixSize - 1);
  const std::lock_guard guard(PrefixLock());
  std::size_t length = 0;
  for (const char character : text) {
    g_strLogPrefix[length] = character;
    g_wstrLogPrefix[length++] = static_cast<unsigned char>(character);
  }
  g_strLogPrefix[length] = '\0';
  g_wstrLogPrefix[length] = 0;
}

DebugLogSink SetDebugLogSink(DebugLogSink sink) {
  return g_sink.exchange(sink == nullptr ? &SendToDebugger : sink);
}
