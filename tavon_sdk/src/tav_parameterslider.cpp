#include "tav_parameterslider.h"

#include "tav_valueencoding.h"

namespace tavon {
namespace {

// Written as comparisons: not-a-number must pass, and so must a tiny negative number that was narrowed to
// -0.0.
float Limit(float position) {
  if (position > 1.0F) return 1.0F;
  return position < 0.0F ? 0.0F : position;
}

void WritePosition(const tavString& text, unsigned char* target) {
  StoreFloat(Limit(ReadFloat(text)), target);
}

}  // namespace

void tavParameterSlider::SetValue(float value) { SetFloat(Limit(value)); }

tavEError tavParameterSlider::GetBinaryDataFromString(const tavString& text, unsigned char* o_pBuffer) {
  return EncodeValue(text, o_pBuffer, Report, 18, WritePosition);
}

}  // namespace tavon
