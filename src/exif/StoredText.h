#ifndef LUMIDEX_EXIF_STOREDTEXT_H_
#define LUMIDEX_EXIF_STOREDTEXT_H_

#include <cstdint>
#include <string_view>

#include "base/TagEntry.h"

// Replaces tag, type, size and data by a byte text in a code page, converted as by ToWideString,
// and its final zero; the count stays. The text has no zero. Most texts are ASCII and become
// UTF-16 where they are stored.
void SetTagText(TagEntry& entry, std::uint32_t tag, std::string_view text, std::uint32_t codePage,
                const ValueMemory& memory);

#endif  // LUMIDEX_EXIF_STOREDTEXT_H_
