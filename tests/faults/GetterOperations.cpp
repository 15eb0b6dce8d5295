// The getters that answer from the records, and those that look into the current file again.

#include <algorithm>
#include <array>
#include <initializer_list>

#include <gtest/gtest.h>

#include "com/ComTest.h"
#include "faults/Inputs.h"
#include "faults/Operation.h"
#include "support/TempFile.h"

namespace test {
namespace {

// Every output that a getter may have.
struct Answer {
  std::uint32_t words[3] = {77, 77, 77};
  double numbers[3] = {77, 77, 77};
  float angle = 77;
  std::array<std::uint8_t, 65536> bytes = {};

  bool operator==(const Answer&) const = default;
};

// Calls a getter; buffers are large enough.
using Getter = HRESULT (*)(ILumidex& object, Answer& answer);

template <HRESULT (STDMETHODCALLTYPE ILumidex::*method)(std::uint32_t*)>
HRESULT Word(ILumidex& object, Answer& answer) {
  return (object.*method)(&answer.words[0]);
}

template <HRESULT (STDMETHODCALLTYPE ILumidex::*method)(std::uint32_t*, std::uint8_t*)>
HRESULT Data(ILumidex& object, Answer& answer) {
  return (object.*method)(&answer.words[0], answer.bytes.data());
}

template <HRESULT (STDMETHODCALLTYPE ILumidex::*method)(float*)>
HRESULT Angle(ILumidex& object, Answer& answer) {
  return (object.*method)(&answer.angle);
}

HRESULT Quotients(ILumidex& object, Answer& answer) {
  return object.GetInfo17Triple(&answer.numbers[0], &answer.numbers[1], &answer.numbers[2]);
}

HRESULT Words(ILumidex& object, Answer& answer) {
  return object.GetInfo20Triple(&answer.words[0], &answer.words[1], &answer.words[2]);
}

// What a getter leaves when it does not answer S_OK, and the second answer that S_OK may come with.
Answer Untouched() {
  return {};
}

// By design: the flag is cleared first, and an unreadable rest of a file holds no packet.
Answer NoPanorama() {
  Answer answer;
  answer.words[0] = 0;
  return answer;
}

// By design: a text that cannot be converted is empty, and an empty text is no number.
Answer NoAngle() {
  Answer answer;
  answer.angle = 0;
  return answer;
}

template <Bytes (*bytes)(), Getter get, Answer (*onFailure)() = Untouched,
          Answer (*onSuccess)() = nullptr>
class Query final : public Scenario {
 public:
  void Prepare(ILumidex& object) override {
    ASSERT_EQ(object.Open(m_file.Path()), S_OK);
    get(object, m_undisturbed);
    m_answer = Answer();
  }
  HRESULT Run(ILumidex& object) override { return get(object, m_answer); }

  void Check(ILumidex&, HRESULT result) override {
    EXPECT_EQ(m_file.Read(), m_bytes);
    if (result != S_OK) {
      EXPECT_TRUE(m_answer == onFailure());
    } else if (onSuccess == nullptr || m_answer != onSuccess()) {
      EXPECT_TRUE(m_answer == m_undisturbed);
    }
  }

 private:
  const Bytes m_bytes = bytes();
  const TempFile m_file{m_bytes};
  Answer m_undisturbed;
  Answer m_answer;
};

template <Getter get>
using FromRecords = Query<RichPhoto, get>;

// The text is converted, by allocating functions of both kinds.
template <Getter get>
using FromText = Query<RichPhoto, get, Untouched, NoAngle>;

const Outcomes kNothingFails;
const Outcomes kText = {{Call::Allocation, {S_OK, E_OUTOFMEMORY}}};

const Outcomes kPanoramaJpeg = {
    {Call::Allocation, {E_OUTOFMEMORY}},
    {Call::Open, {LMD_E_NOT_FOUND}},
    {Call::Read, {LMD_E_NOT_FOUND}},
    {Call::Close, {LMD_E_NOT_PANORAMA}},
};

const Outcomes kPanoramaPng = {
    {Call::Allocation, {E_OUTOFMEMORY, LMD_E_OUT_OF_MEMORY}},
    {Call::Open, {LMD_E_NOT_FOUND}},
    {Call::Read, {LMD_E_BAD_FORMAT, S_OK}},
    {Call::Seek, {S_OK}},
    {Call::Close, {S_OK}},
};

const Operation kGetterOperations[] = {
    {"GetInfo16", S_OK, Make<FromRecords<Word<&ILumidex::GetInfo16>>>, kNothingFails},
    {"GetInfo17Size", S_OK, Make<FromRecords<Word<&ILumidex::GetInfo17Size>>>, kNothingFails},
    {"GetInfo17Triple", S_OK, Make<FromRecords<Quotients>>, kNothingFails},
    {"GetInfo17Data", S_OK, Make<FromRecords<Data<&ILumidex::GetInfo17Data>>>, kNothingFails},
    {"GetInfo18Size", S_OK, Make<FromRecords<Word<&ILumidex::GetInfo18Size>>>, kNothingFails},
    {"GetInfo18Data", S_OK, Make<FromRecords<Data<&ILumidex::GetInfo18Data>>>, kNothingFails},
    {"GetInfo19Size", S_OK, Make<FromRecords<Word<&ILumidex::GetInfo19Size>>>, kNothingFails},
    {"GetInfo19Data", S_OK, Make<FromRecords<Data<&ILumidex::GetInfo19Data>>>, kNothingFails},
    {"GetInfo20Triple", S_OK, Make<FromRecords<Words>>, kNothingFails},
    {"GetInfo21Size", S_OK, Make<FromRecords<Word<&ILumidex::GetInfo21Size>>>, kNothingFails},
    {"GetInfo21Data", S_OK, Make<FromRecords<Data<&ILumidex::GetInfo21Data>>>, kNothingFails},
    {"GetPoseHeading", S_OK, Make<FromText<Angle<&ILumidex::GetPoseHeading>>>, kText},
    {"GetPosePitch", S_OK, Make<FromText<Angle<&ILumidex::GetPosePitch>>>, kText},
    {"GetPoseRoll", S_OK, Make<FromText<Angle<&ILumidex::GetPoseRoll>>>, kText},
    {"IsPanoramaByRecords", S_OK, Make<FromRecords<Word<&ILumidex::IsPanorama>>>, kNothingFails},
    {"IsPanoramaJpeg", LMD_E_NOT_PANORAMA,
     Make<Query<PhotoWithEmptyXmp, Word<&ILumidex::IsPanorama>, NoPanorama>>, kPanoramaJpeg},
    {"IsPanoramaPng", S_OK,
     Make<Query<PanoramaPng, Word<&ILumidex::IsPanorama>, NoPanorama, NoPanorama>>, kPanoramaPng},
};

// The packet is looked for in the file. What cannot be read does not begin as it must or holds no
// packet; only the packet itself is known to be there. The first read needs no seek.
const Outcomes kSizeJpeg = {
    {Call::Allocation, {E_OUTOFMEMORY}},
    {Call::Open, {LMD_E_OPEN_FAILED}},
    {Call::Read, {LMD_E_BAD_FORMAT, LMD_E_NOT_FOUND}},
    {Call::Seek, {LMD_E_NOT_FOUND}},
    {Call::Close, {S_OK}},
};
// A packet in a PNG is found by a word, which may stand in front of what cannot be read.
const Outcomes kSizePng = {
    {Call::Allocation, {E_OUTOFMEMORY, LMD_E_OUT_OF_MEMORY}},
    {Call::Open, {LMD_E_OPEN_FAILED}},
    {Call::Read, {LMD_E_BAD_FORMAT, LMD_E_NOT_FOUND, S_OK}},
    {Call::Seek, {LMD_E_BAD_FORMAT, LMD_E_NOT_FOUND}},
    {Call::Close, {S_OK}},
};

// With more calls than the search makes.
Outcomes WithPacket(Outcomes outcomes, std::initializer_list<Call> kinds) {
  for (const Call kind : kinds) outcomes[kind].insert(LMD_E_READ_FAILED);
  return outcomes;
}

// In a PNG the search has read the packet, of which only the place is sought again.
const Outcomes kSizeStray = WithPacket(kSizeJpeg, {Call::Read, Call::Seek});
const Outcomes kPacketJpeg = WithPacket(kSizeJpeg, {Call::Read, Call::Seek});
const Outcomes kPacketPng = WithPacket(kSizePng, {Call::Seek});

template <Bytes (*bytes)()>
using PacketSize = Query<bytes, Word<&ILumidex::GetXmpPacketSize>>;
template <Bytes (*bytes)()>
using Packet = Query<bytes, Data<&ILumidex::GetXmpPacket>>;

const Operation kPacketOperations[] = {
    {"GetXmpPacketSizeJpeg", S_OK, Make<PacketSize<PhotoWithLargePacket>>, kSizeJpeg},
    {"GetXmpPacketSizeStray", S_OK, Make<PacketSize<PhotoWithStrayPacket>>, kSizeStray},
    {"GetXmpPacketSizePng", S_OK, Make<PacketSize<PngWithLargePacket>>, kSizePng},
    {"GetXmpPacketJpeg", S_OK, Make<Packet<PhotoWithLargePacket>>, kPacketJpeg},
    {"GetXmpPacketPng", S_OK, Make<Packet<PngWithLargePacket>>, kPacketPng},
};

}  // namespace

std::span<const Operation> GetterOperations() {
  return kGetterOperations;
}

std::span<const Operation> PacketOperations() {
  return kPacketOperations;
}

}  // namespace test
