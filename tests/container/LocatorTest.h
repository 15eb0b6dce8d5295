#ifndef LUMIDEX_TESTS_CONTAINER_LOCATORTEST_H_
#define LUMIDEX_TESTS_CONTAINER_LOCATORTEST_H_

// Runs an XMP locator over bytes and states what it answers.

#include <cstdint>
#include <ostream>
#include <stdexcept>

#include <lumidex/ResultCodes.h>

#include "container/XmpLocators.h"
#include "support/TempFile.h"

namespace test {

// A result code and the position that came with it.
struct Located {
  HRESULT result = S_OK;
  std::uint64_t position = 0;

  bool operator==(const Located&) const = default;
};

inline Located NotFound(std::uint64_t position) {
  return {S_OK, position};
}

inline Located Found(std::uint64_t position) {
  return {LMD_E_XMP_FOUND, position};
}

// Printed by a failing comparison.
inline void PrintTo(const Located& located, std::ostream* stream) {
  *stream << std::hex << static_cast<std::uint32_t>(located.result) << std::dec << " at "
          << located.position;
}

using Locator = HRESULT (*)(FileStream* stream, std::uint64_t* position);

// What a position holds when a locator has not set it.
inline constexpr std::uint64_t kNoPosition = 0xABCDEF;

inline Located Locate(Locator locator, const Bytes& bytes) {
  const TempFile file(bytes);
  FileStream stream;
  if (!stream.Open(file.Path(), LMD_W("rb"))) throw std::runtime_error("cannot open a test file");
  // A stream may stand anywhere when it is handed over.
  stream.Seek(5);
  Located located;
  located.position = kNoPosition;
  located.result = locator(&stream, &located.position);
  return located;
}

}  // namespace test

#endif  // LUMIDEX_TESTS_CONTAINER_LOCATORTEST_H_
