#ifndef LUMIDEX_TESTS_ABI_MODULE_H_
#define LUMIDEX_TESTS_ABI_MODULE_H_

/* The module under test, loaded by path, and what else is different on each system. One source file
 * for each. */

#include "Abi.h"

/* Returns 0 and writes a line to stderr when the file cannot be loaded. */
int OpenModule(const char* path);

/* An export of the loaded module; ends the program when there is none of that name. */
Function ModuleFunction(const char* name);

/* Whether a name is exported. */
int ModuleExports(const char* name);

void CloseModule(void);

/* Removes a file of the current folder whose name needs more than ASCII. */
void RemoveWide(const WideChar* name);

#endif /* LUMIDEX_TESTS_ABI_MODULE_H_ */
