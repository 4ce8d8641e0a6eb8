#include "tav_object.h"

#include <algorithm>
#include <cwchar>
#include <new>

#include "tav_error.h"

namespace tavon {
namespace {

constexpr tavReporter kReport{"tav_object"};

constexpr unsigned char kDirty = 1;

}  // namespace

void tavObject::SetUniqueID(const unsigned int& id) {
  const tavSMutex lock(&m_lock);
  m_uniqueId = id;
}

unsigned int tavObject::GetUniqueID() const {
  const tavSMutex lock(&m_lock);
  return m_uniqueId;
}

void tavObject::SetName(const wchar_t* name) {
  StoreText(m_name, name, "Can not allocate memory for object name", {46});
}

tavWString tavObject::GetName() const { return CopyOf(m_name); }

void tavObject::SetPrefix(const wchar_t* prefix) {
  StoreText(m_prefix, prefix, "Can not allocate memory for object prefix", {61});
}

tavWString tavObject::GetPrefix() const { return CopyOf(m_prefix); }

void tavObject::SetSuffix(const wchar_t* suffix) {
  StoreText(m_suffix, suffix, "Can not allocate memory for object suffix", {76});
}

tavWString tavObject::GetSuffix() const { return CopyOf(m_suffix); }

void tavObject::StoreText(WideText& target, const wchar_t* text, const char* message, vlib::Place place) {
  const tavSMutex lock(&m_lock);
  const std::size_t size = std::wcslen(text) + 1;
  target.reset();
  target.reset(new (std::nothrow) wchar_t[size]);
  if (!target) {
    kReport(tavError_OutOfMemory, message, place);
    return;
  }
  std::copy_n(text, size, target.get());
}

tavWString tavObject::CopyOf(const WideText& text) const {
  const tavSMutex lock(&m_lock);
  return text ? tavWString(text.get()) : tavWString();
}

bool tavObject::IsDirty() const {
  const tavSMutex lock(&m_lock);
  return (m_flags & kDirty) != 0;
}

void tavObject::IsDirty(bool dirty) {
  tavSMutex lock(&m_lock);
  const bool wasDirty = (m_flags & kDirty) != 0;
  m_flags = static_cast<unsigned char>(dirty ? m_flags | kDirty : m_flags & ~kDirty);
  lock.UnLock();
  // Without the lock, because the hook sets other objects, which take locks of their own.
  if (wasDirty && !dirty) OnDirty();
}

unsigned char tavObject::GetFlags() const {
  const tavSMutex lock(&m_lock);
  return m_flags;
}

void tavObject::SetFlags(unsigned char flags) {
  const tavSMutex lock(&m_lock);
  m_flags = flags;
}

void tavObject::AddFlags(unsigned char mask) {
  const tavSMutex lock(&m_lock);
  m_flags = static_cast<unsigned char>(m_flags | mask);
}

void tavObject::RemoveFlags(unsigned char mask) {
  const tavSMutex lock(&m_lock);
  m_flags = static_cast<unsigned char>(m_flags & ~mask);
}

bool tavObject::HasFlags(unsigned char mask) const {
  const tavSMutex lock(&m_lock);
  return (m_flags & mask) != 0;
}

bool tavObject::IsValid() const {
  const tavSMutex lock(&m_lock);
  return true;
}

tavString tavObject::SerializeAsXml() const {
  const tavSMutex lock(&m_lock);
  const char* typeName = GetTypeName();
  tavString xml;
  xml.append("<").append(typeName);
  xml.append(" uid=\"").append(tavString::FromULong(m_uniqueId));
  xml.append("\" type=\"").append(tavString::FromULong(static_cast<std::uint32_t>(GetType())));
  xml.append("\" name=\"").append(tavString::AsUTF8(CopyOf(m_name)));
  xml.append("\" pref=\"").append(tavString::AsUTF8(CopyOf(m_prefix)));
  xml.append("\" suff=\"").append(tavString::AsUTF8(CopyOf(m_suffix)));
  xml.append("\"><parameters>").append(SerializeParametersAsXml()).append("</parameters>");
  xml.append("</").append(typeName).append(">");
  return xml;
}

tavString tavObject::ToString() const {
  const tavSMutex lock(&m_lock);
  tavString text = tavString::AsUTF8(CopyOf(m_prefix) + CopyOf(m_name) + CopyOf(m_suffix));
  text.append(".").append(GetTypeName());
  return text;
}

void tavObject::SetUserData(void* data) {
  const tavSMutex lock(&m_lock);
  m_userData = data;
}

void* tavObject::GetUserData() const {
  const tavSMutex lock(&m_lock);
  return m_userData;
}

tavString tavObject::SerializeParametersAsXml() const {
  const tavSMutex lock(&m_lock);
  tavString xml = "<flags>";
  for (int bit = 7; bit >= 0; --bit) xml.push_back((m_flags >> bit & 1) != 0 ? '1' : '0');
  xml.append("</flags>");
  return xml;
}

}  // namespace tavon
