#include <string>
#include <string_view>

#include <gtest/gtest.h>

#include "xmp/XmpBindings.h"

namespace {

// Bindings of prefixes that stand in a packet, to namespaces of which only the start is told.
class Bindings {
 public:
  explicit Bindings(std::string_view packet) : m_packet(packet) { m_bindings.Reset(m_packet); }

  void Bind(std::string_view prefix, std::uint32_t nameSpace) {
    m_bindings.Bind(Span(prefix), {nameSpace, 1});
  }

  // 0 when the prefix is not bound.
  std::uint32_t Find(std::string_view prefix) {
    const XmpSpan* const bound = m_bindings.Find(Span(prefix));
    return bound == nullptr ? 0 : bound->start;
  }

 private:
  XmpSpan Span(std::string_view prefix) const {
    return {static_cast<std::uint32_t>(m_packet.find(prefix)),
            static_cast<std::uint32_t>(prefix.size())};
  }

  std::string m_packet;
  XmpBindings m_bindings;
};

TEST(XmpBindings, FindsWhatIsBound) {
  Bindings bindings("xmp:dc:exif:tiff");
  EXPECT_EQ(bindings.Find("xmp"), 0u);
  bindings.Bind("xmp", 1);
  bindings.Bind("dc", 2);
  EXPECT_EQ(bindings.Find("xmp"), 1u);
  EXPECT_EQ(bindings.Find("dc"), 2u);
  EXPECT_EQ(bindings.Find("dc"), 2u);
  EXPECT_EQ(bindings.Find("exif"), 0u);
}

TEST(XmpBindings, LastOneOfAPrefixCounts) {
  Bindings bindings("xmp:dc");
  bindings.Bind("xmp", 1);
  bindings.Bind("dc", 2);
  EXPECT_EQ(bindings.Find("xmp"), 1u);
  bindings.Bind("xmp", 3);
  EXPECT_EQ(bindings.Find("xmp"), 3u);
  EXPECT_EQ(bindings.Find("dc"), 2u);
}

TEST(XmpBindings, PrefixesAreComparedWhole) {
  Bindings bindings("abcdefghij:abcdefghik:abc");
  bindings.Bind("abcdefghij", 1);
  EXPECT_EQ(bindings.Find("abcdefghik"), 0u);
  EXPECT_EQ(bindings.Find("abcdefgh"), 0u);
  bindings.Bind("abcdefgh", 2);
  bindings.Bind("abcdefg", 3);
  EXPECT_EQ(bindings.Find("abcdefghij"), 1u);
  EXPECT_EQ(bindings.Find("abcdefgh"), 2u);
  EXPECT_EQ(bindings.Find("abcdefg"), 3u);
  EXPECT_EQ(bindings.Find("abc"), 0u);
}

TEST(XmpBindings, EmptyPrefixIsNoOther) {
  Bindings bindings("abc");
  EXPECT_EQ(bindings.Find(""), 0u);
  bindings.Bind("a", 1);
  EXPECT_EQ(bindings.Find(""), 0u);
  bindings.Bind("", 2);
  EXPECT_EQ(bindings.Find(""), 2u);
  EXPECT_EQ(bindings.Find("a"), 1u);
}

// Prefixes of every place in the packet, up to its last byte.
TEST(XmpBindings, AnyNumberIsFoundAndBoundAnew) {
  constexpr std::uint32_t kCount = 100;
  const auto prefix = [](std::uint32_t i) { return "p" + std::to_string(100 + i); };
  std::string packet;
  for (std::uint32_t i = 0; i < kCount; ++i) packet += prefix(i);
  Bindings bindings(packet);
  for (std::uint32_t i = 0; i < kCount; ++i) bindings.Bind(prefix(i), i + 1);
  for (std::uint32_t i = 0; i < kCount; ++i) EXPECT_EQ(bindings.Find(prefix(i)), i + 1);
  for (std::uint32_t i = 0; i < kCount; i += 3) bindings.Bind(prefix(i), i + 1001);
  for (std::uint32_t i = 0; i < kCount; ++i) {
    EXPECT_EQ(bindings.Find(prefix(i)), i % 3 == 0 ? i + 1001 : i + 1);
  }
}

// As when every element of a packet declares what it uses.
TEST(XmpBindings, OnePrefixIsBoundAnewAgainAndAgain) {
  Bindings bindings("xmp:dc:tiff");
  bindings.Bind("dc", 1000);
  for (std::uint32_t i = 1; i < 100; ++i) {
    bindings.Bind("xmp", i);
    EXPECT_EQ(bindings.Find("xmp"), i);
    EXPECT_EQ(bindings.Find("dc"), 1000u);
    EXPECT_EQ(bindings.Find("xmp"), i);
    EXPECT_EQ(bindings.Find("tiff"), 0u);
  }
}

TEST(XmpBindings, ResetForgetsThem) {
  XmpBindings bindings;
  bindings.Reset("ab");
  bindings.Bind({0, 1}, {1, 1});
  bindings.Reset("ab");
  EXPECT_EQ(bindings.Find({0, 1}), nullptr);
}

TEST(XmpBindings, UnknownPrefixIsNotFoundAmongMany) {
  Bindings bindings("abcdefghijklmnopqrstuvwxyz");
  for (char prefix = 'a'; prefix <= 't'; ++prefix) bindings.Bind({&prefix, 1}, 1);
  EXPECT_EQ(bindings.Find("t"), 1u);
  EXPECT_EQ(bindings.Find("z"), 0u);
}

}  // namespace
