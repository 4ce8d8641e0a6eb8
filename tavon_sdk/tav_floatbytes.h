#pragma once

#include <array>
#include <bit>
#include <cstdint>

namespace tavon {

// Size in bytes of a real number in a value: single precision, little-endian on every machine.
constexpr unsigned int kFloatSize = 4;

// Writes the bytes of a number.
inline void StoreFloat(float value, unsigned char* o_bytes) {
  const auto bits = std::bit_cast<std::uint32_t>(value);
  for (unsigned int i = 0; i < kFloatSize; ++i) o_bytes[i] = static_cast<unsigned char>(bits >> (8 * i));
}

// The bytes of a number.
inline std::array<unsigned char, kFloatSize> FloatBytes(float value) {
  std::array<unsigned char, kFloatSize> bytes;
  StoreFloat(value, bytes.data());
  return bytes;
}

// Reads the bytes of a number.
inline float LoadFloat(const unsigned char* source) {
  std::uint32_t bits = 0;
  for (unsigned int i = kFloatSize; i-- > 0;) bits = bits << 8 | source[i];
  return std::bit_cast<float>(bits);
}

}  // namespace tavon
