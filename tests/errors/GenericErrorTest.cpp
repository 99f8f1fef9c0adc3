#include "zelbase/errors/GenericError.h"

#include <gtest/gtest.h>

#include <memory>

#include "zelbase/config/CRCChecksum.h"

namespace {

unsigned int SumOf(const std::string& text) {
  CRCChecksum sum;
  sum += text;
  return sum.Value();
}

TEST(GenericError, NewOneIsEmptyAndOfTheGeneralType) {
  const GenericError error;
  EXPECT_EQ(error.Format(), "");
  EXPECT_EQ(error.Details(), "");
  EXPECT_EQ(error.Type(), "General Error");
  EXPECT_EQ(error.Signature(), 0xFFFFFFFFu);
}

TEST(GenericError, HoldsItsTexts) {
  const GenericError described("description");
  EXPECT_EQ(described.Format(), "description");
  EXPECT_EQ(described.Details(), "");
  EXPECT_EQ(described.Type(), "General Error");

  const GenericError whole("description", "details", "type");
  EXPECT_EQ(whole.Format(), "description");
  EXPECT_EQ(whole.Details(), "details");
  EXPECT_EQ(whole.Type(), "type");
}

TEST(GenericError, TextsCanBeSet) {
  GenericError error("a", "b", "c");
  error.SetDescription("description");
  error.SetDetails("details");
  error.SetType("type");
  EXPECT_EQ(error.Format(), "description");
  EXPECT_EQ(error.Details(), "details");
  EXPECT_EQ(error.Type(), "type");
  error.SetType("");
  EXPECT_EQ(error.Type(), "General Error");
}

TEST(GenericError, DescriptionIsNoFormat) {
  const GenericError error("100 %s of %n and 50%%");
  EXPECT_EQ(error.Format(), "100 %s of %n and 50%%");
}

TEST(GenericError, SignatureIsTheSumOfDescriptionDetailsAndType) {
  EXPECT_EQ(GenericError("1234", "567", "89").Signature(), 0x340BC6D9u);  // the check value of the nine digits
  EXPECT_EQ(GenericError("x", "y", "").Signature(), SumOf("xy"));
}

TEST(GenericError, SignatureHasNoSeparators) {
  EXPECT_EQ(GenericError("ab", "", "").Signature(), GenericError("a", "b", "").Signature());
  EXPECT_EQ(GenericError("ab", "", "").Signature(), GenericError("", "", "ab").Signature());
}

TEST(GenericError, SignatureCoversNeitherTheBaseNorTheFallbackType) {
  GenericError error("a");
  const unsigned int signature = error.Signature();
  error.SetID(1);
  error.SetErrorTime(2);
  error.SetSounding(true);
  error.AddCause(GenericError("b"));
  EXPECT_EQ(error.Signature(), signature);
  EXPECT_NE(GenericError("a", "", "General Error").Signature(), signature);
}

TEST(GenericError, CopyIsOfItsClass) {
  GenericError error("a", "b", "c");
  error.AddCause(GenericError("cause"));
  const std::unique_ptr<Error> copy(error.Copy());
  ASSERT_NE(dynamic_cast<GenericError*>(copy.get()), nullptr);
  EXPECT_EQ(copy->Format(), "a");
  EXPECT_EQ(copy->Details(), "b");
  EXPECT_EQ(copy->Type(), "c");
  EXPECT_EQ(copy->ID(), error.ID());
  EXPECT_EQ(copy->NumCauses(), 1);
}

TEST(GenericError, AssignmentTakesOverTextsAndBase) {
  GenericError target("x", "y", "z");
  const GenericError source("a", "b", "c");
  target = source;
  EXPECT_EQ(target.Format(), "a");
  EXPECT_EQ(target.Details(), "b");
  EXPECT_EQ(target.Type(), "c");
  EXPECT_EQ(target.ID(), source.ID());
}

TEST(GenericError, TextsMayBeVeryLong) {
  const std::string text(1000000, 'x');
  const GenericError error(text, text, text);
  EXPECT_EQ(error.Format(), text);
  EXPECT_EQ(error.Signature(), SumOf(text + text + text));
}

}  // namespace
