#ifndef LUMIDEX_TESTS_ABI_SAMPLECHECKS_H_
#define LUMIDEX_TESTS_ABI_SAMPLECHECKS_H_

/* Checks the values of the project's sample photographs in a folder. */
void RunSampleGroups(const char* folder);

#endif /* LUMIDEX_TESTS_ABI_SAMPLECHECKS_H_ */
