#pragma once

#include "tav_object.h"
#include "tav_parameter.h"
#include "tav_string.h"
#include "tav_valuesyntax.h"

namespace tavon {

// Published line numbers of the records that every type has, see tavReporter. 0: none is published, and the
// record names the line of the type's own record instead.
struct tavPublishedLines {
  int noBuffer = 0;           // GetBinaryDataFromString without a buffer
  int setDataFromString = 0;  // on a parameter of another type
  int setDataValue = 0;       // which no type supports
  int getDataValue = 0;       // the same
  int comparison = 0;         // with an unknown operator
};

// What a parameter type is: one constant record a type, which the registry lists and the type's class is told
// at construction. tav_values.h has functions for the usual kinds of values.
//
// A record is constant-initialized and lives as long as the program, so that parameters of any lifetime can
// refer to it. All functions may be called by any thread.
struct tavParameterType {
  // Identify the type. The numbers and names travel between programs and never change.
  tavEObject id;
  const char* name;

  // The source file that the type's records name, without folder and extension.
  const char* source;

  // Bytes of the value as an event carries it; 0 for a value that is the text itself.
  unsigned int size;

  // Writes the bytes for a text, which is not empty; bytes that the text does not mention stay. For a value
  // that is the text itself it writes one byte, which says that there is a text.
  void (*encode)(const tavString& text, unsigned char* o_value);

  // The value as text, in the syntax of `encode`, and its comparison with an operand of the same size by one
  // of the six operators. Null if the class overrides ValueToString and Comparison.
  tavString (*toText)(const unsigned char* value) = nullptr;
  bool (*compare)(tavECodeOperator op, const unsigned char* value, const unsigned char* operand) = nullptr;

  // Which texts a strict program accepts for `encode`.
  tavValueSyntax syntax = {};

  // True for a value that makes something happen rather than says how something is: a house that restarts
  // does not set it again.
  bool isCommand = false;

  // Of the type's records.
  tavPublishedLines lines = {};

  // Where this record is in its source. Filled in automatically.
  int line = __builtin_LINE();

  // True for types whose value is the text itself.
  constexpr bool IsText() const { return size == 0; }
};

// The part of a parameter that knows the record of its type, whatever the size of its value:
//
//   const auto* typed = dynamic_cast<const tavTyped*>(&parameter);
//   if (typed != nullptr && typed->GetTypeRecord().IsText()) ...
class tavTyped {
 public:
  // The record given at construction.
  const tavParameterType& GetTypeRecord() const { return m_type; }

 protected:
  // `type` is kept by reference.
  explicit tavTyped(const tavParameterType& type) : m_type(type) {}
  ~tavTyped() = default;

 private:
  const tavParameterType& m_type;
};

// --- For the classes of the types. What they report names the type's source. ---

// What GetBinaryDataFromString does: encodes a text into `type.size` bytes, one byte for a type whose value
// is a text. An empty text writes nothing. A null buffer is reported, and its code (6) returned; otherwise
// the result is 0, whatever the text says.
tavEError tavEncodeText(const tavParameterType& type, const tavString& text, unsigned char* o_pBuffer);

// Reports a parameter of another type (code 6) for SetDataFromString.
tavEError tavReportOtherType(const tavParameterType& type);

// True for the six operators. Reports any other number (code 1) for Comparison.
bool tavIsOperator(const tavParameterType& type, tavECodeOperator op);

// Report (code 1) what no type supports.
void tavReportSetDataValue(const tavParameterType& type);
void tavReportGetDataValue(const tavParameterType& type);

}  // namespace tavon
