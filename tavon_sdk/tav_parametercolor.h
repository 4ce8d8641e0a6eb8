#pragma once

#include "tav_typedparameter.h"

namespace tavon {

// A colour of four components. Its text has the form "0x11223344". Colours have no order: the ordering
// operators give false.
class tavParameterColor : public tavTypedParameter<4> {
 public:
  static constexpr const char* TypeName = "ParameterColor";
  static const tavParameterType Type;

  tavParameterColor();
  tavParameterColor* GetParameterColorPtr() override { return this; }

  // Sets the components, from one number with the first component in its highest byte, or one by one.
  void SetValue(const unsigned int& v);
  void SetValue(unsigned char c0, unsigned char c1, unsigned char c2, unsigned char c3);

  // `o_val` must not be null: a null pointer is reported (code 6) and then written to anyway.
  void GetValue(unsigned int* o_val) const;
  // Null pointers are skipped.
  void GetValue(unsigned char* o_c0, unsigned char* o_c1, unsigned char* o_c2, unsigned char* o_c3) const;

  // Also calls OnRGBValue if the object is dirty afterwards.
  void SetData(const unsigned char* data, const unsigned int& size, unsigned char flag) override;

  // Hook: the colour was set and the object is dirty. `on` is 1 if any of the first three components is not
  // 0, otherwise 0. Called with the lock held.
  virtual void OnRGBValue(unsigned char on) { static_cast<void>(on); }

  // Up to four pairs of hexadecimal digits, which follow the first "x"; without one they follow the first "X"
  // or begin the text. A pair that is not hexadecimal gives 0, a single digit at the end is dropped, and
  // bytes beyond the end of the text are unchanged.
  static tavEError GetBinaryDataFromString(const tavString& text, unsigned char* o_pBuffer);
  // Sets a parameter known by its interface. Null does nothing; another type is reported (code 6).
  static tavEError SetDataFromString(tavIParameter* pPrm, const tavString& text);
  using tavTypedParameter::SetDataFromString;
};

}  // namespace tavon
