#include "tav_textvalue.h"

#include <string>

#include "tav_smutex.h"

namespace tavon {

tavString tavTextValue::Get() const {
  const tavSMutex lock(&m_ownersLock);
  return m_text;
}

void tavTextValue::Set(const tavString& text) {
  const tavSMutex lock(&m_ownersLock);
  if (m_text == text) return;
  m_owner.IsDirty(true);
  m_text = text;
}

unsigned int tavTextValue::GetDataSize() const {
  const tavSMutex lock(&m_ownersLock);
  return static_cast<unsigned int>(m_text.size()) + 1;
}

void tavTextValue::GetDataCopy(unsigned char* o_buffer) const {
  const tavSMutex lock(&m_ownersLock);
  const std::size_t length = m_text.copy(reinterpret_cast<char*>(o_buffer), m_text.size());
  o_buffer[length] = 0;
}

void tavTextValue::SetData(const unsigned char* data, unsigned int size) {
  if (data == nullptr || size == 0) return;
  Set(std::string(reinterpret_cast<const char*>(data), size));
}

}  // namespace tavon
