#ifndef LUMIDEX_TOOL_PROGRESS_H_
#define LUMIDEX_TOOL_PROGRESS_H_

#include <chrono>
#include <cstddef>
#include <string>
#include <string_view>

#include "Console.h"

namespace tool {

// What the line says before work on file number `index` of `count`, after `elapsed` of work on
// those before it: from the first second on with the rate and the time that the rest will take.
std::string ProgressText(std::size_t index, std::size_t count,
                         std::chrono::steady_clock::duration elapsed, std::string_view file);

// A line on stderr that says how far long work has come: only for a person at a terminal, only when
// the work takes longer than a moment, and gone again before anything else is printed.
class Progress {
 public:
  using Clock = std::chrono::steady_clock;

  static constexpr std::chrono::milliseconds kPatience{1000};  // before the line first shows
  static constexpr std::chrono::milliseconds kPause{100};      // between two of its states

  explicit Progress(Console& console, Clock::duration patience = kPatience,
                    Clock::duration pause = kPause)
      : m_console(console), m_start(Clock::now()), m_next(m_start + patience), m_pause(pause) {}
  ~Progress() { Clear(); }
  Progress(const Progress&) = delete;
  Progress& operator=(const Progress&) = delete;

  // While folders are walked.
  void Found(std::size_t count);

  // Before work on file number `index`, counted from 1.
  void Working(std::size_t index, std::size_t count, std::string_view file);

  // Prints, with the progress line out of the way.
  void Out(std::string_view text);
  void Err(std::string_view text);

  bool OutIsTerminal() const { return m_console.OutIsTerminal(); }

 private:
  bool IsDue();
  void Show(const std::string& text);
  void Clear();

  Console& m_console;
  Clock::time_point m_start;  // of the first file
  Clock::time_point m_next;
  Clock::duration m_pause;
  bool m_isShown = false;
};

}  // namespace tool

#endif  // LUMIDEX_TOOL_PROGRESS_H_
