#include "exif/StoredText.h"

#include "base/TypeSizes.h"
#include "base/WideText.h"
#include "xmp/TextConversion.h"

void SetTagText(TagEntry& entry, std::uint32_t tag, std::string_view text, std::uint32_t codePage,
                const ValueMemory& memory) {
  if (!IsPlainText(text, codePage)) {
    const WideString wide = ToWideString(text, codePage);
    return SetTagValue(entry, tag, TYPE_WIDE_TEXT, WideTextBytes(wide), memory);
  }
  entry.m_nTag = tag;
  entry.m_nType = TYPE_WIDE_TEXT;
  const auto units = AllocateTagData(entry, (text.size() + 1) * sizeof(WCHAR), memory);
  if (!units.empty()) WidenPlainText(text, units);
}
