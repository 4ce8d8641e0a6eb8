#pragma once

#include <optional>

#include "tav_parametertype.h"

namespace tavon {

// Strict reading of values, for programs that talk to people: text that an encoder would silently misread is
// refused. There is no state; any thread may call.

// What somebody wrote as the text for the type's encoder: "1" for "on". Nothing if the text is empty, or if
// the type's syntax does not allow it.
std::optional<tavString> tavCheckValue(const tavParameterType& type, const tavString& text);

// What the type's syntax allows, in words that continue "... takes": "on, off, true, false, 1 or 0".
tavString tavPossibleValues(const tavParameterType& type);

}  // namespace tavon
