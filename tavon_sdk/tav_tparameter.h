#pragma once

#include <array>
#include <list>
#include <memory>

#include "tav_parameter.h"

namespace tavon {

// One rule of a link. It owns copies of both operands.
class LinkWithParameterData {
 public:
  // If there is no memory for a copy, code 5 is reported, and GetError() is what the log returned.
  LinkWithParameterData(tavECodeOperator op, const unsigned char* driverData, unsigned int driverSize,
                        const unsigned char* drivenData, unsigned int drivenSize);

  // 0, or the code of what was reported.
  tavEError GetError() const { return m_error; }

  // True if the rule holds for the current value of `driver`.
  bool Holds(const tavIParameter& driver) const {
    return driver.Comparison(m_operator, m_driverData.get(), m_driverSize);
  }

  // Sets the target. Bytes of its value beyond those of the rule become 0.
  void Apply(tavIParameter& target) const { target.SetData(m_drivenData.get(), m_drivenSize, 1); }

 private:
  using Operand = std::unique_ptr<unsigned char[]>;

  Operand Copy(const unsigned char* data, unsigned int size, const char* message, vlib::Place place);

  tavEError m_error = tavError_NoError;
  tavECodeOperator m_operator;
  // Followed by a zero, for comparisons that look for one.
  Operand m_driverData;
  unsigned int m_driverSize;
  Operand m_drivenData;
  unsigned int m_drivenSize;
};

// A parameter with a value of N bytes: stores the value, drives the target, keeps styles and settings. The
// derived types give the bytes their meaning. All bytes are 0 after construction.
template <unsigned int N>
class tavTParameter : public tavIParameter {
 public:
  bool IsValid() const override { return true; }

  // Tries the rules of the link, see AddDrivenMapItem.
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
  // Most parameters drive none, and an empty list needs no memory.
  std::list<LinkWithParameterData> m_drivenMap;
  tavArray<tavString> m_uiStyles;
  tavString m_settings;
};

extern template class tavTParameter<1>;
extern template class tavTParameter<4>;
extern template class tavTParameter<673>;

}  // namespace tavon
