#pragma once

#include "tav_error.h"
#include "tav_string.h"

namespace tavon {

// A colour of four components.
class tavParameterColor {
 public:
  static constexpr const char* TypeName = "ParameterColor";

  // Writes the value of a text: 4 bytes, in the order of the text: pairs of hexadecimal digits after the
  // first "x" (else "X", else from the start). A pair that does not read as hexadecimal gives 0, a single
  // digit at the end is dropped, bytes that are not reached are left alone. An empty text writes nothing. A
  // null buffer is reported, code 6.
  static tavEError GetBinaryDataFromString(const tavString& text, unsigned char* o_pBuffer);
};

}  // namespace tavon
