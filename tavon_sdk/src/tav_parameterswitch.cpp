#include "tav_parameterswitch.h"

#include "tav_values.h"

namespace tavon {

const tavParameterType tavParameterSwitch::Type{.id = tavObject_ParameterSwitch,
                                                .name = TypeName,
                                                .source = "tav_parameterswitch",
                                                .size = 1,
                                                .encode = WriteOnOff,
                                                .toText = ByteText,
                                                .compare = CompareBytes,
                                                .syntax = tavOnOffSyntax,
                                                .lines = {.noBuffer = 17}};

tavParameterSwitch::tavParameterSwitch() : tavTypedParameter(Type) {}

void tavParameterSwitch::SetValue(unsigned char value) { SetBytes({OnOff(value)}); }

tavEError tavParameterSwitch::GetBinaryDataFromString(const tavString& text, unsigned char* o_pBuffer) {
  return tavEncodeText(Type, text, o_pBuffer);
}

tavEError tavParameterSwitch::SetDataFromString(tavIParameter* pPrm, const tavString& text) {
  return SetFromText(Type, pPrm, text);
}

}  // namespace tavon
