#pragma once

// Whether an emulator runs this program. A test of what emulators do not imitate begins so:
//
//   if (kIsEmulated) GTEST_SKIP() << "qemu knows sets of FD_SETSIZE descriptors only";
#ifdef URA_EMULATED
inline constexpr bool kIsEmulated = true;
#else
inline constexpr bool kIsEmulated = false;
#endif
