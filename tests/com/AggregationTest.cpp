// The object inside an outer one.

#include <gtest/gtest.h>

#include "ComTest.h"
#include "OuterObject.h"

namespace test {
namespace {

class AggregationTest : public ComTest {
 protected:
  AggregationTest() {
    const Ref<IClassFactory> factory = NewFactory();
    void* inner = nullptr;
    EXPECT_EQ(factory->CreateInstance(&m_outer, IID_IUnknown, &inner), S_OK);
    m_inner = static_cast<IUnknown*>(inner);
  }
  ~AggregationTest() override {
    EXPECT_EQ(m_inner->Release(), 0U);
    EXPECT_EQ(m_outer.count, 1U);
  }

  // The public interface; a reference to the outer object.
  ILumidex* Lumidex() {
    void* lumidex = nullptr;
    EXPECT_EQ(m_inner->QueryInterface(IID_ILumidex, &lumidex), S_OK);
    return static_cast<ILumidex*>(lumidex);
  }

  OuterObject m_outer;
  IUnknown* m_inner = nullptr;
};

TEST_F(AggregationTest, CreationDoesNotCallTheOuterObject) {
  EXPECT_NE(m_inner, nullptr);
  EXPECT_NE(m_inner, &m_outer);
  EXPECT_EQ(m_outer.Calls(), 0);
}

TEST_F(AggregationTest, InnerUnknownCountsItsOwnReferences) {
  EXPECT_EQ(m_inner->AddRef(), 2U);
  EXPECT_EQ(m_inner->AddRef(), 3U);
  EXPECT_EQ(m_inner->Release(), 2U);
  EXPECT_EQ(m_inner->Release(), 1U);
  EXPECT_EQ(m_outer.Calls(), 0);
}

TEST_F(AggregationTest, InnerUnknownIsItself) {
  void* again = nullptr;
  EXPECT_EQ(m_inner->QueryInterface(IID_IUnknown, &again), S_OK);
  EXPECT_EQ(again, m_inner);
  EXPECT_EQ(m_inner->Release(), 1U);
  EXPECT_EQ(m_outer.Calls(), 0);
}

TEST_F(AggregationTest, InnerUnknownRefusesOtherInterfacesItself) {
  void* out = m_inner;
  EXPECT_EQ(m_inner->QueryInterface(kUnknownId, &out), E_NOINTERFACE);
  EXPECT_EQ(out, nullptr);
  EXPECT_EQ(m_outer.Calls(), 0);
}

TEST_F(AggregationTest, InterfaceIsHandedOutUnderAReferenceToTheOuterObject) {
  ILumidex* lumidex = Lumidex();
  EXPECT_EQ(m_outer.count, 2U);
  EXPECT_EQ(m_outer.queries, 0);
  EXPECT_EQ(m_inner->AddRef(), 2U);
  EXPECT_EQ(m_inner->Release(), 1U);
  EXPECT_EQ(lumidex->Release(), 1U);
}

TEST_F(AggregationTest, InterfaceForwardsToTheOuterObject) {
  ILumidex* lumidex = Lumidex();
  m_outer.count = 10;
  EXPECT_EQ(lumidex->AddRef(), 11U);
  EXPECT_EQ(lumidex->Release(), 10U);
  m_outer.answer = S_FALSE;
  void* out = nullptr;
  EXPECT_EQ(lumidex->QueryInterface(IID_IUnknown, &out), S_FALSE);
  EXPECT_EQ(out, &m_outer);
  EXPECT_EQ(m_outer.lastQuery, &IID_IUnknown);
  EXPECT_EQ(m_inner->AddRef(), 2U);
  EXPECT_EQ(m_inner->Release(), 1U);
  m_outer.count = 2;
  lumidex->Release();
}

TEST_F(AggregationTest, MethodsWorkInside) {
  ILumidex* lumidex = Lumidex();
  std::uint32_t value = 0;
  EXPECT_EQ(lumidex->GetInfo16(&value), LMD_E_INVALID_ARG);
  EXPECT_EQ(lumidex->IsPanorama(&value), LMD_E_NOT_FOUND);
  lumidex->Release();
}

class CreationTest : public ComTest {};

TEST_F(CreationTest, NewObjectHasOneReference) {
  const Ref<ILumidex> object = NewLumidex();
  EXPECT_EQ(m_cObjects, 1);
  EXPECT_EQ(object->AddRef(), 2U);
  EXPECT_EQ(object->Release(), 1U);
}

TEST_F(CreationTest, ObjectHasOneIdentity) {
  const Ref<ILumidex> object = NewLumidex();
  void* first = nullptr;
  ASSERT_EQ(object->QueryInterface(IID_IUnknown, &first), S_OK);
  auto* unknown = static_cast<IUnknown*>(first);
  void* second = nullptr;
  EXPECT_EQ(unknown->QueryInterface(IID_IUnknown, &second), S_OK);
  EXPECT_EQ(second, first);
  EXPECT_EQ(unknown->Release(), 2U);
  void* lumidex = nullptr;
  EXPECT_EQ(unknown->QueryInterface(IID_ILumidex, &lumidex), S_OK);
  EXPECT_EQ(lumidex, object.Get());
  EXPECT_EQ(unknown->Release(), 2U);
  EXPECT_EQ(unknown->Release(), 1U);
}

TEST_F(CreationTest, UnknownInterfaceLeavesNoObjectBehind) {
  const Ref<IClassFactory> factory = NewFactory();
  for (const IID& iid : {kUnknownId, IID_IClassFactory}) {
    void* out = factory.Get();
    EXPECT_EQ(factory->CreateInstance(nullptr, iid, &out), E_NOINTERFACE);
    EXPECT_EQ(out, nullptr);
    EXPECT_EQ(m_cObjects, 1);
  }
}

TEST_F(CreationTest, AggregateAskedForItsInterfaceLeavesNoObjectBehind) {
  OuterObject outer;
  const Ref<IClassFactory> factory = NewFactory();
  void* out = nullptr;
  EXPECT_EQ(factory->CreateInstance(&outer, IID_ILumidex, &out), E_NOINTERFACE);
  EXPECT_EQ(m_cObjects, 1);
  EXPECT_EQ(outer.Calls(), 0);
}

TEST_F(CreationTest, RefusedQueryClearsTheOutputAndTakesNoReference) {
  const Ref<ILumidex> object = NewLumidex();
  void* out = object.Get();
  EXPECT_EQ(object->QueryInterface(kUnknownId, &out), E_NOINTERFACE);
  EXPECT_EQ(out, nullptr);
  EXPECT_EQ(object->AddRef(), 2U);
  EXPECT_EQ(object->Release(), 1U);
}

TEST_F(CreationTest, ObjectOutlivesItsFactory) {
  Ref<ILumidex> object = NewLumidex();
  EXPECT_EQ(m_cObjects, 1);
  EXPECT_EQ(object.Detach()->Release(), 0U);
  EXPECT_EQ(m_cObjects, 0);
}

}  // namespace
}  // namespace test
