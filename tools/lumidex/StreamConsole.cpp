#include "StreamConsole.h"

#include <array>
#include <cstdio>

#include "CommandLine.h"
#include "Tool.h"

namespace tool {
namespace {

class StreamConsole final : public Console {
 public:
  StreamConsole(bool outIsTerminal, bool errIsTerminal)
      : m_outIsTerminal(outIsTerminal), m_errIsTerminal(errIsTerminal) {}

  bool In(std::string& text) override {
    std::array<char, 4096> part;
    for (std::size_t count = 0; (count = std::fread(part.data(), 1, part.size(), stdin)) != 0;) {
      text.append(part.data(), count);
    }
    return std::ferror(stdin) == 0;
  }

  // Whoever reads from a pipe gets what there is to say about a file when it has been read.
  void Out(std::string_view text) override {
    if (std::fwrite(text.data(), 1, text.size(), stdout) != text.size()) m_failed = true;
    static_cast<void>(Flush());
  }

  // What was printed before comes first when both streams go to one place.
  void Err(std::string_view text) override {
    static_cast<void>(Flush());
    std::fwrite(text.data(), 1, text.size(), stderr);
    std::fflush(stderr);
  }

  bool OutIsTerminal() const override { return m_outIsTerminal; }
  bool ErrIsTerminal() const override { return m_errIsTerminal; }

  // False when some text could not be written, as on a full disk.
  bool Flush() {
    if (std::fflush(stdout) != 0) m_failed = true;
    return !m_failed;
  }

 private:
  bool m_outIsTerminal;
  bool m_errIsTerminal;
  bool m_failed = false;
};

}  // namespace

int RunOnStreams(const std::vector<std::string>& arguments, bool outIsTerminal,
                 bool errIsTerminal) {
  StreamConsole console(outIsTerminal, errIsTerminal);
  const int exitCode = RunTool(arguments, console);
  if (console.Flush()) return exitCode;
  console.Err("lumidex: the output could not be written\n");
  return kExitFailed;
}

}  // namespace tool
