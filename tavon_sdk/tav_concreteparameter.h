#pragma once

#include <algorithm>
#include <array>
#include <type_traits>

#include "tav_tparameter.h"

namespace tavon {

// The published lines of the records that every type writes; see tavReporter.
struct tavPublishedLines {
  // Each for the operation of that name.
  int setDataFromString;
  int setDataValue;
  int getDataValue;
  int comparison;
};

// What every concrete parameter type repeats, between the value of N bytes and the type itself: type id and
// name, the typed casts, setting the value from text, and the calls that no type supports.
//
// `Self` is the type that derives from it. It brings
//   TypeId, TypeName         what it is,
//   Report                   the reporter of its source file,
//   GetBinaryDataFromString  the text syntax of its value,
//   Lines                    tavPublishedLines, if the lines of its records are published.
template <class Self, unsigned int N>
class tavConcreteParameter : public tavTParameter<N> {
 public:
  // Size of the value in bytes, as it travels.
  static constexpr std::size_t ValueSize = N;

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
    Self::Report(tavError_OperationFailed, "MUST BE IMPLEMENTED", LineOf(&tavPublishedLines::setDataValue));
  }
  void GetDataValue(dro::droValue* /*o_value*/) const override {
    Self::Report(tavError_OperationFailed, "MUST BE IMPLEMENTED", LineOf(&tavPublishedLines::getDataValue));
  }

 protected:
  // For SetDataFromString: reports a parameter of another type.
  static tavEError ReportOtherType() {
    return Self::Report(tavError_InvalidArgument, std::string("pPrm != tavObject_") + Self::TypeName,
                        LineOf(&tavPublishedLines::setDataFromString), "SetDataFromString");
  }

  // For Comparison: reports what is no operator. Always false.
  static bool ReportUnknownOperator() {
    Self::Report(tavError_OperationFailed, "UnKnown tavECodeOperator operator type",
                 LineOf(&tavPublishedLines::comparison), "Comparison");
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
    const unsigned char* value = this->GetData();
    switch (op) {
      case tavCodeOperator_Equal:
        return std::equal(value, value + N, data);
      case tavCodeOperator_NotEqual:
        return !std::equal(value, value + N, data);
      case tavCodeOperator_Greater:
      case tavCodeOperator_GreaterOrEqual:
      case tavCodeOperator_Less:
      case tavCodeOperator_LessOrEqual:
        return false;
    }
    return ReportUnknownOperator();
  }

 private:
  // The published line of a record; that of the call where the type has none.
  static constexpr int LineOf(int tavPublishedLines::*record, int line = __builtin_LINE()) {
    if constexpr (requires { Self::Lines; }) {
      return Self::Lines.*record;
    } else {
      return line;
    }
  }

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
