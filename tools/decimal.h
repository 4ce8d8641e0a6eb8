#pragma once

#include <charconv>
#include <string_view>

// Reads a whole text that is a decimal number: digits only, within the limits of its type. False, and the
// number may have changed, for any other text. Number is unsigned.
template <class Number>
bool ReadDecimal(std::string_view text, Number& o_number) {
  const char* const end = text.data() + text.size();
  const auto [next, error] = std::from_chars(text.data(), end, o_number);
  return error == std::errc() && next == end;
}
