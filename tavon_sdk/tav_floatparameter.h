#pragma once

#include <cstring>

#include "tav_concreteparameter.h"

namespace tavon {

// What the types with a value of one single-precision number share.
template <class Self>
class tavFloatParameter : public tavConcreteParameter<Self, 4> {
 public:
  void SetValue(float value) {
    unsigned char bytes[sizeof(value)];
    std::memcpy(bytes, &value, sizeof(value));
    this->SetData(bytes, sizeof(bytes), 1);
  }

  float GetValue() const {
    const tavSMutex lock(&this->m_lock);
    return ReadFrom(this->m_value.data());
  }

  // The number with at most two decimals.
  tavString ValueToString() const override { return tavString::FromFloat(GetValue(), 2); }

  // Compares with a number of four bytes; a shorter operand gives false. Order is that of numbers, equality
  // that of bytes, so 0.0 and -0.0 are not equal: intended.
  bool Comparison(const tavECodeOperator& op, const unsigned char* data,
                  const unsigned int& size) const override {
    if (data == nullptr || size < sizeof(float)) return false;
    const tavSMutex lock(&this->m_lock);
    if (op == tavCodeOperator_Equal || op == tavCodeOperator_NotEqual) {
      const int difference = std::memcmp(this->m_value.data(), data, sizeof(float));
      return this->Compare(op, difference, 0);
    }
    return this->Compare(op, ReadFrom(this->m_value.data()), ReadFrom(data));
  }

 private:
  static float ReadFrom(const unsigned char* bytes) {
    float value;
    std::memcpy(&value, bytes, sizeof(value));
    return value;
  }
};

}  // namespace tavon
