#ifndef LUMIDEX_TOOL_COMMANDLINE_H_
#define LUMIDEX_TOOL_COMMANDLINE_H_

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "Console.h"
#include "base/OwnedRecords.h"
#include "core/VxMetadataWrapper.h"

namespace tool {

inline constexpr int kExitOk = 0;
inline constexpr int kExitFailed = 1;
inline constexpr int kExitUsage = 2;

enum class Command { Show, Type, Panorama, Mark, Xmp, Embed, Write };

struct Options {
  Command command = Command::Show;
  std::vector<std::string> files;
  bool records = false;
  bool json = false;
  bool raw = false;
  bool store = false;
  bool trace = false;
  std::optional<std::uint32_t> mask;
  std::size_t cut = std::string::npos;  // characters of a value to print

  // Of the commands that write a file.
  std::string source;
  std::string output;
  OwnedRecords newRecords;
  std::optional<std::string> packet;
  std::optional<std::string> thumbnail;
  bool overwrite = false;
  bool showOutput = false;

  // Of the commands that take many files.
  std::vector<std::string> lists;  // files with paths of files

  std::uint32_t MaskOr(std::uint32_t standard) const { return mask.value_or(standard); }
};

// Reads the arguments, without the program's name, into `options`. Returns nothing when there is a
// command to run, and otherwise the exit code, with help or the error printed.
std::optional<int> ParseCommandLine(const std::vector<std::string>& arguments, Console& console,
                                    Options& options);

// A category mask as typed: decimal, or hexadecimal after "0x".
std::optional<std::uint32_t> ParseMask(const std::string& text);

}  // namespace tool

#endif  // LUMIDEX_TOOL_COMMANDLINE_H_
