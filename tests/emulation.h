#pragma once

#include <gtest/gtest.h>

// For tests of what an emulator does not imitate. Where one runs this program, the test counts as skipped,
// with the reason, and the answer is true:
//
//   if (SkipUnderEmulator("qemu 7.2 knows no time-out options of 64 bits")) return;
[[nodiscard]] inline bool SkipUnderEmulator([[maybe_unused]] const char* reason) {
#ifdef URA_EMULATED
  [&] { GTEST_SKIP() << "Under an emulator: " << reason; }();
  return true;
#else
  return false;
#endif
}
