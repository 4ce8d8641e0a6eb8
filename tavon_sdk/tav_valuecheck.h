#pragma once

#include <optional>

#include "tav_parametertype.h"

namespace tavon {

// Strict reading of values, for programs that talk to people: what the encoders would quietly take for
// something else is refused. No function keeps state; any thread may call them.

// The text that the type's encoder takes for what somebody wrote, "1" for "on". Nothing if the type's syntax
// does not allow it, and always for an empty text.
std::optional<tavString> tavCheckValue(const tavParameterType& type, const tavString& text);

// What the type's syntax allows, in words that continue "... takes": "on, off, true, false, 1 or 0".
tavString tavPossibleValues(const tavParameterType& type);

}  // namespace tavon
