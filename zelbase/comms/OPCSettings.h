// How an OPC server is reached. Neighbours: OpcUaSettings.h for its successor, which listens on a port of the network;
// CNetSettings.h and CSerialSettings.h for plain lines.
#pragma once

#include <string>

#include "zelbase/platform/ZelBaseApi.h"

// A value with defaults and a comparison: the drivers do the talking. Nothing is checked. Used by one thread at a time.
class ZELBASE_API OPCSettings {
 public:
  // The defaults: see the fields.
  OPCSettings() = default;
  OPCSettings(const OPCSettings& other) = default;
  OPCSettings& operator=(const OPCSettings& other) = default;
  virtual ~OPCSettings() = default;

  // Puts every default back.
  void ResetToDefaults() { *this = OPCSettings(); }

  // All fields; texts by every byte.
  bool operator==(const OPCSettings& other) const = default;

  const std::string& GetHostName() const { return m_hostName; }
  void SetHostName(const std::string& name) { m_hostName = name; }
  const std::string& GetServerName() const { return m_serverName; }
  void SetServerName(const std::string& name) { m_serverName = name; }
  bool GetForce1() const { return m_force1; }
  void SetForce1(bool force) { m_force1 = force; }
  bool GetFSGateway() const { return m_fsGateway; }
  void SetFSGateway(bool gateway) { m_fsGateway = gateway; }

 private:
  std::string m_hostName = "localhost";
  std::string m_serverName;
  bool m_force1 = false;
  bool m_fsGateway = false;
};
