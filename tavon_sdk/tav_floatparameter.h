#pragma once

#include <cstring>

#include "tav_concreteparameter.h"
#include "tav_floatbytes.h"

namespace tavon {

// What the types with a value of one single-precision number have in common.
template <class Self>
class tavFloatParameter : public tavConcreteParameter<Self, kFloatSize> {
 public:
  // The number.
  float GetValue() const {
    const tavSMutex lock(&this->m_lock);
    return LoadFloat(this->m_value.data());
  }

  // The number with at most two decimals.
  tavString ValueToString() const override { return tavString::FromFloat(GetValue(), 2); }

  // Compares the value, read through GetData, with a number of four bytes. A shorter operand gives false.
  // Order is that of the numbers. Equality is that of the bytes, on purpose: rules can tell 0.0 from -0.0,
  // and not-a-number equals itself.
  bool Comparison(const tavECodeOperator& op, const unsigned char* data,
                  const unsigned int& size) const override {
    if (data == nullptr || size < kFloatSize) return false;
    const tavSMutex lock(&this->m_lock);
    const unsigned char* value = this->GetData();
    if (op == tavCodeOperator_Equal || op == tavCodeOperator_NotEqual) {
      return this->Compare(op, std::memcmp(value, data, kFloatSize), 0);
    }
    return this->Compare(op, LoadFloat(value), LoadFloat(data));
  }

 protected:
  // Sets the value through the virtual SetData. A type with limits applies them before.
  void SetFloat(float value) {
    unsigned char bytes[kFloatSize];
    StoreFloat(value, bytes);
    this->SetData(bytes, kFloatSize, 1);
  }
};

}  // namespace tavon
