#include <fcntl.h>
#include <io.h>
#include <stdio.h>
#include <windows.h>

#include "StreamConsole.h"
#include "Text.h"

namespace {

// A console that shows UTF-8 and obeys escape sequences for as long as the program runs.
class ConsoleMode {
 public:
  explicit ConsoleMode(DWORD stream) : m_handle(GetStdHandle(stream)) {
    m_isConsole = GetConsoleMode(m_handle, &m_mode) != 0;
    if (!m_isConsole) return;
    m_codePage = GetConsoleOutputCP();
    SetConsoleOutputCP(CP_UTF8);
    m_obeysEscapes = SetConsoleMode(m_handle, m_mode | ENABLE_PROCESSED_OUTPUT |
                                                  ENABLE_VIRTUAL_TERMINAL_PROCESSING) != 0;
  }
  ~ConsoleMode() {
    if (!m_isConsole) return;
    SetConsoleMode(m_handle, m_mode);
    SetConsoleOutputCP(m_codePage);
  }
  ConsoleMode(const ConsoleMode&) = delete;
  ConsoleMode& operator=(const ConsoleMode&) = delete;

  bool ObeysEscapes() const { return m_obeysEscapes; }

 private:
  HANDLE m_handle;
  DWORD m_mode = 0;
  UINT m_codePage = 0;
  bool m_isConsole = false;
  bool m_obeysEscapes = false;
};

}  // namespace

int wmain(int argc, wchar_t** argv) {
  _setmode(_fileno(stdin), _O_BINARY);
  _setmode(_fileno(stdout), _O_BINARY);
  _setmode(_fileno(stderr), _O_BINARY);
  const ConsoleMode out(STD_OUTPUT_HANDLE);
  const ConsoleMode err(STD_ERROR_HANDLE);
  std::vector<std::string> arguments;
  for (int i = 1; i < argc; ++i) arguments.push_back(tool::Utf8FromWide(argv[i]));
  return tool::RunOnStreams(arguments, out.ObeysEscapes(), err.ObeysEscapes());
}
