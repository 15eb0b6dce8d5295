#include "container/FileCopy.h"

#include <algorithm>

#include <lumidex/ResultCodes.h>

bool OpenForCopy(FileStream& source, const WCHAR* path, const WCHAR* mode) {
  if (!source.Open(path, mode)) return false;
  static_cast<void>(source.ReadBlock(FileStream::kWindowSize));
  return true;
}

HRESULT CopyBytes(FileStream& source, std::uint64_t position, std::uint64_t count,
                  BlockWriter& output) {
  source.Seek(position);
  while (count > 0) {
    const auto room = output.Room();
    const auto block =
        room.first(static_cast<std::size_t>(std::min<std::uint64_t>(count, room.size())));
    if (source.Read(block) < block.size()) return LMD_E_READ_FAILED;
    if (!output.Append(block.size())) return LMD_E_WRITE_FAILED;
    count -= block.size();
  }
  return S_OK;
}

HRESULT CopyRest(FileStream& source, std::uint64_t position, BlockWriter& output) {
  const std::uint64_t size = source.ReadableSize();
  if (source.HasFailed() || position > size) return LMD_E_READ_FAILED;
  return CopyBytes(source, position, size - position, output);
}
