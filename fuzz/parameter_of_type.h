#pragma once

#include <map>
#include <memory>

#include "tav_parameterfactory.h"
#include "tav_parametershutter.h"

// A type picked by a byte of the input: 'a' is the first, 'n' the last, 'o' none.
inline tavon::tavEObject TypeOf(unsigned char choice) {
  return static_cast<tavon::tavEObject>(tavon::tavObject_ParameterSwitch - 1 + choice % 16);
}

// The parameter of a type, null for none. There is one of each type for all inputs.
inline tavon::tavIParameter* ParameterOf(tavon::tavEObject type) {
  static std::map<tavon::tavEObject, std::unique_ptr<tavon::tavIParameter>> parameters;
  std::unique_ptr<tavon::tavIParameter>& parameter = parameters[type];
  if (parameter) return parameter.get();
  parameter.reset(tavon::tavParameterFactory::CreateByType(type));
  // Its thread would stop the shutter at a moment of its own.
  if (parameter && parameter->GetParameterShutterPtr() != nullptr) {
    parameter->GetParameterShutterPtr()->term_thread();
  }
  return parameter.get();
}
