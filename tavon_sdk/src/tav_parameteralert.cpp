#include "tav_parameteralert.h"

#include "tav_valueencoding.h"

namespace tavon {

tavEError tavParameterAlert::GetBinaryDataFromString(const tavString& text, unsigned char* o_pBuffer) {
  return EncodeValue(text, o_pBuffer, "tav_parameteralert", 19, WriteOnOff);
}

}  // namespace tavon
