#include "zelbase/errors/DaxError.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <memory>
#include <string>
#include <type_traits>

#include "tests/errors/FixedWording.h"
#include "tests/support/ChildProcess.h"
#include "tests/support/Printed.h"
#include "tests/support/ScopedTimeZone.h"
#include "zelbase/config/CRCChecksum.h"
#include "zelbase/errors/GlobalErrorList.h"
#include "zelbase/platform/RefusingThreads.h"
#include "zelbase/time/CExTime.h"

namespace {

constexpr double kTime = 1234567890125.0;  // 13 February 2009, 23:31:30.125 UTC

DAXCODE Code(int bits) { return static_cast<DAXCODE>(bits); }

std::string FormatOf(int bits) { return DaxError("Heading", Code(bits), "file", true, kTime).Format(); }

TEST(DaxError, CodesAreBits) {
  EXPECT_EQ(static_cast<int>(DaxError::Interpolate), 1);
  EXPECT_EQ(static_cast<int>(DaxError::Extrapolate), 2);
  EXPECT_EQ(static_cast<int>(DaxError::Read), 4);
  EXPECT_EQ(static_cast<int>(DaxError::Comp), 8);
}

TEST(DaxError, CodeIsKnownByItsGlobalNameToo) {
  static_assert(std::is_same_v<::DAXCODE, DaxError::DAXCODE>);
  const DAXCODE code = DaxError::Read;
  EXPECT_EQ(DaxError("s", code, "f", false, 0.0).Format(), "Error reading from \"s\".");
}

TEST(DaxError, GivesWhatItWasMadeWith) {
  const DaxError error("Heading", DaxError::Read, "C:\\a\\b.raw", true, 1.75);
  EXPECT_EQ(error.Stack(), "Heading");
  EXPECT_EQ(error.Filename(), "C:\\a\\b.raw");
  EXPECT_EQ(error.Time(), 1.75);
}

TEST(DaxError, FormatsTheBuiltInTextOfItsCode) {
  EXPECT_EQ(FormatOf(1), "Interpolation error \"Heading\".");
  EXPECT_EQ(FormatOf(2), "Extrapolation error \"Heading\".");
  EXPECT_EQ(FormatOf(4), "Error reading from \"Heading\".");
  EXPECT_EQ(FormatOf(8), "Computation failed \"Heading\".");
}

TEST(DaxError, CodeThreeFormatsTheExtrapolation) { EXPECT_EQ(FormatOf(3), "Extrapolation error \"Heading\"."); }

TEST(DaxError, HighestOfTheFourBitsDecides) {
  for (int bits = 0; bits < 16; ++bits) {
    // As it is told: from 1 to 8, each bit set replaces the text of the one before.
    std::string expected;
    if (bits & 1) expected = "Interpolation error \"Heading\".";
    if (bits & 2) expected = "Extrapolation error \"Heading\".";
    if (bits & 4) expected = "Error reading from \"Heading\".";
    if (bits & 8) expected = "Computation failed \"Heading\".";
    EXPECT_EQ(FormatOf(bits), expected) << bits;
    EXPECT_EQ(FormatOf(bits | 0x10), expected) << bits;
    EXPECT_EQ(FormatOf(bits | ~0xF), expected) << bits;
  }
}

TEST(DaxError, WithoutABitFormatIsEmpty) {
  const WordingGuard guard({{{"Dax Error", "Interpolate"}, "x"}, {{"Dax Error", ""}, "y"}});
  EXPECT_EQ(FormatOf(0), "");
  EXPECT_EQ(FormatOf(16), "");
}

TEST(DaxError, WordingsOfItsSectionComeFirst) {
  const WordingGuard guard({{{"Dax Error", "Type"}, "Daten"},
                            {{"Dax Error", "Interpolate"}, "zwischen %s"},
                            {{"Dax Error", "Extrapolate"}, "hinter %s und %s%%"},
                            {{"Dax Error", "Read"}, ""},
                            {{"Dax Error", "Comp"}, "ohne"}});
  EXPECT_EQ(DaxError("", DaxError::Read, "", true, 0.0).Type(), "Daten");
  EXPECT_EQ(FormatOf(1), "zwischen Heading");
  EXPECT_EQ(FormatOf(2), "hinter Heading und %");
  EXPECT_EQ(FormatOf(4), "");  // found, though empty
  EXPECT_EQ(FormatOf(8), "ohne");
}

TEST(DaxError, WordingOfALowerBitDoesNotServeAHigherOne) {
  const WordingGuard guard({{{"Dax Error", "Interpolate"}, "x"}, {{"DaxError", "Comp"}, "x"}, {{"DaxError", "Type"}, "x"}});
  EXPECT_EQ(FormatOf(9), "Computation failed \"Heading\".");
  EXPECT_EQ(DaxError("", DaxError::Comp, "", true, 0.0).Type(), "Dax Error");
}

TEST(DaxError, FallbackFollowsTheInstalledLanguage) {
  const NumberedTextsGuard guard({{12031, "Extrapolatiefout in %s"}});
  EXPECT_EQ(FormatOf(2), "Extrapolatiefout in Heading");
  EXPECT_EQ(FormatOf(1), "Interpolation error \"Heading\".");
}

TEST(DaxError, TypeFallsBackOnALiteralWithABlank) { EXPECT_EQ(DaxError("", DaxError::Read, "", true, 0.0).Type(), "Dax Error"); }

TEST(DaxError, WholeStackGoesIntoTheTextAndNotItsLastPart) {
  EXPECT_EQ(DaxError("C:\\stacks\\Heading", DaxError::Comp, "f", true, 0.0).Format(), "Computation failed \"C:\\stacks\\Heading\".");
}

TEST(DaxError, StackIsNoFormatAndOfAnyLength) {
  EXPECT_EQ(DaxError("%s%n%d%%", DaxError::Comp, "f", true, 0.0).Format(), "Computation failed \"%s%n%d%%\".");
  const std::string stack(100000, 's');
  EXPECT_EQ(DaxError(stack, DaxError::Comp, "f", true, 0.0).Format(), "Computation failed \"" + stack + "\".");
}

// --- Details --------------------------------------------------------------------------------------------------------

TEST(DaxError, DetailsAreFileSwitchTimeAndStack) {
  const CLocale form;  // of the date
  const ScopedTimeZone local("UTC0");
  EXPECT_EQ(DaxError("Heading", DaxError::Read, "C:\\a\\b.raw", false, kTime).Details(), "C:\\a\\b.raw Off 02/13/09 23:31:30.125 Heading");
}

TEST(DaxError, OnHasTwoBlanksBehindIt) {
  const CLocale form;  // of the date
  const ScopedTimeZone local("UTC0");
  EXPECT_EQ(DaxError("Heading", DaxError::Read, "b.raw", true, kTime).Details(), "b.raw On  02/13/09 23:31:30.125 Heading");
}

TEST(DaxError, DetailsShowLocalTime) {
  const CLocale form;  // of the date
  const ScopedTimeZone local("IST-5:30");
  EXPECT_EQ(DaxError("s", DaxError::Read, "f", false, kTime).Details(), "f Off 02/14/09 05:01:30.125 s");
}

TEST(DaxError, DetailsOfEmptyTextsAreBlanksAndTheTime) {
  const CLocale form;  // of the date
  const ScopedTimeZone local("UTC0");
  EXPECT_EQ(DaxError("", Code(0), "", true, 0.0).Details(), " On  01/01/70 00:00:00.000 ");
}

TEST(DaxError, DetailsOutsideTheCalendarHaveTheMillisecondsOnly) {
  const double kNan = std::numeric_limits<double>::quiet_NaN();
  EXPECT_EQ(DaxError("s", DaxError::Read, "f", true, -1500.0).Details(), "f On  .-500 s");
  EXPECT_EQ(DaxError("s", DaxError::Read, "f", true, kNan).Details(), "f On  .000 s");
  EXPECT_EQ(DaxError("s", DaxError::Read, "f", true, std::numeric_limits<double>::infinity()).Details(), "f On  .000 s");
}

// --- Time -----------------------------------------------------------------------------------------------------------

TEST(DaxError, ErrorTimeIsTheTimeOfTheDataInWholeSeconds) {
  EXPECT_EQ(DaxError("s", DaxError::Read, "f", true, kTime).ErrorTime(), 1234567890);
  EXPECT_EQ(DaxError("s", DaxError::Read, "f", true, 1999.999).ErrorTime(), 1);
  EXPECT_EQ(DaxError("s", DaxError::Read, "f", true, 0.0).ErrorTime(), 0);
}

TEST(DaxError, ErrorTimeIsTruncatedTowardsZero) {
  EXPECT_EQ(DaxError("s", DaxError::Read, "f", true, -1999.0).ErrorTime(), -1);
  EXPECT_EQ(DaxError("s", DaxError::Read, "f", true, -999.0).ErrorTime(), 0);
}

TEST(DaxError, ErrorTimeOfWhatDoesNotFitIsTheSmallest) {
  const long long kSmallest = std::numeric_limits<long long>::min();
  for (const double time : {std::numeric_limits<double>::quiet_NaN(), std::numeric_limits<double>::infinity(), -1e300, 1e300}) {
    EXPECT_EQ(DaxError("s", DaxError::Read, "f", true, time).ErrorTime(), kSmallest) << time;
  }
}

TEST(DaxError, StandsInAListAtTheTimeOfTheData) {
  GlobalErrorList& list = GlobalErrorList::Get();
  list.Clear();
  DaxError("old", DaxError::Read, "f", true, 5000.0).Report("Stacks");
  list.ClearFromTime(6);  // keeps what is before that
  ASSERT_EQ(list.NumErrors(true), 1);
  EXPECT_EQ(list[0].ErrorTime(), 5);
  list.ClearFromTime(5);
  EXPECT_EQ(list.NumErrors(true), 0);
  list.Clear();
}

// --- Signature ------------------------------------------------------------------------------------------------------

// The checksum over all bytes in a row, written out by hand.
unsigned int SumOf(const std::string& bytes) {
  unsigned int sum = 0xFFFFFFFFu;
  for (const char c : bytes) {
    sum ^= static_cast<unsigned char>(c);
    for (int bit = 0; bit < 8; ++bit) sum = (sum >> 1) ^ ((sum & 1) != 0 ? 0xEDB88320u : 0u);
  }
  return sum;
}

std::string Bytes(const char* text, std::size_t size) { return std::string(text, size); }

TEST(DaxError, SignatureIsTheSumOfStackCodeFileSwitchAndTime) {
  // 1234567890125 is 0x11F71FB04CD.
  const std::string time = Bytes("\xCD\x04\xFB\x71", 4);
  EXPECT_EQ(DaxError("Heading", DaxError::Read, "b.raw", true, kTime).Signature(),
            SumOf("Heading" + Bytes("\4\0\0\0", 4) + "b.raw" + Bytes("\1", 1) + time));
  EXPECT_EQ(DaxError("Heading", Code(-1), "b.raw", false, kTime).Signature(),
            SumOf("Heading" + Bytes("\xFF\xFF\xFF\xFF", 4) + "b.raw" + Bytes("\0", 1) + time));
}

TEST(DaxError, SwitchIsOneByteInTheSignature) {
  CRCChecksum four;
  four += std::string("s");
  four += 1;
  four += std::string("f");
  four += true;  // an int to the checksum
  four += 0u;
  EXPECT_NE(DaxError("s", Code(1), "f", true, 0.0).Signature(), four.Value());
  EXPECT_EQ(DaxError("s", Code(1), "f", true, 0.0).Signature(), SumOf(Bytes("s\1\0\0\0f\1\0\0\0\0", 11)));
}

TEST(DaxError, TimesOfOurDaysHaveDifferentSignatures) {
  const DaxError first("s", DaxError::Read, "f", true, 1.7e12);
  EXPECT_NE(first.Signature(), DaxError("s", DaxError::Read, "f", true, 1.7e12 + 1.0).Signature());
  EXPECT_EQ(first.Signature(), DaxError("s", DaxError::Read, "f", true, 1.7e12 + 0.5).Signature());
}

TEST(DaxError, TimeCountsInTheSignatureWithItsLowHalf) {
  const auto signature = [](double time) { return DaxError("s", DaxError::Read, "f", true, time).Signature(); };
  EXPECT_EQ(signature(7.0), signature(7.0 + 4294967296.0));
  EXPECT_EQ(signature(-1.0), signature(4294967295.0));
  EXPECT_EQ(signature(-0.5), signature(0.0));
  // The smallest 64-bit number, whose low half is 0.
  EXPECT_EQ(signature(std::numeric_limits<double>::quiet_NaN()), signature(0.0));
  EXPECT_EQ(signature(1e300), signature(0.0));
}

TEST(DaxError, EveryFieldCountsInTheSignature) {
  const DaxError error("s", DaxError::Read, "f", true, 1000.0);
  EXPECT_EQ(error.Signature(), DaxError("s", DaxError::Read, "f", true, 1000.0).Signature());
  EXPECT_NE(error.ID(), DaxError("s", DaxError::Read, "f", true, 1000.0).ID());
  EXPECT_NE(error.Signature(), DaxError("t", DaxError::Read, "f", true, 1000.0).Signature());
  EXPECT_NE(error.Signature(), DaxError("s", DaxError::Comp, "f", true, 1000.0).Signature());
  EXPECT_NE(error.Signature(), DaxError("s", Code(4 + 16), "f", true, 1000.0).Signature());
  EXPECT_NE(error.Signature(), DaxError("s", DaxError::Read, "g", true, 1000.0).Signature());
  EXPECT_NE(error.Signature(), DaxError("s", DaxError::Read, "f", false, 1000.0).Signature());
  EXPECT_NE(error.Signature(), DaxError("s", DaxError::Read, "f", true, 2000.0).Signature());
}

// --- Copies ---------------------------------------------------------------------------------------------------------

TEST(DaxError, CopyIsTheSameErrorOfTheSameClass) {
  DaxError error("Heading", DaxError::Comp, "b.raw", true, kTime);
  error.AddCause(DaxError("cause", DaxError::Read, "c", false, 2000.0));
  const std::unique_ptr<Error> copy(error.Copy());
  const auto* const dax = dynamic_cast<DaxError*>(copy.get());
  ASSERT_NE(dax, nullptr);
  EXPECT_EQ(dax->Stack(), "Heading");
  EXPECT_EQ(dax->Filename(), "b.raw");
  EXPECT_EQ(dax->Time(), kTime);
  EXPECT_EQ(dax->Format(), error.Format());
  EXPECT_EQ(dax->Details(), error.Details());
  EXPECT_EQ(dax->Signature(), error.Signature());
  EXPECT_EQ(dax->ID(), error.ID());
  EXPECT_EQ(dax->ErrorTime(), 1234567890);
  ASSERT_EQ(dax->NumCauses(), 1);
  EXPECT_NE(&dax->GetCause(0), &error.GetCause(0));
  EXPECT_EQ(dax->GetCause(0).ErrorTime(), 2);
}

TEST(DaxError, AssignmentTakesOverEverything) {
  const DaxError error("Heading", DaxError::Comp, "b.raw", true, kTime);
  DaxError other("x", DaxError::Read, "y", false, 0.0);
  other.AddCause(DaxError("cause", DaxError::Read, "c", false, 2000.0));
  other = error;
  EXPECT_EQ(other.Details(), error.Details());
  EXPECT_EQ(other.Signature(), error.Signature());
  EXPECT_EQ(other.ID(), error.ID());
  EXPECT_EQ(other.ErrorTime(), error.ErrorTime());
  EXPECT_EQ(other.NumCauses(), 0);
}

TEST(DaxError, AssignmentFromAnOwnCause) {
  DaxError error("outer", DaxError::Read, "f", false, 0.0);
  auto* const cause = new DaxError("inner", DaxError::Comp, "g", true, 3000.0);
  error.AddCause(cause);
  error = *cause;
  EXPECT_EQ(error.Stack(), "inner");
  EXPECT_EQ(error.Format(), "Computation failed \"inner\".");
  EXPECT_EQ(error.Filename(), "g");
  EXPECT_EQ(error.ErrorTime(), 3);
  EXPECT_EQ(error.NumCauses(), 0);
}

// --- Clock ----------------------------------------------------------------------------------------------------------

TEST(DaxError, DoesNotStartTheClockDiscipline) {
  ChildProcess child([] {
    RefusingThreads threads;
    const PlatformOverride<PlatformThreads> guard(threads);
    const DaxError error("s", DaxError::Read, "f", true, kTime);
    const DaxError copy(error);
    if (copy.Details().empty() || copy.Signature() != error.Signature()) return 2;
    if (!threads.Requests().empty()) return 3;
    CExTime();  // which does, so that the answer above says something
    return threads.Requests().size() == 1 ? 0 : 4;
  });
  EXPECT_EQ(child.Wait(), 0) << child.ErrorText();
}

}  // namespace
