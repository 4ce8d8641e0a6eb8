#pragma once

#include "tav_concreteparameter.h"

namespace tavon {

// A colour of four components, in stored order.
class tavParameterColor : public tavConcreteParameter<tavParameterColor, 4> {
 public:
  static constexpr tavEObject TypeId = tavObject_ParameterColor;
  static constexpr const char* TypeName = "ParameterColor";
  static constexpr tavReporter Report{"tav_parametercolor"};

  // The components as one number, the first in its highest byte, or one by one.
  void SetValue(const unsigned int& v);
  void SetValue(unsigned char c0, unsigned char c1, unsigned char c2, unsigned char c3);

  // `o_val` must not be null: that is reported (code 6) and then written through all the same.
  void GetValue(unsigned int* o_val) const;
  // Null pointers are passed over.
  void GetValue(unsigned char* o_c0, unsigned char* o_c1, unsigned char* o_c2, unsigned char* o_c3) const;

  // As everywhere, and then OnRGBValue when the object is dirty.
  void SetData(const unsigned char* data, const unsigned int& size, unsigned char flag) override;

  // Colours are equal or not; the other operators give false, and so does an operand of fewer than four
  // bytes.
  bool Comparison(const tavECodeOperator& op, const unsigned char* data,
                  const unsigned int& size) const override;

  // "0x11223344".
  tavString ValueToString() const override;

  // Hook: called with the lock held after a change that is not taken over yet; `on` is 1 when any of the
  // first three components is not 0.
  virtual void OnRGBValue(unsigned char on) { static_cast<void>(on); }

  // Writes four bytes in the order of the text: pairs of hexadecimal digits after the first "x" (else "X",
  // else from the start). A pair that does not read as hexadecimal gives 0, a single digit at the end is
  // dropped, bytes that are not reached are left alone. An empty text writes nothing, a null buffer is
  // reported, code 6.
  static tavEError GetBinaryDataFromString(const tavString& text, unsigned char* o_pBuffer);
};

}  // namespace tavon
