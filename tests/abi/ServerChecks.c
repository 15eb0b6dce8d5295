/* The two exports, the class factory, identity and reference counts of the object, aggregation. */

#include <stddef.h>

#include "Abi.h"
#include "Checks.h"
#include "Module.h"

static int g_mark;

/* A pointer that no call produces: an output that still holds it was not touched. */
static void* Untouched(void) {
  return &g_mark;
}

void CheckClassObjects(void) {
  void* object = Untouched();
  CHECK(ModuleExports("DllGetClassObject"));
  CHECK(ModuleExports("DllCanUnloadNow"));
  CHECK(!ModuleExports("DllRegisterServer"));
  CHECK_EQUAL(CODE_OK, CanUnloadNow());

  CHECK_EQUAL(CODE_NO_INTERFACE, GetClassObject(&kClsidLumidex, &kIidLumidex, &object));
  CHECK(object == Untouched());
  CHECK_EQUAL(CODE_NO_INTERFACE, GetClassObject(&kUnusedGuid, &kUnusedGuid, &object));
  CHECK(object == Untouched());
  CHECK_EQUAL(CODE_CLASS_NOT_AVAILABLE, GetClassObject(&kUnusedGuid, &kIidClassFactory, &object));
  CHECK(object == Untouched());
  CHECK_EQUAL(CODE_CLASS_NOT_AVAILABLE, GetClassObject(&kIidLumidex, &kIidUnknown, &object));
  CHECK(object == Untouched());
  CHECK_EQUAL(CODE_OK, CanUnloadNow());

  const Guid* accepted[] = {&kIidUnknown, &kIidClassFactory};
  for (size_t i = 0; i < 2; ++i) {
    object = NULL;
    CHECK_EQUAL(CODE_OK, GetClassObject(&kClsidLumidex, accepted[i], &object));
    CHECK_EQUAL(CODE_FALSE, CanUnloadNow());
    CHECK_EQUAL(2, AddRef(object));
    CHECK_EQUAL(1, Release(object));
    CHECK_EQUAL(0, Release(object));
    CHECK_EQUAL(CODE_OK, CanUnloadNow());
  }
}

void CheckFactory(void) {
  void* factory = NewFactory();
  void* other = NULL;
  CHECK_EQUAL(CODE_OK, QueryInterface(factory, &kIidClassFactory, &other));
  CHECK(other == factory);
  CHECK_EQUAL(CODE_OK, QueryInterface(factory, &kIidUnknown, &other));
  CHECK(other == factory);
  CHECK_EQUAL(CODE_NO_INTERFACE, QueryInterface(factory, &kIidLumidex, &other));
  CHECK(other == NULL);
  CHECK_EQUAL(2, Release(factory));
  CHECK_EQUAL(1, Release(factory));

  other = Untouched();
  CHECK_EQUAL(CODE_NO_INTERFACE, CreateInstance(factory, NULL, &kIidClassFactory, &other));
  CHECK(other == NULL);
  CHECK_EQUAL(CODE_NO_INTERFACE, CreateInstance(factory, NULL, &kUnusedGuid, &other));

  CHECK_EQUAL(CODE_OK, CreateInstance(factory, NULL, &kIidLumidex, &other));
  CHECK(other != NULL);
  CHECK_EQUAL(0, Release(factory));
  CHECK_EQUAL(CODE_FALSE, CanUnloadNow());
  CHECK_EQUAL(0, Release(other));
  CHECK_EQUAL(CODE_OK, CanUnloadNow());
}

void CheckIdentity(void) {
  void* factory = NewFactory();
  void* unknown = NULL;
  void* lumidex = NULL;
  void* again = NULL;
  CHECK_EQUAL(CODE_OK, CreateInstance(factory, NULL, &kIidUnknown, &unknown));
  CHECK_EQUAL(2, AddRef(unknown));
  CHECK_EQUAL(1, Release(unknown));

  CHECK_EQUAL(CODE_OK, QueryInterface(unknown, &kIidLumidex, &lumidex));
  CHECK_EQUAL(3, AddRef(lumidex));
  CHECK_EQUAL(2, Release(lumidex));
  CHECK_EQUAL(CODE_OK, QueryInterface(lumidex, &kIidUnknown, &again));
  CHECK(again == unknown);
  CHECK_EQUAL(CODE_OK, QueryInterface(unknown, &kIidUnknown, &again));
  CHECK(again == unknown);
  CHECK_EQUAL(CODE_OK, QueryInterface(lumidex, &kIidLumidex, &again));
  CHECK(again == lumidex);
  CHECK_EQUAL(4, Release(again));
  CHECK_EQUAL(3, Release(unknown));
  CHECK_EQUAL(2, Release(lumidex));

  again = Untouched();
  CHECK_EQUAL(CODE_NO_INTERFACE, QueryInterface(lumidex, &kUnusedGuid, &again));
  CHECK(again == NULL);
  again = Untouched();
  CHECK_EQUAL(CODE_NO_INTERFACE, QueryInterface(unknown, &kIidClassFactory, &again));
  CHECK(again == NULL);

  CHECK_EQUAL(1, Release(unknown));
  CHECK_EQUAL(0, Release(lumidex));
  CHECK_EQUAL(0, Release(factory));
}

/* An outer object in C: a table of three functions and what they were called for. */
typedef struct {
  const Function* table;
  uint32_t count;
  unsigned queries;
  const Guid* lastQuery;
} Outer;

static Result OuterQueryInterface(Outer* outer, const Guid* interfaceId, void** out) {
  ++outer->queries;
  outer->lastQuery = interfaceId;
  *out = outer;
  return (Result)CODE_FALSE;
}

static uint32_t OuterAddRef(Outer* outer) {
  return ++outer->count;
}

static uint32_t OuterRelease(Outer* outer) {
  return --outer->count;
}

static const Function kOuterTable[] = {(Function)OuterQueryInterface, (Function)OuterAddRef,
                                       (Function)OuterRelease};

static void CheckDelegation(Outer* outer, void* inner) {
  void* lumidex = NULL;
  void* out = NULL;
  CHECK_EQUAL(CODE_OK, QueryInterface(inner, &kIidLumidex, &lumidex));
  CHECK_EQUAL(101, outer->count);
  CHECK_EQUAL(102, AddRef(lumidex));
  CHECK_EQUAL(101, Release(lumidex));
  CHECK_EQUAL(0, outer->queries);
  CHECK_EQUAL(CODE_FALSE, QueryInterface(lumidex, &kUnusedGuid, &out));
  CHECK(out == outer && outer->queries == 1 && outer->lastQuery == &kUnusedGuid);

  uint32_t value = 7;
  CHECK_EQUAL(CODE_INVALID_ARG, CallWord(lumidex, SLOT_GET_INFO_16, &value));
  CHECK_EQUAL(100, Release(lumidex));
}

void CheckAggregation(void) {
  Outer outer = {kOuterTable, 100, 0, NULL};
  void* factory = NewFactory();
  void* inner = NULL;
  void* out = NULL;
  CHECK_EQUAL(CODE_NO_INTERFACE, CreateInstance(factory, &outer, &kIidLumidex, &inner));
  CHECK_EQUAL(CODE_NO_INTERFACE, CreateInstance(factory, &outer, &kUnusedGuid, &inner));
  CHECK_EQUAL(100, outer.count);

  CHECK_EQUAL(CODE_OK, CreateInstance(factory, &outer, &kIidUnknown, &inner));
  CHECK_EQUAL(100, outer.count);
  CHECK_EQUAL(0, outer.queries);
  CHECK_EQUAL(2, AddRef(inner));
  CHECK_EQUAL(1, Release(inner));
  CHECK_EQUAL(CODE_OK, QueryInterface(inner, &kIidUnknown, &out));
  CHECK(out == inner);
  CHECK_EQUAL(1, Release(inner));
  CHECK_EQUAL(CODE_NO_INTERFACE, QueryInterface(inner, &kIidClassFactory, &out));
  CHECK_EQUAL(100, outer.count);

  CheckDelegation(&outer, inner);
  CHECK_EQUAL(0, Release(factory));
  CHECK_EQUAL(CODE_FALSE, CanUnloadNow());
  CHECK_EQUAL(0, Release(inner));
  CHECK_EQUAL(100, outer.count);
  CHECK_EQUAL(CODE_OK, CanUnloadNow());
}

void CheckUnloading(void) {
  void* factory = NewFactory();
  void* object = NULL;
  CHECK_EQUAL(CODE_OK, CreateInstance(factory, NULL, &kIidLumidex, &object));
  CHECK_EQUAL(CODE_OK, LockServer(factory, 1));
  CHECK_EQUAL(CODE_OK, LockServer(factory, 7));
  CHECK_EQUAL(0, Release(object));
  CHECK_EQUAL(CODE_FALSE, CanUnloadNow());
  CHECK_EQUAL(0, Release(factory));
  CHECK_EQUAL(CODE_FALSE, CanUnloadNow());

  factory = NewFactory();
  CHECK_EQUAL(CODE_OK, LockServer(factory, 0));
  CHECK_EQUAL(CODE_OK, LockServer(factory, 0));
  CHECK_EQUAL(CODE_FALSE, CanUnloadNow());
  CHECK_EQUAL(0, Release(factory));
  CHECK_EQUAL(CODE_OK, CanUnloadNow());

  /* By design the lock count has no lower bound: one lock after two unlocks is still no lock. */
  factory = NewFactory();
  LockServer(factory, 0);
  LockServer(factory, 0);
  LockServer(factory, 1);
  CHECK_EQUAL(CODE_FALSE, CanUnloadNow());
  CHECK_EQUAL(0, Release(factory));
  CHECK_EQUAL(CODE_OK, CanUnloadNow());
  factory = NewFactory();
  LockServer(factory, 1);
  CHECK_EQUAL(0, Release(factory));
  CHECK_EQUAL(CODE_OK, CanUnloadNow());
}
