#pragma once

#include "tav_textparameter.h"

namespace tavon {

// A line of text that is shown to the user. The text is the value.
class tavParameterInfo : public tavTextParameter<tavParameterInfo> {
 public:
  static constexpr tavEObject TypeId = tavObject_ParameterInfo;
  static constexpr const char* TypeName = "ParameterInfo";
  static constexpr tavReporter Report{"tav_parameterinfo"};

  // Sets the text through SetData. Null and empty texts change nothing.
  void SetValue(const wchar_t* text);
  void SetValue(const char* text);
  tavString GetValue() const { return CopyText(); }

  // Stores the text itself. An empty text does nothing.
  using tavTextParameter::SetDataFromString;
  // The same for a parameter known by its interface.
  static tavEError SetDataFromString(tavIParameter* pPrm, const tavString& text);

  // The ordering operators compare the lengths only, on purpose: rules use them to test how long a text is.
  // Equality compares the text with the operand up to its terminating zero, whatever its size.
  bool Comparison(const tavECodeOperator& op, const unsigned char* data,
                  const unsigned int& size) const override;

  // One byte, 1: there is a text. Events carry the text itself.
  static tavEError GetBinaryDataFromString(const tavString& text, unsigned char* o_pBuffer);
};

}  // namespace tavon
