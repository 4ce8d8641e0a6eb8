#pragma once

#include <cstddef>
#include <cstdint>
#include <new>
#include <thread>

#include "system_calls.h"

// Memory that runs out for the calling thread while this object lives; one at a time.
//
//   for (int count = 0;; ++count) {
//     const auto shortage = FailingAllocation::After(count);
//     ...                                  // the allocation after `count` others fails, and only that one
//     if (!shortage.HasHappened()) break;  // there were not so many
//   }
//
// An allocation is one by any form of `new`; it fails as that form does. One of an array may count twice.
// Memory from malloc never fails.
class FailingAllocation {
 public:
  // Fails once, after that many allocations.
  static FailingAllocation After(int count) { return FailingAllocation(count, SIZE_MAX); }
  // Fails whenever so many bytes or more are wanted.
  static FailingAllocation OfAtLeast(std::size_t bytes) { return FailingAllocation(-1, bytes); }

  bool HasHappened() const { return m_hasHappened; }

 private:
  FailingAllocation(int countdown, std::size_t bytes) : m_countdown(countdown), m_bytes(bytes) {}

  bool Fails(std::size_t bytes) {
    if (std::this_thread::get_id() != m_thread) return false;
    const bool fails = m_countdown == 0 || bytes >= m_bytes;
    if (m_countdown >= 0) --m_countdown;
    m_hasHappened = m_hasHappened || fails;
    return fails;
  }

  template <class Form>
  typename Form::Replacement Replace(Form& form) {
    return form.ReplaceBy([this, &form](std::size_t bytes, const auto&... noThrow) -> void* {
      if (!Fails(bytes)) return form.Real(bytes, noThrow...);
      if (sizeof...(noThrow) == 0) throw std::bad_alloc();
      return nullptr;
    });
  }

  const std::thread::id m_thread = std::this_thread::get_id();
  int m_countdown;
  const std::size_t m_bytes;
  bool m_hasHappened = false;
  const system_calls::New::Replacement m_objects = Replace(system_calls::new_object);
  const system_calls::New::Replacement m_arrays = Replace(system_calls::new_array);
  const system_calls::NewOrNull::Replacement m_objectsOrNull = Replace(system_calls::new_object_or_null);
  const system_calls::NewOrNull::Replacement m_arraysOrNull = Replace(system_calls::new_array_or_null);
};
