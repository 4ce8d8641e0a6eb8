#pragma once

#include "tav_error.h"
#include "tav_floatbytes.h"
#include "tav_string.h"
#include "vnumber.h"
#include "vplace.h"

// How texts of values become bytes: the rules that several parameter types share. Internal to the SDK.
namespace tavon {

// The low 8 bits of the number in a text: "256" gives 0, "-1" gives 255.
inline unsigned char LowByte(const tavString& text) {
  return static_cast<unsigned char>(tavString::AsInt(text, 10));
}

// The number in a text, in single precision.
inline float ReadFloat(const tavString& text) { return vlib::NarrowToFloat(tavString::AsDouble(text)); }

// On or off. Only the low 8 bits of the number count, on purpose: "257" is on, "256" is off.
inline void WriteOnOff(const tavString& text, unsigned char* o_value) {
  *o_value = LowByte(text) != 0 ? 1 : 0;
}

inline void WriteByte(const tavString& text, unsigned char* o_value) { *o_value = LowByte(text); }

inline void WriteFloat(const tavString& text, unsigned char* o_value) {
  StoreFloat(ReadFloat(text), o_value);
}

// One byte that only says that there is a text. The value of these types is the text itself.
inline void WritePresence(const tavString& /*text*/, unsigned char* o_value) { *o_value = 1; }

// How every GetBinaryDataFromString begins: an empty text writes nothing, and a null buffer is reported (code
// 6), with the type's line if that is published. Otherwise calls write(text, o_pBuffer). Returns 0 or the
// reported code.
template <class Writer>
tavEError EncodeValue(const tavString& text, unsigned char* o_pBuffer, const tavReporter& report,
                      Writer write, vlib::Place place = {}) {
  if (text.empty()) return tavError_NoError;
  if (o_pBuffer == nullptr) return report(tavError_InvalidArgument, "o_pBuffer == 0", place);
  write(text, o_pBuffer);
  return tavError_NoError;
}

}  // namespace tavon
