#include <stdio.h>
#include <stdlib.h>
#include <windows.h>

#include "Module.h"

static HMODULE g_module;

int OpenModule(const char* path) {
  g_module = LoadLibraryA(path);
  if (g_module == NULL) {
    fprintf(stderr, "abi_host: %s: error %lu\n", path, (unsigned long)GetLastError());
  }
  return g_module != NULL;
}

Function ModuleFunction(const char* name) {
  FARPROC function = GetProcAddress(g_module, name);
  if (function == NULL) {
    fprintf(stderr, "abi_host: no export %s\n", name);
    exit(1);
  }
  return (Function)function;
}

int ModuleExports(const char* name) {
  return GetProcAddress(g_module, name) != NULL;
}

void CloseModule(void) {
  FreeLibrary(g_module);
}

void RemoveWide(const WideChar* name) {
  DeleteFileW((const wchar_t*)name);
}
