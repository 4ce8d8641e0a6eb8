#include "tav_parametervrscene.h"

#include "tav_valueencoding.h"

namespace tavon {

tavEError tavParameterVRScene::GetBinaryDataFromString(const tavString& text, unsigned char* o_pBuffer) {
  return EncodeValue(text, o_pBuffer, "tav_parametervrscene", 28, WriteByte);
}

}  // namespace tavon
