#pragma once

#include "tav_concreteparameter.h"

namespace tavon {

// What the types whose value is a text have in common. The text, usually UTF-8 but not checked, takes the
// place of the byte that the base stores. Its size as data includes a terminating zero.
template <class Self>
class tavTextParameter : public tavConcreteParameter<Self, 1> {
 public:
  // 0 stands for any size: an event carries the text itself.
  static constexpr std::size_t ValueSize = 0;

  // The characters, with a terminating zero.
  const unsigned char* GetData() const override {
    return reinterpret_cast<const unsigned char*>(m_text.c_str());
  }

  // Bytes of the text and its terminating zero.
  unsigned int GetDataSize() const override {
    const tavSMutex lock(&this->m_lock);
    return static_cast<unsigned int>(m_text.size()) + 1;
  }

  // Copies the text and its terminating zero.
  void GetDataCopy(unsigned char* io_buffer) const override {
    if (io_buffer == nullptr) {
      Self::Report(tavError_InvalidArgument, "io_buffer == 0");
      return;
    }
    const tavSMutex lock(&this->m_lock);
    io_buffer[m_text.copy(reinterpret_cast<char*>(io_buffer), m_text.size())] = 0;
  }

  // Replaces the text by exactly `size` bytes and ignores the flag. Null or empty data does nothing and,
  // unlike with other types, leaves nothing locked; so a text never becomes empty again, on purpose: an empty
  // event does not erase what users see.
  void SetData(const unsigned char* data, const unsigned int& size, unsigned char /*flag*/) override {
    if (data == nullptr || size == 0) return;
    ReplaceText(m_text, std::string(reinterpret_cast<const char*>(data), size));
  }

  // The text.
  tavString ValueToString() const override { return CopyText(); }

 protected:
  // A copy of the text. Not virtual: a derived class may call the getters from its own ValueToString.
  tavString CopyText() const {
    const tavSMutex lock(&this->m_lock);
    return m_text;
  }

  // Stores a text if it differs, and marks the object dirty before.
  void ReplaceText(tavString& io_stored, const tavString& text) {
    const tavSMutex lock(&this->m_lock);
    if (io_stored == text) return;
    this->IsDirty(true);
    io_stored = text;
  }

  // The value.
  tavString m_text;
};

}  // namespace tavon
