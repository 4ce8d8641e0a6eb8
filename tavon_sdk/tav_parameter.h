#pragma once

#include <cstdint>

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

// How a parameter's current value, on the left, is compared with an operand, on the right. Comparing with any
// other number is reported (code 1) and gives false.
enum tavECodeOperator : std::int32_t {
  tavCodeOperator_Greater = 1,
  tavCodeOperator_GreaterOrEqual = 2,
  tavCodeOperator_Less = 3,
  tavCodeOperator_LessOrEqual = 4,
  tavCodeOperator_Equal = 5,
  tavCodeOperator_NotEqual = 6,
};

// Interface of a value: bytes that can be set, copied and read as text. See tavIParameter.
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
// Any thread may call any operation except GetData: each takes the object's recursive lock. When one
// parameter sets another, the order of locks is driver, then target. Links between parameters, and scenes
// that set scenes, must therefore not form a ring that several threads use.
//
// Hooks are virtual functions for programs to override. A parameter with a hook is constructed as the derived
// class; the factory only makes the SDK's own types.
class tavIParameter : public tavObject, public tavIParameterBase {
 public:
  // A parameter names its own type.
  tavEObject GetType() const override = 0;
  const char* GetTypeName() const override = 0;

  // The XML of the object followed by the value as text in a "value" element.
  tavString SerializeParametersAsXml() const override;
  void OnDirty() override { tavObject::OnDirty(); }

  // The object as its own class; null if it is of another type.
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

  // Sets the value from a text in the syntax of the type. Returns 0 or a reported code.
  tavEError SetDataFromString(const tavString& text) override = 0;

  // Sets the value from bytes, as they come in an event. The parameter becomes dirty if they differ from the
  // stored ones. Bytes beyond the size of the value are dropped. The limits of SetValue are not applied.
  //
  // If there are fewer bytes than the value has, they replace its beginning, and `flag` decides about the
  // rest: 0 keeps it, any other flag clears it. But if they equal that beginning already, nothing changes,
  // and the rest is not cleared whatever the flag. Use flag 0 for an event: the single byte that switches a
  // weekly schedule off would otherwise clear its 168 set-points.
  //
  // Null or empty data leaves the parameter locked by the calling thread, which is kept for compatibility:
  // check the size of data from outside. Only types whose value is a text ignore such data.
  void SetData(const unsigned char* data, const unsigned int& size, unsigned char flag) override = 0;

  // Not supported by any type; reported with code 1.
  virtual void SetDataValue(const dro::droValue& value) = 0;

  // Names of user-interface styles, which the SDK only stores. AddUIStyle ignores a name that is already in
  // the list. GetUIStyle does nothing with a null pointer.
  virtual void AddUIStyle(const tavString& style) = 0;
  virtual void SetUIStyle(const tavArray<tavString>& styles) = 0;
  virtual void GetUIStyle(tavArray<tavString>* o_styles) const = 0;

  // Free text, which the SDK only stores. GetSettings does nothing with a null pointer.
  virtual void SetSettings(const tavString& settings) = 0;
  virtual void GetSettings(tavString* o_settings) const = 0;

  // Not supported by any type; reported with code 1.
  virtual void GetDataValue(dro::droValue* o_value) const = 0;

  // Size of the value in bytes.
  unsigned int GetDataSize() const override = 0;

  // Copies the value, GetDataSize() bytes. A null buffer is reported with code 6. Copy an information or a
  // camera with ValueToString instead: another thread may make its text longer between the two calls.
  void GetDataCopy(unsigned char* io_buffer) const override = 0;

  // True if the current value compares with the operand as the operator says. A null or empty operand gives
  // false.
  virtual bool Comparison(const tavECodeOperator& op, const unsigned char* data,
                          const unsigned int& size) const = 0;

  // The value as text, in the syntax of SetDataFromString.
  tavString ValueToString() const override = 0;

  // The parameter that this one drives; null for none. It is not owned, and must outlive the link.
  virtual void SetDrivenTarget(tavIParameter* target) = 0;
  virtual tavIParameter* GetDrivenTarget() = 0;

  // Adds a rule to the link: if the value compares true with `dataDriver`, the target is set to `dataDriven`.
  // Both operands are copied. Returns 0 or a reported code: 6 for a null or empty operand, 5 without memory.
  //
  // Rules are tried when this parameter is made clean, not when its value changes: call IsDirty(false) after
  // each change, also after one that a scene or another link has made. They are tried in the order in which
  // they were added, and only the first one that holds is applied.
  virtual unsigned int AddDrivenMapItem(tavECodeOperator op, const unsigned char* dataDriver,
                                        const unsigned int& sizeDriver, const unsigned char* dataDriven,
                                        const unsigned int& sizeDriven) = 0;

  // True if the parameter itself made the last change.
  bool IsChangedByCallBack() const override { return false; }

  // Hook: a rule has set the target. Called without the lock.
  virtual void OnLinkedParameterChange() = 0;

  // The bytes of the value. Does not take the lock: use GetDataCopy if another thread may set the value.
  const unsigned char* GetData() const override = 0;
};

}  // namespace tavon
