#ifndef LUMIDEX_CONTAINER_PNGCRC_H_
#define LUMIDEX_CONTAINER_PNGCRC_H_

#include <cstdint>
#include <span>

// The CRC of a PNG chunk, over its type and data (PNG specification, annex D).
std::uint32_t PngCrc(std::span<const std::uint8_t> bytes) noexcept;

#endif  // LUMIDEX_CONTAINER_PNGCRC_H_
