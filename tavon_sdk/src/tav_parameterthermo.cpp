#include "tav_parameterthermo.h"

#include "tav_values.h"

namespace tavon {

const tavParameterType tavParameterThermo::Type{.id = tavObject_ParameterThermo,
                                                .name = TypeName,
                                                .source = "tav_parameterthermo",
                                                .size = kFloatSize,
                                                .encode = WriteFloat,
                                                .toText = FloatText,
                                                .compare = CompareFloats,
                                                .syntax = {.form = tavValueForm_Real},
                                                .lines = {.noBuffer = 17}};

tavParameterThermo::tavParameterThermo() : tavTypedParameter(Type) {}

void tavParameterThermo::SetValue(float value) { SetBytes(FloatBytes(value)); }

float tavParameterThermo::GetValue() const { return LoadFloat(CopyBytes().data()); }

tavEError tavParameterThermo::GetBinaryDataFromString(const tavString& text, unsigned char* o_pBuffer) {
  return tavEncodeText(Type, text, o_pBuffer);
}

tavEError tavParameterThermo::SetDataFromString(tavIParameter* pPrm, const tavString& text) {
  return SetFromText(Type, pPrm, text);
}

}  // namespace tavon
