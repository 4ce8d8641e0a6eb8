#pragma once

#include "dro_value.h"
#include "tav_error.h"
#include "tav_object.h"
#include "tav_smutex.h"
#include "tav_string.h"

namespace tavon {

class tavParameterSwitch;
class tavParameterSwitchRelease;
class tavParameterSlider;
class tavParameterColor;
class tavParameterInfo;
class tavParameterShutter;
class tavParameterThermo;
class tavParameterThermoChronoWeek;
class tavParameterHDScene;
class tavParameterVRScene;
class tavParameterAlert;
class tavParameterByte;
class tavParameterTuner;
class tavParameterCamera;

// How a parameter's current value, on the left, is compared with an operand, on the right. Other numbers are
// no operators: comparing with one is reported (code 1) and gives false.
enum tavECodeOperator : std::int32_t {
  tavCodeOperator_Greater = 1,
  tavCodeOperator_GreaterOrEqual = 2,
  tavCodeOperator_Less = 3,
  tavCodeOperator_LessOrEqual = 4,
  tavCodeOperator_Equal = 5,
  tavCodeOperator_NotEqual = 6,
};

// The face of a value: bytes that can be set, copied and read as text. See tavIParameter.
class tavIParameterBase {
 public:
  virtual ~tavIParameterBase() = default;
  // See tavIParameter.
  virtual tavEError SetDataFromString(const tavString& text) = 0;
  virtual void SetData(const unsigned char* data, const unsigned int& size, unsigned char flag) = 0;
  virtual unsigned int GetDataSize() const = 0;
  virtual tavString ValueToString() const = 0;
  virtual void GetDataCopy(unsigned char* io_buffer) const = 0;
  virtual bool IsChangedByCallBack() const = 0;
  virtual const unsigned char* GetData() const = 0;
};

// A parameter of the model: an object with a value, which may drive one other parameter.
//
// Any thread may call any operation but GetData: each takes the object's own recursive lock. When one
// parameter sets another the order of locks is driver, then target, so links must not form a ring.
class tavIParameter : public tavObject, public tavIParameterBase {
 public:
  // A parameter names its own type.
  tavEObject GetType() const override = 0;
  const char* GetTypeName() const override = 0;

  // The XML of the object followed by the value as text in a "value" element.
  tavString SerializeParametersAsXml() const override;
  void OnDirty() override { tavObject::OnDirty(); }

  // The object as its own class; null when it is another.
  virtual tavParameterSwitch* GetParameterSwitchPtr() = 0;
  virtual tavParameterSwitchRelease* GetParameterSwitchReleasePtr() = 0;
  virtual tavParameterSlider* GetParameterSliderPtr() = 0;
  virtual tavParameterColor* GetParameterColorPtr() = 0;
  virtual tavParameterInfo* GetParameterInfoPtr() = 0;
  virtual tavParameterShutter* GetParameterShutterPtr() = 0;
  virtual tavParameterThermo* GetParameterThermoPtr() = 0;
  virtual tavParameterThermoChronoWeek* GetParameterThermoChronoWeekPtr() = 0;
  virtual tavParameterHDScene* GetParameterHDScenePtr() = 0;
  virtual tavParameterVRScene* GetParameterVRScenePtr() = 0;
  virtual tavParameterAlert* GetParameterAlertPtr() = 0;
  virtual tavParameterByte* GetParameterBytePtr() = 0;
  virtual tavParameterTuner* GetParameterTunerPtr() = 0;
  virtual tavParameterCamera* GetParameterCameraPtr() = 0;

  // Sets the value from a text, in the syntax of the type. Returns 0 or a reported code.
  tavEError SetDataFromString(const tavString& text) override = 0;

  // Sets the value from bytes. A value that changes is marked dirty before the new one is stored; equal bytes
  // change nothing. Fewer bytes than the value has replace its beginning; the rest becomes 0 when `flag` is
  // not 0 and stays when it is.
  void SetData(const unsigned char* data, const unsigned int& size, unsigned char flag) override = 0;

  // Not supported by any type: reported with code 1.
  virtual void SetDataValue(const dro::droValue& value) = 0;

  // Names of styles for user interfaces, without duplicates. The SDK only keeps them. Null pointers do
  // nothing.
  virtual void AddUIStyle(const tavString& style) = 0;
  virtual void SetUIStyle(const tavArray<tavString>& styles) = 0;
  virtual void GetUIStyle(tavArray<tavString>* o_styles) const = 0;

  // Free text of the parameter's user. The SDK only keeps it. A null pointer does nothing.
  virtual void SetSettings(const tavString& settings) = 0;
  virtual void GetSettings(tavString* o_settings) const = 0;

  // Not supported by any type: reported with code 1.
  virtual void GetDataValue(dro::droValue* o_value) const = 0;

  // Size of the value in bytes.
  unsigned int GetDataSize() const override = 0;

  // Copies the value, GetDataSize() bytes. A null buffer is reported with code 6.
  void GetDataCopy(unsigned char* io_buffer) const override = 0;

  // True when the current value stands in the relation to the operand. A null or empty operand gives false.
  virtual bool Comparison(const tavECodeOperator& op, const unsigned char* data,
                          const unsigned int& size) const = 0;

  // The value as text, in the syntax of SetDataFromString.
  tavString ValueToString() const override = 0;

  // The parameter that this one drives; null for none. It is not owned and must outlive the link.
  virtual void SetDrivenTarget(tavIParameter* target) = 0;
  virtual tavIParameter* GetDrivenTarget() = 0;

  // Adds a rule of the link: when this parameter is made clean and its value compares true with `dataDriver`,
  // the target is set to `dataDriven`. The rules are tried in the order of addition, and the first that holds
  // is the last that is tried. Both operands are copied. Returns 0 or a reported code: 6 for a null or empty
  // operand, 5 without memory.
  virtual unsigned int AddDrivenMapItem(tavECodeOperator op, const unsigned char* dataDriver,
                                        const unsigned int& sizeDriver, const unsigned char* dataDriven,
                                        const unsigned int& sizeDriven) = 0;

  // True when the last change came from the parameter itself, not from outside.
  bool IsChangedByCallBack() const override { return false; }

  // Hook: called without the lock after a rule has set the target.
  virtual void OnLinkedParameterChange() = 0;

  // The bytes of the value, without the lock: for reading while nobody sets it.
  const unsigned char* GetData() const override = 0;
};

}  // namespace tavon
