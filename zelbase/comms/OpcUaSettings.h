// How an OPC UA server is reached. Neighbours: OPCSettings.h for its predecessor, which is found by a server's name;
// CNetSettings.h and CSerialSettings.h for plain lines.
#pragma once

#include <string>

#include "zelbase/platform/ZelBaseApi.h"

// A value with defaults and a comparison: the drivers do the talking, and know what the numbers mean. Nothing is checked.
// Used by one thread at a time.
class ZELBASE_API OpcUaSettings {
 public:
  // The defaults: see the fields.
  OpcUaSettings() = default;
  OpcUaSettings(const OpcUaSettings& other) = default;
  OpcUaSettings& operator=(const OpcUaSettings& other) = default;
  virtual ~OpcUaSettings() = default;

  // Puts every default back.
  void ResetToDefaults() { *this = OpcUaSettings(); }

  // All fields; texts by every byte.
  bool operator==(const OpcUaSettings& other) const = default;

  const std::string& GetHostName() const { return m_hostName; }
  void SetHostName(const std::string& name) { m_hostName = name; }
  // A text: a number or the name of a service.
  const std::string& GetPortName() const { return m_portName; }
  void SetPortName(const std::string& name) { m_portName = name; }
  const std::string& GetCertificate() const { return m_certificate; }
  // Kept: the name of the certificate's setter, as every caller writes it.
  void SetGetCertificate(const std::string& certificate) { m_certificate = certificate; }
  int GetSecurityPolicy() const { return m_securityPolicy; }
  void SetSecurityPolicy(int policy) { m_securityPolicy = policy; }
  int GetMessageSecurityMode() const { return m_messageSecurityMode; }
  void SetMessageSecurityMode(int mode) { m_messageSecurityMode = mode; }

 private:
  std::string m_hostName = "localhost";
  std::string m_portName = "4841";
  std::string m_certificate;
  int m_securityPolicy = 0;
  int m_messageSecurityMode = 1;
};
