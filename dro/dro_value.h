#pragma once

#include <cstdint>
#include <utility>
#include <variant>

#include "dro_string.h"

namespace dro {

// A value of one of several kinds, or none, for data whose kind is known only at run time. It owns what it
// holds. Use it from one thread at a time.
class droValue {
 public:
  droValue() = default;  // holds nothing
  // Holds a value of that kind.
  droValue(std::int32_t number) : m_value(number) {}
  droValue(double number) : m_value(number) {}
  droValue(droString text) : m_value(std::move(text)) {}

  // True when it holds nothing.
  bool IsEmpty() const { return std::holds_alternative<std::monostate>(m_value); }

  // The value held, or null when it is of another kind; nothing is converted. The pointer is valid until the
  // value changes.
  const std::int32_t* GetInt() const { return std::get_if<std::int32_t>(&m_value); }
  const double* GetDouble() const { return std::get_if<double>(&m_value); }
  const droString* GetString() const { return std::get_if<droString>(&m_value); }

 private:
  std::variant<std::monostate, std::int32_t, double, droString> m_value;
};

}  // namespace dro
