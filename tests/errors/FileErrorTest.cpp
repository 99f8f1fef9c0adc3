#include "zelbase/errors/FileError.h"

#include <gtest/gtest.h>

#include <memory>

#include "tests/errors/FixedWording.h"
#include "zelbase/config/CRCChecksum.h"

namespace {

constexpr auto kUnknown = static_cast<FileError::CODE>(17);

TEST(FileError, FormatsTheBuiltInTextWithTheNameAfterTheLastBackslash) {
  EXPECT_EQ(FileError("C:\\a\\b.txt", FileError::Open).Format(), "Error opening \"b.txt\".");
  EXPECT_EQ(FileError("C:\\a\\b.txt", FileError::Read).Format(), "Error reading from \"b.txt\".");
  EXPECT_EQ(FileError("C:\\a\\b.txt", FileError::Write).Format(), "Error writing to \"b.txt\".");
}

TEST(FileError, DetailsAreTheWholeName) { EXPECT_EQ(FileError("C:\\a\\b.txt", FileError::Open).Details(), "C:\\a\\b.txt"); }

TEST(FileError, TypeFallsBackOnALiteral) { EXPECT_EQ(FileError("", FileError::Open).Type(), "File IO Error"); }

TEST(FileError, OnlyTheBackslashSeparates) {
  const struct {
    const char* file;
    const char* name;
  } rows[] = {{"/tmp/x.txt", "/tmp/x.txt"}, {"C:/a/b", "C:/a/b"}, {"a\\", ""}, {"", ""}, {"\\", ""},
              {"\\\\a\\b/c", "b/c"},        {"plain", "plain"}};
  for (const auto& row : rows) {
    EXPECT_EQ(FileError(row.file, FileError::Open).Format(), std::string("Error opening \"") + row.name + "\".");
  }
}

TEST(FileError, NameIsNoFormat) { EXPECT_EQ(FileError("%s%n%d%%.txt", FileError::Open).Format(), "Error opening \"%s%n%d%%.txt\"."); }

TEST(FileError, NameOfAnyLength) {
  const std::string name(100000, 'n');
  EXPECT_EQ(FileError("d\\" + name, FileError::Write).Format(), "Error writing to \"" + name + "\".");
}

TEST(FileError, UnknownCodeFormatsAnEmptyText) {
  const WordingGuard guard({{{"File Error", "Open"}, "x"}});
  EXPECT_EQ(FileError("a", kUnknown).Format(), "");
  EXPECT_EQ(FileError("a", static_cast<FileError::CODE>(-1)).Format(), "");
  EXPECT_EQ(FileError("a", kUnknown).Details(), "a");
}

TEST(FileError, TypeAndFormatAreWordedInTwoSections) {
  {
    const WordingGuard guard({{{"FileError", "Type"}, "Datei"},
                              {{"File Error", "Open"}, "%s geht nicht auf"},
                              {{"File Error", "Read"}, "%s: %s%%"},
                              {{"File Error", "Write"}, ""}});
    EXPECT_EQ(FileError("d\\f", FileError::Open).Type(), "Datei");
    EXPECT_EQ(FileError("d\\f", FileError::Open).Format(), "f geht nicht auf");
    EXPECT_EQ(FileError("d\\f", FileError::Read).Format(), "f: %");
    EXPECT_EQ(FileError("d\\f", FileError::Write).Format(), "");  // found, though empty
  }
  const WordingGuard crossed({{{"File Error", "Type"}, "wrong"}, {{"FileError", "Open"}, "wrong"}});
  EXPECT_EQ(FileError("f", FileError::Open).Type(), "File IO Error");
  EXPECT_EQ(FileError("f", FileError::Open).Format(), "Error opening \"f\".");
}

TEST(FileError, FallbackFollowsTheInstalledLanguage) {
  const NumberedTextsGuard guard({{12035, "Fehler beim Oeffnen von %s"}});
  EXPECT_EQ(FileError("f", FileError::Open).Format(), "Fehler beim Oeffnen von f");
  EXPECT_EQ(FileError("f", FileError::Read).Format(), "Error reading from \"f\".");
}

TEST(FileError, SameContentHasTheSameSignatureAndAnotherId) {
  const FileError first("a", FileError::Read);
  const FileError second("a", FileError::Read);
  EXPECT_EQ(first.Signature(), second.Signature());
  EXPECT_NE(first.ID(), second.ID());
  EXPECT_NE(first.Signature(), FileError("a", FileError::Open).Signature());
  EXPECT_NE(first.Signature(), FileError("b", FileError::Read).Signature());
}

TEST(FileError, SignatureIsTheSumOfNameAndCode) {
  CRCChecksum sum;
  sum += std::string("C:\\f");
  sum += std::string("\2\0\0\0", 4);
  EXPECT_EQ(FileError("C:\\f", FileError::Write).Signature(), sum.Value());
}

TEST(FileError, CopyAndAssignmentKeepNameAndCode) {
  const FileError error("a\\b", FileError::Write);
  const std::unique_ptr<Error> copy(error.Copy());
  ASSERT_NE(dynamic_cast<FileError*>(copy.get()), nullptr);
  EXPECT_EQ(copy->Format(), "Error writing to \"b\".");
  EXPECT_EQ(copy->ID(), error.ID());

  FileError other("x", FileError::Open);
  other.AddCause(FileError("cause", FileError::Open));
  other = error;
  EXPECT_EQ(other.Details(), "a\\b");
  EXPECT_EQ(other.Signature(), error.Signature());
  EXPECT_EQ(other.ID(), error.ID());
  EXPECT_EQ(other.NumCauses(), 0);
}

TEST(FileError, AssignmentFromAnOwnCause) {
  FileError error("outer", FileError::Open);
  auto* const cause = new FileError("inner", FileError::Write);
  error.AddCause(cause);
  error = *cause;
  EXPECT_EQ(error.Details(), "inner");
  EXPECT_EQ(error.Format(), "Error writing to \"inner\".");
  EXPECT_EQ(error.NumCauses(), 0);
}

TEST(FileError, CodesHaveTheirNumbers) {
  EXPECT_EQ(static_cast<int>(FileError::Open), 0);
  EXPECT_EQ(static_cast<int>(FileError::Read), 1);
  EXPECT_EQ(static_cast<int>(FileError::Write), 2);
}

}  // namespace
