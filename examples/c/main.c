/* A host in plain C: loads the module by its path, prints what a photograph holds, and writes a
 * copy that names an artist.
 *
 *   lumidex_c_example MODULE PHOTO [COPY]
 *
 * MODULE is LumidexMgr.dll or LumidexMgr.so. It needs no registration and no import library. */

#define COBJMACROS
#include <stdio.h>
#include <stdlib.h>
#include <string.h>

#include <lumidex/ILumidex.h>

/* What differs between the systems: a program's arguments and a module's functions. */
#ifdef _WIN32
typedef wchar_t Argument;
#define MAIN wmain

static const WCHAR* PathOf(const Argument* argument, WCHAR* buffer, size_t size) {
  (void)buffer;
  (void)size;
  return argument;
}

static LPFNGETCLASSOBJECT EntryOf(const Argument* path) {
  HMODULE module = LoadLibraryW(path);
  if (module == NULL) return NULL;
  return (LPFNGETCLASSOBJECT)(void (*)(void))GetProcAddress(module, "DllGetClassObject");
}
#else
#include <dlfcn.h>
#include <locale.h>
#include <uchar.h>

typedef char Argument;
#define MAIN main

/* The argument in UTF-16, or null when it is no text of the locale or too long. */
static const WCHAR* PathOf(const Argument* argument, WCHAR* buffer, size_t size) {
  mbstate_t state;
  size_t rest = strlen(argument) + 1;
  size_t count = 0;
  memset(&state, 0, sizeof state);
  setlocale(LC_CTYPE, "");
  while (count < size) {
    size_t used = mbrtoc16(&buffer[count], argument, rest, &state);
    if (used == 0) return buffer;
    if (used == (size_t)-1 || used == (size_t)-2) return NULL;
    ++count;
    if (used == (size_t)-3) continue; /* the second half of a pair */
    argument += used;
    rest -= used;
  }
  return NULL;
}

static LPFNGETCLASSOBJECT EntryOf(const Argument* path) {
  LPFNGETCLASSOBJECT function = NULL;
  void* module = dlopen(path, RTLD_NOW);
  void* symbol = module != NULL ? dlsym(module, "DllGetClassObject") : NULL;
  memcpy(&function, &symbol, sizeof function);
  return function;
}
#endif

/* The name of a result code. */
static const char* NameOf(HRESULT result) {
#define CASE(name, value, meaning) \
  case name:                       \
    return #name;
  switch (result) {
    LMD_RESULT_CODES(CASE)
    LMD_SYSTEM_CODES(CASE)
    default:
      return "an unknown code";
  }
#undef CASE
}

static int Failed(const char* what, HRESULT result) {
  fprintf(stderr, "%s: %s (0x%08lX)\n", what, NameOf(result), (unsigned long)(uint32_t)result);
  return 1;
}

/* A photograph object, with one reference that is the caller's. */
static HRESULT CreatePhoto(LPFNGETCLASSOBJECT getClassObject, ILumidex** photo) {
  void* factory = NULL;
  void* object = NULL;
  HRESULT result = getClassObject(&CLSID_Lumidex, &IID_IClassFactory, &factory);
  if (FAILED(result)) return result;
  result = IClassFactory_CreateInstance((IClassFactory*)factory, NULL, &IID_ILumidex, &object);
  IClassFactory_Release((IClassFactory*)factory);
  *photo = (ILumidex*)object;
  return result;
}

static int32_t NumberAt(const CInfoRecord* record, size_t index) {
  int32_t number;
  memcpy(&number, record->m_pData + index * sizeof number, sizeof number);
  return number;
}

/* Numbers exactly, text as it is, bytes in hexadecimal. */
static void PrintValue(const CInfoRecord* record) {
  size_t i;
  const size_t words = record->m_nSize / 4;
  switch (record->m_nType) {
    case LMD_RECORD_ASCII:
      printf(" %.*s", (int)record->m_nSize, (const char*)record->m_pData);
      break;
    case LMD_RECORD_UINT32:
      for (i = 0; i < words; ++i) printf(" %lu", (unsigned long)(uint32_t)NumberAt(record, i));
      break;
    case LMD_RECORD_INT32:
      for (i = 0; i < words; ++i) printf(" %ld", (long)NumberAt(record, i));
      break;
    case LMD_RECORD_URATIONAL:
      for (i = 0; i + 1 < words; i += 2) {
        printf(" %lu/%lu", (unsigned long)(uint32_t)NumberAt(record, i),
               (unsigned long)(uint32_t)NumberAt(record, i + 1));
      }
      break;
    case LMD_RECORD_SRATIONAL:
      for (i = 0; i + 1 < words; i += 2) {
        printf(" %ld/%ld", (long)NumberAt(record, i), (long)NumberAt(record, i + 1));
      }
      break;
    default:
      for (i = 0; i < record->m_nSize; ++i) printf(" %02x", record->m_pData[i]);
      break;
  }
}

/* Size, IFD0, EXIF and GPS. The result is ours and is released; its list lives as long. */
static int PrintRecords(ILumidex* photo, const WCHAR* path) {
  int32_t i;
  const CMETADATA_INFO_LIST* list;
  IImageInfo* info = NULL;
  const HRESULT result = ILumidex_ParseBasic(photo, path, &info);
  if (FAILED(result)) return Failed("ParseBasic", result);
  if (info == NULL) return 0; /* a PNG */
  list = IImageInfo_GetInfoList(info);
  for (i = 0; list->m_pRecords != NULL && i < list->m_nCount; ++i) {
    const CInfoRecord* record = &list->m_pRecords[i];
    printf("%lu %lu:", (unsigned long)record->m_nGroup, (unsigned long)record->m_nId);
    PrintValue(record);
    printf("\n");
  }
  IImageInfo_Release(info);
  return 0;
}

static void PrintPanorama(ILumidex* photo) {
  uint32_t isPanorama = 0;
  float angle = 0;
  const HRESULT result = ILumidex_IsPanorama(photo, &isPanorama);
  printf("panorama: %s\n", SUCCEEDED(result) && isPanorama != 0 ? "yes" : "no");
  if (SUCCEEDED(ILumidex_GetPoseHeading(photo, &angle))) printf("heading: %g\n", (double)angle);
  if (SUCCEEDED(ILumidex_GetPosePitch(photo, &angle))) printf("pitch: %g\n", (double)angle);
  if (SUCCEEDED(ILumidex_GetPoseRoll(photo, &angle))) printf("roll: %g\n", (double)angle);
}

/* The packet's size is known only once it is read: the buffer is a little larger. */
static int PrintPacketSize(ILumidex* photo) {
  uint32_t size = 0;
  uint8_t* packet;
  HRESULT result = ILumidex_GetXmpPacketSize(photo, &size);
  if (result == LMD_E_NOT_FOUND) return 0;
  if (FAILED(result)) return Failed("GetXmpPacketSize", result);
  packet = malloc(size);
  if (packet == NULL) return Failed("malloc", E_OUTOFMEMORY);
  result = ILumidex_GetXmpPacket(photo, &size, packet);
  free(packet);
  if (FAILED(result)) return Failed("GetXmpPacket", result);
  printf("packet: yes\n");
  return 0;
}

/* The copy must not exist; the last argument would allow that, and a source that has EXIF. */
static int WriteCopy(ILumidex* photo, const WCHAR* path, const WCHAR* copy) {
  char artist[] = "A. Photographer";
  CInfoRecord record = {LMD_GROUP_IFD0, 315, LMD_RECORD_ASCII, 0, NULL, 0};
  HRESULT result;
  record.m_nSize = sizeof artist;
  record.m_pData = (uint8_t*)artist;
  result = ILumidex_WriteMetadata(photo, path, copy, 1, &record, 0, 0, NULL, 0);
  return FAILED(result) ? Failed("WriteMetadata", result) : 0;
}

static int Show(ILumidex* photo, const WCHAR* path) {
  const HRESULT result = ILumidex_Open(photo, path);
  if (FAILED(result)) return Failed("Open", result);
  PrintPanorama(photo);
  return PrintPacketSize(photo) != 0 ? 1 : PrintRecords(photo, path);
}

int MAIN(int argc, Argument** argv) {
  WCHAR pathBuffer[1024];
  WCHAR copyBuffer[1024];
  const WCHAR* path;
  const WCHAR* copy;
  ILumidex* photo = NULL;
  LPFNGETCLASSOBJECT getClassObject;
  HRESULT result;
  int status;
  if (argc != 3 && argc != 4) {
    fprintf(stderr, "usage: lumidex_c_example MODULE PHOTO [COPY]\n");
    return 2;
  }
  path = PathOf(argv[2], pathBuffer, 1024);
  copy = argc == 4 ? PathOf(argv[3], copyBuffer, 1024) : NULL;
  if (path == NULL || (argc == 4 && copy == NULL)) return Failed("path", LMD_E_INVALID_ARG);
  getClassObject = EntryOf(argv[1]);
  if (getClassObject == NULL) return Failed("loading the module", LMD_E_OPEN_FAILED);
  result = CreatePhoto(getClassObject, &photo);
  if (FAILED(result)) return Failed("CreateInstance", result);
  status = Show(photo, path);
  if (status == 0 && copy != NULL) status = WriteCopy(photo, path, copy);
  ILumidex_Release(photo);
  return status;
}
