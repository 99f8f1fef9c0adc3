// How a device is reached over a serial line, and which serial ports there are. Neighbours: platform/DCB.h, the control
// block that this begins with; CNetSettings.h, OPCSettings.h and OpcUaSettings.h for other ways;
// platform/PlatformSerialPorts.h, which knows the ports.
#pragma once

#include <string>
#include <vector>

#include "zelbase/platform/DCB.h"
#include "zelbase/platform/ZelBaseApi.h"

// A value: a control block and the number of a port. The block may be read and written directly; the drivers hand it on.
//
//   CSerialSettings line;                                   // 9600 bits a second, 8 data bits, no parity, one stop bit
//   line.SetBaudRate(38400);
//   line.SetParity(1);                                      // even
//   if (line == otherLine) ...
//
// What carries over, and what does not:
//   (1) Port number, BaudRate, ByteSize, StopBits, Parity, EvtChar and fOutxCtsFlow are what settings are made of: these
//       are compared, and assignment carries them over.
//   (2) The other flags, ErrorChar, EofChar and DCBlength have their defaults after an assignment, whatever the source has.
//       fParity is one of them: the byte Parity comes over, and still GetParity is 0.
//   (3) What has no default (the limits, XonChar, XoffChar, the spare words and bits) comes with the source's block. A new
//       object has zeros there.
//
// Nothing is checked. Used by one thread at a time.
class ZELBASE_API CSerialSettings : public DCB {
 public:
  // The defaults: DCBlength 28, BaudRate 9600, ByteSize 8, Parity and StopBits 0, ErrorChar a blank, EofChar 0, EvtChar 10,
  // port 1; of the flags fBinary and fTXContinueOnXoff are set, fDtrControl and fRtsControl 1 and all others 0.
  CSerialSettings();

  // As assignment to a new object.
  CSerialSettings(const CSerialSettings& other);

  // Assigning to itself keeps what is compared and puts the defaults back elsewhere.
  CSerialSettings& operator=(const CSerialSettings& other);

  // The port number becomes 1.
  CSerialSettings& operator=(const DCB& block);

  // Puts every default back; fields without one stay.
  void ResetToDefaults();

  bool operator==(const CSerialSettings& other) const;

  // The same without the port number.
  bool operator==(const DCB& block) const;

  unsigned int GetBaudRate() const { return BaudRate; }  // bits a second
  void SetBaudRate(unsigned int baudRate) { BaudRate = baudRate; }
  bool GetOutCtsFlow() const { return fOutxCtsFlow != 0; }
  void SetOutCtsFlow(bool flow) { fOutxCtsFlow = flow ? 1 : 0; }
  int GetDataBits() const { return ByteSize; }
  void SetDataBits(int dataBits) { ByteSize = static_cast<unsigned char>(dataBits); }

  // Parity in numbers of its own, which are not those of the block:
  //
  //   number      0           1     2     3     4    5
  //   parity      not heeded  even  mark  none  odd  space
  //   fParity     clear       set   set   set   set  set
  //   Parity      as it was   2     3     0     1    4
  //
  // Setting any other number does nothing. Gives 0 when fParity is clear, and for a byte that is not in the table.
  int GetParity() const;
  void SetParity(int parity);

  // 1 is one stop bit, 2 is one and a half, 3 is two. Setting any other number does nothing. Gives 0 for a byte that is
  // none of these.
  int GetStopBits() const;
  void SetStopBits(int stopBits);

  char GetEventChar() const { return EvtChar; }
  void SetEventChar(char character) { EvtChar = character; }
  unsigned int GetPortNo() const { return m_portNo; }
  void SetPortNo(unsigned int portNo) { m_portNo = portNo; }

  // Replaces `ports` by the names of the serial ports that are there, as the system calls them: those that open, and those
  // that do not because access is denied, the device does not function or somebody else uses it. Each once, in the same
  // order each time, at most 255. Opens and closes every one, and never waits for a carrier.
  static void GetAvailableComPorts(std::vector<std::string>& ports);

 private:
  // What assignment carries over of the block; the port number stays.
  void TakeOver(const DCB& block);

  unsigned int m_portNo = 1;
};
