#pragma once

#include <cstdint>
#include <string>

// Numbers from and to text, with the same results on every machine.
//
// The system's `long` has 32 bits; these functions give its results on a 64-bit build, too. Reading is
// lenient: leading blanks and a sign are allowed, what follows the number is ignored, and non-numeric text
// reads as 0. Real numbers are written and read as in the "C" locale, with a point, whatever locale the
// process or the thread has set: stored texts must not change their meaning with it. Any thread may call
// anything.
namespace vlib {

// Reads as strtoul does with a 32-bit `unsigned long`: a magnitude beyond 32 bits gives 4294967295, a leading
// minus wraps ("-1" gives 4294967295).
std::uint32_t ReadUnsigned32(const char* text, int base);

// Reads as strtol does with a 32-bit `long`: stops at -2147483648 and 2147483647.
std::int32_t ReadSigned32(const char* text, int base);

// Reads as strtod does.
double ReadReal(const char* text);

// Narrows to single precision, even where the processor computes in wider registers, so that the number that
// is compared is exactly the one that is stored.
float NarrowToFloat(double value);

// Prints a real number with at most `precision` decimals. A number without fraction that fits 32 bits is
// written as an integer; from any other, trailing "0" characters and then a trailing "." are removed. With a
// precision of 0 this also removes the zeros of the whole number (100.4 gives "1"), which is kept for
// compatibility.
std::string PrintReal(double value, int precision);

}  // namespace vlib
