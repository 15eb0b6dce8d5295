#ifndef LUMIDEX_TOOL_CONSOLE_H_
#define LUMIDEX_TOOL_CONSOLE_H_

#include <string>
#include <string_view>

namespace tool {

// Where the tool's texts go: the standard streams of the program, or strings in a test. All texts
// are UTF-8 with LF line ends.
class Console {
 public:
  virtual ~Console() = default;
  virtual void Out(std::string_view text) = 0;
  virtual void Err(std::string_view text) = 0;

  // Whether a person reads the stream, who likes colour and progress.
  virtual bool OutIsTerminal() const = 0;
  virtual bool ErrIsTerminal() const = 0;

  // Appends all of stdin to the text; false when it cannot be read.
  virtual bool In(std::string& text) = 0;
};

}  // namespace tool

#endif  // LUMIDEX_TOOL_CONSOLE_H_
