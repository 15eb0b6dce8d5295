#include "container/FileCopy.h"

#include <algorithm>

#include <lumidex/ResultCodes.h>

HRESULT CopyBytes(FileStream& source, std::uint64_t position, std::uint64_t count,
                  FileStream& output) {
  constexpr std::uint64_t kBlockSize = 65536;
  ByteBuffer buffer(static_cast<std::size_t>(std::min(count, kBlockSize)));
  source.Seek(position);
  while (count > 0) {
    const auto block = buffer.Bytes().first(static_cast<std::size_t>(std::min(count, kBlockSize)));
    if (source.Read(block) < block.size()) return LMD_E_READ_FAILED;
    if (!output.Write(block)) return LMD_E_WRITE_FAILED;
    count -= block.size();
  }
  return S_OK;
}

HRESULT CopyRest(FileStream& source, std::uint64_t position, FileStream& output) {
  const std::uint64_t size = source.Size();
  if (source.HasFailed() || position > size) return LMD_E_READ_FAILED;
  return CopyBytes(source, position, size - position, output);
}

HRESULT CloseOutput(FileStream& output) {
  const bool flushed = output.Flush();
  return output.Close() && flushed ? S_OK : LMD_E_WRITE_FAILED;
}
