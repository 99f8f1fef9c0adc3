#include "zelbase/frame/NumberFormat.h"

#include <gtest/gtest.h>

#include <cfloat>
#include <climits>
#include <cmath>
#include <limits>
#include <random>
#include <string>

#include "tests/support/CommaLocale.h"
#include "tests/support/Printed.h"
#include "tests/support/RandomDoubles.h"

namespace {

constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr double kNan = std::numeric_limits<double>::quiet_NaN();

TEST(NumberFormat, FormatStringsOfTheArguments) {
  EXPECT_EQ(GetFormatStringDouble(), "%f");
  EXPECT_EQ(GetFormatStringDouble(3), "%.3f");
  EXPECT_EQ(GetFormatStringDouble(8, 2), "%8.2f");
  EXPECT_EQ(GetFormatStringInt(), "%d");
  EXPECT_EQ(GetFormatStringInt(4), "%4d");
}

TEST(NumberFormat, FormatStringsTakeTheArgumentsAsTheyAre) {
  EXPECT_EQ(GetFormatStringInt(-4), "%-4d");
  EXPECT_EQ(GetFormatStringInt(0), "%0d");
  EXPECT_EQ(GetFormatStringInt(INT_MIN), "%-2147483648d");
  EXPECT_EQ(GetFormatStringDouble(-1), "%.-1f");
  EXPECT_EQ(GetFormatStringDouble(0), "%.0f");
  EXPECT_EQ(GetFormatStringDouble(-8, 2), "%-8.2f");
  EXPECT_EQ(GetFormatStringDouble(INT_MAX, INT_MIN), "%2147483647.-2147483648f");
}

TEST(NumberFormat, DoublesByWidthAndDecimals) {
  EXPECT_EQ(FormatDouble(2.5), "2.500000");
  EXPECT_EQ(FormatDouble(-0.0), "-0.000000");
  EXPECT_EQ(FormatDouble(3.14159, 3), "3.142");
  EXPECT_EQ(FormatDouble(3.14159, 8, 2), "    3.14");
  EXPECT_EQ(FormatDouble(-3.14159, 3, 2), "-3.14");
}

TEST(NumberFormat, AnExactHalfRoundsToEven) {
  EXPECT_EQ(FormatDouble(0.5, 0), "0");
  EXPECT_EQ(FormatDouble(1.5, 0), "2");
  EXPECT_EQ(FormatDouble(2.5, 0), "2");
  EXPECT_EQ(FormatDouble(0.125, 2), "0.12");
  EXPECT_EQ(FormatDouble(-0.375, 2), "-0.38");
  EXPECT_EQ(FormatDouble(1.005, 2), "1.00");  // a little less than that
}

TEST(NumberFormat, ANegativeWidthPadsOnTheRight) {
  EXPECT_EQ(FormatDouble(1.5, -8, 2), "1.50    ");
  EXPECT_EQ(FormatInt(42, -5), "42   ");
  EXPECT_EQ(FormatInt(42, 5), "   42");
  EXPECT_EQ(FormatInt(-42, 0), "-42");
}

TEST(NumberFormat, DecimalsAreTakenWithin0And350) {
  for (const int decimals : {-1, INT_MIN}) {
    EXPECT_EQ(FormatDouble(2.0, decimals), "2");
    EXPECT_EQ(FormatDouble(2.0, 3, decimals), "  2");
  }
  for (const int decimals : {350, 351, INT_MAX}) {
    EXPECT_EQ(FormatDouble(2.0, decimals), "2." + std::string(350, '0'));
    EXPECT_EQ(FormatDouble(2.0, 1, decimals), "2." + std::string(350, '0'));
  }
}

TEST(NumberFormat, WidthsAreTakenWithin4096) {
  const std::string blanks(4095, ' ');
  for (const int width : {4096, 4097, INT_MAX}) {
    EXPECT_EQ(FormatDouble(2.0, width, 0), blanks + "2");
    EXPECT_EQ(FormatInt(2, width), blanks + "2");
    EXPECT_EQ(FormatDouble(2.0, -width, 0), "2" + blanks);
    EXPECT_EQ(FormatInt(2, -width), "2" + blanks);
  }
  EXPECT_EQ(FormatDouble(2.0, INT_MIN, 0), "2" + blanks);
  EXPECT_EQ(FormatInt(2, INT_MIN), "2" + blanks);
}

TEST(NumberFormat, OneE308Has316Characters) {
  EXPECT_EQ(FormatDouble(1e308).size(), 309u + 1 + 6);
  EXPECT_EQ(FormatDouble(1e308), Printed("%f", 1e308));
  EXPECT_EQ(FormatDouble(-DBL_MAX, 400, 350), Printed("%400.350f", -DBL_MAX));
}

TEST(NumberFormat, WhatIsNotFinitePrintsAsPrintfHasIt) {
  EXPECT_EQ(FormatDouble(kInfinity), "inf");
  EXPECT_EQ(FormatDouble(-kInfinity, 3), "-inf");
  EXPECT_EQ(FormatDouble(kNan, 6, 2), "   nan");
  EXPECT_EQ(FormatDouble(std::copysign(kNan, -1.0), 2), "-nan");
  EXPECT_EQ(FormatDouble(kInfinity, "%08.2f"), "     inf");  // no zeros in front of a word
  EXPECT_EQ(FormatDouble(-kInfinity, "%E"), "-INF");
  EXPECT_EQ(FormatDouble(kNan, "%+G"), "+NAN");
}

TEST(NumberFormat, IntsInFull) {
  EXPECT_EQ(FormatInt(0), "0");
  EXPECT_EQ(FormatInt(INT_MIN), "-2147483648");
  EXPECT_EQ(FormatInt(INT_MAX, 12), "  2147483647");
}

TEST(NumberFormat, TheCallersFormatPrints) {
  EXPECT_EQ(FormatDouble(1.5, "%08.3f"), "0001.500");
  EXPECT_EQ(FormatDouble(3.25, "h = %+.1f m"), "h = +3.2 m");
  EXPECT_EQ(FormatDouble(1500.0, "%e"), "1.500000e+03");
  EXPECT_EQ(FormatDouble(1500.0, "%G"), "1500");
  EXPECT_EQ(FormatDouble(1.0, "%a"), "0x1p+0");
  EXPECT_EQ(FormatInt(7, "%03d%%"), "007%");
  EXPECT_EQ(FormatInt(255, "%#x"), "0xff");
  EXPECT_EQ(FormatInt(-1, "%u"), "4294967295");
  EXPECT_EQ(FormatInt(-1, "%X"), "FFFFFFFF");
  EXPECT_EQ(FormatInt(8, "%o"), "10");
  EXPECT_EQ(FormatInt('A', "<%c>"), "<A>");
  EXPECT_EQ(FormatInt(5, "%i"), "5");
}

TEST(NumberFormat, AFormatWithoutAConversionComesBack) {
  EXPECT_EQ(FormatDouble(1.5, ""), "");
  EXPECT_EQ(FormatDouble(1.5, "no number"), "no number");
  EXPECT_EQ(FormatInt(1, "d"), "d");
  EXPECT_EQ(FormatInt(1, std::string("a\0b", 3)), std::string("a\0b", 3));
}

TEST(NumberFormat, TwoPercentSignsAreOne) {
  EXPECT_EQ(FormatDouble(1.5, "50%%"), "50%");
  EXPECT_EQ(FormatInt(1, "%%%%d"), "%%d");
  EXPECT_EQ(FormatInt(1, "%%%d%%"), "%1%");
}

TEST(NumberFormat, AnyOtherFormatGivesTheEmptyText) {
  for (const char* format :
       {"%s",  "%n",  "%p",   "%m",  "%S",  "%C",   "%hhn", "%",    "x%",   "100% ", "%5",    "%.",     "%-",   "%5%",  "%-%", "%\n", "%y",
        "%'f", "%'d", "%I6d", "%*f", "%*d", "%.*f", "%.*d", "%1$f", "%1$d", "%.-1f", "%.-1d", "%.2.3f", "%5-d", "%5-f", "%+",  "%%%"}) {
    EXPECT_EQ(FormatDouble(1.5, format), "") << format;
    EXPECT_EQ(FormatInt(1, format), "") << format;
  }
}

TEST(NumberFormat, AConversionOfTheOtherKindGivesTheEmptyText) {
  for (const char* format : {"%d", "%i", "%o", "%u", "%x", "%X", "%c", "x = %5d"}) EXPECT_EQ(FormatDouble(1.5, format), "") << format;
  for (const char* format : {"%f", "%F", "%e", "%E", "%g", "%G", "%a", "%A", "%.2f m"}) EXPECT_EQ(FormatInt(1, format), "") << format;
}

TEST(NumberFormat, ALengthGivesTheEmptyText) {
  for (const char* format : {"%lf", "%Lf", "%le", "%lg", "%hf"}) EXPECT_EQ(FormatDouble(1.5, format), "") << format;
  for (const char* format : {"%ld", "%lld", "%hd", "%hhu", "%zu", "%jd", "%td", "%I64d", "%lc"})
    EXPECT_EQ(FormatInt(1, format), "") << format;
}

TEST(NumberFormat, ASecondConversionGivesTheEmptyText) {
  EXPECT_EQ(FormatDouble(1.5, "%f%f"), "");
  EXPECT_EQ(FormatDouble(1.5, "%f %s"), "");
  EXPECT_EQ(FormatDouble(1.5, "%f %"), "");
  EXPECT_EQ(FormatInt(1, "%d, %d"), "");
  EXPECT_EQ(FormatInt(1, "%d%n"), "");
}

TEST(NumberFormat, WidthAndPrecisionOfTheCallersFormatHaveFourDigitsAtMost) {
  EXPECT_EQ(FormatDouble(1.5, "%9999f").size(), 9999u);
  EXPECT_EQ(FormatDouble(1.5, "%.9999f").size(), 10001u);
  EXPECT_EQ(FormatInt(1, "%9999d").size(), 9999u);
  EXPECT_EQ(FormatInt(1, "%.9999d").size(), 9999u);
  for (const char* format : {"%10000f", "%.10000f", "%99999999999999999999f", "%.99999999999999999999f", "%.00001f"}) {
    EXPECT_EQ(FormatDouble(1.5, format), "") << format;
  }
  for (const char* format : {"%10000d", "%.10000d", "%99999999999999999999d"}) EXPECT_EQ(FormatInt(1, format), "") << format;
  // Zeros in front of a width are flags.
  EXPECT_EQ(FormatInt(1, "%000000000005d"), "00001");
}

TEST(NumberFormat, TheFormatOfTheArgumentsPrintsTheSame) {
  RandomDoubles doubles;
  for (int i = 0; i < 20'000; ++i) {
    const double value = doubles.Next();
    const int width = static_cast<int>(doubles.Below(60)) - 30;
    const int decimals = static_cast<int>(doubles.Below(20));
    ASSERT_EQ(FormatDouble(value, width, decimals), FormatDouble(value, GetFormatStringDouble(width, decimals)));
    ASSERT_EQ(FormatDouble(value, decimals), FormatDouble(value, GetFormatStringDouble(decimals)));
    const int whole = static_cast<int>(doubles.Below(1u << 31));
    ASSERT_EQ(FormatInt(-whole, width), FormatInt(-whole, GetFormatStringInt(width)));
  }
}

TEST(NumberFormatLong, EqualsTheCLibraryOnAMillionRandomNumbers) {
  RandomDoubles doubles;
  for (int i = 0; i < 1'000'000; ++i) {
    const double value = doubles.Next();
    const int decimals = static_cast<int>(doubles.Below(12));
    switch (i % 4) {
      case 0: {
        ASSERT_EQ(FormatDouble(value), Printed("%f", value));
        break;
      }
      case 1: {
        ASSERT_EQ(FormatDouble(value, decimals), Printed("%.*f", decimals, value));
        break;
      }
      case 2: {
        const int width = static_cast<int>(doubles.Below(60)) - 30;
        ASSERT_EQ(FormatDouble(value, width, decimals), Printed("%*.*f", width, decimals, value));
        break;
      }
      default: {
        ASSERT_EQ(FormatDouble(value, "%+012.3f m"), Printed("%+012.3f m", value));
      }
    }
  }
}

TEST(NumberFormat, ADecimalCommaOfTheHostChangesNothing) {
  const CommaLocale comma;
  EXPECT_EQ(FormatDouble(1234567.5, 2), "1234567.50");
  EXPECT_EQ(FormatDouble(1234567.5, "%g"), "1.23457e+06");
  EXPECT_EQ(FormatInt(1234567), "1234567");
  EXPECT_EQ(FormatInt(1234567, 9), "  1234567");
}

}  // namespace
