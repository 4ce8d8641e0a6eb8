#include "tav_parameterswitchrelease.h"

#include "tav_valueencoding.h"

namespace tavon {

tavEError tavParameterSwitchRelease::GetBinaryDataFromString(const tavString& text,
                                                             unsigned char* o_pBuffer) {
  return EncodeValue(text, o_pBuffer, "tav_parameterswitchrelease", 23, WriteOnOff);
}

}  // namespace tavon
