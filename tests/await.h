#pragma once

#include <gtest/gtest.h>

#include <chrono>
#include <thread>

// Waits until something is true that another thread makes true:
//
//   Await([&] { return !thread.Running(); });
//
// Asks every millisecond. A failure of the test, at the line of the call, if it is not true within a minute.
inline void Await(const auto& condition, const char* file = __builtin_FILE(), int line = __builtin_LINE()) {
  const auto end = std::chrono::steady_clock::now() + std::chrono::minutes(1);
  while (!condition()) {
    if (std::chrono::steady_clock::now() > end) {
      ADD_FAILURE_AT(file, line) << "awaited for a minute";
      return;
    }
    std::this_thread::sleep_for(std::chrono::milliseconds(1));
  }
}
