#include "zelbase/errors/FileObjectError.h"

#include <gtest/gtest.h>

#include <memory>

#include "tests/errors/FixedWording.h"
#include "zelbase/config/CRCChecksum.h"

namespace {

constexpr const char* kFile = "C:\\ini\\vessel.ini";

TEST(FileObjectError, FormatsTheBuiltInTexts) {
  EXPECT_EQ(FileObjectError(kFile, "Draught", FileObjectError::SectionNotFound).Format(),
            "Section \"Draught\" could not be found in \"vessel.ini\".");
  EXPECT_EQ(FileObjectError(kFile, "Draught", "Bow", FileObjectError::KeyNotFound).Format(),
            "The key \"Bow\" could not be found in section \"Draught\" of \"vessel.ini\".");
}

TEST(FileObjectError, TypeAndDetails) {
  const FileObjectError error(kFile, "s", FileObjectError::SectionNotFound);
  EXPECT_EQ(error.Type(), "Configuration File Error");
  EXPECT_EQ(error.Details(), kFile);
}

TEST(FileObjectError, FormWithoutAKeyHasAnEmptyOne) {
  EXPECT_EQ(FileObjectError("f", "s", FileObjectError::KeyNotFound).Format(), "The key \"\" could not be found in section \"s\" of \"f\".");
  EXPECT_EQ(FileObjectError("f", "s", FileObjectError::KeyNotFound).Signature(),
            FileObjectError("f", "s", "", FileObjectError::KeyNotFound).Signature());
}

TEST(FileObjectError, NamesAreNoFormats) {
  EXPECT_EQ(FileObjectError("%s", "%s%n", "%%", FileObjectError::KeyNotFound).Format(),
            "The key \"%%\" could not be found in section \"%s%n\" of \"%s\".");
}

TEST(FileObjectError, UnknownCodeFormatsAnEmptyText) {
  EXPECT_EQ(FileObjectError("f", "s", "k", static_cast<FileObjectError::CODE>(2)).Format(), "");
  EXPECT_EQ(FileObjectError("f", "s", "k", static_cast<FileObjectError::CODE>(-1)).Format(), "");
}

TEST(FileObjectError, WordingOfItsSection) {
  const WordingGuard guard({{{"FileObject Error", "Type"}, "Einstellungen"},
                            {{"FileObject Error", "SectionNotFound"}, "[%s] fehlt in %s"},
                            {{"FileObject Error", "KeyNotFound"}, "%s|%s|%s|%s"}});
  EXPECT_EQ(FileObjectError("d\\f", "s", FileObjectError::SectionNotFound).Type(), "Einstellungen");
  EXPECT_EQ(FileObjectError("d\\f", "s", FileObjectError::SectionNotFound).Format(), "[s] fehlt in f");
  EXPECT_EQ(FileObjectError("d\\f", "s", "k", FileObjectError::KeyNotFound).Format(), "k|s|f|");
}

TEST(FileObjectError, FallbackFollowsTheInstalledLanguage) {
  const NumberedTextsGuard guard({{12040, "%s? %s!"}, {12041, "%s, %s, %s"}});
  EXPECT_EQ(FileObjectError("d\\f", "s", FileObjectError::SectionNotFound).Format(), "s? f!");
  EXPECT_EQ(FileObjectError("d\\f", "s", "k", FileObjectError::KeyNotFound).Format(), "k, s, f");
}

TEST(FileObjectError, SignatureIsTheSumOfFileSectionKeyAndCode) {
  CRCChecksum sum;
  sum += std::string("fsk");
  sum += 1;
  EXPECT_EQ(FileObjectError("f", "s", "k", FileObjectError::KeyNotFound).Signature(), sum.Value());
}

TEST(FileObjectError, SignatureHasNoSeparators) {
  EXPECT_EQ(FileObjectError("f", "ab", "", FileObjectError::KeyNotFound).Signature(),
            FileObjectError("f", "a", "b", FileObjectError::KeyNotFound).Signature());
  EXPECT_NE(FileObjectError("f", "a", FileObjectError::KeyNotFound).Signature(),
            FileObjectError("f", "a", FileObjectError::SectionNotFound).Signature());
}

TEST(FileObjectError, CopyAndAssignmentKeepEverything) {
  const FileObjectError error(kFile, "s", "k", FileObjectError::KeyNotFound);
  const std::unique_ptr<Error> copy(error.Copy());
  ASSERT_NE(dynamic_cast<FileObjectError*>(copy.get()), nullptr);
  EXPECT_EQ(copy->Format(), error.Format());
  EXPECT_EQ(copy->Signature(), error.Signature());
  EXPECT_EQ(copy->ID(), error.ID());

  FileObjectError other("x", "y", FileObjectError::SectionNotFound);
  ASSERT_NE(other.ID(), error.ID());
  other = error;
  EXPECT_EQ(other.ID(), error.ID());
  EXPECT_EQ(other.Format(), error.Format());
  EXPECT_EQ(other.Details(), kFile);
  EXPECT_EQ(other.Signature(), error.Signature());
  EXPECT_EQ(other.ErrorTime(), error.ErrorTime());
}

TEST(FileObjectError, AssignmentFromAnOwnCause) {
  FileObjectError error("outer", "s", FileObjectError::SectionNotFound);
  auto* const cause = new FileObjectError("inner", "section", "key", FileObjectError::KeyNotFound);
  error.AddCause(cause);
  error = *cause;
  EXPECT_EQ(error.Format(), "The key \"key\" could not be found in section \"section\" of \"inner\".");
}

TEST(FileObjectError, CodesHaveTheirNumbers) {
  EXPECT_EQ(static_cast<int>(FileObjectError::SectionNotFound), 0);
  EXPECT_EQ(static_cast<int>(FileObjectError::KeyNotFound), 1);
}

}  // namespace
