#pragma once

#include "tav_object.h"
#include "tav_string.h"

namespace tavon {

// A text of a parameter: what information and camera have instead of bytes of a fixed size. It should be
// UTF-8, which is not checked.
//
// The parameter has it as a member. Every operation but GetData takes the parameter's lock.
class tavTextValue {
 public:
  // `owner` becomes dirty when the text changes; `ownersLock` is its lock.
  tavTextValue(tavIObject& owner, vMutex& ownersLock) : m_owner(owner), m_ownersLock(ownersLock) {}
  tavTextValue(const tavTextValue&) = delete;
  tavTextValue& operator=(const tavTextValue&) = delete;

  // A copy of the text.
  tavString Get() const;

  // Marks the owner dirty and stores the text, if it differs.
  void Set(const tavString& text);

  // The text as data: its characters and a terminating zero. If another thread may set the text, use Get
  // instead: a longer text, set between GetDataSize and GetDataCopy, overflows the buffer.
  const unsigned char* GetData() const { return reinterpret_cast<const unsigned char*>(m_text.c_str()); }
  unsigned int GetDataSize() const;
  void GetDataCopy(unsigned char* o_buffer) const;

  // Stores exactly `size` bytes. Null or empty data does nothing and, unlike with other values, leaves
  // nothing locked. So a text never becomes empty again, which is kept for compatibility.
  void SetData(const unsigned char* data, unsigned int size);

 private:
  tavIObject& m_owner;
  vMutex& m_ownersLock;
  tavString m_text;
};

}  // namespace tavon
