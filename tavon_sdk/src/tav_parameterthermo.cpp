#include "tav_parameterthermo.h"

#include "tav_valueencoding.h"

namespace tavon {

tavEError tavParameterThermo::GetBinaryDataFromString(const tavString& text, unsigned char* o_pBuffer) {
  return EncodeValue(text, o_pBuffer, Report, WriteFloat, {17});
}

}  // namespace tavon
