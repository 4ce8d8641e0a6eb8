#include "tav_parameterthermochronoweek.h"

#include <algorithm>

#include "tav_valueencoding.h"

namespace tavon {
namespace {

constexpr std::size_t kSetPoints = 7 * 24;
constexpr std::size_t kValueSize = 1 + kSetPoints * kFloatSize;

void WriteSchedule(const tavString& text, unsigned char* target) {
  const bool isList = text.find(',') != tavString::npos;
  if (isList) std::fill_n(target, kValueSize, static_cast<unsigned char>(0));

  std::size_t index = 0;  // of the piece: 0 is the active byte, then come the set-points
  vlib::ForEachPiece(text, ",", [&](std::string_view piece, bool) {
    if (index == 0) {
      *target = LowByte(std::string(piece));
    } else if (index <= kSetPoints) {
      StoreFloat(ReadFloat(std::string(piece)), target + 1 + (index - 1) * kFloatSize);
    }
    ++index;
  });
}

}  // namespace

tavEError tavParameterThermoChronoWeek::GetBinaryDataFromString(const tavString& text,
                                                                unsigned char* o_pBuffer) {
  return EncodeValue(text, o_pBuffer, "tav_parameterthermochronoweek", 25, WriteSchedule);
}

}  // namespace tavon
