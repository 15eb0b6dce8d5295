#include "Bounds.h"

#include <algorithm>
#include <cstdlib>
#include <ctime>
#include <malloc.h>
#include <new>

namespace {

thread_local std::size_t g_live = 0;
thread_local std::size_t g_peak = 0;

// The build names the function that tells a block's size.
std::size_t SizeOf(void* memory) noexcept {
  return memory == nullptr ? 0 : LUMIDEX_BLOCK_SIZE(memory);
}

void* AllocateOrNull(std::size_t size) noexcept {
  void* const memory = std::malloc(size != 0 ? size : 1);
  g_live += SizeOf(memory);
  g_peak = std::max(g_peak, g_live);
  return memory;
}

void* AllocateOrThrow(std::size_t size) {
  void* const memory = AllocateOrNull(size);
  if (memory == nullptr) throw std::bad_alloc();
  return memory;
}

void Free(void* memory) noexcept {
  g_live -= SizeOf(memory);
  std::free(memory);
}

// Of the processor; on Windows of the clock.
double Milliseconds() {
  return 1000.0 * static_cast<double>(std::clock()) / CLOCKS_PER_SEC;
}

}  // namespace

void* operator new(std::size_t size) {
  return AllocateOrThrow(size);
}
void* operator new[](std::size_t size) {
  return AllocateOrThrow(size);
}
void* operator new(std::size_t size, const std::nothrow_t&) noexcept {
  return AllocateOrNull(size);
}
void* operator new[](std::size_t size, const std::nothrow_t&) noexcept {
  return AllocateOrNull(size);
}
void operator delete(void* memory) noexcept {
  Free(memory);
}
void operator delete[](void* memory) noexcept {
  Free(memory);
}
void operator delete(void* memory, std::size_t) noexcept {
  Free(memory);
}
void operator delete[](void* memory, std::size_t) noexcept {
  Free(memory);
}
void operator delete(void* memory, const std::nothrow_t&) noexcept {
  Free(memory);
}
void operator delete[](void* memory, const std::nothrow_t&) noexcept {
  Free(memory);
}

namespace test {

Meter::Meter() : m_start(Milliseconds()), m_liveAtStart(g_live) {
  g_peak = g_live;
}

Cost Meter::Read() const {
  return {Milliseconds() - m_start, g_peak - m_liveAtStart};
}

}  // namespace test
