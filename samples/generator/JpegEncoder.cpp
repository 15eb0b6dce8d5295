#include "JpegEncoder.h"

#include <algorithm>
#include <array>
#include <span>

namespace samples {
namespace {

using test::Bytes;
using Block = std::array<int, 64>;

// clang-format off
constexpr Block kZigzag = {
     0,  1,  8, 16,  9,  2,  3, 10, 17, 24, 32, 25, 18, 11,  4,  5,
    12, 19, 26, 33, 40, 48, 41, 34, 27, 20, 13,  6,  7, 14, 21, 28,
    35, 42, 49, 56, 57, 50, 43, 36, 29, 22, 15, 23, 30, 37, 44, 51,
    58, 59, 52, 45, 38, 31, 39, 46, 53, 60, 61, 54, 47, 55, 62, 63};

// Tables K.1 and K.2, in natural order.
constexpr Block kLuminance = {
    16, 11, 10, 16,  24,  40,  51,  61,
    12, 12, 14, 19,  26,  58,  60,  55,
    14, 13, 16, 24,  40,  57,  69,  56,
    14, 17, 22, 29,  51,  87,  80,  62,
    18, 22, 37, 56,  68, 109, 103,  77,
    24, 35, 55, 64,  81, 104, 113,  92,
    49, 64, 78, 87, 103, 121, 120, 101,
    72, 92, 95, 98, 112, 100, 103,  99};
constexpr Block kChrominance = {
    17, 18, 24, 47, 99, 99, 99, 99,
    18, 21, 26, 66, 99, 99, 99, 99,
    24, 26, 56, 99, 99, 99, 99, 99,
    47, 66, 99, 99, 99, 99, 99, 99,
    99, 99, 99, 99, 99, 99, 99, 99,
    99, 99, 99, 99, 99, 99, 99, 99,
    99, 99, 99, 99, 99, 99, 99, 99,
    99, 99, 99, 99, 99, 99, 99, 99};

// Tables K.3 to K.6: how many codes there are of each length from 1 to 16, and their symbols.
constexpr std::array<std::uint8_t, 16> kDcLuminanceLengths   = {0, 1, 5, 1, 1, 1, 1, 1, 1, 0, 0, 0, 0, 0, 0, 0};
constexpr std::array<std::uint8_t, 16> kDcChrominanceLengths = {0, 3, 1, 1, 1, 1, 1, 1, 1, 1, 1, 0, 0, 0, 0, 0};
constexpr std::array<std::uint8_t, 12> kDcSymbols = {0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11};
constexpr std::array<std::uint8_t, 16> kAcLuminanceLengths   = {0, 2, 1, 3, 3, 2, 4, 3, 5, 5, 4, 4, 0, 0, 1, 0x7D};
constexpr std::array<std::uint8_t, 16> kAcChrominanceLengths = {0, 2, 1, 2, 4, 4, 3, 4, 7, 5, 4, 4, 0, 1, 2, 0x77};
constexpr std::array<std::uint8_t, 162> kAcLuminanceSymbols = {
    0x01, 0x02, 0x03, 0x00, 0x04, 0x11, 0x05, 0x12, 0x21, 0x31, 0x41, 0x06, 0x13, 0x51, 0x61, 0x07,
    0x22, 0x71, 0x14, 0x32, 0x81, 0x91, 0xA1, 0x08, 0x23, 0x42, 0xB1, 0xC1, 0x15, 0x52, 0xD1, 0xF0,
    0x24, 0x33, 0x62, 0x72, 0x82, 0x09, 0x0A, 0x16, 0x17, 0x18, 0x19, 0x1A, 0x25, 0x26, 0x27, 0x28,
    0x29, 0x2A, 0x34, 0x35, 0x36, 0x37, 0x38, 0x39, 0x3A, 0x43, 0x44, 0x45, 0x46, 0x47, 0x48, 0x49,
    0x4A, 0x53, 0x54, 0x55, 0x56, 0x57, 0x58, 0x59, 0x5A, 0x63, 0x64, 0x65, 0x66, 0x67, 0x68, 0x69,
    0x6A, 0x73, 0x74, 0x75, 0x76, 0x77, 0x78, 0x79, 0x7A, 0x83, 0x84, 0x85, 0x86, 0x87, 0x88, 0x89,
    0x8A, 0x92, 0x93, 0x94, 0x95, 0x96, 0x97, 0x98, 0x99, 0x9A, 0xA2, 0xA3, 0xA4, 0xA5, 0xA6, 0xA7,
    0xA8, 0xA9, 0xAA, 0xB2, 0xB3, 0xB4, 0xB5, 0xB6, 0xB7, 0xB8, 0xB9, 0xBA, 0xC2, 0xC3, 0xC4, 0xC5,
    0xC6, 0xC7, 0xC8, 0xC9, 0xCA, 0xD2, 0xD3, 0xD4, 0xD5, 0xD6, 0xD7, 0xD8, 0xD9, 0xDA, 0xE1, 0xE2,
    0xE3, 0xE4, 0xE5, 0xE6, 0xE7, 0xE8, 0xE9, 0xEA, 0xF1, 0xF2, 0xF3, 0xF4, 0xF5, 0xF6, 0xF7, 0xF8,
    0xF9, 0xFA};
constexpr std::array<std::uint8_t, 162> kAcChrominanceSymbols = {
    0x00, 0x01, 0x02, 0x03, 0x11, 0x04, 0x05, 0x21, 0x31, 0x06, 0x12, 0x41, 0x51, 0x07, 0x61, 0x71,
    0x13, 0x22, 0x32, 0x81, 0x08, 0x14, 0x42, 0x91, 0xA1, 0xB1, 0xC1, 0x09, 0x23, 0x33, 0x52, 0xF0,
    0x15, 0x62, 0x72, 0xD1, 0x0A, 0x16, 0x24, 0x34, 0xE1, 0x25, 0xF1, 0x17, 0x18, 0x19, 0x1A, 0x26,
    0x27, 0x28, 0x29, 0x2A, 0x35, 0x36, 0x37, 0x38, 0x39, 0x3A, 0x43, 0x44, 0x45, 0x46, 0x47, 0x48,
    0x49, 0x4A, 0x53, 0x54, 0x55, 0x56, 0x57, 0x58, 0x59, 0x5A, 0x63, 0x64, 0x65, 0x66, 0x67, 0x68,
    0x69, 0x6A, 0x73, 0x74, 0x75, 0x76, 0x77, 0x78, 0x79, 0x7A, 0x82, 0x83, 0x84, 0x85, 0x86, 0x87,
    0x88, 0x89, 0x8A, 0x92, 0x93, 0x94, 0x95, 0x96, 0x97, 0x98, 0x99, 0x9A, 0xA2, 0xA3, 0xA4, 0xA5,
    0xA6, 0xA7, 0xA8, 0xA9, 0xAA, 0xB2, 0xB3, 0xB4, 0xB5, 0xB6, 0xB7, 0xB8, 0xB9, 0xBA, 0xC2, 0xC3,
    0xC4, 0xC5, 0xC6, 0xC7, 0xC8, 0xC9, 0xCA, 0xD2, 0xD3, 0xD4, 0xD5, 0xD6, 0xD7, 0xD8, 0xD9, 0xDA,
    0xE2, 0xE3, 0xE4, 0xE5, 0xE6, 0xE7, 0xE8, 0xE9, 0xEA, 0xF2, 0xF3, 0xF4, 0xF5, 0xF6, 0xF7, 0xF8,
    0xF9, 0xFA};

// 8192 times the cosine of k sixteenths of pi.
constexpr std::array<int, 9> kCosine = {8192, 8035, 7568, 6811, 5793, 4551, 3135, 1598, 0};
// clang-format on

int Cosine(int k) {
  k %= 32;
  if (k > 16) k = 32 - k;
  return k <= 8 ? kCosine[static_cast<std::size_t>(k)] : -kCosine[static_cast<std::size_t>(16 - k)];
}

// The row of the transform's matrix for frequency u, scaled by 2^14.
int Basis(int u, int x) {
  return u == 0 ? kCosine[4] : Cosine((2 * x + 1) * u);
}

std::size_t At(int row, int column) {
  return static_cast<std::size_t>(8 * row + column);
}

// The forward transform (A.3.3), scaled by 2^28.
std::array<std::int64_t, 64> Transform(const Block& samples) {
  std::array<std::int64_t, 64> rows{};
  for (int y = 0; y < 8; ++y) {
    for (int u = 0; u < 8; ++u) {
      for (int x = 0; x < 8; ++x) rows[At(y, u)] += samples[At(y, x)] * Basis(u, x);
    }
  }
  std::array<std::int64_t, 64> all{};
  for (int v = 0; v < 8; ++v) {
    for (int u = 0; u < 8; ++u) {
      for (int y = 0; y < 8; ++y) all[At(v, u)] += rows[At(y, u)] * Basis(v, y);
    }
  }
  return all;
}

// Transformed, divided by the table's steps and rounded.
Block Quantize(const Block& samples, const Block& steps) {
  const std::array<std::int64_t, 64> transformed = Transform(samples);
  Block quantized{};
  for (std::size_t i = 0; i < 64; ++i) {
    const std::int64_t step = std::int64_t{steps[i]} << 28;
    const std::int64_t value = transformed[i];
    quantized[i] = static_cast<int>((value < 0 ? value - step / 2 : value + step / 2) / step);
  }
  return quantized;
}

Block Scale(const Block& table, int quality) {
  const int percent = quality < 50 ? 5000 / quality : 200 - 2 * quality;
  Block scaled{};
  for (std::size_t i = 0; i < 64; ++i) {
    scaled[i] = std::clamp((table[i] * percent + 50) / 100, 1, 255);
  }
  return scaled;
}

// A stream of bits in which every 0xFF byte is followed by a zero byte (F.1.2.3).
class BitWriter {
 public:
  void Write(unsigned bits, int count) {
    for (int i = count - 1; i >= 0; --i) WriteBit((bits >> i) & 1U);
  }

  // The last byte is filled with ones.
  Bytes Finish() {
    while (m_used != 0) WriteBit(1);
    return m_bytes;
  }

 private:
  void WriteBit(unsigned bit) {
    m_byte = (m_byte << 1) | bit;
    if (++m_used < 8) return;
    m_bytes.push_back(static_cast<std::uint8_t>(m_byte));
    if (m_byte == 0xFF) m_bytes.push_back(0);
    m_byte = 0;
    m_used = 0;
  }

  Bytes m_bytes;
  unsigned m_byte = 0;
  int m_used = 0;
};

// The codes of a table, assigned by length (Annex C).
class HuffmanCodes {
 public:
  HuffmanCodes(std::span<const std::uint8_t> lengths, std::span<const std::uint8_t> symbols) {
    unsigned code = 0;
    std::size_t next = 0;
    for (std::size_t length = 1; length <= lengths.size(); ++length) {
      for (int i = 0; i < lengths[length - 1]; ++i) {
        m_codes[symbols[next++]] = {code++, static_cast<int>(length)};
      }
      code <<= 1;
    }
  }

  void Write(BitWriter& bits, unsigned symbol) const {
    bits.Write(m_codes[symbol].bits, m_codes[symbol].length);
  }

 private:
  struct Code {
    unsigned bits = 0;
    int length = 0;
  };
  std::array<Code, 256> m_codes{};
};

int CategoryOf(int value) {
  int category = 0;
  for (int rest = value < 0 ? -value : value; rest != 0; rest >>= 1) ++category;
  return category;
}

// The bits that tell the values of a category apart (F.1.2.1).
void WriteMagnitude(BitWriter& bits, int value, int category) {
  const int shifted = value < 0 ? value + (1 << category) - 1 : value;
  bits.Write(static_cast<unsigned>(shifted), category);
}

// One component of the scan: its tables and the prediction of its next block.
class Component {
 public:
  Component(const Block& steps, const HuffmanCodes& dc, const HuffmanCodes& ac)
      : m_steps(steps), m_dc(dc), m_ac(ac) {}

  void WriteBlock(BitWriter& bits, const Block& samples) {
    const Block block = Quantize(samples, m_steps);
    const int difference = block[0] - m_predicted;
    m_predicted = block[0];
    const int category = CategoryOf(difference);
    m_dc.Write(bits, static_cast<unsigned>(category));
    WriteMagnitude(bits, difference, category);
    WriteRest(bits, block);
  }

 private:
  void WriteRest(BitWriter& bits, const Block& block) {
    constexpr unsigned kSixteenZeros = 0xF0;
    constexpr unsigned kEndOfBlock = 0;
    unsigned zeros = 0;
    for (std::size_t i = 1; i < 64; ++i) {
      const int value = block[static_cast<std::size_t>(kZigzag[i])];
      if (value == 0) {
        ++zeros;
        continue;
      }
      for (; zeros >= 16; zeros -= 16) m_ac.Write(bits, kSixteenZeros);
      const int category = CategoryOf(value);
      m_ac.Write(bits, zeros << 4 | static_cast<unsigned>(category));
      WriteMagnitude(bits, value, category);
      zeros = 0;
    }
    if (zeros != 0) m_ac.Write(bits, kEndOfBlock);
  }

  const Block& m_steps;
  const HuffmanCodes& m_dc;
  const HuffmanCodes& m_ac;
  int m_predicted = 0;
};

// The conversion of JFIF, less 128, in parts of 65536.
int Luma(Color c) {
  return ((19595 * c.red + 38470 * c.green + 7471 * c.blue + 32768) >> 16) - 128;
}
int BlueDifference(Color c) {
  return (-11059 * c.red - 21709 * c.green + 32768 * c.blue + 32768) / 65536;
}
int RedDifference(Color c) {
  return (32768 * c.red - 27439 * c.green - 5329 * c.blue + 32768) / 65536;
}

template <typename Sample>
Block Fill(int left, int top, const Sample& sample) {
  Block block{};
  for (int y = 0; y < 8; ++y) {
    for (int x = 0; x < 8; ++x) block[At(y, x)] = sample(left + x, top + y);
  }
  return block;
}

struct Tables {
  Block luminance;
  Block chrominance;
  HuffmanCodes dcLuminance{kDcLuminanceLengths, kDcSymbols};
  HuffmanCodes acLuminance{kAcLuminanceLengths, kAcLuminanceSymbols};
  HuffmanCodes dcChrominance{kDcChrominanceLengths, kDcSymbols};
  HuffmanCodes acChrominance{kAcChrominanceLengths, kAcChrominanceSymbols};
};

// Units of 16 by 16 pixels: four blocks of luminance, then one of each colour difference.
Bytes EncodeScan(const Picture& picture, const Tables& tables) {
  const Picture half = Halve(picture);
  Component luma(tables.luminance, tables.dcLuminance, tables.acLuminance);
  Component blue(tables.chrominance, tables.dcChrominance, tables.acChrominance);
  Component red(tables.chrominance, tables.dcChrominance, tables.acChrominance);
  BitWriter bits;
  const auto lumaAt = [&](int x, int y) { return Luma(picture.At(x, y)); };
  const auto blueAt = [&](int x, int y) { return BlueDifference(half.At(x, y)); };
  const auto redAt = [&](int x, int y) { return RedDifference(half.At(x, y)); };
  for (int top = 0; top < picture.Height(); top += 16) {
    for (int left = 0; left < picture.Width(); left += 16) {
      for (const int down : {0, 8}) {
        for (const int across : {0, 8}) {
          luma.WriteBlock(bits, Fill(left + across, top + down, lumaAt));
        }
      }
      blue.WriteBlock(bits, Fill(left / 2, top / 2, blueAt));
      red.WriteBlock(bits, Fill(left / 2, top / 2, redAt));
    }
  }
  return bits.Finish();
}

Bytes QuantizationTable(std::uint8_t number, const Block& table) {
  Bytes bytes = {number};
  for (const int index : kZigzag) {
    bytes.push_back(static_cast<std::uint8_t>(table[static_cast<std::size_t>(index)]));
  }
  return bytes;
}

Bytes HuffmanTable(std::uint8_t classAndNumber, std::span<const std::uint8_t> lengths,
                   std::span<const std::uint8_t> symbols) {
  return test::Join(
      {{classAndNumber}, {lengths.begin(), lengths.end()}, {symbols.begin(), symbols.end()}});
}

Bytes FrameHeader(const Picture& picture) {
  return test::Join({{8},
                     test::U16(static_cast<std::uint16_t>(picture.Height())),
                     test::U16(static_cast<std::uint16_t>(picture.Width())),
                     {3, 1, 0x22, 0, 2, 0x11, 1, 3, 0x11, 1}});
}

}  // namespace

void AppendPicture(test::Jpeg& file, const Picture& picture, int quality) {
  const Tables tables = {Scale(kLuminance, quality), Scale(kChrominance, quality)};
  file.Segment(0xDB, QuantizationTable(0, tables.luminance));
  file.Segment(0xDB, QuantizationTable(1, tables.chrominance));
  file.Segment(0xC0, FrameHeader(picture));
  file.Segment(0xC4, HuffmanTable(0x00, kDcLuminanceLengths, kDcSymbols));
  file.Segment(0xC4, HuffmanTable(0x10, kAcLuminanceLengths, kAcLuminanceSymbols));
  file.Segment(0xC4, HuffmanTable(0x01, kDcChrominanceLengths, kDcSymbols));
  file.Segment(0xC4, HuffmanTable(0x11, kAcChrominanceLengths, kAcChrominanceSymbols));
  file.Segment(0xDA, {3, 1, 0x00, 2, 0x11, 3, 0x11, 0, 63, 0});
  file.Raw(EncodeScan(picture, tables));
}

Bytes EncodePicture(const Picture& picture, int quality) {
  test::Jpeg file;
  AppendPicture(file, picture, quality);
  return file.Build();
}

}  // namespace samples
