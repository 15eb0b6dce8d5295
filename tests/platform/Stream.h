#ifndef LUMIDEX_TESTS_PLATFORM_STREAM_H_
#define LUMIDEX_TESTS_PLATFORM_STREAM_H_

#include <cstdio>
#include <memory>

namespace test {

struct Closer {
  void operator()(std::FILE* stream) const { std::fclose(stream); }
};

// A stream that is closed with its owner.
using Stream = std::unique_ptr<std::FILE, Closer>;

}  // namespace test

#endif  // LUMIDEX_TESTS_PLATFORM_STREAM_H_
