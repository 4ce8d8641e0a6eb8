#include "tav_parameterslider.h"

#include "tav_valueencoding.h"

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

void tavParameterSlider::SetValue(float value) { SetFloat(Limit(value)); }

tavEError tavParameterSlider::GetBinaryDataFromString(const tavString& text, unsigned char* o_pBuffer) {
  return EncodeValue(text, o_pBuffer, Report, WritePosition, {18});
}

}  // namespace tavon
