#pragma once

#include <cstddef>

// Memory that runs out for the calling thread while this object lives; one at a time in a thread.
//
//   for (int count = 0;; ++count) {
//     const auto shortage = FailingAllocation::After(count);
//     ...                                  // the allocation after `count` others fails, and only that one
//     if (!shortage.HasHappened()) break;  // there were not so many
//   }
//
// An allocation is one by any form of `new`; it fails as that form does. One of an array may count twice.
// Memory from malloc never fails.
// Independent of this class, an allocation that is too large for any machine fails without asking the
// sanitizer for it.
class FailingAllocation {
 public:
  // Fails once, after that many allocations.
  static FailingAllocation After(int count) { return FailingAllocation(count, 0); }
  // Fails whenever so many bytes or more are wanted.
  static FailingAllocation OfAtLeast(std::size_t bytes) { return FailingAllocation(-1, bytes); }

  ~FailingAllocation();
  FailingAllocation(const FailingAllocation&) = delete;
  FailingAllocation& operator=(const FailingAllocation&) = delete;

  bool HasHappened() const { return m_hasHappened; }

  // For the replaced operators: counts an allocation and tells whether it is to fail.
  bool Meets(std::size_t bytes);

 private:
  FailingAllocation(int count, std::size_t bytes);

  int m_countdown;      // -1: does not count
  std::size_t m_bytes;  // 0: of any size
  bool m_hasHappened = false;
};
