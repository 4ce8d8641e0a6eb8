#include "tav_parametertype.h"

#include "tav_error.h"

namespace tavon {
namespace {

tavEError Report(const tavParameterType& type, tavEError code, const tavString& message, int publishedLine,
                 const char* function) {
  const int line = publishedLine != 0 ? publishedLine : type.line;
  return tavReporter(type.source)(code, message, {line, function});
}

}  // namespace

tavEError tavEncodeText(const tavParameterType& type, const tavString& text, unsigned char* o_pBuffer) {
  if (text.empty()) return tavError_NoError;
  if (o_pBuffer == nullptr) {
    return Report(type, tavError_InvalidArgument, "o_pBuffer == 0", type.lines.noBuffer,
                  "GetBinaryDataFromString");
  }
  type.encode(text, o_pBuffer);
  return tavError_NoError;
}

tavEError tavReportOtherType(const tavParameterType& type) {
  return Report(type, tavError_InvalidArgument, std::string("pPrm != tavObject_") + type.name,
                type.lines.setDataFromString, "SetDataFromString");
}

bool tavIsOperator(const tavParameterType& type, tavECodeOperator op) {
  if (op >= tavCodeOperator_Greater && op <= tavCodeOperator_NotEqual) return true;
  Report(type, tavError_OperationFailed, "UnKnown tavECodeOperator operator type", type.lines.comparison,
         "Comparison");
  return false;
}

void tavReportSetDataValue(const tavParameterType& type) {
  Report(type, tavError_OperationFailed, "MUST BE IMPLEMENTED", type.lines.setDataValue, "SetDataValue");
}

void tavReportGetDataValue(const tavParameterType& type) {
  Report(type, tavError_OperationFailed, "MUST BE IMPLEMENTED", type.lines.getDataValue, "GetDataValue");
}

}  // namespace tavon
