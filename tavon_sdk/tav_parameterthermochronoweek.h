#pragma once

#include "tav_error.h"
#include "tav_string.h"

namespace tavon {

// A weekly heating schedule: an active byte and a set-point for each of the 168 hours.
class tavParameterThermoChronoWeek {
 public:
  static constexpr const char* TypeName = "ParameterThermoChronoWeek";

  // Writes the value of a text: 673 bytes: the active byte, then the set-points, Monday 0 o'clock first,
  // little-endian single precision. A text without comma writes the active byte only. A comma list writes
  // all: the active byte, then the set-points; missing and empty ones are 0.0, more than 168 are ignored. An
  // empty text writes nothing. A null buffer is reported, code 6.
  static tavEError GetBinaryDataFromString(const tavString& text, unsigned char* o_pBuffer);
};

}  // namespace tavon
