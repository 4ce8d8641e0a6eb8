#include "tav_parameterslider.h"

#include "tav_values.h"

namespace tavon {
namespace {

// Written as comparisons, because not-a-number must pass, and so must -0.0, which tiny negative numbers
// become.
float Limit(float position) {
  if (position > 1.0F) return 1.0F;
  return position < 0.0F ? 0.0F : position;
}

void WritePosition(const tavString& text, unsigned char* o_value) {
  StoreFloat(Limit(ReadFloat(text)), o_value);
}

}  // namespace

const tavParameterType tavParameterSlider::Type{
    .id = tavObject_ParameterSlider,
    .name = TypeName,
    .source = "tav_parameterslider",
    .size = kFloatSize,
    .encode = WritePosition,
    .toText = FloatText,
    .compare = CompareFloats,
    .syntax = {.form = tavValueForm_Percent, .least = 0, .largest = 1},
    .lines = {.noBuffer = 18}};

tavParameterSlider::tavParameterSlider() : tavTypedParameter(Type) {}

void tavParameterSlider::SetValue(float value) { SetBytes(FloatBytes(Limit(value))); }

float tavParameterSlider::GetValue() const { return LoadFloat(CopyBytes().data()); }

tavEError tavParameterSlider::GetBinaryDataFromString(const tavString& text, unsigned char* o_pBuffer) {
  return tavEncodeText(Type, text, o_pBuffer);
}

tavEError tavParameterSlider::SetDataFromString(tavIParameter* pPrm, const tavString& text) {
  return SetFromText(Type, pPrm, text);
}

}  // namespace tavon
