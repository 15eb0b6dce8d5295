#include "Checks.h"

#include <stdio.h>

static const char* g_group;
static unsigned g_checks;
static unsigned g_failures;
static unsigned g_allFailures;

void RunGroup(const char* name, void (*checks)(void)) {
  g_group = name;
  g_checks = 0;
  g_failures = 0;
  checks();
  g_allFailures += g_failures;
  printf("%s  %-48s %3u checks\n", g_failures == 0 ? "ok  " : "FAIL", name, g_checks);
  fflush(stdout);
}

unsigned FailedChecks(void) {
  return g_allFailures;
}

void CheckTrue(int condition, const char* text, const char* file, int line) {
  ++g_checks;
  if (condition) return;
  ++g_failures;
  printf("%s:%d: %s: %s does not hold\n", file, line, g_group, text);
}

void CheckEqual(uint32_t expected, uint32_t actual, const char* text, const char* file, int line) {
  ++g_checks;
  if (expected == actual) return;
  ++g_failures;
  printf("%s:%d: %s: %s is 0x%08lX, not 0x%08lX\n", file, line, g_group, text,
         (unsigned long)actual, (unsigned long)expected);
}
