#ifndef LUMIDEX_TESTS_COM_OUTEROBJECT_H_
#define LUMIDEX_TESTS_COM_OUTEROBJECT_H_

// The owner of an aggregated object. It notes what it is asked, answers as the test says, and never
// dies by its count.

#include <lumidex/ComTypes.h>

namespace test {

class OuterObject final : public IUnknown {
 public:
  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID riid, void** ppv) override {
    ++queries;
    lastQuery = &riid;
    *ppv = this;
    return answer;
  }
  ULONG STDMETHODCALLTYPE AddRef() override {
    ++addRefs;
    return ++count;
  }
  ULONG STDMETHODCALLTYPE Release() override {
    ++releases;
    return --count;
  }

  int Calls() const { return queries + addRefs + releases; }

  HRESULT answer = S_OK;
  ULONG count = 1;
  const IID* lastQuery = nullptr;
  int queries = 0;
  int addRefs = 0;
  int releases = 0;
};

}  // namespace test

#endif  // LUMIDEX_TESTS_COM_OUTEROBJECT_H_
