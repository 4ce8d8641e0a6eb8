#pragma once

#include <algorithm>
#include <array>
#include <type_traits>

#include "tav_tparameter.h"

namespace tavon {

// Where a type's reports come from: its source name and the lines that stand in the records. The lines are
// fixed, so that a report can be looked up by them; most simple types share them.
struct tavParameterSource {
  const char* name;
  int setDataFromString = 36;
  int setDataValue = 82;
  int getDataValue = 86;
  int comparison = 97;
};

// What every concrete parameter type repeats, between the value of N bytes and the type itself: type id and
// name, the typed casts, setting the value from text, and the calls that no type supports.
//
// `Self` is the type that derives from it. It names itself with TypeId, TypeName and Source, and brings the
// text syntax of its value with GetBinaryDataFromString.
template <class Self, unsigned int N>
class tavConcreteParameter : public tavTParameter<N> {
 public:
  tavEObject GetType() const override { return Self::TypeId; }
  const char* GetTypeName() const override { return Self::TypeName; }

  tavParameterSwitch* GetParameterSwitchPtr() override { return As<tavParameterSwitch>(); }
  tavParameterSwitchRelease* GetParameterSwitchReleasePtr() override {
    return As<tavParameterSwitchRelease>();
  }
  tavParameterSlider* GetParameterSliderPtr() override { return As<tavParameterSlider>(); }
  tavParameterColor* GetParameterColorPtr() override { return As<tavParameterColor>(); }
  tavParameterInfo* GetParameterInfoPtr() override { return As<tavParameterInfo>(); }
  tavParameterShutter* GetParameterShutterPtr() override { return As<tavParameterShutter>(); }
  tavParameterThermo* GetParameterThermoPtr() override { return As<tavParameterThermo>(); }
  tavParameterThermoChronoWeek* GetParameterThermoChronoWeekPtr() override {
    return As<tavParameterThermoChronoWeek>();
  }
  tavParameterHDScene* GetParameterHDScenePtr() override { return As<tavParameterHDScene>(); }
  tavParameterVRScene* GetParameterVRScenePtr() override { return As<tavParameterVRScene>(); }
  tavParameterAlert* GetParameterAlertPtr() override { return As<tavParameterAlert>(); }
  tavParameterByte* GetParameterBytePtr() override { return As<tavParameterByte>(); }
  tavParameterTuner* GetParameterTunerPtr() override { return As<tavParameterTuner>(); }
  tavParameterCamera* GetParameterCameraPtr() override { return As<tavParameterCamera>(); }

  // Sets the value from a text in the type's syntax. A text that is no value writes what the syntax makes of
  // it.
  tavEError SetDataFromString(const tavString& text) override { return Self::SetDataFromString(this, text); }

  // The same for a parameter known by its interface; null does nothing, one of another type is reported,
  // code 6.
  static tavEError SetDataFromString(tavIParameter* pPrm, const tavString& text) {
    if (pPrm == nullptr) return tavError_NoError;
    if (!pPrm->IsObject(Self::TypeId)) return ReportOtherType();
    std::array<unsigned char, N> value{};
    Self::GetBinaryDataFromString(text, value.data());
    pPrm->SetData(value.data(), N, 1);
    return tavError_NoError;
  }

  void SetDataValue(const dro::droValue& /*value*/) override {
    Report(tavError_OperationFailed, "MUST BE IMPLEMENTED", "SetDataValue", Self::Source.setDataValue);
  }
  void GetDataValue(dro::droValue* /*o_value*/) const override {
    Report(tavError_OperationFailed, "MUST BE IMPLEMENTED", "GetDataValue", Self::Source.getDataValue);
  }

 protected:
  static tavEError Report(tavEError code, const tavString& message, const char* function, int line) {
    return tavReporter(Self::Source.name)(code, message, function, line);
  }

  static tavEError ReportOtherType() {
    return Report(tavError_InvalidArgument, std::string("pPrm != tavObject_") + Self::TypeName,
                  "SetDataFromString", Self::Source.setDataFromString);
  }

  // For Comparison: reports what is no operator. Always false.
  static bool ReportUnknownOperator() {
    Report(tavError_OperationFailed, "UnKnown tavECodeOperator operator type", "Comparison",
           Self::Source.comparison);
    return false;
  }

  // For Comparison: `left` against `right`. What is no operator is reported and false.
  template <class Value>
  static bool Compare(tavECodeOperator op, const Value& left, const Value& right) {
    switch (op) {
      case tavCodeOperator_Greater:
        return left > right;
      case tavCodeOperator_GreaterOrEqual:
        return left >= right;
      case tavCodeOperator_Less:
        return left < right;
      case tavCodeOperator_LessOrEqual:
        return left <= right;
      case tavCodeOperator_Equal:
        return left == right;
      case tavCodeOperator_NotEqual:
        return left != right;
    }
    return ReportUnknownOperator();
  }

  // For Comparison of values without an order: equal or not to N bytes; the other operators are false.
  bool CompareUnordered(tavECodeOperator op, const unsigned char* data) const {
    const tavSMutex lock(&this->m_lock);
    switch (op) {
      case tavCodeOperator_Equal:
        return std::equal(this->m_value.begin(), this->m_value.end(), data);
      case tavCodeOperator_NotEqual:
        return !std::equal(this->m_value.begin(), this->m_value.end(), data);
      case tavCodeOperator_Greater:
      case tavCodeOperator_GreaterOrEqual:
      case tavCodeOperator_Less:
      case tavCodeOperator_LessOrEqual:
        return false;
    }
    return ReportUnknownOperator();
  }

 private:
  template <class Parameter>
  Parameter* As() {
    if constexpr (std::is_same_v<Parameter, Self>) {
      return static_cast<Self*>(this);
    } else {
      return nullptr;
    }
  }
};

}  // namespace tavon
