// The platform's control block of a serial line: speed, framing, flow control and special characters. Neighbour:
// zelbase/comms/CSerialSettings.h, which gives it defaults and a comparison.
#pragma once

#include <type_traits>

// 28 bytes without gaps, in the order that drivers know. A plain record without defaults: `DCB block{};` is all zeros.
//
//   Parity    0 none, 1 odd, 2 even, 3 mark, 4 space; heeded when fParity is set
//   StopBits  0 one, 1 one and a half, 2 two
struct DCB {
  unsigned int DCBlength;  // 28
  unsigned int BaudRate;   // bits a second

  // One word; fBinary is its lowest bit.
  unsigned int fBinary : 1;
  unsigned int fParity : 1;
  unsigned int fOutxCtsFlow : 1;
  unsigned int fOutxDsrFlow : 1;
  unsigned int fDtrControl : 2;
  unsigned int fDsrSensitivity : 1;
  unsigned int fTXContinueOnXoff : 1;
  unsigned int fOutX : 1;
  unsigned int fInX : 1;
  unsigned int fErrorChar : 1;
  unsigned int fNull : 1;
  unsigned int fRtsControl : 2;
  unsigned int fAbortOnError : 1;
  unsigned int fDummy2 : 17;

  unsigned short wReserved;
  unsigned short XonLim;
  unsigned short XoffLim;
  unsigned char ByteSize;  // data bits
  unsigned char Parity;
  unsigned char StopBits;
  char XonChar;
  char XoffChar;
  char ErrorChar;
  char EofChar;
  char EvtChar;
  unsigned short wReserved1;
};

static_assert(sizeof(DCB) == 28 && std::is_trivial_v<DCB> && std::is_standard_layout_v<DCB>);
