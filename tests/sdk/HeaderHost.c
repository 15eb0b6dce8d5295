/* A host in C on the interface header and its call macros: the tables have the order of the slots,
 * and a call through each macro reaches its method.
 *
 *   header_host MODULE PHOTO */

#define COBJMACROS
#include <stdio.h>
#include <string.h>

#include <lumidex/ILumidex.h>

#include "Module.h"

#define SLOT(type, method, number) \
  static_assert(offsetof(type##Vtbl, method) == (number) * sizeof(void*), #method)

SLOT(IUnknown, QueryInterface, 0);
SLOT(IUnknown, AddRef, 1);
SLOT(IUnknown, Release, 2);
SLOT(IClassFactory, CreateInstance, 3);
SLOT(IClassFactory, LockServer, 4);
SLOT(IImageInfo, QueryInterface, 0);
SLOT(IImageInfo, GetState, 3);
SLOT(IImageInfo, GetInfoList, 4);
SLOT(ILumidex, QueryInterface, 0);
SLOT(ILumidex, AddRef, 1);
SLOT(ILumidex, Release, 2);
SLOT(ILumidex, GetFileType, 3);
SLOT(ILumidex, Open, 4);
SLOT(ILumidex, GetInfo16, 5);
SLOT(ILumidex, GetInfo17Size, 6);
SLOT(ILumidex, GetInfo17Triple, 7);
SLOT(ILumidex, GetInfo17Data, 8);
SLOT(ILumidex, EmbedXmpFile, 9);
SLOT(ILumidex, IsPanorama, 10);
SLOT(ILumidex, AppendTrailer, 11);
SLOT(ILumidex, GetInfo18Size, 12);
SLOT(ILumidex, GetInfo18Data, 13);
SLOT(ILumidex, GetInfo19Size, 14);
SLOT(ILumidex, GetInfo19Data, 15);
SLOT(ILumidex, WriteMetadata, 16);
SLOT(ILumidex, GetXmpPacketSize, 17);
SLOT(ILumidex, GetXmpPacket, 18);
SLOT(ILumidex, GetPoseHeading, 19);
SLOT(ILumidex, GetPosePitch, 20);
SLOT(ILumidex, GetPoseRoll, 21);
SLOT(ILumidex, ParseBasic, 22);
SLOT(ILumidex, GetInfo21Size, 23);
SLOT(ILumidex, GetInfo21Data, 24);
SLOT(ILumidex, GetInfo20Triple, 25);
static_assert(sizeof(ILumidexVtbl) == 26 * sizeof(void*), "number of slots");
static_assert(sizeof(IImageInfoVtbl) == 5 * sizeof(void*), "number of slots");

static_assert(offsetof(CMETADATA_INFO_LIST, m_nState) == 8, "");
static_assert(offsetof(CMETADATA_INFO_LIST, m_pRecords) == 16, "");
static_assert(offsetof(CMETADATA_INFO_LIST, m_nCount) == 24, "");

static int g_failures;

#define CHECK(condition)                                              \
  do {                                                                \
    if (!(condition)) {                                               \
      fprintf(stderr, "%s:%d: %s\n", __FILE__, __LINE__, #condition); \
      ++g_failures;                                                   \
    }                                                                 \
  } while (0)

static ILumidex* NewPhoto(void) {
  LPFNGETCLASSOBJECT getClassObject = (LPFNGETCLASSOBJECT)ModuleFunction("DllGetClassObject");
  IClassFactory* factory = NULL;
  ILumidex* photo = NULL;
  void* out = NULL;
  if (FAILED(getClassObject(&CLSID_Lumidex, &IID_IClassFactory, &out))) return NULL;
  factory = out;
  CHECK(IClassFactory_QueryInterface(factory, &IID_ILumidex, &out) == E_NOINTERFACE);
  CHECK(IClassFactory_LockServer(factory, TRUE) == S_OK);
  CHECK(IClassFactory_LockServer(factory, FALSE) == S_OK);
  if (SUCCEEDED(IClassFactory_CreateInstance(factory, NULL, &IID_ILumidex, &out))) photo = out;
  CHECK(IClassFactory_AddRef(factory) == 2);
  CHECK(IClassFactory_Release(factory) == 1);
  IClassFactory_Release(factory);
  return photo;
}

/* Each method answers an object without a file in its own way, or refuses null arguments. */
static void CheckCalls(ILumidex* photo) {
  const WCHAR* none = LMD_W("header-host-none.jpg");
  uint32_t word = 7;
  uint32_t flag = 7;
  double number = 0;
  float angle = 0;
  IImageInfo* info = NULL;
  void* out = NULL;
  CHECK(ILumidex_QueryInterface(photo, &IID_ILumidex, &out) == S_OK && out == photo);
  CHECK(ILumidex_Release(photo) == 1);
  CHECK(ILumidex_AddRef(photo) == 2);
  CHECK(ILumidex_Release(photo) == 1);
  CHECK(ILumidex_GetFileType(photo, none) == LMD_FILE_UNKNOWN);
  CHECK(ILumidex_Open(photo, none) == LMD_E_SRC_NOT_FOUND);
  CHECK(ILumidex_GetInfo16(photo, &word) == LMD_E_INVALID_ARG);
  CHECK(ILumidex_GetInfo17Size(photo, &word) == LMD_E_INVALID_ARG);
  CHECK(ILumidex_GetInfo17Triple(photo, &number, &number, &number) == LMD_E_INVALID_ARG);
  CHECK(ILumidex_GetInfo17Data(photo, &word, (uint8_t*)&flag) == LMD_E_INVALID_ARG);
  CHECK(ILumidex_EmbedXmpFile(photo, none, none, none) == LMD_E_SRC_NOT_FOUND);
  CHECK(ILumidex_IsPanorama(photo, &flag) == LMD_E_NOT_FOUND && flag == 0);
  CHECK(ILumidex_AppendTrailer(photo, NULL) == LMD_E_OPEN_FAILED);
  CHECK(ILumidex_GetInfo18Size(photo, &word) == LMD_E_INVALID_ARG);
  CHECK(ILumidex_GetInfo18Data(photo, &word, NULL) == LMD_E_INVALID_ARG);
  CHECK(ILumidex_GetInfo19Size(photo, &word) == LMD_E_INVALID_ARG);
  CHECK(ILumidex_GetInfo19Data(photo, &word, NULL) == LMD_E_INVALID_ARG);
  CHECK(ILumidex_WriteMetadata(photo, none, none, 0, NULL, 0, 0, NULL, 0) == LMD_E_SRC_NOT_FOUND);
  CHECK(ILumidex_GetXmpPacketSize(photo, &word) == LMD_E_INVALID_ARG);
  CHECK(ILumidex_GetXmpPacket(photo, &word, NULL) == LMD_E_INVALID_ARG);
  CHECK(ILumidex_GetPoseHeading(photo, &angle) == LMD_E_INVALID_ARG);
  CHECK(ILumidex_GetPosePitch(photo, &angle) == LMD_E_INVALID_ARG);
  CHECK(ILumidex_GetPoseRoll(photo, &angle) == LMD_E_INVALID_ARG);
  CHECK(ILumidex_ParseBasic(photo, NULL, &info) == LMD_E_BAD_FORMAT && info == NULL);
  CHECK(ILumidex_GetInfo21Size(photo, &word) == LMD_E_INVALID_ARG);
  CHECK(ILumidex_GetInfo21Data(photo, &word, NULL) == LMD_E_INVALID_ARG);
  CHECK(ILumidex_GetInfo20Triple(photo, &word, &word, &word) == LMD_E_INVALID_ARG);
  CHECK(word == 7);
}

/* The first records are the basics: width, height, orientation, samples, colour space. */
static void CheckList(IImageInfo* info) {
  static const uint32_t ids[] = {256, 257, 274, 277, LMD_ID_COLOR_SPACE};
  const CMETADATA_INFO_LIST* list = IImageInfo_GetInfoList(info);
  CHECK(IImageInfo_GetState(info) == 1 && list->m_nState == 1);
  CHECK(list->m_pTable != NULL);
  CHECK(list->m_nCount >= 5);
  for (int i = 0; i < 5 && i < list->m_nCount; ++i) {
    CHECK(list->m_pRecords[i].m_nGroup == LMD_GROUP_BASICS);
    CHECK(list->m_pRecords[i].m_nId == ids[i]);
    CHECK(list->m_pRecords[i].m_nType == LMD_RECORD_UINT32);
    CHECK(list->m_pRecords[i].m_nSize == 4);
  }
}

static void CheckFile(ILumidex* photo, const char* path) {
  WCHAR wide[512] = {0};
  IImageInfo* info = NULL;
  for (size_t i = 0; i < strlen(path) && i < 511; ++i) wide[i] = (WCHAR)(unsigned char)path[i];
  CHECK(ILumidex_GetFileType(photo, wide) == LMD_FILE_JPEG);
  CHECK(ILumidex_Open(photo, wide) == S_OK);
  CHECK(ILumidex_ParseBasic(photo, wide, &info) == S_OK);
  if (info == NULL) return;
  CheckList(info);
  CHECK(IImageInfo_AddRef(info) == 2);
  CHECK(IImageInfo_Release(info) == 1);
  CHECK(IImageInfo_Release(info) == 0);
}

int main(int argc, char** argv) {
  ILumidex* photo;
  if (argc != 3 || !OpenModule(argv[1])) return 2;
  photo = NewPhoto();
  CHECK(photo != NULL);
  if (photo != NULL) {
    CheckCalls(photo);
    CheckFile(photo, argv[2]);
    CHECK(ILumidex_Release(photo) == 0);
  }
  CHECK(((LPFNCANUNLOADNOW)ModuleFunction("DllCanUnloadNow"))() == S_OK);
  CloseModule();
  return g_failures == 0 ? 0 : 1;
}
