#ifndef LUMIDEX_TESTS_TOOL_TOOLTESTSUPPORT_H_
#define LUMIDEX_TESTS_TOOL_TOOLTESTSUPPORT_H_

// Runs the tool inside the test and keeps what it prints.

#include <initializer_list>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "Console.h"
#include "Text.h"
#include "Tool.h"
#include "support/TempFile.h"
#include "support/Tiff.h"

namespace test {

class CaptureConsole final : public tool::Console {
 public:
  explicit CaptureConsole(bool isTerminal = false) : m_isTerminal(isTerminal) {}

  bool In(std::string& text) override {
    if (in) text += *in;
    return in.has_value();
  }
  void Out(std::string_view text) override { out += text; }
  void Err(std::string_view text) override { err += text; }
  bool OutIsTerminal() const override { return m_isTerminal; }
  bool ErrIsTerminal() const override { return m_isTerminal; }

  std::optional<std::string> in;  // nothing: reading fails
  std::string out;
  std::string err;

 private:
  bool m_isTerminal;
};

struct ToolRun {
  int exitCode = 0;
  std::string out;
  std::string err;
};

inline ToolRun RunTool(const std::vector<std::string>& arguments, bool isTerminal = false) {
  CaptureConsole console(isTerminal);
  const int exitCode = tool::RunTool(arguments, console);
  return {exitCode, console.out, console.err};
}

inline bool Contains(const std::string& text, const std::string& part) {
  return text.find(part) != std::string::npos;
}

// Builds the blocks of files that are read.
inline const Tiff kTiff(ByteOrder::LittleEndian);

// A path as an argument.
inline std::string Argument(const WideString& path) {
  return tool::Utf8FromWide(path);
}
inline std::string Argument(const TempFile& file) {
  return tool::Utf8FromWide(file.Path());
}

// An XMP packet around descriptions.
inline std::string Packet(const std::string& descriptions) {
  return "<x:xmpmeta xmlns:x=\"adobe:ns:meta/\">"
         "<rdf:RDF xmlns:rdf=\"http://www.w3.org/1999/02/22-rdf-syntax-ns#\">" +
         descriptions + "</rdf:RDF></x:xmpmeta>";
}

// A text as JSON has it; a path on Windows has backslashes.
inline std::string JsonText(std::string_view text) {
  std::string out = "\"";
  for (const char c : text) out += c == '\\' ? std::string("\\\\") : std::string(1, c);
  return out + "\"";
}

}  // namespace test

#endif  // LUMIDEX_TESTS_TOOL_TOOLTESTSUPPORT_H_
