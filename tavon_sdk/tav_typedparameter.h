#pragma once

#include <array>

#include "tav_parametertype.h"
#include "tav_tparameter.h"

namespace tavon {

// What all parameter types have in common, between the value of N bytes and the class of a type: the base is
// told which type it is, and asks that record. The class adds its typed functions, its cast if it has one,
// and its hooks. A type of your own is such a class and a record; examples/new_parameter is one.
template <unsigned int N>
class tavTypedParameter : public tavTParameter<N>, public tavTyped {
 public:
  tavEObject GetType() const override { return GetTypeRecord().id; }
  const char* GetTypeName() const override { return GetTypeRecord().name; }

  // The class of a type overrides the one that is named after it.
  tavParameterSwitch* GetParameterSwitchPtr() override { return nullptr; }
  tavParameterSwitchRelease* GetParameterSwitchReleasePtr() override { return nullptr; }
  tavParameterSlider* GetParameterSliderPtr() override { return nullptr; }
  tavParameterColor* GetParameterColorPtr() override { return nullptr; }
  tavParameterInfo* GetParameterInfoPtr() override { return nullptr; }
  tavParameterShutter* GetParameterShutterPtr() override { return nullptr; }
  tavParameterThermo* GetParameterThermoPtr() override { return nullptr; }
  tavParameterThermoChronoWeek* GetParameterThermoChronoWeekPtr() override { return nullptr; }
  tavParameterHDScene* GetParameterHDScenePtr() override { return nullptr; }
  tavParameterVRScene* GetParameterVRScenePtr() override { return nullptr; }
  tavParameterAlert* GetParameterAlertPtr() override { return nullptr; }
  tavParameterByte* GetParameterBytePtr() override { return nullptr; }
  tavParameterTuner* GetParameterTunerPtr() override { return nullptr; }
  tavParameterCamera* GetParameterCameraPtr() override { return nullptr; }

  // Invalid text is not an error: the value becomes what the type makes of it.
  tavEError SetDataFromString(const tavString& text) override {
    return SetFromText(GetTypeRecord(), this, text);
  }

  void SetDataValue(const dro::droValue& /*value*/) override { tavReportSetDataValue(GetTypeRecord()); }
  void GetDataValue(dro::droValue* /*o_value*/) const override { tavReportGetDataValue(GetTypeRecord()); }

  // The value is read through GetData. An operand of fewer than N bytes gives false.
  bool Comparison(const tavECodeOperator& op, const unsigned char* data,
                  const unsigned int& size) const override {
    if (data == nullptr || size < N) return false;
    const tavSMutex lock(&this->m_lock);
    return tavIsOperator(GetTypeRecord(), op) && GetTypeRecord().compare(op, this->GetData(), data);
  }

  tavString ValueToString() const override {
    const tavSMutex lock(&this->m_lock);
    return GetTypeRecord().toText(this->Value().data());
  }

 protected:
  // `type` is kept by reference.
  explicit tavTypedParameter(const tavParameterType& type) : tavTyped(type) {}

  // For the typed functions: set the value through the virtual SetData, and copy it under the lock.
  void SetBytes(const std::array<unsigned char, N>& value) { this->SetData(value.data(), N, 1); }
  std::array<unsigned char, N> CopyBytes() const {
    const tavSMutex lock(&this->m_lock);
    return this->Value();
  }

  // What the static SetDataFromString of a type does: sets a parameter that is known by its interface. Null
  // does nothing; a parameter of another type is reported (code 6) and left alone.
  static tavEError SetFromText(const tavParameterType& type, tavIParameter* pPrm, const tavString& text) {
    if (pPrm == nullptr) return tavError_NoError;
    if (!pPrm->IsObject(type.id)) return tavReportOtherType(type);
    std::array<unsigned char, N> value{};
    tavEncodeText(type, text, value.data());
    pPrm->SetData(value.data(), N, 1);
    return tavError_NoError;
  }
};

}  // namespace tavon
