#ifndef LUMIDEX_TESTS_COM_WRITETESTSUPPORT_H_
#define LUMIDEX_TESTS_COM_WRITETESTSUPPORT_H_

// The object behind its interface, as the tests of the writing methods use it.

#include <lumidex/ILumidex.h>

#include "com/ComTest.h"
#include "support/Records.h"
#include "support/TempFile.h"

namespace test {

// One object with one reference.
class LumidexObject {
 public:
  ILumidex* operator->() const { return m_object.Get(); }

  // WriteMetadata with records, without a thumbnail and without a packet.
  HRESULT Write(const WCHAR* source, const WCHAR* output, const Records& records,
                bool overwrite = false) const {
    return m_object->WriteMetadata(source, output, records.Count(), records.Data(), 0, 0, nullptr,
                                   overwrite ? 1 : 0);
  }

 private:
  Ref<ILumidex> m_object = NewLumidex();
};

// A path that is removed after the test; nothing stands there yet.
class NewPath {
 public:
  explicit NewPath(WideStringView ending = LMD_W(".jpg"))
      : m_path(TempPath("") + WideString(ending)) {}
  ~NewPath() { RemoveFile(m_path); }
  NewPath(const NewPath&) = delete;
  NewPath& operator=(const NewPath&) = delete;

  const WCHAR* Path() const { return m_path.c_str(); }
  bool Exists() const { return GetFileAttributesW(Path()) != INVALID_FILE_ATTRIBUTES; }
  Bytes Read() const { return ReadFile(m_path); }

 private:
  WideString m_path;
};

}  // namespace test

#endif  // LUMIDEX_TESTS_COM_WRITETESTSUPPORT_H_
