#include "tav_parameterinfo.h"

#include "tav_valueencoding.h"

namespace tavon {

tavEError tavParameterInfo::GetBinaryDataFromString(const tavString& text, unsigned char* o_pBuffer) {
  return EncodeValue(text, o_pBuffer, "tav_parameterinfo", 15, WritePresence);
}

}  // namespace tavon
