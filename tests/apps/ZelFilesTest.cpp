// zel files and zel crc: files found, and the suite's checksum of them.

#include "tests/apps/ZelFixture.h"

class ZelFiles : public Zel {};

TEST_F(ZelFiles, FindMatchesByMaskInAFolderAndBelow) {
  Write("a.txt", "1");
  Write("B.TXT", "22");
  Write("c.ini", "");
  m_folder.MakeFolder("sub");
  Write("sub/d.txt", "");
  const std::string folder = m_folder.File("");
  ProgramResult result = Run({"files", "find", folder, "*.txt"});
  EXPECT_EQ(result.exitCode, 0);
  EXPECT_EQ(result.output, m_folder.File("B.TXT") + "\n" + m_folder.File("a.txt") + "\n");
  result = Run({"files", "find", folder, "*.txt", "--recursive"});
  EXPECT_TRUE(Holds(result.output, m_folder.File("sub/d.txt"))) << result.output;
  result = Run({"files", "find", folder, "b*", "--long"});
  EXPECT_TRUE(Holds(OneBlank(result.output), " 2 20")) << "size and year: " << result.output;
  EXPECT_EQ(Run({"files", "find", folder, "*.exe"}).exitCode, 1);
  EXPECT_EQ(Run({"files", "find", m_folder.File("none")}).exitCode, 2);
}

// Every byte goes as a signed number of four bytes through the register, without a last inversion.
TEST_F(ZelFiles, CrcIsTheSuitesOwnAndIsChecked) {
  Write("empty", "");
  EXPECT_TRUE(Run({"crc", m_folder.File("empty")}).output.starts_with("FFFFFFFF  "));
  Write("one", "\x80");
  Write("four", std::string("\x80\0\0\0", 4));
  const std::string sums = Run({"crc", m_folder.File("one"), m_folder.File("four")}).output;
  Write("sums", sums);
  ProgramResult result = Run({"crc", "--check", m_folder.File("sums")});
  EXPECT_EQ(result.exitCode, 0) << result.output;
  EXPECT_TRUE(Holds(result.output, "one: as it was"));
  Write("one", "\x81");
  result = Run({"crc", "--check", m_folder.File("sums")});
  EXPECT_EQ(result.exitCode, 1);
  EXPECT_TRUE(Holds(result.output, "one: CHANGED") && Holds(result.output, "four: as it was")) << result.output;
  EXPECT_EQ(Run({"crc", m_folder.File("none")}).exitCode, 1);
  EXPECT_EQ(Run({"crc"}).exitCode, 2);
  Write("sums", "12 34\n");
  EXPECT_TRUE(Holds(Run({"crc", "--check", m_folder.File("sums")}).errors, "not a checksum and a path"));
}
