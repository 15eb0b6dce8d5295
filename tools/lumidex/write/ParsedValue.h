#ifndef LUMIDEX_TOOL_WRITE_PARSEDVALUE_H_
#define LUMIDEX_TOOL_WRITE_PARSEDVALUE_H_

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

namespace tool {

// A value as a record holds it, or what is wrong with the text that it was to come from.
struct ParsedValue {
  std::vector<std::uint8_t> bytes;
  std::string error;  // empty when all is well
};

inline ParsedValue WrongValue(std::string error) {
  return {{}, std::move(error)};
}

}  // namespace tool

#endif  // LUMIDEX_TOOL_WRITE_PARSEDVALUE_H_
