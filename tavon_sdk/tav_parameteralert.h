#pragma once

#include <cstdint>

#include "tav_typedparameter.h"

namespace tavon {

// How serious an alert is. The model only stores it and writes it as a number.
enum tavESeverity : std::int32_t {
  tavSeverity_Information = 0,
  tavSeverity_Warning = 1,
  tavSeverity_Alarm = 2,
};

// An alarm input: 0 or 1. It is active at 1, or at 0 if it is inverted.
class tavParameterAlert : public tavTypedParameter<1> {
 public:
  static constexpr const char* TypeName = "ParameterAlert";
  static const tavParameterType Type;

  tavParameterAlert();
  tavParameterAlert* GetParameterAlertPtr() override { return this; }

  // 0 stays; any other value is stored as 1.
  void SetValue(unsigned char value);
  unsigned char GetValue() const { return CopyBytes()[0]; }

  // Also sets the value to the inactive one of the new sense, 1 if inverted and otherwise 0, so that changing
  // the sense does not raise an alarm.
  void IsInverted(bool inverted);
  bool IsInverted() const;

  // How serious the alert is.
  void SetSeverity(tavESeverity severity);
  tavESeverity GetSeverity() const;

  // Stored as UTF-8. A null text counts as empty.
  void SetMessage(const wchar_t* message);
  void SetMessage(const char* message);
  tavString GetMessage() const;

  // Also calls OnAlert if the alert is active afterwards, even if the value did not change.
  void SetData(const unsigned char* data, const unsigned int& size, unsigned char flag) override;

  // Adds the elements "invert", "severity" and "message". The message is not escaped.
  tavString SerializeParametersAsXml() const override;

  // Hook: the alert is active. Called with the lock held.
  virtual void OnAlert() {}

  // 0 if the low 8 bits of the number in the text are all zero, otherwise 1: "256" is off, "257" is on.
  static tavEError GetBinaryDataFromString(const tavString& text, unsigned char* o_pBuffer);
  // Sets a parameter known by its interface. Null does nothing; another type is reported (code 6).
  static tavEError SetDataFromString(tavIParameter* pPrm, const tavString& text);
  using tavTypedParameter::SetDataFromString;

 private:
  bool m_inverted = false;
  tavESeverity m_severity = tavSeverity_Information;
  tavString m_message;
};

}  // namespace tavon
