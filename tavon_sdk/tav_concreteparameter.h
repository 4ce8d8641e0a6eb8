#pragma once

#include <algorithm>
#include <array>
#include <type_traits>

#include "tav_tparameter.h"

namespace tavon {

// Published line numbers of the records that every type has; see tavReporter.
struct tavPublishedLines {
  // The line of the operation's record.
  int setDataFromString;
  int setDataValue;
  int getDataValue;
  int comparison;
};

// What all parameter types have in common, between the value of N bytes and the type itself: type id and
// name, the typed casts, setting the value from text, and the calls that no type supports.
//
// `Self` is the derived type. It provides, as static members:
//
//   TypeId, TypeName  its id and its name.
//   Report            the tavReporter of its source file.
//   Lines             tavPublishedLines, only if the line numbers of its records are published.
//   GetBinaryDataFromString(text, o_pBuffer)
//                     the text syntax of the value: writes ValueSize bytes, and returns 0 whatever the text
//                     says. An empty text writes nothing. A null buffer is reported, and its code (6)
//                     returned.
template <class Self, unsigned int N>
class tavConcreteParameter : public tavTParameter<N> {
 public:
  // Size in bytes of the value in an event.
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

  // Sets the value from a text. Invalid text is not an error: the value becomes what the syntax makes of it.
  tavEError SetDataFromString(const tavString& text) override { return Self::SetDataFromString(this, text); }

  // The same for a parameter that is known by its interface. Null does nothing; a parameter of another type
  // is reported (code 6) and left alone.
  static tavEError SetDataFromString(tavIParameter* pPrm, const tavString& text) {
    if (pPrm == nullptr) return tavError_NoError;
    if (!pPrm->IsObject(Self::TypeId)) return ReportOtherType();
    std::array<unsigned char, N> value{};
    Self::GetBinaryDataFromString(text, value.data());
    pPrm->SetData(value.data(), N, 1);
    return tavError_NoError;
  }

  void SetDataValue(const dro::droValue& /*value*/) override {
    Self::Report(tavError_OperationFailed, "MUST BE IMPLEMENTED", {LineOf(&tavPublishedLines::setDataValue)});
  }
  void GetDataValue(dro::droValue* /*o_value*/) const override {
    Self::Report(tavError_OperationFailed, "MUST BE IMPLEMENTED", {LineOf(&tavPublishedLines::getDataValue)});
  }

 protected:
  // For SetDataFromString: reports a parameter of another type.
  static tavEError ReportOtherType() {
    return Self::Report(tavError_InvalidArgument, std::string("pPrm != tavObject_") + Self::TypeName,
                        {LineOf(&tavPublishedLines::setDataFromString), "SetDataFromString"});
  }

  // For Comparison: reports an unknown operator. Always false.
  static bool ReportUnknownOperator() {
    Self::Report(tavError_OperationFailed, "UnKnown tavECodeOperator operator type",
                 {LineOf(&tavPublishedLines::comparison), "Comparison"});
    return false;
  }

  // For Comparison: compares `left` with `right`. An unknown operator is reported and gives false.
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

  // For Comparison of values without an order: tells whether the value equals N bytes. The ordering operators
  // give false.
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
  // The published line of a record, or the line of the call if the type has none.
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
