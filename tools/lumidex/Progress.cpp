#include "Progress.h"

#include <cmath>

#include "Text.h"

namespace tool {
namespace {

constexpr std::size_t kLineWidth = 79;
constexpr std::string_view kEraseLine = "\r\x1B[K";

std::string DurationText(double seconds) {
  const auto whole = static_cast<std::uint64_t>(std::ceil(seconds));
  const auto part = [](std::uint64_t number, const char* unit) {
    return std::to_string(number) + unit;
  };
  if (whole < 60) return part(whole, " s");
  if (whole < 3600) return part(whole / 60, " min ") + part(whole % 60, " s");
  return part(whole / 3600, " h ") + part(whole % 3600 / 60, " min");
}

}  // namespace

std::string ProgressText(std::size_t index, std::size_t count,
                         std::chrono::steady_clock::duration elapsed, std::string_view file) {
  const double seconds = std::chrono::duration<double>(elapsed).count();
  const auto done = static_cast<double>(index - 1);
  std::string text = std::to_string(index) + " of " + std::to_string(count);
  if (index > 1 && seconds >= 1) {
    const double rate = done / seconds;
    const double left = (static_cast<double>(count) - done) / rate;
    text +=
        Concat({"  ", Number(rate, rate < 10 ? 1 : 0), " files/s  ", DurationText(left), " left"});
  }
  return Concat({text, "  ", Printable(file)});
}

void Progress::Found(std::size_t count) {
  if (IsDue()) Show(std::to_string(count) + " files found");
}

void Progress::Working(std::size_t index, std::size_t count, std::string_view file) {
  if (index == 1) m_start = Clock::now();
  if (count < 2 || !IsDue()) return;
  Show(ProgressText(index, count, Clock::now() - m_start, file));
}

void Progress::Out(std::string_view text) {
  Clear();
  m_console.Out(text);
}

void Progress::Err(std::string_view text) {
  Clear();
  m_console.Err(text);
}

bool Progress::IsDue() {
  return m_console.ErrIsTerminal() && Clock::now() >= m_next;
}

void Progress::Show(const std::string& text) {
  m_next = Clock::now() + m_pause;
  m_isShown = true;
  m_console.Err(std::string(kEraseLine) + Shorten(text, kLineWidth));
}

void Progress::Clear() {
  if (!m_isShown) return;
  m_isShown = false;
  m_console.Err(kEraseLine);
}

}  // namespace tool
