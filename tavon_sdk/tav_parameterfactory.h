#pragma once

#include <vector>

#include "tav_error.h"
#include "tav_object.h"
#include "tav_string.h"

namespace tavon {

class tavIParameter;

// The one place that knows all parameter types: their ids, their names, how the text of a value becomes its
// bytes, and how an object is made. It has no state; any thread may call it.
class tavParameterFactory {
 public:
  // The type of a full name such as "ParameterSwitch", letter case ignored; tavObject_None when there is
  // none.
  static tavEObject TypeNameToId(const tavString& name);

  // The name of a type. An unknown one is reported (code 6) and gives an empty text.
  static tavString IdToTypeName(tavEObject id);

  // Converts the text of a value into the bytes that travel to the server; `io_data` gets the size of the
  // type's value: 1 byte, 4, 673 for the weekly schedule, the length of the text for information and camera
  // texts. Bytes that it held already stay where the text says nothing about them.
  //
  // Reported and returned: code 6 for an empty text or a null `io_data`, code 1 for an unknown type. A text
  // that is no valid value is no failure: it becomes what its type makes of it, and 0 is returned.
  static tavEError StringToData(tavEObject id, const tavString& strData, std::vector<unsigned char>* io_data);

  // A new parameter of a type, which the caller deletes. Reported, with null as the result: code 6 for an
  // unknown type, code 5 without memory.
  static tavIParameter* CreateByType(tavEObject id);
  static tavIParameter* CreateByTypeName(const tavString& name);
};

}  // namespace tavon
