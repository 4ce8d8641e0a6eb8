#include "tav_parametertuner.h"

#include "tav_values.h"

namespace tavon {

const tavParameterType tavParameterTuner::Type{.id = tavObject_ParameterTuner,
                                               .name = TypeName,
                                               .source = "tav_parametertuner",
                                               .size = kFloatSize,
                                               .encode = WriteFloat,
                                               .toText = FloatText,
                                               .compare = CompareFloats,
                                               .syntax = {.form = tavValueForm_Real},
                                               .lines = {.noBuffer = 17}};

tavParameterTuner::tavParameterTuner() : tavTypedParameter(Type) {}

void tavParameterTuner::SetValue(float value) { SetBytes(FloatBytes(value)); }

float tavParameterTuner::GetValue() const { return LoadFloat(CopyBytes().data()); }

tavEError tavParameterTuner::GetBinaryDataFromString(const tavString& text, unsigned char* o_pBuffer) {
  return tavEncodeText(Type, text, o_pBuffer);
}

tavEError tavParameterTuner::SetDataFromString(tavIParameter* pPrm, const tavString& text) {
  return SetFromText(Type, pPrm, text);
}

}  // namespace tavon
