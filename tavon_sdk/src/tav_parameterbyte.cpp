#include "tav_parameterbyte.h"

#include "tav_values.h"

namespace tavon {

const tavParameterType tavParameterByte::Type{
    .id = tavObject_ParameterByte,
    .name = TypeName,
    .source = "tav_parameterbyte",
    .size = 1,
    .encode = WriteByte,
    .toText = ByteText,
    .compare = CompareBytes,
    .syntax = {.form = tavValueForm_Integer, .least = 0, .largest = 255},
    .lines = {.noBuffer = 17}};

tavParameterByte::tavParameterByte() : tavTypedParameter(Type) {}

void tavParameterByte::SetValue(unsigned char value) { SetBytes({value}); }

tavEError tavParameterByte::GetBinaryDataFromString(const tavString& text, unsigned char* o_pBuffer) {
  return tavEncodeText(Type, text, o_pBuffer);
}

tavEError tavParameterByte::SetDataFromString(tavIParameter* pPrm, const tavString& text) {
  return SetFromText(Type, pPrm, text);
}

}  // namespace tavon
