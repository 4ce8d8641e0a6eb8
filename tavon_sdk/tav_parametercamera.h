#pragma once

#include "tav_textvalue.h"
#include "tav_typedparameter.h"

namespace tavon {

// A camera, known by its URLs. The local URL is the value; the byte of the base is not used.
class tavParameterCamera : public tavTypedParameter<1> {
 public:
  static constexpr const char* TypeName = "ParameterCamera";
  static const tavParameterType Type;

  tavParameterCamera();
  tavParameterCamera* GetParameterCameraPtr() override { return this; }

  // Stored as UTF-8. A null text counts as empty. A URL that differs makes the object dirty.
  void SetLocalUrl(const wchar_t* url) { m_localUrl.Set(tavString::AsUTF8(url)); }
  void SetLocalUrl(const char* url) { m_localUrl.Set(url == nullptr ? "" : url); }
  tavString GetLocalUrl() const { return m_localUrl.Get(); }
  void SetRemoteUrl(const wchar_t* url) { m_remoteUrl.Set(tavString::AsUTF8(url)); }
  void SetRemoteUrl(const char* url) { m_remoteUrl.Set(url == nullptr ? "" : url); }
  tavString GetRemoteUrl() const { return m_remoteUrl.Get(); }
  tavString ValueToString() const override { return m_localUrl.Get(); }

  // Adds the prefix of a network that can reach the local URL, such as "192.168.1".
  void AddLocalNetwork(const tavString& prefix);

  // The URL for a client at an IPv4 address: the local one for clients in a local network, the remote one for
  // all others. If only one is set, it is that one. An address without "." is reported (code 6) and gives an
  // empty text.
  tavString GetUrl(const tavString& strIp) const;

  // The local URL with a terminating zero. If another thread may set it, use GetLocalUrl; see tavTextValue.
  const unsigned char* GetData() const override { return m_localUrl.GetData(); }
  unsigned int GetDataSize() const override { return m_localUrl.GetDataSize(); }
  void GetDataCopy(unsigned char* io_buffer) const override;

  // Replaces the local URL by exactly `size` bytes and ignores the flag. Null or empty data does nothing.
  void SetData(const unsigned char* data, const unsigned int& size, unsigned char flag) override;

  // Cameras cannot be compared: reported (code 1), and false.
  bool Comparison(const tavECodeOperator& op, const unsigned char* data,
                  const unsigned int& size) const override;

  // One byte, 1: there is a text. SetDataFromString stores this byte as the local URL, not the text, which is
  // kept for compatibility: set URLs with SetLocalUrl.
  static tavEError GetBinaryDataFromString(const tavString& text, unsigned char* o_pBuffer);
  // Sets a parameter known by its interface. Null does nothing; another type is reported (code 6).
  static tavEError SetDataFromString(tavIParameter* pPrm, const tavString& text);
  using tavTypedParameter::SetDataFromString;

 private:
  tavTextValue m_localUrl{*this, m_lock};
  tavTextValue m_remoteUrl{*this, m_lock};
  tavArray<tavString> m_localNetworks;
};

}  // namespace tavon
