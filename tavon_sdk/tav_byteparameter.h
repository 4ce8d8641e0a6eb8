#pragma once

#include "tav_concreteparameter.h"

namespace tavon {

// What the types with a value of one unsigned byte have in common.
template <class Self>
class tavByteParameter : public tavConcreteParameter<Self, 1> {
 public:
  // The byte.
  unsigned char GetValue() const {
    const tavSMutex lock(&this->m_lock);
    return this->m_value[0];
  }

  // The byte as a decimal number.
  tavString ValueToString() const override { return tavString::FromInt(GetValue()); }

  // Compares the value, read through GetData, with the first byte of the operand.
  bool Comparison(const tavECodeOperator& op, const unsigned char* data,
                  const unsigned int& size) const override {
    if (data == nullptr || size == 0) return false;
    const tavSMutex lock(&this->m_lock);
    return this->Compare(op, this->GetData()[0], data[0]);
  }

 protected:
  // Sets the value through the virtual SetData.
  void SetByte(unsigned char value) { this->SetData(&value, 1, 1); }
};

// What the types that are on or off have in common.
template <class Self>
class tavOnOffParameter : public tavByteParameter<Self> {
 public:
  // 0 is off; any other value is on and stored as 1.
  void SetValue(unsigned char value) { this->SetByte(value != 0 ? 1 : 0); }
};

}  // namespace tavon
