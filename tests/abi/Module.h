#ifndef LUMIDEX_TESTS_ABI_MODULE_H_
#define LUMIDEX_TESTS_ABI_MODULE_H_

/* The module under test, loaded by path. One source file for each system's loader. */

#include "Abi.h"

/* Returns 0 and writes a line to stderr when the file cannot be loaded. */
int OpenModule(const char* path);

/* An export of the loaded module; ends the program when there is none of that name. */
Function ModuleFunction(const char* name);

/* Whether a name is exported. */
int ModuleExports(const char* name);

void CloseModule(void);

#endif /* LUMIDEX_TESTS_ABI_MODULE_H_ */
