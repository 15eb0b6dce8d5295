// The two entry points of the module.

#include <gtest/gtest.h>

#include "ComTest.h"

namespace test {
namespace {

class ModuleEntryTest : public ComTest {
 protected:
  int m_mark = 0;
  void* const m_untouched = &m_mark;
  void* m_out = m_untouched;
};

TEST_F(ModuleEntryTest, GivesAFactoryWithOneReferenceForEitherAcceptedInterface) {
  for (const IID& iid : {IID_IUnknown, IID_IClassFactory}) {
    ASSERT_EQ(DllGetClassObject(CLSID_Lumidex, iid, &m_out), S_OK);
    auto* factory = static_cast<IClassFactory*>(m_out);
    EXPECT_EQ(m_cObjects, 1);
    EXPECT_EQ(factory->AddRef(), 2U);
    EXPECT_EQ(factory->Release(), 1U);
    EXPECT_EQ(factory->Release(), 0U);
    EXPECT_EQ(m_cObjects, 0);
  }
}

TEST_F(ModuleEntryTest, FactoryForUnknownCreatesObjectsToo) {
  ASSERT_EQ(DllGetClassObject(CLSID_Lumidex, IID_IUnknown, &m_out), S_OK);
  const Ref<IClassFactory> factory(static_cast<IClassFactory*>(m_out));
  Ref<ILumidex> object;
  EXPECT_EQ(factory->CreateInstance(nullptr, IID_ILumidex, object.OutVoid()), S_OK);
  EXPECT_NE(object.Get(), nullptr);
}

TEST_F(ModuleEntryTest, EachCallGivesAFactoryOfItsOwn) {
  const Ref<IClassFactory> first = NewFactory();
  const Ref<IClassFactory> second = NewFactory();
  EXPECT_NE(first.Get(), second.Get());
  EXPECT_EQ(m_cObjects, 2);
}

TEST_F(ModuleEntryTest, OtherInterfaceIsRefusedWithoutTouchingTheOutput) {
  for (const IID& iid : {IID_ILumidex, kUnknownId}) {
    EXPECT_EQ(DllGetClassObject(CLSID_Lumidex, iid, &m_out), E_NOINTERFACE);
    EXPECT_EQ(m_out, m_untouched);
  }
  EXPECT_EQ(m_cObjects, 0);
}

TEST_F(ModuleEntryTest, OtherClassIsRefusedWithoutTouchingTheOutput) {
  for (const IID& iid : {IID_IUnknown, IID_IClassFactory}) {
    EXPECT_EQ(DllGetClassObject(IID_ILumidex, iid, &m_out), CLASS_E_CLASSNOTAVAILABLE);
    EXPECT_EQ(DllGetClassObject(kUnknownId, iid, &m_out), CLASS_E_CLASSNOTAVAILABLE);
    EXPECT_EQ(m_out, m_untouched);
  }
  EXPECT_EQ(m_cObjects, 0);
}

TEST_F(ModuleEntryTest, WithoutAnOutputNothingIsGiven) {
  EXPECT_EQ(DllGetClassObject(CLSID_Lumidex, IID_IClassFactory, nullptr), E_POINTER);
  const Ref<ILumidex> object = NewLumidex();
  EXPECT_EQ(object->QueryInterface(IID_ILumidex, nullptr), E_POINTER);
  EXPECT_EQ(m_cObjects, 1);
}

TEST_F(ModuleEntryTest, InterfaceIsCheckedBeforeTheClass) {
  EXPECT_EQ(DllGetClassObject(kUnknownId, kUnknownId, &m_out), E_NOINTERFACE);
  EXPECT_EQ(m_out, m_untouched);
}

TEST_F(ModuleEntryTest, BothHalvesOfTheClassIdentifierCount) {
  CLSID first = CLSID_Lumidex;
  first.Data1 ^= 1;
  CLSID middle = CLSID_Lumidex;
  middle.Data3 ^= 0x8000;
  CLSID last = CLSID_Lumidex;
  last.Data4[7] ^= 0x80;
  for (const CLSID& clsid : {first, middle, last}) {
    EXPECT_EQ(DllGetClassObject(clsid, IID_IUnknown, &m_out), CLASS_E_CLASSNOTAVAILABLE);
  }
}

TEST_F(ModuleEntryTest, ModuleWithoutObjectsAndLocksMayBeUnloaded) {
  EXPECT_EQ(DllCanUnloadNow(), S_OK);
}

TEST_F(ModuleEntryTest, LiveFactoryOrObjectKeepsTheModule) {
  {
    Ref<ILumidex> object;
    {
      const Ref<IClassFactory> factory = NewFactory();
      EXPECT_EQ(DllCanUnloadNow(), S_FALSE);
      ASSERT_EQ(factory->CreateInstance(nullptr, IID_ILumidex, object.OutVoid()), S_OK);
    }
    EXPECT_EQ(m_cObjects, 1);
    EXPECT_EQ(DllCanUnloadNow(), S_FALSE);
  }
  EXPECT_EQ(DllCanUnloadNow(), S_OK);
}

TEST_F(ModuleEntryTest, LockKeepsTheModuleWithoutAnyObject) {
  NewFactory()->LockServer(TRUE);
  EXPECT_EQ(m_cObjects, 0);
  EXPECT_EQ(DllCanUnloadNow(), S_FALSE);
  NewFactory()->LockServer(FALSE);
  EXPECT_EQ(DllCanUnloadNow(), S_OK);
}

TEST_F(ModuleEntryTest, NegativeLockCountLeavesTheAnswerToTheObjects) {
  NewFactory()->LockServer(FALSE);
  NewFactory()->LockServer(FALSE);
  EXPECT_EQ(m_cLocks, -2);
  EXPECT_EQ(DllCanUnloadNow(), S_OK);
  {
    const Ref<IClassFactory> factory = NewFactory();
    EXPECT_EQ(DllCanUnloadNow(), S_FALSE);
  }
  m_cLocks = 0;
}

TEST_F(ModuleEntryTest, AnyObjectCountButZeroKeepsTheModule) {
  m_cObjects = -1;
  EXPECT_EQ(DllCanUnloadNow(), S_FALSE);
  m_cObjects = 0;
}

TEST_F(ModuleEntryTest, IdentifiersAreTheFixedOnes) {
  const GUID clsid = {0x9652D740, 0xCF49, 0x448C, {0xA5, 0x3F, 0x76, 0xEC, 0x91, 0xFD, 0xCA, 0x16}};
  const GUID iid = {0xE998C207, 0x72DD, 0x4BA3, {0xAD, 0x62, 0x7D, 0xD1, 0x4D, 0xDA, 0x82, 0x93}};
  EXPECT_TRUE(clsid == CLSID_Lumidex);
  EXPECT_TRUE(iid == IID_ILumidex);
}

}  // namespace
}  // namespace test
