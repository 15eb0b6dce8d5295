#ifndef LUMIDEX_BASE_TAGVALUE_H_
#define LUMIDEX_BASE_TAGVALUE_H_

#include <cstdint>

#include "base/ByteOrder.h"
#include "base/FileStream.h"
#include "base/TagEntry.h"

// Reads the value at the stream's position into an entry, in host byte order, replacing what the
// entry held. What it costs counts against the stream's budget. Missing bytes are 0. SBYTE is
// stored as BYTE; an ASCII value always ends in a zero byte; FLOAT, DOUBLE and unknown types are
// stored as `count` raw bytes of UNDEFINED, and not at all when there are more than 65535.
void m_fnStoreTagValue(TagEntry& entry, std::uint32_t tag, FileStream& stream, std::uint32_t type,
                       std::uint32_t count, ByteOrder order, NodePool& pool);

#endif  // LUMIDEX_BASE_TAGVALUE_H_
