#pragma once

#include <algorithm>

#include "tav_floatbytes.h"
#include "tav_parameter.h"
#include "tav_string.h"

// What the records of parameter types are made of: how the usual kinds of values are written, read as text
// and compared. See tavParameterType for what the functions are for. There is no state; any thread may call.
namespace tavon {

// The low 8 bits of the number in a text: "256" gives 0, "-1" gives 255.
unsigned char LowByte(const tavString& text);

// The number in a text, in single precision.
float ReadFloat(const tavString& text);

// 0 stays; any other value becomes 1.
constexpr unsigned char OnOff(unsigned char value) { return value != 0 ? 1 : 0; }

// On or off: 1 or 0. Only the low 8 bits of the number count, which is kept for compatibility: "257" is on,
// "256" is off.
void WriteOnOff(const tavString& text, unsigned char* o_value);

// One byte: a number from 0 to 255.
void WriteByte(const tavString& text, unsigned char* o_value);
tavString ByteText(const unsigned char* value);
bool CompareBytes(tavECodeOperator op, const unsigned char* value, const unsigned char* operand);

// One number in single precision. Its text has at most two decimals. Order is that of the numbers, but
// equality is that of the bytes: 0.0 does not equal -0.0, and not-a-number equals itself.
void WriteFloat(const tavString& text, unsigned char* o_value);
tavString FloatText(const unsigned char* value);
bool CompareFloats(tavECodeOperator op, const unsigned char* value, const unsigned char* operand);

// For types whose value is the text itself: one byte, 1, which says that there is a text.
void WritePresence(const tavString& text, unsigned char* o_value);

// Compares by one of the six operators; false for any other number.
template <class Value>
constexpr bool Compare(tavECodeOperator op, const Value& left, const Value& right) {
  switch (op) {
    case tavCodeOperator_Greater:
      return left > right;
    case tavCodeOperator_GreaterOrEqual:
      return left >= right;
    case tavCodeOperator_Less:
      return left < right;
    case tavCodeOperator_LessOrEqual:
      return left <= right;
    case tavCodeOperator_Equal:
      return left == right;
    case tavCodeOperator_NotEqual:
      return left != right;
  }
  return false;
}

// Values of N bytes without an order: the ordering operators give false.
template <unsigned int N>
bool CompareUnordered(tavECodeOperator op, const unsigned char* value, const unsigned char* operand) {
  const bool isEqual = std::equal(value, value + N, operand);
  if (op == tavCodeOperator_Equal) return isEqual;
  return op == tavCodeOperator_NotEqual && !isEqual;
}

}  // namespace tavon
