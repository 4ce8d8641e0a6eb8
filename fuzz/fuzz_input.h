#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <iostream>
#include <sstream>
#include <string>
#include <string_view>
#include <type_traits>

// What the fuzz targets share: taking an input apart, and stopping where the product and the plain reading
// differ.

// An input from its start on. What is asked for beyond its end is zero or empty.
class FuzzInput {
 public:
  FuzzInput(const std::uint8_t* data, std::size_t size) : m_rest(reinterpret_cast<const char*>(data), size) {}

  bool IsEmpty() const { return m_rest.empty(); }

  unsigned char Byte() {
    if (m_rest.empty()) return 0;
    const auto byte = static_cast<unsigned char>(m_rest.front());
    m_rest.remove_prefix(1);
    return byte;
  }

  // The text up to the next separator, which is passed over.
  std::string Field(char separator = '\n') {
    const std::size_t end = m_rest.find(separator);
    std::string field(m_rest.substr(0, end));
    m_rest.remove_prefix(end == std::string_view::npos ? m_rest.size() : end + 1);
    return field;
  }

  std::string Rest() {
    std::string rest(m_rest);
    m_rest = {};
    return rest;
  }

 private:
  std::string_view m_rest;
};

inline void Require(bool condition, std::string_view what) {
  if (condition) return;
  std::cerr << "WRONG: " << what << std::endl;
  std::abort();
}

// Bytes as they can be read on a terminal.
inline std::string Shown(std::string_view bytes) {
  std::string text = "\"";
  for (const char c : bytes) {
    if (c >= ' ' && c <= '~') {
      text += c;
    } else {
      constexpr const char* digits = "0123456789ABCDEF";
      const auto byte = static_cast<unsigned char>(c);
      text += std::string("\\x") + digits[byte / 16] + digits[byte % 16];
    }
  }
  return text + '"';
}

// Both values are compared as what the first one is. The subject says of what.
template <class Value>
void RequireEqual(const Value& actual, const std::type_identity_t<Value>& expected, const char* what,
                  std::string_view subject = {}) {
  if (actual == expected) return;
  std::ostringstream text;
  text << what;
  if (!subject.empty()) text << " " << Shown(subject);
  text << ": ";
  if constexpr (std::is_convertible_v<Value, std::string_view>) {
    text << Shown(actual) << " instead of " << Shown(expected);
  } else {
    text << +actual << " instead of " << +expected;
  }
  Require(false, text.str());
}
