#include "zelbase/comms/CSerialSettings.h"

#include <gtest/gtest.h>

#include <climits>
#include <cstring>
#include <functional>
#include <string>
#include <type_traits>
#include <vector>

#include "zelbase/platform/FixedSerialPorts.h"

namespace {

unsigned int FlagWord(const DCB& block) {
  unsigned int word = 0;
  std::memcpy(&word, reinterpret_cast<const char*>(&block) + 8, sizeof word);
  return word;
}

void SetFlagWord(DCB& block, unsigned int word) { std::memcpy(reinterpret_cast<char*>(&block) + 8, &word, sizeof word); }

// Every byte of it 0xFF.
DCB FullBlock() {
  DCB block;
  std::memset(&block, 0xFF, sizeof block);
  return block;
}

void ExpectDefaults(const CSerialSettings& settings) {
  EXPECT_EQ(settings.DCBlength, 28u);
  EXPECT_EQ(settings.GetBaudRate(), 9600u);
  EXPECT_EQ(settings.GetDataBits(), 8);
  EXPECT_EQ(settings.Parity, 0);
  EXPECT_EQ(settings.StopBits, 0);
  EXPECT_EQ(settings.ErrorChar, ' ');
  EXPECT_EQ(settings.EofChar, 0);
  EXPECT_EQ(settings.GetEventChar(), 10);
  EXPECT_EQ(settings.GetPortNo(), 1u);
  EXPECT_EQ(FlagWord(settings) & 0x7FFF, 0x1091u);
  EXPECT_FALSE(settings.GetOutCtsFlow());
  EXPECT_EQ(settings.GetParity(), 0);
  EXPECT_EQ(settings.GetStopBits(), 1);
}

// ---- Defaults -------------------------------------------------------------------------------------------------------

TEST(CSerialSettings, BeginsWithTheDefaultsAndZerosElsewhere) {
  const CSerialSettings settings;
  ExpectDefaults(settings);
  EXPECT_EQ(FlagWord(settings), 0x1091u);
  EXPECT_EQ(settings.wReserved, 0);
  EXPECT_EQ(settings.XonLim, 0);
  EXPECT_EQ(settings.XoffLim, 0);
  EXPECT_EQ(settings.XonChar, 0);
  EXPECT_EQ(settings.XoffChar, 0);
  EXPECT_EQ(settings.wReserved1, 0);
}

TEST(CSerialSettings, BeginsWithTheBlockAndHasNoVirtualOperations) {
  EXPECT_TRUE((std::is_base_of_v<DCB, CSerialSettings>));
  EXPECT_FALSE(std::is_polymorphic_v<CSerialSettings>);
  EXPECT_EQ(sizeof(CSerialSettings), sizeof(DCB) + sizeof(unsigned int));
  const CSerialSettings settings;
  EXPECT_EQ(static_cast<const void*>(static_cast<const DCB*>(&settings)), static_cast<const void*>(&settings));
}

TEST(CSerialSettings, ResetMasksTheFlagWordAndLeavesFieldsWithoutDefaults) {
  CSerialSettings settings;
  static_cast<DCB&>(settings) = FullBlock();
  settings.SetPortNo(9);
  settings.ResetToDefaults();
  ExpectDefaults(settings);
  EXPECT_EQ(FlagWord(settings), (0xFFFFFFFFu & ~0x6F6Eu) | 0x1091u);
  EXPECT_EQ(settings.wReserved, 0xFFFF);
  EXPECT_EQ(settings.XonLim, 0xFFFF);
  EXPECT_EQ(settings.XoffLim, 0xFFFF);
  EXPECT_EQ(settings.XonChar, static_cast<char>(0xFF));
  EXPECT_EQ(settings.XoffChar, static_cast<char>(0xFF));
  EXPECT_EQ(settings.wReserved1, 0xFFFF);
}

TEST(CSerialSettings, EveryFlagWordIsResetByTheTwoMasks) {
  for (int bit = 0; bit < 32; ++bit) {
    CSerialSettings settings;
    SetFlagWord(settings, 1u << bit);
    settings.ResetToDefaults();
    EXPECT_EQ(FlagWord(settings), ((1u << bit) & ~0x6F6Eu) | 0x1091u) << bit;
  }
}

// ---- Accessors ------------------------------------------------------------------------------------------------------

TEST(CSerialSettings, HoldsWhatIsSet) {
  CSerialSettings settings;
  settings.SetBaudRate(4294967295u);
  settings.SetDataBits(7);
  settings.SetEventChar('\r');
  settings.SetOutCtsFlow(true);
  settings.SetPortNo(256);
  EXPECT_EQ(settings.GetBaudRate(), 4294967295u);
  EXPECT_EQ(settings.BaudRate, 4294967295u);
  EXPECT_EQ(settings.GetDataBits(), 7);
  EXPECT_EQ(settings.ByteSize, 7);
  EXPECT_EQ(settings.GetEventChar(), '\r');
  EXPECT_EQ(settings.EvtChar, '\r');
  EXPECT_TRUE(settings.GetOutCtsFlow());
  EXPECT_EQ(settings.fOutxCtsFlow, 1u);
  EXPECT_EQ(settings.GetPortNo(), 256u);
  settings.SetOutCtsFlow(false);
  EXPECT_FALSE(settings.GetOutCtsFlow());
}

struct NumberRow {
  int number;
  int byte;
};

TEST(CSerialSettings, ParityHasNumbersOfItsOwn) {
  for (const NumberRow row : {NumberRow{1, 2}, {2, 3}, {3, 0}, {4, 1}, {5, 4}}) {
    CSerialSettings settings;
    settings.Parity = 77;
    settings.SetParity(row.number);
    EXPECT_EQ(settings.Parity, row.byte) << row.number;
    EXPECT_EQ(settings.fParity, 1u) << row.number;
    EXPECT_EQ(settings.GetParity(), row.number);
  }
}

TEST(CSerialSettings, SetParityZeroKeepsTheByte) {
  CSerialSettings settings;
  settings.SetParity(4);
  settings.SetParity(0);
  EXPECT_EQ(settings.fParity, 0u);
  EXPECT_EQ(settings.Parity, 1);
  EXPECT_EQ(settings.GetParity(), 0);
}

TEST(CSerialSettings, BadParityNumbersChangeNothing) {
  for (const int number : {-1, 6, 255, 256, 257, INT_MIN, INT_MAX}) {
    CSerialSettings settings;
    settings.SetParity(5);
    settings.SetParity(number);
    EXPECT_EQ(settings.GetParity(), 5) << number;
    CSerialSettings fresh;
    fresh.SetParity(number);
    EXPECT_EQ(FlagWord(fresh), 0x1091u) << number;
    EXPECT_EQ(fresh.Parity, 0) << number;
  }
}

TEST(CSerialSettings, UnknownParityBytesAndAClearFlagGiveZero) {
  for (int byte = 0; byte < 256; ++byte) {
    CSerialSettings settings;
    settings.Parity = static_cast<unsigned char>(byte);
    EXPECT_EQ(settings.GetParity(), 0) << byte;
    settings.fParity = 1;
    const int expected[] = {3, 4, 1, 2, 5};
    EXPECT_EQ(settings.GetParity(), byte < 5 ? expected[byte] : 0) << byte;
  }
}

TEST(CSerialSettings, StopBitsHaveNumbersOfTheirOwn) {
  for (const NumberRow row : {NumberRow{1, 0}, {2, 1}, {3, 2}}) {
    CSerialSettings settings;
    settings.StopBits = 77;
    settings.SetStopBits(row.number);
    EXPECT_EQ(settings.StopBits, row.byte);
    EXPECT_EQ(settings.GetStopBits(), row.number);
  }
}

TEST(CSerialSettings, BadStopBitNumbersChangeNothingAndUnknownBytesGiveZero) {
  for (const int number : {0, -1, 4, 257, INT_MIN, INT_MAX}) {
    CSerialSettings settings;
    settings.SetStopBits(2);
    settings.SetStopBits(number);
    EXPECT_EQ(settings.GetStopBits(), 2) << number;
  }
  for (const int byte : {3, 4, 128, 255}) {
    CSerialSettings settings;
    settings.StopBits = static_cast<unsigned char>(byte);
    EXPECT_EQ(settings.GetStopBits(), 0) << byte;
  }
}

// ---- Comparison -----------------------------------------------------------------------------------------------------

// What settings are made of, but for the port number.
const std::vector<std::function<void(DCB&)>> kCompared = {[](DCB& b) { b.BaudRate = 38400; }, [](DCB& b) { b.ByteSize = 7; },
                                                          [](DCB& b) { b.StopBits = 2; },     [](DCB& b) { b.Parity = 1; },
                                                          [](DCB& b) { b.EvtChar = '\r'; },   [](DCB& b) { b.fOutxCtsFlow = 1; }};

// What has a default and is not compared.
const std::vector<std::function<void(DCB&)>> kNotCompared = {
    [](DCB& b) { b.DCBlength = 0; },         [](DCB& b) { b.fBinary = 0; },     [](DCB& b) { b.fParity = 1; },
    [](DCB& b) { b.fOutxDsrFlow = 1; },      [](DCB& b) { b.fDtrControl = 2; }, [](DCB& b) { b.fDsrSensitivity = 1; },
    [](DCB& b) { b.fTXContinueOnXoff = 0; }, [](DCB& b) { b.fOutX = 1; },       [](DCB& b) { b.fInX = 1; },
    [](DCB& b) { b.fErrorChar = 1; },        [](DCB& b) { b.fNull = 1; },       [](DCB& b) { b.fRtsControl = 3; },
    [](DCB& b) { b.fAbortOnError = 1; },     [](DCB& b) { b.ErrorChar = '?'; }, [](DCB& b) { b.EofChar = 26; }};

TEST(CSerialSettings, ComparedFieldsMakeADifference) {
  const CSerialSettings defaults;
  for (const auto& change : kCompared) {
    CSerialSettings settings;
    change(settings);
    EXPECT_FALSE(settings == defaults);
    EXPECT_TRUE(settings != defaults);
    EXPECT_FALSE(settings == static_cast<const DCB&>(defaults));
    EXPECT_FALSE(static_cast<const DCB&>(settings) == defaults);
  }
}

TEST(CSerialSettings, OtherFieldsMakeNoDifference) {
  const CSerialSettings defaults;
  for (const auto& change : kNotCompared) {
    CSerialSettings settings;
    change(settings);
    EXPECT_TRUE(settings == defaults);
    EXPECT_TRUE(settings == static_cast<const DCB&>(defaults));
  }
}

TEST(CSerialSettings, ThePortNumberIsComparedWithSettingsButNotWithABlock) {
  CSerialSettings a;
  const CSerialSettings b;
  a.SetPortNo(2);
  EXPECT_FALSE(a == b);
  EXPECT_TRUE(a == static_cast<const DCB&>(b));
}

TEST(CSerialSettings, ParityThreeEqualsTheDefaultInAComparison) {
  CSerialSettings settings;
  settings.SetParity(3);
  EXPECT_EQ(settings.GetParity(), 3);
  EXPECT_TRUE(settings == CSerialSettings());
}

// ---- Assignment -----------------------------------------------------------------------------------------------------

CSerialSettings AllCompared() {
  CSerialSettings settings;
  for (const auto& change : kCompared) change(settings);
  settings.SetPortNo(12);
  return settings;
}

TEST(CSerialSettings, ComparedFieldsAreCarriedOver) {
  const CSerialSettings source = AllCompared();
  CSerialSettings assigned;
  assigned = source;
  const CSerialSettings copied(source);
  EXPECT_TRUE(assigned == source);
  EXPECT_TRUE(copied == source);
  EXPECT_EQ(assigned.GetPortNo(), 12u);
  EXPECT_EQ(copied.GetPortNo(), 12u);
}

TEST(CSerialSettings, OtherFieldsWithADefaultGoBackToIt) {
  for (const auto& change : kNotCompared) {
    CSerialSettings source;
    change(source);
    CSerialSettings assigned;
    change(assigned);
    assigned = source;
    ExpectDefaults(assigned);
    ExpectDefaults(CSerialSettings(source));
  }
}

TEST(CSerialSettings, FieldsWithoutADefaultComeWithTheBlock) {
  CSerialSettings source;
  static_cast<DCB&>(source) = FullBlock();
  const CSerialSettings copied(source);
  EXPECT_EQ(copied.XonLim, 0xFFFF);
  EXPECT_EQ(copied.XoffChar, static_cast<char>(0xFF));
  EXPECT_EQ(copied.wReserved1, 0xFFFF);
  EXPECT_EQ(copied.fDummy2, 0x1FFFFu);
  EXPECT_EQ(copied.fOutxCtsFlow, 1u);
  EXPECT_EQ(copied.fOutxDsrFlow, 0u);
}

TEST(CSerialSettings, TheParityByteComesOverButItsFlagDoesNot) {
  CSerialSettings source;
  source.SetParity(1);
  CSerialSettings assigned;
  assigned = source;
  EXPECT_EQ(assigned.Parity, 2);
  EXPECT_EQ(assigned.GetParity(), 0);
  EXPECT_EQ(CSerialSettings(source).GetParity(), 0);
  EXPECT_TRUE(assigned == source);
}

TEST(CSerialSettings, AssigningABlockMakesThePortOne) {
  CSerialSettings settings;
  settings.SetPortNo(7);
  DCB block{};
  block.BaudRate = 4800;
  block.ByteSize = 5;
  block.fOutxCtsFlow = 1;
  settings = block;
  EXPECT_EQ(settings.GetPortNo(), 1u);
  EXPECT_EQ(settings.GetBaudRate(), 4800u);
  EXPECT_EQ(settings.GetDataBits(), 5);
  EXPECT_TRUE(settings.GetOutCtsFlow());
  EXPECT_EQ(settings.GetEventChar(), 0);
  EXPECT_EQ(settings.DCBlength, 28u);
  EXPECT_TRUE(settings == block);
}

TEST(CSerialSettings, AssigningToItselfKeepsWhatIsCompared) {
  CSerialSettings settings = AllCompared();
  settings.ErrorChar = '?';
  const CSerialSettings& self = settings;
  settings = self;
  EXPECT_TRUE(settings == AllCompared());
  EXPECT_EQ(settings.ErrorChar, ' ');
  const DCB& block = settings;
  settings = block;
  EXPECT_TRUE(settings == static_cast<const DCB&>(AllCompared()));
  EXPECT_EQ(settings.GetPortNo(), 1u);
}

// ---- Listing --------------------------------------------------------------------------------------------------------

std::vector<std::string> Listed(std::vector<std::pair<std::string, SerialPortResult>> known) {
  FixedSerialPorts ports;
  ports.ports = std::move(known);
  const PlatformOverride<PlatformSerialPorts> guard(ports);
  std::vector<std::string> names = {"before"};
  CSerialSettings::GetAvailableComPorts(names);
  return names;
}

TEST(CSerialSettings, APortIsListedWhenItOpensOrIsBusyDeniedOrBroken) {
  EXPECT_EQ(Listed({{"COM1", SerialPortResult::Ok},
                    {"COM2", SerialPortResult::NotFound},
                    {"COM3", SerialPortResult::AccessDenied},
                    {"COM4", SerialPortResult::NotFunctioning},
                    {"COM5", SerialPortResult::InUse},
                    {"COM6", static_cast<SerialPortResult>(3)},
                    {"COM7", static_cast<SerialPortResult>(1117)}}),
            std::vector<std::string>({"COM1", "COM3", "COM4", "COM5"}));
}

TEST(CSerialSettings, WithoutPortsTheListIsEmptied) { EXPECT_TRUE(Listed({}).empty()); }

TEST(CSerialSettings, EachPortIsListedOnceInTheSystemsOrder) {
  EXPECT_EQ(Listed({{"B", SerialPortResult::Ok}, {"A", SerialPortResult::InUse}, {"B", SerialPortResult::Ok}}),
            std::vector<std::string>({"B", "A"}));
}

TEST(CSerialSettings, AtMost255PortsAreListed) {
  std::vector<std::pair<std::string, SerialPortResult>> known;
  for (int i = 1; i <= 300; ++i) known.emplace_back("COM" + std::to_string(i), SerialPortResult::Ok);
  const std::vector<std::string> names = Listed(known);
  EXPECT_EQ(names.size(), 255u);
  EXPECT_EQ(names.back(), "COM255");
}

}  // namespace
