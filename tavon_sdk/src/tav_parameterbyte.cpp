#include "tav_parameterbyte.h"

#include "tav_valueencoding.h"

namespace tavon {

tavEError tavParameterByte::GetBinaryDataFromString(const tavString& text, unsigned char* o_pBuffer) {
  return EncodeValue(text, o_pBuffer, Report, WriteByte, {17});
}

}  // namespace tavon
