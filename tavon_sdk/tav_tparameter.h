#pragma once

#include <algorithm>
#include <array>
#include <list>
#include <memory>

#include "tav_error.h"
#include "tav_parameter.h"
#include "vevent.h"

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

  // Sets the target, with flag 1 of SetData.
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

// The rules of a link, in the order in which they were added.
class tavDrivenMap {
 public:
  // Does what tavIParameter::AddDrivenMapItem says; `lock` is held while the rule is appended.
  unsigned int Add(vMutex& lock, tavECodeOperator op, const unsigned char* dataDriver,
                   unsigned int sizeDriver, const unsigned char* dataDriven, unsigned int sizeDriven);

  // Applies the first rule that holds. False if there is none.
  bool Apply(const tavIParameter& driver, tavIParameter& target) const;

 private:
  std::list<LinkWithParameterData> m_rules;  // most parameters drive none, and an empty list needs no memory
};

// Reports (code 6) that GetDataCopy was given no buffer.
void tavReportNoBuffer();

// A parameter with a value of N bytes, at least 1: stores the value, drives the target, keeps styles and
// settings. The derived types give the bytes their meaning. All bytes are 0 after construction.
template <unsigned int N>
class tavTParameter : public tavIParameter {
 public:
  bool IsValid() const override { return true; }

  // Tries the rules of the link, see AddDrivenMapItem.
  void OnDirty() override {
    tavIParameter::OnDirty();
    tavSMutex lock(&m_lock);
    if (m_drivenTarget == nullptr || !m_drivenMap.Apply(*this, *m_drivenTarget)) return;
    lock.UnLock();
    OnLinkedParameterChange();
  }

  void SetData(const unsigned char* data, const unsigned int& size, unsigned char flag) override {
    tavSMutex lock(&m_lock);
    if (data == nullptr || size == 0) {
      // Kept for compatibility: an invalid write keeps every other thread out of the object.
      lock.LeaveLocked();
      return;
    }
    const unsigned int stored = std::min(size, N);
    if (std::equal(data, data + stored, m_value.begin())) return;
    IsDirty(true);
    const auto rest = std::copy_n(data, stored, m_value.begin());
    if (flag != 0) std::fill(rest, m_value.end(), static_cast<unsigned char>(0));
    if (m_stored != nullptr) m_stored->Signal();
  }

  void AddUIStyle(const tavString& style) override {
    const tavSMutex lock(&m_lock);
    const bool isKnown = std::find(m_uiStyles.begin(), m_uiStyles.end(), style) != m_uiStyles.end();
    if (!isKnown) m_uiStyles.push_back(style);
  }

  void SetUIStyle(const tavArray<tavString>& styles) override {
    const tavSMutex lock(&m_lock);
    m_uiStyles = styles;
  }

  void GetUIStyle(tavArray<tavString>* o_styles) const override {
    if (o_styles == nullptr) return;
    const tavSMutex lock(&m_lock);
    *o_styles = m_uiStyles;
  }

  void SetSettings(const tavString& settings) override {
    const tavSMutex lock(&m_lock);
    m_settings = settings;
  }

  void GetSettings(tavString* o_settings) const override {
    if (o_settings == nullptr) return;
    const tavSMutex lock(&m_lock);
    *o_settings = m_settings;
  }

  unsigned int GetDataSize() const override { return N; }

  void GetDataCopy(unsigned char* io_buffer) const override {
    if (io_buffer == nullptr) {
      tavReportNoBuffer();
      return;
    }
    const tavSMutex lock(&m_lock);
    std::copy(m_value.begin(), m_value.end(), io_buffer);
  }

  void SetDrivenTarget(tavIParameter* target) override {
    const tavSMutex lock(&m_lock);
    m_drivenTarget = target;
  }

  tavIParameter* GetDrivenTarget() override {
    const tavSMutex lock(&m_lock);
    return m_drivenTarget;
  }

  unsigned int AddDrivenMapItem(tavECodeOperator op, const unsigned char* dataDriver,
                                const unsigned int& sizeDriver, const unsigned char* dataDriven,
                                const unsigned int& sizeDriven) override {
    return m_drivenMap.Add(m_lock, op, dataDriver, sizeDriver, dataDriven, sizeDriven);
  }

  void OnLinkedParameterChange() override {}

  const unsigned char* GetData() const override { return m_value.data(); }

 protected:
  // For a thread that sleeps until the value changes: signals `event` whenever SetData has stored a new
  // value. IsDirty and OnDirty would not do, because a derived class may override them.
  void SignalWhenStored(VEvent& event) { m_stored = &event; }

  // The value, without taking the lock. Only SetData stores one.
  const std::array<unsigned char, N>& Value() const { return m_value; }

 private:
  std::array<unsigned char, N> m_value{};
  tavIParameter* m_drivenTarget = nullptr;
  tavDrivenMap m_drivenMap;
  tavArray<tavString> m_uiStyles;
  tavString m_settings;
  VEvent* m_stored = nullptr;
};

// The sizes of the SDK's own types are compiled once, in the library.
extern template class tavTParameter<1>;
extern template class tavTParameter<4>;
extern template class tavTParameter<673>;

}  // namespace tavon
