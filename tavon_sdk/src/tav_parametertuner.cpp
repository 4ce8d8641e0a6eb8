#include "tav_parametertuner.h"

#include "tav_valueencoding.h"

namespace tavon {

tavEError tavParameterTuner::GetBinaryDataFromString(const tavString& text, unsigned char* o_pBuffer) {
  return EncodeValue(text, o_pBuffer, Report, WriteFloat, {17});
}

}  // namespace tavon
