#pragma once

// Whether an emulator runs this program. A test of what emulators do not imitate begins so:
//
//   if (kIsEmulated) GTEST_SKIP() << "qemu knows sets of FD_SETSIZE descriptors only";
inline constexpr bool kIsEmulated = URA_EMULATED != 0;
