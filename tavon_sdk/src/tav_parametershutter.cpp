#include "tav_parametershutter.h"

#include <algorithm>

#include "tav_valueencoding.h"

namespace tavon {
namespace {

void WriteCommand(const tavString& text, unsigned char* target) {
  *target = std::clamp<unsigned char>(LowByte(text), 1, 3);
}

}  // namespace

tavEError tavParameterShutter::GetBinaryDataFromString(const tavString& text, unsigned char* o_pBuffer) {
  return EncodeValue(text, o_pBuffer, "tav_parametershutter", 26, WriteCommand);
}

}  // namespace tavon
