#include "PathList.h"

#include <array>

#include <lumidex/ResultCodes.h>

#include "Text.h"
#include "base/FileStream.h"
#include "com/FilePaths.h"

namespace tool {
namespace {

HRESULT ReadText(const std::string& file, std::string& text) {
  const WideString path = WideFromUtf8(file);
  FileStream stream;
  if (!IsUsableFile(path.c_str())) return LMD_E_SRC_NOT_FOUND;
  if (!stream.Open(path.c_str(), LMD_W("rb"))) return LMD_E_OPEN_FAILED;
  std::array<std::uint8_t, 4096> part;
  for (std::size_t count = 0; (count = stream.Read(part)) != 0;) {
    text += TextFromBytes(std::span(part).first(count));
  }
  return text.size() == stream.Size() ? S_OK : LMD_E_READ_FAILED;
}

}  // namespace

std::vector<std::string> PathsOfList(std::string_view text) {
  constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";
  if (text.starts_with(kByteOrderMark)) text.remove_prefix(kByteOrderMark.size());
  std::vector<std::string> paths;
  while (!text.empty()) {
    const std::size_t end = text.find('\n');
    std::string_view line = text.substr(0, end);
    text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
    if (line.ends_with('\r')) line.remove_suffix(1);
    if (!line.empty()) paths.emplace_back(line);
  }
  return paths;
}

HRESULT AppendList(const std::string& file, Console& console, std::vector<std::string>& paths) {
  std::string text;
  if (file == kStandardInput) {
    if (!console.In(text)) return LMD_E_READ_FAILED;
  } else {
    const HRESULT result = ReadText(file, text);
    if (FAILED(result)) return result;
  }
  for (std::string& path : PathsOfList(text)) paths.push_back(std::move(path));
  return S_OK;
}

}  // namespace tool
