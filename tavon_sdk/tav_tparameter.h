#pragma once

#include <array>
#include <list>
#include <memory>

#include "tav_parameter.h"

namespace tavon {

// One rule of a driver/driven link; owns copies of both operands.
class LinkWithParameterData {
 public:
  // Without memory for a copy code 5 is reported, and GetError() is what the log returned.
  LinkWithParameterData(tavECodeOperator op, const unsigned char* driverData, unsigned int driverSize,
                        const unsigned char* drivenData, unsigned int drivenSize);

  // 0, or the code of what was reported.
  tavEError GetError() const { return m_error; }

  // True when the rule holds for the current value of `driver`.
  bool Holds(const tavIParameter& driver) const {
    return driver.Comparison(m_operator, m_driverData.get(), m_driverSize);
  }

  // Sets the target; bytes of its value that the rule does not reach become 0.
  void Apply(tavIParameter& target) const { target.SetData(m_drivenData.get(), m_drivenSize, 1); }

 private:
  using Operand = std::unique_ptr<unsigned char[]>;

  Operand Copy(const unsigned char* data, unsigned int size, const char* message, int line,
               const char* function = __builtin_FUNCTION());

  tavEError m_error = tavError_NoError;
  tavECodeOperator m_operator;
  Operand m_driverData;  // with a zero behind it, for comparisons that look for one
  unsigned int m_driverSize;
  Operand m_drivenData;
  unsigned int m_drivenSize;
};

// A parameter with a value of N bytes: stores it, drives the target, keeps styles and settings. What the
// bytes mean is left to the types that derive from it.
//
// The value is zero after construction. SetData with a null or empty argument changes nothing and leaves the
// object locked by the calling thread, so that every other thread waits at it: intended.
template <unsigned int N>
class tavTParameter : public tavIParameter {
 public:
  bool IsValid() const override { return true; }

  // Tries the rules of the link, see AddDrivenMapItem. Called by the object when it is made clean.
  void OnDirty() override;

  void SetData(const unsigned char* data, const unsigned int& size, unsigned char flag) override;
  void AddUIStyle(const tavString& style) override;
  void SetUIStyle(const tavArray<tavString>& styles) override;
  void GetUIStyle(tavArray<tavString>* o_styles) const override;
  void SetSettings(const tavString& settings) override;
  void GetSettings(tavString* o_settings) const override;
  unsigned int GetDataSize() const override { return N; }
  void GetDataCopy(unsigned char* io_buffer) const override;
  void SetDrivenTarget(tavIParameter* target) override;
  tavIParameter* GetDrivenTarget() override;
  unsigned int AddDrivenMapItem(tavECodeOperator op, const unsigned char* dataDriver,
                                const unsigned int& sizeDriver, const unsigned char* dataDriven,
                                const unsigned int& sizeDriven) override;
  void OnLinkedParameterChange() override {}
  const unsigned char* GetData() const override { return m_value.data(); }

 protected:
  // The value.
  std::array<unsigned char, N> m_value{};

 private:
  tavIParameter* m_drivenTarget = nullptr;
  std::list<LinkWithParameterData>
      m_drivenMap;  // most parameters drive none, and an empty list takes no memory
  tavArray<tavString> m_uiStyles;
  tavString m_settings;
};

extern template class tavTParameter<1>;
extern template class tavTParameter<4>;
extern template class tavTParameter<673>;

}  // namespace tavon
