#pragma once

#include "tav_error.h"
#include "tav_string.h"

namespace tavon {

// A line of text shown to the user. Its value is the text itself.
class tavParameterInfo {
 public:
  static constexpr const char* TypeName = "ParameterInfo";

  // Writes the value of a text: 1 byte: 1, there is a text.
  // An empty text writes nothing. A null buffer is reported, code 6.
  static tavEError GetBinaryDataFromString(const tavString& text, unsigned char* o_pBuffer);
};

}  // namespace tavon
