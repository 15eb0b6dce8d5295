#ifndef LUMIDEX_FUZZ_GETTERMODEL_H_
#define LUMIDEX_FUZZ_GETTERMODEL_H_

// What the getters of an object answer, told a second time from the records of its last parse and
// the type of its current file.

#include <array>
#include <cstdint>
#include <span>

#include <lumidex/ImageInfo.h>
#include <lumidex/ResultCodes.h>

namespace fuzz {

// The maker-note records that have getters.
enum class Info : std::uint32_t { Number16 = 16, Number17, Number18, Number19, Number20, Number21 };

// The angles by the identifier of their record.
enum class Pose : std::uint32_t { Heading = 0xAB20, Pitch = 0xAB21, Roll = 0xAB22 };

struct GetterModel {
  std::uint32_t fileType = 0;
  bool hasResult = false;  // of a parse, maybe without records
  std::span<const CInfoRecord> records;

  struct Found {
    HRESULT result = LMD_E_NOT_FOUND;
    std::span<const std::uint8_t> bytes;
  };

  // The record of the size and data methods. `servesPng` for the one that does not ask for the type
  // of the file.
  Found FindInfo(Info info, bool servesPng = false) const;

  // The record of the methods that give three values.
  Found FindTriple(Info info, std::size_t size) const;

  HRESULT Triple17(std::array<double, 3>* values) const;
  HRESULT PoseAngle(Pose pose, float* value) const;

  // What the records alone say; S_FALSE when the file decides.
  HRESULT PanoramaByRecords() const;

 private:
  // Why there is nothing to search, or S_OK.
  HRESULT Searchable(bool servesPng) const;
};

}  // namespace fuzz

#endif  // LUMIDEX_FUZZ_GETTERMODEL_H_
