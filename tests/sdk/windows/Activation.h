#ifndef LUMIDEX_TESTS_SDK_WINDOWS_ACTIVATION_H_
#define LUMIDEX_TESTS_SDK_WINDOWS_ACTIVATION_H_

// Creating the class through the system, which knows it from an activation context alone.

#include <string>
#include <windows.h>

// Prints a line and counts it when a condition does not hold.
void Check(bool condition, const char* text);
int FailureCount();

// CoCreateInstance from a thread of each kind of apartment, with an activation context unless that
// of the process is meant. The object is the module's own, without a proxy in front, and opens the
// photograph.
void CheckActivation(const std::wstring& photo, HANDLE context = nullptr);

// CoCreateInstance finds no such class in either kind of apartment.
void CheckNoActivation();

#endif  // LUMIDEX_TESTS_SDK_WINDOWS_ACTIVATION_H_
