#include "failing_allocation.h"

#include <dlfcn.h>

#include <cstdint>
#include <new>

namespace {

thread_local FailingAllocation* currentShortage = nullptr;

bool Fails(std::size_t bytes) {
  if (bytes > PTRDIFF_MAX / 2) return true;
  return currentShortage != nullptr && currentShortage->Meets(bytes);
}

// The operator that this program would have without the one below of that name, so that a sanitizer sees what
// is allocated and how.
template <class Operator>
Operator* Next(const char* symbolOn64Bits, const char* symbolOn32Bits) {
  return reinterpret_cast<Operator*>(
      dlsym(RTLD_NEXT, sizeof(std::size_t) == 8 ? symbolOn64Bits : symbolOn32Bits));
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
  static const auto next = Next<void*(std::size_t)>("_Znwm", "_Znwj");
  if (Fails(bytes)) throw std::bad_alloc();
  return next(bytes);
}

void* operator new[](std::size_t bytes) {
  static const auto next = Next<void*(std::size_t)>("_Znam", "_Znaj");
  if (Fails(bytes)) throw std::bad_alloc();
  return next(bytes);
}

using NoThrowNew = void*(std::size_t, const std::nothrow_t&);

void* operator new(std::size_t bytes, const std::nothrow_t& noThrow) noexcept {
  static const auto next = Next<NoThrowNew>("_ZnwmRKSt9nothrow_t", "_ZnwjRKSt9nothrow_t");
  return Fails(bytes) ? nullptr : next(bytes, noThrow);
}

void* operator new[](std::size_t bytes, const std::nothrow_t& noThrow) noexcept {
  static const auto next = Next<NoThrowNew>("_ZnamRKSt9nothrow_t", "_ZnajRKSt9nothrow_t");
  return Fails(bytes) ? nullptr : next(bytes, noThrow);
}
