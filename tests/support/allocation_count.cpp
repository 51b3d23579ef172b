// operator new and delete over malloc and free, with a count. The other forms of both call these.
#include "tests/support/allocation_count.h"

#include <atomic>
#include <cstdlib>
#include <new>

namespace {
std::atomic<long> count = 0;
std::atomic<bool> refuses = false;
}  // namespace

long norvik::allocationCount() {
  return count;
}

void norvik::refuseNextNothrowAllocation() {
  refuses = true;
}

void* operator new(std::size_t size, const std::nothrow_t& /*tag*/) noexcept {
  if (refuses.exchange(false)) return nullptr;
  ++count;
  return std::malloc(size != 0 ? size : 1);
}

void* operator new(std::size_t size) {
  ++count;
  if (void* memory = std::malloc(size != 0 ? size : 1)) return memory;
  throw std::bad_alloc();
}

void operator delete(void* memory) noexcept {
  std::free(memory);
}

void operator delete(void* memory, std::size_t /*size*/) noexcept {
  std::free(memory);
}
