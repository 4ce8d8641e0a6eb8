#include "tav_values.h"

#include <cstring>

#include "vnumber.h"

namespace tavon {

unsigned char LowByte(const tavString& text) {
  return static_cast<unsigned char>(tavString::AsInt(text, 10));
}

float ReadFloat(const tavString& text) { return vlib::NarrowToFloat(tavString::AsDouble(text)); }

void WriteOnOff(const tavString& text, unsigned char* o_value) { *o_value = OnOff(LowByte(text)); }

void WriteByte(const tavString& text, unsigned char* o_value) { *o_value = LowByte(text); }

tavString ByteText(const unsigned char* value) { return tavString::FromInt(*value); }

bool CompareBytes(tavECodeOperator op, const unsigned char* value, const unsigned char* operand) {
  return Compare(op, *value, *operand);
}

void WriteFloat(const tavString& text, unsigned char* o_value) { StoreFloat(ReadFloat(text), o_value); }

tavString FloatText(const unsigned char* value) { return tavString::FromFloat(LoadFloat(value), 2); }

bool CompareFloats(tavECodeOperator op, const unsigned char* value, const unsigned char* operand) {
  if (op == tavCodeOperator_Equal || op == tavCodeOperator_NotEqual) {
    return Compare(op, std::memcmp(value, operand, kFloatSize), 0);
  }
  return Compare(op, LoadFloat(value), LoadFloat(operand));
}

void WritePresence(const tavString& /*text*/, unsigned char* o_value) { *o_value = 1; }

}  // namespace tavon
