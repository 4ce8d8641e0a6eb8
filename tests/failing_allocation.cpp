#include "failing_allocation.h"

#include <dlfcn.h>

#include <cstdint>
#include <new>
#include <utility>

namespace {

thread_local FailingAllocation* currentShortage = nullptr;
thread_local bool isAllocating = false;  // inside the operators that are called from here

bool Fails(std::size_t bytes) {
  if (bytes > PTRDIFF_MAX / 2) return true;
  return currentShortage != nullptr && !isAllocating && currentShortage->Meets(bytes);
}

// Calls the operator that this program would have without the ones below, so that a sanitizer sees what is
// allocated and how. Those of the C++ library call each other; that counts as one allocation.
template <class... NoThrow>
void* Allocate(const char* symbolOn64Bits, const char* symbolOn32Bits, std::size_t bytes,
               NoThrow... noThrow) {
  const char* const symbol = sizeof(bytes) == 8 ? symbolOn64Bits : symbolOn32Bits;
  const auto allocate = reinterpret_cast<void* (*)(std::size_t, NoThrow...)>(dlsym(RTLD_NEXT, symbol));
  struct Restore {
    const bool before = std::exchange(isAllocating, true);
    ~Restore() { isAllocating = before; }
  } const restore;
  return allocate(bytes, noThrow...);
}

}  // namespace

FailingAllocation::FailingAllocation(int count, std::size_t bytes) : m_countdown(count), m_bytes(bytes) {
  currentShortage = this;
}

FailingAllocation::~FailingAllocation() { currentShortage = nullptr; }

bool FailingAllocation::Meets(std::size_t bytes) {
  const bool fails = m_countdown == 0 || (m_bytes != 0 && bytes >= m_bytes);
  if (m_countdown >= 0) --m_countdown;
  m_hasHappened = m_hasHappened || fails;
  return fails;
}

void* operator new(std::size_t bytes) {
  if (Fails(bytes)) throw std::bad_alloc();
  return Allocate("_Znwm", "_Znwj", bytes);
}

void* operator new[](std::size_t bytes) {
  if (Fails(bytes)) throw std::bad_alloc();
  return Allocate("_Znam", "_Znaj", bytes);
}

void* operator new(std::size_t bytes, const std::nothrow_t& noThrow) noexcept {
  if (Fails(bytes)) return nullptr;
  return Allocate<const std::nothrow_t&>("_ZnwmRKSt9nothrow_t", "_ZnwjRKSt9nothrow_t", bytes, noThrow);
}

void* operator new[](std::size_t bytes, const std::nothrow_t& noThrow) noexcept {
  if (Fails(bytes)) return nullptr;
  return Allocate<const std::nothrow_t&>("_ZnamRKSt9nothrow_t", "_ZnajRKSt9nothrow_t", bytes, noThrow);
}
