#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

// Plain readings that several fuzz targets compare the product with. They are slow, follow the rules step
// by step, and call nothing of the product.
namespace reference {

std::string LowerCase(std::string text);

// The number at the start of a text, which ends at its first zero byte.
struct Number {
  bool isNegative = false;
  std::uint64_t magnitude = 0;  // stops at the largest one
};
Number ReadNumber(const std::string& text, int base);

// The same as numbers of the sizes that the system has; beyond their limits they stop there.
std::uint32_t Unsigned32(const std::string& text, int base);  // a leading minus wraps
std::int32_t Signed32(const std::string& text, int base);
std::int64_t Signed64(const std::string& text, int base);

// A real number with at most `decimals` decimals, without what says nothing.
std::string RealText(double value, int decimals);

// The pieces between separators, empty ones included.
std::vector<std::string> Pieces(const std::string& text, const std::string& separator);

// The types of parameters have the ids from kFirstType to kLastType.
constexpr int kFirstType = 1000;
constexpr int kLastType = 1013;
constexpr int kColor = 1003;
constexpr int kInfo = 1004;
constexpr int kSchedule = 1007;
constexpr int kCamera = 1013;
const char* TypeName(int type);

// The bytes that the text of a value, which is not empty, becomes; `bytes` is what the buffer held before.
std::string ValueBytes(int type, const std::string& text, std::string bytes = {});

// The text that a value of a type is shown as. `bytes` has at least the size of the value.
std::string ValueText(int type, std::string_view bytes);

// The size of a value of a type in bytes; 0 for a text.
std::size_t ValueSize(int type);

}  // namespace reference
