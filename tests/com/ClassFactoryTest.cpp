// The class factory, over creation functions of the test's own.

#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "ComTest.h"
#include "OuterObject.h"
#include "com/ClassFactory.h"

namespace test {
namespace {

// What the creation function was called with and what it is to answer.
struct Creation {
  int calls = 0;
  IUnknown* outer = nullptr;
  HRESULT codeBefore = -1;
  HRESULT answer = S_OK;
  bool hasNoMemory = false;
  HRESULT queryAnswer = S_OK;
  IID query = {};
  std::vector<std::string> steps;  // of the created object
};
Creation g_creation;

// An object that writes down what the factory does with it.
class Created final : public INonDelegatingUnknown {
 public:
  HRESULT STDMETHODCALLTYPE NonDelegatingQueryInterface(REFIID riid, void** ppv) override {
    g_creation.steps.emplace_back("query");
    g_creation.query = riid;
    *ppv = &g_creation;
    return g_creation.queryAnswer;
  }
  ULONG STDMETHODCALLTYPE NonDelegatingAddRef() override {
    g_creation.steps.emplace_back("add");
    return ++m_count;
  }
  ULONG STDMETHODCALLTYPE NonDelegatingRelease() override {
    g_creation.steps.emplace_back("release");
    if (--m_count == 0) delete this;
    return 0;
  }
  ~Created() override { g_creation.steps.emplace_back("delete"); }

 private:
  ULONG m_count = 0;
};

INonDelegatingUnknown* Create(IUnknown* outer, HRESULT* result) {
  ++g_creation.calls;
  g_creation.outer = outer;
  g_creation.codeBefore = *result;
  *result = g_creation.answer;
  return g_creation.hasNoMemory ? nullptr : new Created;
}

const ClassTemplate g_template = {&kUnknownId, &Create};

using Steps = std::vector<std::string>;

class ClassFactoryTest : public ComTest {
 protected:
  ClassFactoryTest() {
    g_creation = {};
    m_factory->AddRef();
  }
  ~ClassFactoryTest() override { m_factory->Release(); }

  CClassFactory* m_factory = new CClassFactory(g_template);
  void* m_out = nullptr;
};

TEST_F(ClassFactoryTest, NewFactoryHasNoReferenceAndCountsAsAnObject) {
  auto* factory = new CClassFactory(g_template);
  EXPECT_EQ(m_cObjects, 2);
  EXPECT_EQ(factory->AddRef(), 1U);
  EXPECT_EQ(factory->AddRef(), 2U);
  EXPECT_EQ(factory->Release(), 1U);
  EXPECT_EQ(m_cObjects, 2);
  EXPECT_EQ(factory->Release(), 0U);
  EXPECT_EQ(m_cObjects, 1);
}

TEST_F(ClassFactoryTest, ReleaseOfANewFactoryWrapsItsCount) {
  EXPECT_EQ(m_factory->Release(), 0U);
  m_factory = new CClassFactory(g_template);
  EXPECT_EQ(m_factory->Release(), 0xFFFFFFFFU);
  EXPECT_EQ(m_factory->AddRef(), 0U);
  EXPECT_EQ(m_factory->AddRef(), 1U);
}

TEST_F(ClassFactoryTest, IsAnUnknownAndAClassFactory) {
  for (const IID& iid : {IID_IUnknown, IID_IClassFactory}) {
    m_out = nullptr;
    EXPECT_EQ(m_factory->QueryInterface(iid, &m_out), S_OK);
    EXPECT_EQ(m_out, static_cast<IClassFactory*>(m_factory));
    EXPECT_EQ(m_factory->Release(), 1U);
  }
}

TEST_F(ClassFactoryTest, QueryForAnythingElseClearsTheOutput) {
  for (const IID& iid : {IID_ILumidex, kUnknownId}) {
    m_out = m_factory;
    EXPECT_EQ(m_factory->QueryInterface(iid, &m_out), E_NOINTERFACE);
    EXPECT_EQ(m_out, nullptr);
  }
  EXPECT_EQ(m_factory->AddRef(), 2U);
  m_factory->Release();
}

TEST_F(ClassFactoryTest, WithoutAnOutputNothingIsGivenOrCreated) {
  EXPECT_EQ(m_factory->QueryInterface(IID_IUnknown, nullptr), E_POINTER);
  EXPECT_EQ(m_factory->CreateInstance(nullptr, IID_IUnknown, nullptr), E_POINTER);
  EXPECT_EQ(g_creation.calls, 0);
  EXPECT_EQ(m_factory->AddRef(), 2U);
  m_factory->Release();
}

TEST_F(ClassFactoryTest, CreatedObjectIsQueriedUnderAReferenceOfTheFactory) {
  EXPECT_EQ(m_factory->CreateInstance(nullptr, IID_ILumidex, &m_out), S_OK);
  EXPECT_EQ(g_creation.calls, 1);
  EXPECT_EQ(g_creation.outer, nullptr);
  EXPECT_EQ(g_creation.codeBefore, S_OK);
  EXPECT_TRUE(g_creation.query == IID_ILumidex);
  EXPECT_EQ(m_out, &g_creation);
  // This object takes no reference when it is queried, so the factory's was the only one.
  EXPECT_EQ(g_creation.steps, (Steps{"add", "query", "release", "delete"}));
}

TEST_F(ClassFactoryTest, FailedQueryIsTheResultAndDestroysTheObject) {
  g_creation.queryAnswer = E_NOINTERFACE;
  EXPECT_EQ(m_factory->CreateInstance(nullptr, kUnknownId, &m_out), E_NOINTERFACE);
  EXPECT_EQ(g_creation.steps, (Steps{"add", "query", "release", "delete"}));
}

TEST_F(ClassFactoryTest, ResultOfTheQueryReplacesThatOfTheCreation) {
  g_creation.answer = S_FALSE;
  EXPECT_EQ(m_factory->CreateInstance(nullptr, IID_ILumidex, &m_out), S_OK);
  g_creation.queryAnswer = S_FALSE;
  g_creation.answer = S_OK;
  EXPECT_EQ(m_factory->CreateInstance(nullptr, IID_ILumidex, &m_out), S_FALSE);
}

TEST_F(ClassFactoryTest, FailedCreationDestroysTheObjectWithoutAQuery) {
  g_creation.answer = E_UNEXPECTED;
  EXPECT_EQ(m_factory->CreateInstance(nullptr, IID_ILumidex, &m_out), E_UNEXPECTED);
  EXPECT_EQ(g_creation.steps, (Steps{"delete"}));
  EXPECT_EQ(m_out, nullptr);
}

TEST_F(ClassFactoryTest, NoObjectIsOutOfMemoryWhateverTheCreationSays) {
  g_creation.hasNoMemory = true;
  for (const HRESULT answer : {S_OK, E_OUTOFMEMORY, E_UNEXPECTED}) {
    g_creation.answer = answer;
    EXPECT_EQ(m_factory->CreateInstance(nullptr, IID_ILumidex, &m_out), E_OUTOFMEMORY);
  }
  EXPECT_TRUE(g_creation.steps.empty());
}

TEST_F(ClassFactoryTest, AggregateMayOnlyBeAskedForItsUnknown) {
  OuterObject outer;
  for (const IID& iid : {IID_ILumidex, IID_IClassFactory, kUnknownId}) {
    EXPECT_EQ(m_factory->CreateInstance(&outer, iid, &m_out), E_NOINTERFACE);
  }
  EXPECT_EQ(g_creation.calls, 0);
  EXPECT_EQ(m_factory->CreateInstance(&outer, IID_IUnknown, &m_out), S_OK);
  EXPECT_EQ(g_creation.calls, 1);
  EXPECT_EQ(g_creation.outer, &outer);
  EXPECT_EQ(outer.Calls(), 0);
}

TEST_F(ClassFactoryTest, LockServerCountsUpForAnythingButZero) {
  for (const BOOL lock : {1, 2, -1}) EXPECT_EQ(m_factory->LockServer(lock), S_OK);
  EXPECT_EQ(m_cLocks, 3);
  for (int i = 0; i < 3; ++i) EXPECT_EQ(m_factory->LockServer(FALSE), S_OK);
  EXPECT_EQ(m_cLocks, 0);
}

TEST_F(ClassFactoryTest, LockCountHasNoLowerBound) {
  EXPECT_EQ(m_factory->LockServer(FALSE), S_OK);
  EXPECT_EQ(m_factory->LockServer(FALSE), S_OK);
  EXPECT_EQ(m_cLocks, -2);
  m_cLocks = 0;
}

}  // namespace
}  // namespace test
