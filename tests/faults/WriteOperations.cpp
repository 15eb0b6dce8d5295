// The methods that write files. A source is never changed, one that is written in place is put
// back, and an output holds the beginning of what was to be written.

#include <algorithm>

#include <gtest/gtest.h>

#include "com/TrailerBlock.h"
#include "com/WriteTestSupport.h"
#include "faults/Inputs.h"
#include "faults/Operation.h"

namespace test {
namespace {

// What stood at the output's place before.
Bytes OldOutput() {
  return Bytes(200000, 0x77);
}

bool IsStartOf(const Bytes& start, const Bytes& whole) {
  return start.size() <= whole.size() && std::equal(start.begin(), start.end(), whole.begin());
}

// What is written from and to.
struct Paths {
  const WCHAR* source;
  const WCHAR* output;
  const WCHAR* packet;
};

using Writing = HRESULT (*)(ILumidex& object, const Paths& paths);

// Writes a copy of a file; the output is new, or replaces another file.
template <Bytes (*bytes)(), Writing write, bool replaces = false>
class Copying final : public Scenario {
 public:
  Copying() {
    StartOutput();
    const Ref<ILumidex> object = NewLumidex();
    EXPECT_EQ(Run(*object.Get()), S_OK);
    m_whole = m_output.Read();
    EXPECT_GT(m_whole.size(), m_bytes.size());
  }

  void Prepare(ILumidex&) override { StartOutput(); }

  HRESULT Run(ILumidex& object) override {
    return write(object, {m_source.Path(), m_output.Path(), m_packet.Path()});
  }

  void Check(ILumidex&, HRESULT result) override {
    EXPECT_EQ(m_source.Read(), m_bytes);
    EXPECT_EQ(m_packet.Read(), PacketFile());
    if (result == S_OK) {
      EXPECT_TRUE(m_output.Read() == m_whole);
      return;
    }
    if (!m_output.Exists()) {
      EXPECT_FALSE(replaces);
      return;
    }
    const Bytes output = m_output.Read();
    EXPECT_TRUE(IsStartOf(output, m_whole) || (replaces && output == OldOutput()));
  }

 private:
  void StartOutput() {
    if (replaces) {
      WriteFile(m_output.Path(), OldOutput());
    } else {
      RemoveFile(m_output.Path());
    }
  }

  const Bytes m_bytes = bytes();
  const TempFile m_source{m_bytes};
  const TempFile m_packet{PacketFile(), ".xmp"};
  const NewPath m_output;
  Bytes m_whole;
};

// Writes into a file, by design or in vain: it becomes what was wanted, or stays as it was.
template <Bytes (*bytes)(), Writing write>
class InPlace final : public Scenario {
 public:
  InPlace() {
    const Ref<ILumidex> object = NewLumidex();
    Run(*object.Get());
    m_whole = m_file.Read();
  }

  void Prepare(ILumidex&) override {
    if (m_file.Read() != m_bytes) WriteFile(m_file.Path(), m_bytes);
  }

  HRESULT Run(ILumidex& object) override {
    return write(object, {m_file.Path(), m_file.Path(), m_packet.Path()});
  }

  void Check(ILumidex&, HRESULT result) override {
    EXPECT_EQ(m_packet.Read(), PacketFile());
    EXPECT_TRUE(m_file.Read() == (result == S_OK ? m_whole : m_bytes));
  }

 private:
  const Bytes m_bytes = bytes();
  const TempFile m_file{m_bytes};
  const TempFile m_packet{PacketFile(), ".xmp"};
  Bytes m_whole;
};

HRESULT Embed(ILumidex& object, const Paths& paths) {
  return object.EmbedXmpFile(paths.source, paths.output, paths.packet);
}

const Records kItems = RichRecords();
const Bytes kThumbnail(20000, 0x33);

HRESULT WriteItems(ILumidex& object, const Paths& paths) {
  return object.WriteMetadata(paths.source, paths.output, kItems.Count(), kItems.Data(), 0, 0,
                              nullptr, 1);
}

HRESULT WritePacket(ILumidex& object, const Paths& paths) {
  return object.WriteMetadata(paths.source, paths.output, 0, nullptr, 0, 0, paths.packet, 0);
}

HRESULT WriteAll(ILumidex& object, const Paths& paths) {
  return object.WriteMetadata(paths.source, paths.output, kItems.Count(), kItems.Data(),
                              static_cast<std::uint32_t>(kThumbnail.size()),
                              reinterpret_cast<std::uintptr_t>(kThumbnail.data()), paths.packet, 1);
}

HRESULT Mark(ILumidex& object, const Paths& paths) {
  return object.AppendTrailer(paths.source);
}

// The attribute tests of source and packet; that of the output finds nothing either way. A source
// without a type or a start is of a wrong format. Seeks are those in a source that is not in memory
// as a whole. Files that were only read may fail to close. A new file needs no seek.
const Outcomes kEmbedJpeg = {
    {Call::Allocation, {E_OUTOFMEMORY}},
    {Call::Attributes, {LMD_E_SRC_NOT_FOUND, S_OK}},
    {Call::Open, {LMD_E_BAD_FORMAT, LMD_E_OPEN_FAILED}},
    {Call::Read, {LMD_E_BAD_FORMAT, LMD_E_READ_FAILED}},
    {Call::Seek, {LMD_E_READ_FAILED}},
    {Call::Write, {LMD_E_WRITE_FAILED}},
    {Call::Flush, {LMD_E_WRITE_FAILED}},
    {Call::Close, {S_OK, LMD_E_WRITE_FAILED}},
};

Outcomes WithAllocation(Outcomes outcomes, std::set<HRESULT> codes) {
  outcomes[Call::Allocation] = std::move(codes);
  return outcomes;
}

const Outcomes kEmbedPng = WithAllocation(kEmbedJpeg, {E_OUTOFMEMORY, LMD_E_OUT_OF_MEMORY});

// Without the memory to tell two files apart they are taken for one.
const Outcomes kEmbedInPlace = {
    {Call::Allocation, {LMD_E_DST_EXISTS, E_OUTOFMEMORY, LMD_E_OUT_OF_MEMORY}},
    {Call::Attributes, {LMD_E_SRC_NOT_FOUND}},
    {Call::Open, {LMD_E_BAD_FORMAT, LMD_E_OPEN_FAILED}},
    {Call::Read, {LMD_E_BAD_FORMAT, LMD_E_READ_FAILED}},
    {Call::Seek, {LMD_E_BAD_FORMAT, LMD_E_READ_FAILED, LMD_E_WRITE_FAILED}},
    {Call::Write, {LMD_E_WRITE_FAILED}},
    {Call::Flush, {LMD_E_WRITE_FAILED}},
    {Call::Close, {S_OK, LMD_E_WRITE_FAILED}},
};

// There is no other file for the output to be taken for than the source.
const Outcomes kWriteAll = {
    {Call::Allocation, {LMD_E_DST_EXISTS, S_OK, E_OUTOFMEMORY}},
    {Call::Attributes, {LMD_E_SRC_NOT_FOUND}},
    {Call::Open, {LMD_E_BAD_FORMAT, LMD_E_OPEN_FAILED}},
    {Call::Read, {LMD_E_BAD_FORMAT, LMD_E_READ_FAILED}},
    {Call::Seek, {LMD_E_READ_FAILED}},
    {Call::Write, {LMD_E_WRITE_FAILED}},
    {Call::Flush, {LMD_E_WRITE_FAILED}},
    {Call::Close, {S_OK, LMD_E_WRITE_FAILED}},
};

// From a source that is read at once.
const Outcomes kWriteItems = [] {
  Outcomes outcomes = kWriteAll;
  outcomes.erase(Call::Seek);
  outcomes[Call::Read] = {LMD_E_BAD_FORMAT};
  return outcomes;
}();

const Outcomes kMark = {
    {Call::Attributes, {LMD_E_SRC_NOT_FOUND}},
    {Call::Open, {LMD_E_OPEN_FAILED}},
    {Call::Read, {LMD_E_READ_FAILED}},
    {Call::Seek, {LMD_E_READ_FAILED, LMD_E_WRITE_FAILED}},
    {Call::Write, {LMD_E_WRITE_FAILED}},
    {Call::Flush, {LMD_E_WRITE_FAILED}},
    {Call::Close, {LMD_E_WRITE_FAILED}},
};

// Refused before anything but the start of the file is read. Whether the output exists is not asked
// where it may.
const Outcomes kOntoItself = {
    {Call::Allocation, {LMD_E_DST_EXISTS, E_OUTOFMEMORY}},
    {Call::Attributes, {LMD_E_SRC_NOT_FOUND, LMD_E_DST_EXISTS}},
    {Call::Open, {LMD_E_BAD_FORMAT}},
    {Call::Read, {LMD_E_BAD_FORMAT}},
    {Call::Close, {LMD_E_DST_EXISTS}},
};

const Outcomes kSourceOntoItself = [] {
  Outcomes outcomes = kOntoItself;
  outcomes[Call::Attributes] = {LMD_E_SRC_NOT_FOUND};
  return outcomes;
}();

const Operation kWriteOperations[] = {
    {"EmbedXmpFileJpeg", S_OK, Make<Copying<PhotoWithoutXmp, Embed>>, kEmbedJpeg},
    {"EmbedXmpFilePng", S_OK, Make<Copying<PlainPng, Embed>>, kEmbedPng},
    {"EmbedXmpFilePngInPlace", S_OK, Make<InPlace<PlainPng, Embed>>, kEmbedInPlace},
    {"EmbedXmpFileOntoItself", LMD_E_DST_EXISTS, Make<InPlace<PhotoWithoutXmp, Embed>>,
     kOntoItself},
    {"WriteMetadataItems", S_OK, Make<Copying<RichPhoto, WriteItems, true>>, kWriteItems},
    {"WriteMetadataPacket", S_OK, Make<Copying<PhotoWithoutXmp, WritePacket>>, kEmbedJpeg},
    {"WriteMetadataAll", S_OK, Make<Copying<PhotoWithoutXmp, WriteAll, true>>, kWriteAll},
    {"WriteMetadataOntoItself", LMD_E_DST_EXISTS, Make<InPlace<RichPhoto, WriteItems>>,
     kSourceOntoItself},
    {"AppendTrailer", S_OK, Make<InPlace<RichPhoto, Mark>>, kMark},
};

}  // namespace

std::span<const Operation> WriteOperations() {
  return kWriteOperations;
}

}  // namespace test
