#pragma once

#include "tav_concreteparameter.h"

namespace tavon {

// What the types whose value is a text share. The text takes the place of the byte that the base stores:
// bytes, usually UTF-8, not checked. Its size as data counts a terminating zero.
template <class Self>
class tavTextParameter : public tavConcreteParameter<Self, 1> {
 public:
  // None: the value travels as the text itself, whatever its length.
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

  // Replaces the text by exactly `size` bytes; the flag has no meaning. A null or empty argument does
  // nothing, and unlike with other types the lock is not kept. So a text never becomes empty again this way:
  // intended.
  void SetData(const unsigned char* data, const unsigned int& size, unsigned char /*flag*/) override {
    if (data == nullptr || size == 0) return;
    ReplaceText(m_text, std::string(reinterpret_cast<const char*>(data), size));
  }

  // The text.
  tavString ValueToString() const override { return CopyText(); }

 protected:
  // For getters: not virtual, so a class that decorates ValueToString can call them from it.
  tavString CopyText() const {
    const tavSMutex lock(&this->m_lock);
    return m_text;
  }

  // Stores a text that differs from the stored one, after marking the object dirty.
  void ReplaceText(tavString& stored, const tavString& text) {
    const tavSMutex lock(&this->m_lock);
    if (stored == text) return;
    this->IsDirty(true);
    stored = text;
  }

  // The value.
  tavString m_text;
};

}  // namespace tavon
