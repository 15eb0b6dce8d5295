#include <dlfcn.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>

#include "Module.h"

static void* g_module;

int OpenModule(const char* path) {
  g_module = dlopen(path, RTLD_NOW | RTLD_LOCAL);
  if (g_module == NULL) fprintf(stderr, "abi_host: %s\n", dlerror());
  return g_module != NULL;
}

Function ModuleFunction(const char* name) {
  void* symbol = dlsym(g_module, name);
  Function function;
  if (symbol == NULL) {
    fprintf(stderr, "abi_host: no export %s\n", name);
    exit(1);
  }
  /* ISO C has no cast from an object pointer to a function pointer. */
  memcpy(&function, &symbol, sizeof function);
  return function;
}

int ModuleExports(const char* name) {
  return dlsym(g_module, name) != NULL;
}

void CloseModule(void) {
  dlclose(g_module);
}

void RemoveWide(const WideChar* name) {
  char utf8[260] = {0};
  size_t size = 0;
  for (; *name != 0 && size < sizeof utf8 - 3; ++name) {
    if (*name < 0x80) {
      utf8[size++] = (char)*name;
      continue;
    }
    if (*name < 0x800) {
      utf8[size++] = (char)(0xC0 | *name >> 6);
    } else {
      utf8[size++] = (char)(0xE0 | *name >> 12);
      utf8[size++] = (char)(0x80 | (*name >> 6 & 0x3F));
    }
    utf8[size++] = (char)(0x80 | (*name & 0x3F));
  }
  remove(utf8);
}
