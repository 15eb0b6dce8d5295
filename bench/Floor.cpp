#include "Floor.h"

#include <array>
#include <cstdint>
#include <cstdio>
#include <memory>
#include <stdexcept>

namespace bench {
namespace {

struct Closer {
  void operator()(std::FILE* file) const noexcept { static_cast<void>(std::fclose(file)); }
};
using Stream = std::unique_ptr<std::FILE, Closer>;

std::array<std::uint8_t, 64U * 1024> g_block;

Stream OpenStream(const WCHAR* path, const WCHAR* mode) {
  Stream stream(_wfopen(path, mode));
  if (!stream) throw std::runtime_error("a file cannot be opened");
  static_cast<void>(std::setvbuf(stream.get(), nullptr, _IONBF, 0));
  return stream;
}

std::size_t ReadBlock(std::FILE* stream) {
  return std::fread(g_block.data(), 1, g_block.size(), stream);
}

}  // namespace

void ReadStart(const WCHAR* path) {
  const Stream stream = OpenStream(path, LMD_W("rb"));
  static_cast<void>(ReadBlock(stream.get()));
}

void CopyFile64K(const WCHAR* source, const WCHAR* output) {
  const Stream from = OpenStream(source, LMD_W("rb"));
  const Stream to = OpenStream(output, LMD_W("wb"));
  std::size_t count = 0;
  do {
    count = ReadBlock(from.get());
    if (std::fwrite(g_block.data(), 1, count, to.get()) != count) {
      throw std::runtime_error("a copy cannot be written");
    }
  } while (count == g_block.size());
}

}  // namespace bench
