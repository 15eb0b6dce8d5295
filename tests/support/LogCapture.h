#ifndef LUMIDEX_TESTS_SUPPORT_LOGCAPTURE_H_
#define LUMIDEX_TESTS_SUPPORT_LOGCAPTURE_H_

// Opens the debug log's gate and keeps its messages as long as it lives. One at a time.

#include <string>
#include <string_view>
#include <vector>

#include "core/DebugLog.h"

namespace test {

class LogCapture {
 public:
  LogCapture() : m_sinkBefore(SetDebugLogSink(&Keep)) {
    Messages().clear();
    g_bDebugLogEnabled = 1;
  }
  ~LogCapture() {
    g_bDebugLogEnabled = m_gateBefore;
    SetDebugLogSink(m_sinkBefore);
  }
  LogCapture(const LogCapture&) = delete;
  LogCapture& operator=(const LogCapture&) = delete;

  // The messages so far, without the prefix and without the line feed that the log adds.
  const std::vector<std::string>& Lines() const { return Messages(); }

 private:
  static std::vector<std::string>& Messages() {
    static std::vector<std::string> messages;
    return messages;
  }

  static void Keep(const char* line) {
    std::string_view message = line;
    message.remove_prefix(std::string_view(g_strLogPrefix).size());
    message.remove_suffix(1);
    Messages().emplace_back(message);
  }

  int m_gateBefore = g_bDebugLogEnabled;
  DebugLogSink m_sinkBefore;
};

}  // namespace test

#endif  // LUMIDEX_TESTS_SUPPORT_LOGCAPTURE_H_
