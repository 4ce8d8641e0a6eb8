#pragma once

#include "tav_textparameter.h"

namespace tavon {

// A camera, known by its URLs; the local one is the value.
class tavParameterCamera : public tavTextParameter<tavParameterCamera> {
 public:
  static constexpr tavEObject TypeId = tavObject_ParameterCamera;
  static constexpr const char* TypeName = "ParameterCamera";
  static constexpr tavReporter Report{"tav_parametercamera"};

  // UTF-8; a null text is empty. Setting a URL that differs makes the object dirty.
  void SetLocalUrl(const wchar_t* url);
  void SetLocalUrl(const char* url);
  tavString GetLocalUrl() const { return CopyText(); }
  void SetRemoteUrl(const wchar_t* url);
  void SetRemoteUrl(const char* url);
  tavString GetRemoteUrl() const;

  // Adds the prefix of a network from which the local URL is reached, such as "192.168.1".
  void AddLocalNetwork(const tavString& prefix);

  // The URL for a client at an IPv4 address: the only one there is, else the local one for clients in a local
  // network and the remote one for all others. An address without "." is reported (code 6) and gives an empty
  // text.
  tavString GetUrl(const tavString& strIp) const;

  // Cameras cannot be compared: reported with code 1, false.
  bool Comparison(const tavECodeOperator& op, const unsigned char* data,
                  const unsigned int& size) const override;

  // Writes one byte, 1: there is a text. An empty text writes nothing, a null buffer is reported, code 6.
  // SetDataFromString makes that byte the local URL, not the text: intended, URLs are set by SetLocalUrl.
  static tavEError GetBinaryDataFromString(const tavString& text, unsigned char* o_pBuffer);

 private:
  tavString m_remoteUrl;
  tavArray<tavString> m_localNetworks;
};

}  // namespace tavon
