#include "tav_parameterhdscene.h"

#include "tav_valueencoding.h"

namespace tavon {

tavEError tavParameterHDScene::GetBinaryDataFromString(const tavString& text, unsigned char* o_pBuffer) {
  return EncodeValue(text, o_pBuffer, Report, WriteOnOff, {17});
}

}  // namespace tavon
