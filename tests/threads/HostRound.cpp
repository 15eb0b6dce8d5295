#include "HostRound.h"

#include <array>
#include <cstdint>
#include <sstream>

#include <lumidex/ILumidex.h>

#include "com/ComTest.h"
#include "com/WriteTestSupport.h"
#include "core/DebugLog.h"
#include "support/Jpeg.h"
#include "support/Png.h"
#include "support/Records.h"
#include "support/SamsungPhoto.h"
#include "support/XmpPacket.h"

namespace test {
namespace {

constexpr std::string_view kPacket = "<x>equirectangular</x>";  // 22 characters

// A photograph for which every getter has a value. The first property has the longest text, since
// the list of a block ends at the first value that is larger than the first one.
Bytes Photograph() {
  const Directory note = {kNoteBound,
                          kNote.Long(16, {7}),
                          NoteSRational(17, {{1, 2}, {-3, 4}, {5, -8}}),
                          kNote.Byte(18, {1, 2, 3}),
                          kNote.Undefined(19, {4, 5}),
                          NoteSLong(20, {1, 2, 3}),
                          kNote.Byte(21, {6})};
  const std::string packet = XmpPacket(
      "GPano:ProjectionType=\"equirectangular\" GPano:PoseHeadingDegrees=\"350.5\" "
      "GPano:PosePitchDegrees=\"-1.5\" GPano:PoseRollDegrees=\"2\" "
      "xmlns:aux=\"http://ns.adobe.com/exif/1.0/aux/\" aux:Lens=\"Zoom lens of 24 to 70 mm\"");
  const Bytes city = Join({{0x1C, 2, 90, 0, 4}, Text("Oslo")});
  return Jpeg()
      .Exif(SamsungTiff(note))
      .Xmp(packet)
      .Photoshop(PhotoshopResource(0x0404, city))
      .Frame(640, 480)
      .Scan()
      .Build();
}

thread_local HostRound* g_round = nullptr;

void KeepLine(const char* line) {
  if (g_round != nullptr) g_round->log.emplace_back(line);
}

// Calls the object and keeps what it answers.
class Player {
 public:
  explicit Player(HostRound& round) : m_round(round) { g_round = &round; }
  ~Player() {
    g_round = nullptr;
    m_round.answers = m_answers.str();
  }
  Player(const Player&) = delete;
  Player& operator=(const Player&) = delete;

  void Play() {
    Create();
    if (m_object.Get() == nullptr) return;
    ReadPhotograph();
    EmbedIntoJpeg();
    EmbedIntoPng();
    Rewrite();
  }

 private:
  template <class... Values>
  void Note(const char* call, HRESULT result, const Values&... values) {
    m_answers << call << ' ' << std::hex << static_cast<std::uint32_t>(result) << std::dec;
    ((m_answers << ' ' << values), ...);
    m_answers << '\n';
  }

  void Create() {
    Ref<IClassFactory> factory;
    Note("DllGetClassObject",
         DllGetClassObject(CLSID_Lumidex, IID_IClassFactory, factory.OutVoid()));
    if (factory.Get() == nullptr) return;
    Note("CreateInstance", factory->CreateInstance(nullptr, IID_ILumidex, m_object.OutVoid()));
  }

  void Open(const WCHAR* path) { Note("Open", m_object->Open(path)); }

  void ReadPhotograph() {
    const TempFile file(Photograph());
    Note("GetFileType", m_object->GetFileType(file.Path()));
    Open(file.Path());
    ReadRecords();
    ReadPanorama();
    ReadBasic(file.Path());
  }

  void ReadRecords() {
    std::uint32_t value = 0;
    HRESULT result = m_object->GetInfo16(&value);
    Note("GetInfo16", result, value);
    std::array<double, 3> quotients = {};
    result = m_object->GetInfo17Triple(&quotients[0], &quotients[1], &quotients[2]);
    Note("GetInfo17Triple", result, quotients[0], quotients[1], quotients[2]);
    std::array<std::uint32_t, 3> words = {};
    result = m_object->GetInfo20Triple(&words[0], &words[1], &words[2]);
    Note("GetInfo20Triple", result, words[0], words[1], words[2]);
    ReadData("GetInfo17", &ILumidex::GetInfo17Size, &ILumidex::GetInfo17Data);
    ReadData("GetInfo18", &ILumidex::GetInfo18Size, &ILumidex::GetInfo18Data);
    ReadData("GetInfo19", &ILumidex::GetInfo19Size, &ILumidex::GetInfo19Data);
    ReadData("GetInfo21", &ILumidex::GetInfo21Size, &ILumidex::GetInfo21Data);
  }

  void ReadData(const char* name, decltype(&ILumidex::GetInfo17Size) getSize,
                decltype(&ILumidex::GetInfo17Data) getData) {
    std::uint32_t size = 0;
    const HRESULT sizeResult = (m_object.Get()->*getSize)(&size);
    Bytes data(size);
    const HRESULT dataResult = (m_object.Get()->*getData)(&size, data.data());
    Note(name, sizeResult, dataResult, size, Hex(data));
  }

  void ReadPanorama() {
    std::uint32_t flag = 0;
    const HRESULT result = m_object->IsPanorama(&flag);
    Note("IsPanorama", result, flag);
    ReadAngle("GetPoseHeading", &ILumidex::GetPoseHeading);
    ReadAngle("GetPosePitch", &ILumidex::GetPosePitch);
    ReadAngle("GetPoseRoll", &ILumidex::GetPoseRoll);
  }

  void ReadAngle(const char* name, decltype(&ILumidex::GetPoseHeading) get) {
    float angle = 0;
    const HRESULT result = (m_object.Get()->*get)(&angle);
    Note(name, result, angle);
  }

  void ReadPacket() {
    std::uint32_t size = 0;
    HRESULT result = m_object->GetXmpPacketSize(&size);
    Note("GetXmpPacketSize", result, size);
    Bytes packet(size);
    result = m_object->GetXmpPacket(&size, packet.data());
    Note("GetXmpPacket", result, size);
    m_round.written.push_back(packet);
  }

  void ReadBasic(const WCHAR* path) {
    Ref<IImageInfo> info;
    const HRESULT result = m_object->ParseBasic(path, info.Out());
    Note("ParseBasic", result, info.Get() == nullptr ? -1 : info->GetInfoList()->m_nCount);
  }

  void EmbedIntoJpeg() {
    const TempFile source(Jpeg().Frame(8, 8).Scan().Build());
    const TempFile packet(Text(kPacket), ".xmp");
    const NewPath output;
    Note("EmbedXmpFile", m_object->EmbedXmpFile(source.Path(), output.Path(), packet.Path()));
    Open(output.Path());
    ReadPacket();
    m_round.written.push_back(output.Read());
  }

  void EmbedIntoPng() {
    const TempFile image(Png().Header().End().Build(), ".png");
    const TempFile packet(Text(kPacket), ".xmp");
    Note("EmbedXmpFile", m_object->EmbedXmpFile(image.Path(), image.Path(), packet.Path()));
    Open(image.Path());
    ReadPanorama();
    ReadPacket();
    m_round.written.push_back(image.Read());
  }

  void Rewrite() {
    const TempFile source(Jpeg().Frame(8, 8).Scan().Build());
    const TempFile packet(Text(kPacket), ".xmp");
    const NewPath output;
    Records records;
    records.Ascii(2, 271, "Maker").Integers(4, 34855, {400}).Ascii(8, 1, "N");
    const Bytes thumbnail = Jpeg().Frame(160, 120).Build();
    const HRESULT result = m_object->WriteMetadata(
        source.Path(), output.Path(), records.Count(), records.Data(),
        static_cast<std::uint32_t>(thumbnail.size()),
        static_cast<std::uint64_t>(reinterpret_cast<std::uintptr_t>(thumbnail.data())),
        packet.Path(), 0);
    Note("WriteMetadata", result);
    Note("AppendTrailer", m_object->AppendTrailer(output.Path()));
    Note("AppendTrailer", m_object->AppendTrailer(output.Path()));
    Open(output.Path());
    ReadBasic(output.Path());
    m_round.written.push_back(output.Read());
  }

  HostRound& m_round;
  std::ostringstream m_answers;
  Ref<ILumidex> m_object;
};

}  // namespace

HostRound PlayHostRound() {
  HostRound round;
  Player(round).Play();
  return round;
}

HostRound PlayLoggingRound(std::size_t objects) {
  HostRound round;
  g_round = &round;
  for (std::size_t i = 0; i < objects; ++i) {
    const Ref<ILumidex> object = NewLumidex();
    DebugLog("line %d", static_cast<int>(i));
  }
  g_round = nullptr;
  return round;
}

LogOfRounds::LogOfRounds() {
  SetDebugLogSink(&KeepLine);
  g_bDebugLogEnabled = 1;
}

LogOfRounds::~LogOfRounds() {
  g_bDebugLogEnabled = 0;
  SetDebugLogSink(nullptr);
}

}  // namespace test
