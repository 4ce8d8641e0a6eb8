#pragma once

#include "tav_error.h"
#include "tav_string.h"

namespace tavon {

// A tuner's value.
class tavParameterTuner {
 public:
  static constexpr const char* TypeName = "ParameterTuner";

  // Writes the value of a text: 4 bytes, little-endian single precision, any value.
  // An empty text writes nothing. A null buffer is reported, code 6.
  static tavEError GetBinaryDataFromString(const tavString& text, unsigned char* o_pBuffer);
};

}  // namespace tavon
