#pragma once

#include "tav_byteparameter.h"

namespace tavon {

// A scene that a device keeps: off (0) or on (1).
class tavParameterHDScene : public tavOnOffParameter<tavParameterHDScene> {
 public:
  static constexpr tavEObject TypeId = tavObject_ParameterHDScene;
  static constexpr const char* TypeName = "ParameterHDScene";
  static constexpr tavReporter Report{"tav_parameterhdscene"};

  // Writes one byte: 1 when the low 8 bits of the number in the text are not all zero, else 0 ("257" is on,
  // "256" off). An empty text writes nothing, a null buffer is reported, code 6.
  static tavEError GetBinaryDataFromString(const tavString& text, unsigned char* o_pBuffer);
};

}  // namespace tavon
