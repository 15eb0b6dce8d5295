// Identity, counting and delegation of the base classes, on objects of the test's own.

#include <atomic>
#include <cstdint>
#include <thread>
#include <vector>

#include <gtest/gtest.h>

#include "ComTest.h"
#include "OuterObject.h"
#include "com/Unknown.h"

namespace test {
namespace {

// Tells when it dies, and what reference counting does to it meanwhile.
class Probe : public CUnknown {
 public:
  struct Record {
    std::atomic<int> deaths = 0;
    bool referencesDuringDeath = false;
    ULONG strayAddRef = 0;
    ULONG strayRelease = 0;
  };

  explicit Probe(Record& record, IUnknown* outer = nullptr) : CUnknown(outer), m_record(record) {}
  ~Probe() override {
    ++m_record.deaths;
    if (!m_record.referencesDuringDeath) return;
    m_record.strayAddRef = CUnknown::NonDelegatingAddRef();
    m_record.strayRelease = CUnknown::NonDelegatingRelease();
  }

 private:
  Record& m_record;
};

class UnknownTest : public ComTest {
 protected:
  Probe::Record m_record;
};

TEST_F(UnknownTest, LiveObjectsAreCounted) {
  auto* first = new Probe(m_record);
  EXPECT_EQ(m_cObjects, 1);
  auto* second = new Probe(m_record);
  EXPECT_EQ(m_cObjects, 2);
  delete first;
  EXPECT_EQ(m_cObjects, 1);
  delete second;
  EXPECT_EQ(m_cObjects, 0);
}

TEST_F(UnknownTest, NewObjectHasNoReference) {
  auto* object = new Probe(m_record);
  EXPECT_EQ(object->NonDelegatingAddRef(), 1U);
  EXPECT_EQ(object->NonDelegatingAddRef(), 2U);
  EXPECT_EQ(object->NonDelegatingAddRef(), 3U);
  EXPECT_EQ(object->NonDelegatingRelease(), 2U);
  EXPECT_EQ(object->NonDelegatingRelease(), 1U);
  EXPECT_EQ(m_record.deaths, 0);
  EXPECT_EQ(object->NonDelegatingRelease(), 0U);
  EXPECT_EQ(m_record.deaths, 1);
}

TEST_F(UnknownTest, CountThatWrappedToZeroIsReportedAsOne) {
  auto* object = new Probe(m_record);
  EXPECT_EQ(object->NonDelegatingRelease(), 0xFFFFFFFFU);
  EXPECT_EQ(m_record.deaths, 0);
  EXPECT_EQ(object->NonDelegatingAddRef(), 1U);
  // The count itself is 0, so that the next reference is the first.
  EXPECT_EQ(object->NonDelegatingAddRef(), 1U);
  EXPECT_EQ(object->NonDelegatingAddRef(), 2U);
  object->NonDelegatingRelease();
  EXPECT_EQ(object->NonDelegatingRelease(), 0U);
  EXPECT_EQ(m_record.deaths, 1);
}

TEST_F(UnknownTest, StrayReferencesDuringDestructionDoNotDeleteTwice) {
  m_record.referencesDuringDeath = true;
  auto* object = new Probe(m_record);
  object->NonDelegatingAddRef();
  EXPECT_EQ(object->NonDelegatingRelease(), 0U);
  EXPECT_EQ(m_record.deaths, 1);
  EXPECT_EQ(m_record.strayAddRef, 2U);
  EXPECT_EQ(m_record.strayRelease, 1U);
}

TEST_F(UnknownTest, QueryForUnknownGivesAReference) {
  auto* object = new Probe(m_record);
  object->NonDelegatingAddRef();
  void* first = nullptr;
  void* second = nullptr;
  EXPECT_EQ(object->NonDelegatingQueryInterface(IID_IUnknown, &first), S_OK);
  EXPECT_EQ(object->NonDelegatingQueryInterface(IID_IUnknown, &second), S_OK);
  EXPECT_EQ(first, second);
  EXPECT_EQ(object->NonDelegatingRelease(), 2U);
  EXPECT_EQ(object->NonDelegatingRelease(), 1U);
  EXPECT_EQ(static_cast<IUnknown*>(first)->Release(), 0U);
  EXPECT_EQ(m_record.deaths, 1);
}

TEST_F(UnknownTest, QueryForAnythingElseGivesNullAndNoReference) {
  auto* object = new Probe(m_record);
  object->NonDelegatingAddRef();
  for (const IID& iid : {IID_IClassFactory, IID_ILumidex, kUnknownId}) {
    void* out = object;
    EXPECT_EQ(object->NonDelegatingQueryInterface(iid, &out), E_NOINTERFACE);
    EXPECT_EQ(out, nullptr);
  }
  EXPECT_EQ(object->NonDelegatingRelease(), 0U);
}

TEST_F(UnknownTest, QueryWithoutAnOutputIsRefused) {
  auto* object = new Probe(m_record);
  object->NonDelegatingAddRef();
  EXPECT_EQ(object->NonDelegatingQueryInterface(IID_IUnknown, nullptr), E_POINTER);
  EXPECT_EQ(object->NonDelegatingRelease(), 0U);
}

TEST_F(UnknownTest, ObjectOfItsOwnIsItsOwnOwner) {
  auto* object = new Probe(m_record);
  object->NonDelegatingAddRef();
  void* unknown = nullptr;
  ASSERT_EQ(object->NonDelegatingQueryInterface(IID_IUnknown, &unknown), S_OK);
  EXPECT_EQ(object->Owner(), unknown);
  EXPECT_EQ(object->Owner()->AddRef(), 3U);
  EXPECT_EQ(object->Owner()->Release(), 2U);
  EXPECT_EQ(object->NonDelegatingRelease(), 1U);
  EXPECT_EQ(object->NonDelegatingRelease(), 0U);
}

TEST_F(UnknownTest, OuterObjectIsTheOwnerAndIsNotReferenced) {
  OuterObject outer;
  auto* object = new Probe(m_record, &outer);
  EXPECT_EQ(object->Owner(), &outer);
  object->NonDelegatingAddRef();
  void* unknown = nullptr;
  ASSERT_EQ(object->NonDelegatingQueryInterface(IID_IUnknown, &unknown), S_OK);
  EXPECT_NE(unknown, &outer);
  EXPECT_EQ(static_cast<IUnknown*>(unknown)->Release(), 1U);
  EXPECT_EQ(object->NonDelegatingRelease(), 0U);
  EXPECT_EQ(outer.Calls(), 0);
}

struct IProbeFace : public IUnknown {};

class FacedProbe final : public ComObject<IProbeFace> {
 public:
  using ComObject::ComObject;
};

TEST_F(UnknownTest, PublicInterfaceForwardsToTheOuterObjectUnchanged) {
  OuterObject outer;
  auto* object = new FacedProbe(&outer);
  object->NonDelegatingAddRef();
  IProbeFace* face = object;

  void* out = nullptr;
  outer.answer = static_cast<HRESULT>(0x80001234U);
  EXPECT_EQ(face->QueryInterface(kUnknownId, &out), outer.answer);
  EXPECT_EQ(out, &outer);
  EXPECT_EQ(outer.lastQuery, &kUnknownId);
  outer.count = 40;
  EXPECT_EQ(face->AddRef(), 41U);
  EXPECT_EQ(face->Release(), 40U);
  EXPECT_EQ(outer.queries, 1);
  EXPECT_EQ(outer.addRefs, 1);
  EXPECT_EQ(outer.releases, 1);

  EXPECT_EQ(object->NonDelegatingRelease(), 0U);
}

TEST_F(UnknownTest, PublicInterfaceOfAnObjectOfItsOwnCountsItsReferences) {
  auto* object = new FacedProbe(nullptr);
  IProbeFace* face = object;
  EXPECT_EQ(face->AddRef(), 1U);
  EXPECT_EQ(object->NonDelegatingAddRef(), 2U);
  EXPECT_EQ(face->Release(), 1U);
  EXPECT_EQ(face->Release(), 0U);
}

TEST_F(UnknownTest, CountsHoldWhenThreadsShareAnObject) {
  auto* object = new Probe(m_record);
  object->NonDelegatingAddRef();
  std::vector<std::thread> threads;
  for (int i = 0; i < 4; ++i) {
    threads.emplace_back([object] {
      for (int j = 0; j < 20000; ++j) {
        object->NonDelegatingAddRef();
        object->NonDelegatingRelease();
      }
    });
  }
  for (std::thread& thread : threads) thread.join();
  EXPECT_EQ(m_record.deaths, 0);
  EXPECT_EQ(object->NonDelegatingRelease(), 0U);
}

// Whoever releases first must not look at an object that another thread has deleted meanwhile.
TEST_F(UnknownTest, LastReleaseMayComeFromAnyThread) {
  constexpr int kObjects = 20000;
  std::vector<Probe*> objects;
  for (int i = 0; i < kObjects; ++i) {
    objects.push_back(new Probe(m_record));
    objects.back()->NonDelegatingAddRef();
    objects.back()->NonDelegatingAddRef();
  }
  std::atomic<int> ready = 0;
  const auto releaseAll = [&](int* last) {
    ++ready;
    while (ready < 2) {
    }
    for (Probe* object : objects) *last += object->NonDelegatingRelease() == 0 ? 1 : 0;
  };
  int lastHere = 0;
  int lastThere = 0;
  std::thread other(releaseAll, &lastThere);
  releaseAll(&lastHere);
  other.join();
  EXPECT_EQ(lastHere + lastThere, kObjects);
  EXPECT_EQ(m_cObjects, 0);
}

TEST_F(UnknownTest, LiveObjectsAreCountedAcrossThreads) {
  std::vector<std::thread> threads;
  for (int i = 0; i < 4; ++i) {
    threads.emplace_back([] {
      for (int j = 0; j < 20000; ++j) {
        Probe::Record record;
        const Probe probe(record);
      }
    });
  }
  for (std::thread& thread : threads) thread.join();
  EXPECT_EQ(m_cObjects, 0);
}

}  // namespace
}  // namespace test
