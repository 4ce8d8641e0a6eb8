#include "tav_parametercamera.h"

#include "tav_valueencoding.h"

namespace tavon {

tavEError tavParameterCamera::GetBinaryDataFromString(const tavString& text, unsigned char* o_pBuffer) {
  return EncodeValue(text, o_pBuffer, "tav_parametercamera", 16, WritePresence);
}

}  // namespace tavon
