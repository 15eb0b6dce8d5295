#ifndef LUMIDEX_TESTS_COM_COMTEST_H_
#define LUMIDEX_TESTS_COM_COMTEST_H_

// Objects of the module as a host gets them, and a check that a test leaves none behind.

#include <cstdint>

#include <gtest/gtest.h>

#include <lumidex/ILumidex.h>

#include "com/Unknown.h"

namespace test {

// A reference that is released when it goes out of scope.
template <class Interface>
class Ref {
 public:
  Ref() = default;
  explicit Ref(Interface* owned) : m_object(owned) {}
  Ref(Ref&& other) noexcept : m_object(other.Detach()) {}
  ~Ref() {
    if (m_object != nullptr) m_object->Release();
  }
  Ref& operator=(const Ref&) = delete;

  Interface* Get() const { return m_object; }
  Interface* operator->() const { return m_object; }

  // For an output argument; the reference is empty before.
  Interface** Out() { return &m_object; }
  void** OutVoid() { return reinterpret_cast<void**>(&m_object); }

  Interface* Detach() {
    Interface* object = m_object;
    m_object = nullptr;
    return object;
  }

 private:
  Interface* m_object = nullptr;
};

// A class factory from the module's entry point. Empty when there is none.
inline Ref<IClassFactory> NewFactory() {
  Ref<IClassFactory> factory;
  EXPECT_EQ(DllGetClassObject(CLSID_Lumidex, IID_IClassFactory, factory.OutVoid()), S_OK);
  return factory;
}

// An object with one reference. Empty when there is none.
inline Ref<ILumidex> NewLumidex() {
  const Ref<IClassFactory> factory = NewFactory();
  Ref<ILumidex> object;
  EXPECT_EQ(factory->CreateInstance(nullptr, IID_ILumidex, object.OutVoid()), S_OK);
  return object;
}

// An identifier that is neither a class nor an interface.
inline constexpr GUID kUnknownId = {
    0x01234567, 0x89AB, 0xCDEF, {0x01, 0x23, 0x45, 0x67, 0x89, 0xAB, 0xCD, 0xEF}};

// Every object that a test creates is gone at its end, and every lock undone.
class ComTest : public testing::Test {
 protected:
  ComTest() {
    EXPECT_EQ(m_cObjects, 0);
    EXPECT_EQ(m_cLocks, 0);
  }
  ~ComTest() override {
    EXPECT_EQ(m_cObjects, 0);
    EXPECT_EQ(m_cLocks, 0);
  }
};

// The same with an object to call.
class LumidexTest : public ComTest {
 protected:
  // Makes a new object without a file.
  void Renew() {
    m_object->Release();
    m_object = NewLumidex().Detach();
  }
  ~LumidexTest() override { m_object->Release(); }

  ILumidex* m_object = NewLumidex().Detach();
};

}  // namespace test

#endif  // LUMIDEX_TESTS_COM_COMTEST_H_
