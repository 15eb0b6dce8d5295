#include "faults/Allocations.h"

#include <cstdlib>
#include <new>

#include "faults/Fault.h"

namespace {

std::size_t g_liveBytes = 0;

// Stands in front of every block and keeps it aligned for any type.
struct alignas(std::max_align_t) Head {
  std::size_t size;
};

void* AllocateOrNull(std::size_t size) noexcept {
  if (test::Fault::Hits(test::Call::Allocation) || test::NoMemoryOf::Hits(size)) return nullptr;
  void* const block = std::malloc(sizeof(Head) + size);
  if (block == nullptr) return nullptr;
  g_liveBytes += size;
  return new (block) Head{size} + 1;
}

void* AllocateOrThrow(std::size_t size) {
  void* const memory = AllocateOrNull(size);
  if (memory == nullptr) throw std::bad_alloc();
  return memory;
}

void Free(void* memory) noexcept {
  if (memory == nullptr) return;
  Head* const head = static_cast<Head*>(memory) - 1;
  g_liveBytes -= head->size;
  std::free(head);
}

}  // namespace

std::size_t test::LiveBytes() noexcept {
  return g_liveBytes;
}

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
