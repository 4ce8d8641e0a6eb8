#pragma once

#include "tav_textparameter.h"

namespace tavon {

// A line of text shown to the user; the text is the value.
class tavParameterInfo : public tavTextParameter<tavParameterInfo> {
 public:
  static constexpr tavEObject TypeId = tavObject_ParameterInfo;
  static constexpr const char* TypeName = "ParameterInfo";
  static constexpr tavReporter Report{"tav_parameterinfo"};

  // Sets the text through SetData; null and empty texts change nothing.
  void SetValue(const wchar_t* text);
  void SetValue(const char* text);
  tavString GetValue() const { return CopyText(); }

  // Sets the text itself; an empty one does nothing. See tavConcreteParameter.
  using tavTextParameter::SetDataFromString;
  // The same for a parameter known by its interface.
  static tavEError SetDataFromString(tavIParameter* pPrm, const tavString& text);

  // Order is that of the lengths, with `size` as the operand's; its bytes are not read: intended. Equality is
  // with the operand up to its terminating zero, whatever its size.
  bool Comparison(const tavECodeOperator& op, const unsigned char* data,
                  const unsigned int& size) const override;

  // Writes one byte, 1: there is a text. An empty text writes nothing, a null buffer is reported, code 6.
  static tavEError GetBinaryDataFromString(const tavString& text, unsigned char* o_pBuffer);
};

}  // namespace tavon
