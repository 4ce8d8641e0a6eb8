#pragma once

#include "tav_byteparameter.h"

namespace tavon {

// How grave an alert is. The model only stores it and writes it as a number.
enum tavESeverity : std::int32_t {
  tavSeverity_Information = 0,
  tavSeverity_Warning = 1,
  tavSeverity_Alarm = 2,
};

// An alarm input: 0 or 1. It is active at 1, or at 0 when it is inverted.
class tavParameterAlert : public tavOnOffParameter<tavParameterAlert> {
 public:
  static constexpr tavEObject TypeId = tavObject_ParameterAlert;
  static constexpr const char* TypeName = "ParameterAlert";
  static constexpr tavReporter Report{"tav_parameteralert"};

  // Changing the sense also sets the value to what is inactive in the new one: 1 when inverted, else 0.
  // Intended.
  void IsInverted(bool inverted);
  bool IsInverted() const;

  // How grave the alert is.
  void SetSeverity(tavESeverity severity);
  tavESeverity GetSeverity() const;

  // UTF-8; a null text is empty.
  void SetMessage(const wchar_t* message);
  void SetMessage(const char* message);
  tavString GetMessage() const;

  // As everywhere, and then OnAlert when the alert is active, also when the value did not change.
  void SetData(const unsigned char* data, const unsigned int& size, unsigned char flag) override;

  // With the elements "invert", "severity" and "message"; the message is not escaped.
  tavString SerializeParametersAsXml() const override;

  // Hook: called with the lock held.
  virtual void OnAlert() {}

  // Writes one byte: 1 when the low 8 bits of the number in the text are not all zero, else 0 ("257" is on,
  // "256" off). An empty text writes nothing, a null buffer is reported, code 6.
  static tavEError GetBinaryDataFromString(const tavString& text, unsigned char* o_pBuffer);

 private:
  bool m_inverted = false;
  tavESeverity m_severity = tavSeverity_Information;
  tavString m_message;
};

}  // namespace tavon
