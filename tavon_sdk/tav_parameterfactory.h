#pragma once

#include <span>
#include <vector>

#include "tav_error.h"
#include "tav_parametertype.h"

namespace tavon {

// Knows the SDK's parameter types: their ids, their names, how the text of a value becomes bytes, and how to
// make an object. It does not know types of your own. It has no state; any thread may call it.
class tavParameterFactory {
 public:
  // The records of all types, in the order of their ids.
  static std::span<const tavParameterType* const> GetTypes();

  // The record of a type; null for an unknown id.
  static const tavParameterType* FindType(tavEObject id);

  // The id of a type with a name such as "ParameterSwitch", ignoring letter case; tavObject_None if there is
  // no such type.
  static tavEObject TypeNameToId(const tavString& name);

  // The name of a type. An unknown id is reported (code 6) and gives an empty text.
  static tavString IdToTypeName(tavEObject id);

  // Converts the text of a value into the bytes of an event. `io_data` gets the size of the type's value: 1,
  // 4 or, for the weekly schedule, 673 bytes, and for information and cameras the length of the text. Its
  // former bytes stay where the text does not mention them.
  //
  // Reports and returns code 6 for an empty text or a null `io_data`, code 1 for an unknown type. Invalid
  // text is not an error: it becomes what its type makes of it, and the result is 0.
  static tavEError StringToData(tavEObject id, const tavString& strData, std::vector<unsigned char>* io_data);

  // Makes a parameter, which the caller deletes. Null after a report: code 6 for an unknown type, code 5
  // without memory. To override a hook, construct your own
  // class instead.
  static tavIParameter* CreateByType(tavEObject id);
  static tavIParameter* CreateByTypeName(const tavString& name);
};

}  // namespace tavon
