#include "Abi.h"

#include <stdio.h>
#include <stdlib.h>

#include "Module.h"

const Guid kIidUnknown = {0x00000000, 0x0000, 0x0000, {0xC0, 0, 0, 0, 0, 0, 0, 0x46}};
const Guid kIidClassFactory = {0x00000001, 0x0000, 0x0000, {0xC0, 0, 0, 0, 0, 0, 0, 0x46}};
const Guid kIidLumidex = {
    0xE998C207, 0x72DD, 0x4BA3, {0xAD, 0x62, 0x7D, 0xD1, 0x4D, 0xDA, 0x82, 0x93}};
const Guid kClsidLumidex = {
    0x9652D740, 0xCF49, 0x448C, {0xA5, 0x3F, 0x76, 0xEC, 0x91, 0xFD, 0xCA, 0x16}};
const Guid kUnusedGuid = {
    0x9652D740, 0xCF49, 0x448C, {0xA5, 0x3F, 0x76, 0xEC, 0x91, 0xFD, 0xCA, 0x17}};

Function At(void* object, unsigned slot) {
  return (*(Function**)object)[slot];
}

Result GetClassObject(const Guid* classId, const Guid* interfaceId, void** object) {
  typedef Result (*Call)(const Guid*, const Guid*, void**);
  return ((Call)ModuleFunction("DllGetClassObject"))(classId, interfaceId, object);
}

Result CanUnloadNow(void) {
  typedef Result (*Call)(void);
  return ((Call)ModuleFunction("DllCanUnloadNow"))();
}

uint32_t QueryInterface(void* object, const Guid* interfaceId, void** out) {
  typedef Result (*Call)(void*, const Guid*, void**);
  return (uint32_t)((Call)At(object, SLOT_QUERY_INTERFACE))(object, interfaceId, out);
}

uint32_t AddRef(void* object) {
  typedef uint32_t (*Call)(void*);
  return ((Call)At(object, SLOT_ADD_REF))(object);
}

uint32_t Release(void* object) {
  typedef uint32_t (*Call)(void*);
  return ((Call)At(object, SLOT_RELEASE))(object);
}

uint32_t CreateInstance(void* factory, void* outer, const Guid* interfaceId, void** out) {
  typedef Result (*Call)(void*, void*, const Guid*, void**);
  return (uint32_t)((Call)At(factory, SLOT_CREATE_INSTANCE))(factory, outer, interfaceId, out);
}

uint32_t LockServer(void* factory, int32_t lock) {
  typedef Result (*Call)(void*, int32_t);
  return (uint32_t)((Call)At(factory, SLOT_LOCK_SERVER))(factory, lock);
}

uint32_t CallPath(void* object, unsigned slot, const WideChar* path) {
  typedef Result (*Call)(void*, const WideChar*);
  return (uint32_t)((Call)At(object, slot))(object, path);
}

uint32_t CallPathOut(void* object, unsigned slot, const WideChar* path, void** out) {
  typedef Result (*Call)(void*, const WideChar*, void**);
  return (uint32_t)((Call)At(object, slot))(object, path, out);
}

uint32_t CallWord(void* object, unsigned slot, uint32_t* value) {
  typedef Result (*Call)(void*, uint32_t*);
  return (uint32_t)((Call)At(object, slot))(object, value);
}

uint32_t CallFloat(void* object, unsigned slot, float* value) {
  typedef Result (*Call)(void*, float*);
  return (uint32_t)((Call)At(object, slot))(object, value);
}

uint32_t CallBuffer(void* object, unsigned slot, uint32_t* size, uint8_t* buffer) {
  typedef Result (*Call)(void*, uint32_t*, uint8_t*);
  return (uint32_t)((Call)At(object, slot))(object, size, buffer);
}

uint32_t CallWords(void* object, unsigned slot, uint32_t* p1, uint32_t* p2, uint32_t* p3) {
  typedef Result (*Call)(void*, uint32_t*, uint32_t*, uint32_t*);
  return (uint32_t)((Call)At(object, slot))(object, p1, p2, p3);
}

uint32_t CallDoubles(void* object, unsigned slot, double* p1, double* p2, double* p3) {
  typedef Result (*Call)(void*, double*, double*, double*);
  return (uint32_t)((Call)At(object, slot))(object, p1, p2, p3);
}

uint32_t CallEmbed(void* object, const WideChar* source, const WideChar* output,
                   const WideChar* packet) {
  typedef Result (*Call)(void*, const WideChar*, const WideChar*, const WideChar*);
  return (uint32_t)((Call)At(object, SLOT_EMBED_XMP_FILE))(object, source, output, packet);
}

uint32_t CallWrite(void* object, const WriteArguments* arguments) {
  typedef Result (*Call)(void*, const WideChar*, const WideChar*, uint32_t, const void*, uint32_t,
                         uint64_t, const WideChar*, uint32_t);
  return (uint32_t)((Call)At(object, SLOT_WRITE_METADATA))(
      object, arguments->source, arguments->output, arguments->count, arguments->records,
      arguments->thumbnailLength, arguments->thumbnailAddress, arguments->packet,
      arguments->overwrite);
}

void* NewFactory(void) {
  void* factory = NULL;
  if (GetClassObject(&kClsidLumidex, &kIidClassFactory, &factory) == 0 && factory != NULL) {
    return factory;
  }
  fprintf(stderr, "abi_host: no class factory\n");
  exit(1);
}

void* NewLumidex(void) {
  void* factory = NewFactory();
  void* lumidex = NULL;
  uint32_t result = CreateInstance(factory, NULL, &kIidLumidex, &lumidex);
  Release(factory);
  if (result == CODE_OK && lumidex != NULL) return lumidex;
  fprintf(stderr, "abi_host: no object (0x%08lX)\n", (unsigned long)result);
  exit(1);
}
