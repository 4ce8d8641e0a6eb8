#pragma once

#include "tav_textparameter.h"

namespace tavon {

// A camera, known by its URLs. The local URL is the value.
class tavParameterCamera : public tavTextParameter<tavParameterCamera> {
 public:
  static constexpr tavEObject TypeId = tavObject_ParameterCamera;
  static constexpr const char* TypeName = "ParameterCamera";
  static constexpr tavReporter Report{"tav_parametercamera"};

  // Stored as UTF-8. A null text counts as empty. A URL that differs makes the object dirty.
  void SetLocalUrl(const wchar_t* url);
  void SetLocalUrl(const char* url);
  tavString GetLocalUrl() const { return CopyText(); }
  void SetRemoteUrl(const wchar_t* url);
  void SetRemoteUrl(const char* url);
  tavString GetRemoteUrl() const;

  // Adds the prefix of a network that can reach the local URL, such as "192.168.1".
  void AddLocalNetwork(const tavString& prefix);

  // The URL for a client at an IPv4 address: the local one for clients in a local network, the remote one for
  // all others. If only one is set, it is that one. An address without "." is reported (code 6) and gives an
  // empty text.
  tavString GetUrl(const tavString& strIp) const;

  // Cameras cannot be compared: reported (code 1), and false.
  bool Comparison(const tavECodeOperator& op, const unsigned char* data,
                  const unsigned int& size) const override;

  // One byte, 1: there is a text. SetDataFromString stores this byte as the local URL, not the text, on
  // purpose: URLs are set with SetLocalUrl.
  static tavEError GetBinaryDataFromString(const tavString& text, unsigned char* o_pBuffer);

 private:
  tavString m_remoteUrl;
  tavArray<tavString> m_localNetworks;
};

}  // namespace tavon
