#include "tav_parameterhdscene.h"

#include "tav_values.h"

namespace tavon {

const tavParameterType tavParameterHDScene::Type{.id = tavObject_ParameterHDScene,
                                                 .name = TypeName,
                                                 .source = "tav_parameterhdscene",
                                                 .size = 1,
                                                 .encode = WriteOnOff,
                                                 .toText = ByteText,
                                                 .compare = CompareBytes,
                                                 .syntax = tavOnOffSyntax,
                                                 .isCommand = true,
                                                 .lines = {.noBuffer = 17}};

tavParameterHDScene::tavParameterHDScene() : tavTypedParameter(Type) {}

void tavParameterHDScene::SetValue(unsigned char value) { SetBytes({OnOff(value)}); }

tavEError tavParameterHDScene::GetBinaryDataFromString(const tavString& text, unsigned char* o_pBuffer) {
  return tavEncodeText(Type, text, o_pBuffer);
}

tavEError tavParameterHDScene::SetDataFromString(tavIParameter* pPrm, const tavString& text) {
  return SetFromText(Type, pPrm, text);
}

}  // namespace tavon
