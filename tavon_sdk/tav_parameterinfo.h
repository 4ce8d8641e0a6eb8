#pragma once

#include "tav_textvalue.h"
#include "tav_typedparameter.h"

namespace tavon {

// A line of text that is shown to the user. The text is the value; the byte of the base is not used.
class tavParameterInfo : public tavTypedParameter<1> {
 public:
  static constexpr const char* TypeName = "ParameterInfo";
  static const tavParameterType Type;

  tavParameterInfo();
  tavParameterInfo* GetParameterInfoPtr() override { return this; }

  // Sets the text through SetData. Null and empty texts change nothing.
  void SetValue(const wchar_t* text);
  void SetValue(const char* text);
  tavString GetValue() const { return m_text.Get(); }
  tavString ValueToString() const override { return m_text.Get(); }

  // The text with a terminating zero. If another thread may set it, use GetValue; see tavTextValue.
  const unsigned char* GetData() const override { return m_text.GetData(); }
  unsigned int GetDataSize() const override { return m_text.GetDataSize(); }
  void GetDataCopy(unsigned char* io_buffer) const override;

  // Replaces the text by exactly `size` bytes and ignores the flag. Null or empty data does nothing.
  void SetData(const unsigned char* data, const unsigned int& size, unsigned char flag) override;

  // The ordering operators compare the lengths only, which is kept for compatibility. Equality compares the
  // text with the operand up to its terminating zero, whatever its size.
  bool Comparison(const tavECodeOperator& op, const unsigned char* data,
                  const unsigned int& size) const override;

  // One byte, 1: there is a text. Events carry the text itself.
  static tavEError GetBinaryDataFromString(const tavString& text, unsigned char* o_pBuffer);
  // Stores the text itself, in a parameter known by its interface too. An empty text and null do nothing;
  // another type is reported (code 6).
  tavEError SetDataFromString(const tavString& text) override;
  static tavEError SetDataFromString(tavIParameter* pPrm, const tavString& text);

 private:
  tavTextValue m_text{*this, m_lock};
};

}  // namespace tavon
