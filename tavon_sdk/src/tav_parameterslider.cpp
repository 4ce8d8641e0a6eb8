#include "tav_parameterslider.h"

#include "tav_valueencoding.h"

namespace tavon {
namespace {

void WritePosition(const tavString& text, unsigned char* target) {
  const float position = ReadFloat(text);
  // Written as comparisons because not-a-number must pass, and a tiny negative number that narrows to -0.0
  // too.
  StoreFloat(position > 1.0F ? 1.0F : position < 0.0F ? 0.0F : position, target);
}

}  // namespace

tavEError tavParameterSlider::GetBinaryDataFromString(const tavString& text, unsigned char* o_pBuffer) {
  return EncodeValue(text, o_pBuffer, "tav_parameterslider", 18, WritePosition);
}

}  // namespace tavon
