// How a device is reached over the network. Neighbours: CSerialSettings.h for a serial line, OPCSettings.h and
// OpcUaSettings.h for the two kinds of OPC; CPortSettings.h, which holds what a driver needs beside them.
#pragma once

#include <string>

#include "zelbase/platform/ZelBaseApi.h"

// A value with defaults and a comparison: the drivers do the talking, and know what the numbers mean. Nothing is checked.
// Used by one thread at a time.
class ZELBASE_API CNetSettings {
 public:
  // The defaults: see the fields.
  CNetSettings() = default;
  CNetSettings(const CNetSettings& other) = default;
  CNetSettings& operator=(const CNetSettings& other) = default;
  virtual ~CNetSettings() = default;

  // Puts every default back.
  void ResetToDefaults() { *this = CNetSettings(); }

  // All fields; texts by every byte.
  bool operator==(const CNetSettings& other) const = default;

  unsigned int GetPortNo() const { return m_portNo; }
  void SetPortNo(unsigned int portNo) { m_portNo = portNo; }
  unsigned int GetLocalPort() const { return m_localPort; }
  void SetLocalPort(unsigned int localPort) { m_localPort = localPort; }
  // Kept: Adress, as every caller writes it.
  const std::string& GetHostAdress() const { return m_hostAddress; }
  void SetHostAdress(const std::string& address) { m_hostAddress = address; }
  unsigned int GetHostPort() const { return m_hostPort; }
  void SetHostPort(unsigned int hostPort) { m_hostPort = hostPort; }
  const std::string& GetName() const { return m_name; }
  void SetName(const std::string& name) { m_name = name; }
  bool GetAutoHostPort() const { return m_autoHostPort; }
  void SetAutoHostPort(bool automatic) { m_autoHostPort = automatic; }
  int GetProtocol() const { return m_protocol; }
  void SetProtocol(int protocol) { m_protocol = protocol; }
  // Kept: Adress, as every caller writes it.
  const std::string& GetMulticastAdress() const { return m_multicastAddress; }
  void SetMulticastAdress(const std::string& address) { m_multicastAddress = address; }
  bool GetUseMulticast() const { return m_useMulticast; }
  void SetUseMulticast(bool use) { m_useMulticast = use; }

 private:
  unsigned int m_portNo = 1;  // which of the program's ports this is
  unsigned int m_localPort = 800;
  std::string m_hostAddress;
  unsigned int m_hostPort = 100;
  std::string m_name;
  bool m_autoHostPort = false;
  int m_protocol = 0;
  std::string m_multicastAddress;
  bool m_useMulticast = false;
};
