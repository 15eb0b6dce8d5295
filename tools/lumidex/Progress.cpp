#include "Progress.h"

#include "Text.h"

namespace tool {
namespace {

constexpr std::size_t kLineWidth = 79;
constexpr std::string_view kEraseLine = "\r\x1B[K";

}  // namespace

void Progress::Found(std::size_t count) {
  if (IsDue()) Show(std::to_string(count) + " files found");
}

void Progress::Working(std::size_t index, std::size_t count, std::string_view file) {
  if (count < 2 || !IsDue()) return;
  Show(std::to_string(index) + " of " + std::to_string(count) + "  " + Printable(file));
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
