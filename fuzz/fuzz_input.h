#pragma once

#include <cstdint>
#include <cstdlib>
#include <iostream>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>
#include <vector>

// What the fuzz targets share: taking an input apart, and stopping where a property does not hold.

// An input, read from its start. What is asked for beyond its end is zero or empty.
class FuzzInput {
 public:
  FuzzInput(const std::uint8_t* data, std::size_t size) : m_rest(reinterpret_cast<const char*>(data), size) {}

  bool IsEmpty() const { return m_rest.empty(); }

  unsigned char Byte() {
    const std::string byte(m_rest.substr(0, 1));
    m_rest.remove_prefix(byte.size());
    return byte.empty() ? 0 : static_cast<unsigned char>(byte[0]);
  }

  // The text up to the next character that is a separator, which is skipped.
  std::string Field(std::string_view separators = "\n") {
    const std::size_t end = m_rest.find_first_of(separators);
    std::string field(m_rest.substr(0, end));
    m_rest.remove_prefix(end == std::string_view::npos ? m_rest.size() : end + 1);
    return field;
  }

  std::string Rest() { return std::string(std::exchange(m_rest, {})); }

 private:
  std::string_view m_rest;
};

// Ends the process, which libFuzzer takes as a finding, unless the condition holds.
inline void Require(bool condition, std::string_view what) {
  if (condition) return;
  std::cerr << "WRONG: " << what << std::endl;
  std::abort();
}

template <class Value>
void RequireEqual(const Value& actual, const std::type_identity_t<Value>& expected, std::string_view what) {
  if (actual != expected) std::cerr << "\"" << actual << "\" instead of \"" << expected << "\"\n";
  Require(actual == expected, what);
}
