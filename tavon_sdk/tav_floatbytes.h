#pragma once

#include <bit>
#include <cstdint>

// Real numbers as value bytes: single precision, little-endian on every machine.
namespace tavon {

// Size of a number in bytes.
constexpr unsigned int kFloatSize = 4;

// Writes the bytes of a number.
inline void StoreFloat(float value, unsigned char* o_bytes) {
  const auto bits = std::bit_cast<std::uint32_t>(value);
  for (unsigned int i = 0; i < kFloatSize; ++i) o_bytes[i] = static_cast<unsigned char>(bits >> (8 * i));
}

// Reads the bytes of a number.
inline float LoadFloat(const unsigned char* source) {
  std::uint32_t bits = 0;
  for (unsigned int i = kFloatSize; i-- > 0;) bits = bits << 8 | source[i];
  return std::bit_cast<float>(bits);
}

}  // namespace tavon
