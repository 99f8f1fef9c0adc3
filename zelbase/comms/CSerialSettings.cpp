#include "zelbase/comms/CSerialSettings.h"

#include <algorithm>
#include <array>

#include "zelbase/platform/PlatformSerialPorts.h"

namespace {

constexpr unsigned int kDefaultPort = 1;
constexpr std::size_t kMostPorts = 255;

// The block's byte for each number, from 1 on.
constexpr std::array<unsigned char, 5> kParities = {2, 3, 0, 1, 4};
constexpr std::array<unsigned char, 3> kStopBits = {0, 1, 2};

template <std::size_t Count>
bool ToByte(const std::array<unsigned char, Count>& bytes, int number, unsigned char& byte) {
  if (number < 1 || static_cast<std::size_t>(number) > Count) return false;
  byte = bytes[static_cast<std::size_t>(number) - 1];
  return true;
}

// 0 for a byte without a number.
template <std::size_t Count>
int ToNumber(const std::array<unsigned char, Count>& bytes, unsigned char byte) {
  const auto found = std::find(bytes.begin(), bytes.end(), byte);
  return found == bytes.end() ? 0 : static_cast<int>(found - bytes.begin()) + 1;
}

bool IsPresent(SerialPortResult result) {
  return result == SerialPortResult::Ok || result == SerialPortResult::AccessDenied || result == SerialPortResult::NotFunctioning ||
         result == SerialPortResult::InUse;
}

}  // namespace

CSerialSettings::CSerialSettings() : DCB() { ResetToDefaults(); }

CSerialSettings::CSerialSettings(const CSerialSettings& other) : DCB() { *this = other; }

CSerialSettings& CSerialSettings::operator=(const CSerialSettings& other) {
  const unsigned int portNo = other.m_portNo;
  TakeOver(other);
  m_portNo = portNo;
  return *this;
}

CSerialSettings& CSerialSettings::operator=(const DCB& block) {
  TakeOver(block);
  return *this;
}

void CSerialSettings::TakeOver(const DCB& block) {
  const DCB source = block;  // may be this object's own
  static_cast<DCB&>(*this) = source;
  // Kept: what is not compared goes back to its default, and fParity with it though Parity comes over.
  ResetToDefaults();
  BaudRate = source.BaudRate;
  ByteSize = source.ByteSize;
  StopBits = source.StopBits;
  Parity = source.Parity;
  EvtChar = source.EvtChar;
  fOutxCtsFlow = source.fOutxCtsFlow;
}

void CSerialSettings::ResetToDefaults() {
  DCBlength = sizeof(DCB);
  BaudRate = 9600;
  fBinary = 1;
  fParity = 0;
  fOutxCtsFlow = 0;
  fOutxDsrFlow = 0;
  fDtrControl = 1;
  fDsrSensitivity = 0;
  fTXContinueOnXoff = 1;
  fOutX = 0;
  fInX = 0;
  fErrorChar = 0;
  fNull = 0;
  fRtsControl = 1;
  fAbortOnError = 0;
  // Kept: the spare bits of the flag word stay, and so do all fields that are not named here.
  ByteSize = 8;
  Parity = 0;
  StopBits = 0;
  ErrorChar = ' ';
  EofChar = 0;
  EvtChar = 10;
  m_portNo = kDefaultPort;
}

bool CSerialSettings::operator==(const CSerialSettings& other) const {
  return m_portNo == other.m_portNo && *this == static_cast<const DCB&>(other);
}

bool CSerialSettings::operator==(const DCB& block) const {
  // Kept: fParity is not compared, so parity 3, by which the byte is 0, equals the default.
  return BaudRate == block.BaudRate && ByteSize == block.ByteSize && StopBits == block.StopBits && Parity == block.Parity &&
         EvtChar == block.EvtChar && fOutxCtsFlow == block.fOutxCtsFlow;
}

int CSerialSettings::GetParity() const { return fParity != 0 ? ToNumber(kParities, Parity) : 0; }

void CSerialSettings::SetParity(int parity) {
  if (parity == 0) {
    // Kept: the byte stays as it is.
    fParity = 0;
  } else if (ToByte(kParities, parity, Parity)) {
    fParity = 1;
  }
}

int CSerialSettings::GetStopBits() const { return ToNumber(kStopBits, StopBits); }

void CSerialSettings::SetStopBits(int stopBits) { ToByte(kStopBits, stopBits, StopBits); }

void CSerialSettings::GetAvailableComPorts(std::vector<std::string>& ports) {
  PlatformSerialPorts& system = PlatformService<PlatformSerialPorts>::Current();
  ports.clear();
  for (const std::string& name : system.Names()) {
    if (ports.size() == kMostPorts) return;
    if (std::find(ports.begin(), ports.end(), name) != ports.end()) continue;
    if (IsPresent(system.Try(name))) ports.push_back(name);
  }
}
