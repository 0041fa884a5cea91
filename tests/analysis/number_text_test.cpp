#include "analysis/number_text.h"

#include "platform/failure.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

using titron::analysis::generalNumber;
using titron::analysis::leadingValue;
using titron::analysis::roundToInt32;
using titron::analysis::strictNumber;
using titron::platform::Failure;

namespace {

// The failure number that call throws, 0 when it returns.
template <class Call> int failureOf(Call&& call) {
    try {
        call();
    } catch (const Failure& f) {
        return f.number();
    }
    return 0;
}

} // namespace

TEST(StrictNumberTest, ReadsSignsPointsExponentsAndGroupCommas) {
    EXPECT_EQ(strictNumber("12"), 12.0);
    EXPECT_EQ(strictNumber("+1.5"), 1.5);
    EXPECT_EQ(strictNumber(".5"), 0.5);
    EXPECT_EQ(strictNumber("5."), 5.0);
    EXPECT_EQ(strictNumber("-2.5e-3"), -0.0025);
    EXPECT_EQ(strictNumber("1D2"), 100.0);
    EXPECT_EQ(strictNumber("1d+2"), 100.0);
    EXPECT_EQ(strictNumber("1,000"), 1000.0);
    EXPECT_EQ(strictNumber("1,234,567.25"), 1234567.25);
    EXPECT_EQ(strictNumber("0.1"), 0.1); // the correctly rounded double
    EXPECT_EQ(strictNumber("1E-400"), 0.0);
    EXPECT_EQ(strictNumber("1E-310"), 1e-310);
    EXPECT_TRUE(std::signbit(strictNumber("-0")));
}

TEST(StrictNumberTest, RejectsAnythingElseAsTypeMismatch) {
    for (const char* text : {"", " 1", "1 ", "abc", "12abc", "1E", "1E+", ".", "+", "-", ",5",
                             "1.5,0", "1.2.3", "1e5.0", "inf", "nan", "0x10", "--1", "&H10"}) {
        EXPECT_EQ(failureOf([&] { strictNumber(text); }), 13) << "'" << text << "'";
    }
}

TEST(StrictNumberTest, BeyondTheDoubleRangeIsOverflow) {
    EXPECT_EQ(failureOf([] { strictNumber("1E400"); }), 6);
    EXPECT_EQ(failureOf([] { strictNumber("-1.8e308"); }), 6);
    EXPECT_EQ(failureOf([] { strictNumber("1e99999999999999999999"); }), 6);
    EXPECT_EQ(failureOf([] { strictNumber("0.0001e310"); }), 0); // 1e306 is in range
    EXPECT_EQ(strictNumber("0.00000e99999999999"), 0.0);
}

TEST(WholeNumberTest, ToleranceIsStrictlyBelowOneTenBillionth) {
    EXPECT_TRUE(titron::analysis::fnNearlyEqual(1.0, 1.0 + 5e-11));
    EXPECT_FALSE(titron::analysis::fnNearlyEqual(0.0, 1e-10));
    EXPECT_TRUE(titron::analysis::isWholeNumber(3.00000000001));
    EXPECT_TRUE(titron::analysis::isWholeNumber(-7.0));
    EXPECT_FALSE(titron::analysis::isWholeNumber(2.5));
    EXPECT_FALSE(titron::analysis::isWholeNumber(3.0000001));
    EXPECT_FALSE(titron::analysis::isWholeNumber(std::numeric_limits<double>::infinity()));
}

TEST(LeadingValueTest, TakesTheLeadingNumberAndSkipsBlanksTabsAndLineFeeds) {
    EXPECT_EQ(leadingValue("12abc"), 12.0);
    EXPECT_EQ(leadingValue(" 1 2 3"), 123.0);
    EXPECT_EQ(leadingValue("0\t5"), 5.0);
    EXPECT_EQ(leadingValue("\n- 2.5x"), -2.5);
    EXPECT_EQ(leadingValue("0,5"), 0.0);
    EXPECT_EQ(leadingValue("1\r2"), 1.0);
    EXPECT_EQ(leadingValue("1.5.5"), 1.5);
    EXPECT_EQ(leadingValue("1e"), 1.0);
    EXPECT_EQ(leadingValue("1e+x"), 1.0);
    EXPECT_EQ(leadingValue("1D2"), 100.0);
    EXPECT_EQ(leadingValue("2.5E-1"), 0.25);
    for (const char* none : {"", "abc", "-", ".", "Row", "--1", "&X1"}) {
        EXPECT_EQ(leadingValue(none), 0.0) << "'" << none << "'";
    }
}

TEST(LeadingValueTest, ReadsHexAndOctalAsSignedWords) {
    EXPECT_EQ(leadingValue("&H1F"), 31.0);
    EXPECT_EQ(leadingValue("&hff g"), 255.0);
    EXPECT_EQ(leadingValue("&O17"), 15.0);
    EXPECT_EQ(leadingValue("&O178"), 15.0);
    EXPECT_EQ(leadingValue("&HFFFF"), -1.0);
    EXPECT_EQ(leadingValue("&H8000"), -32768.0);
    EXPECT_EQ(leadingValue("&H10000"), 65536.0);
    EXPECT_EQ(leadingValue("&HFFFFFFFF"), -1.0);
    EXPECT_EQ(leadingValue("&H7FFFFFFF"), 2147483647.0);
    EXPECT_EQ(leadingValue("&H"), 0.0);
}

TEST(LeadingValueTest, OverflowGivesAnInfinityOfItsSign) {
    const double inf = std::numeric_limits<double>::infinity();
    EXPECT_EQ(leadingValue("1e400"), inf);
    EXPECT_EQ(leadingValue("-9e999abc"), -inf);
    EXPECT_EQ(leadingValue("1e-400"), 0.0);
}

TEST(RoundToInt32Test, TiesGoToEvenAndTheRangeIsChecked) {
    EXPECT_EQ(roundToInt32(2.5), 2);
    EXPECT_EQ(roundToInt32(3.5), 4);
    EXPECT_EQ(roundToInt32(-2.5), -2);
    EXPECT_EQ(roundToInt32(-3.5), -4);
    EXPECT_EQ(roundToInt32(0.4), 0);
    EXPECT_EQ(roundToInt32(0.5000000000000001), 1);
    EXPECT_EQ(roundToInt32(2147483647.4), 2147483647);
    EXPECT_EQ(roundToInt32(-2147483648.5), -2147483648); // the even neighbour is in range
    EXPECT_EQ(failureOf([] { roundToInt32(2147483647.5); }), 6);
    EXPECT_EQ(failureOf([] { roundToInt32(-2147483649.0); }), 6);
    EXPECT_EQ(failureOf([] { roundToInt32(std::nan("")); }), 6);
    EXPECT_EQ(failureOf([] { roundToInt32(-std::numeric_limits<double>::infinity()); }), 6);
}

TEST(GeneralNumberTest, FixedFormInsideTheExponentRange) {
    EXPECT_EQ(generalNumber(1000), "1000");
    EXPECT_EQ(generalNumber(-5), "-5");
    EXPECT_EQ(generalNumber(0.5), "0.5");
    EXPECT_EQ(generalNumber(-0.0), "0");
    EXPECT_EQ(generalNumber(3.00000000001), "3.00000000001");
    EXPECT_EQ(generalNumber(0.0001), "0.0001");
    EXPECT_EQ(generalNumber(123456789012345.0), "123456789012345");
    EXPECT_EQ(generalNumber(0.1 + 0.2), "0.3"); // 15 digits hide the binary error
    EXPECT_EQ(generalNumber(2.0 / 3.0), "0.666666666666667");
}

TEST(GeneralNumberTest, ExponentFormForLargeAndSmall) {
    EXPECT_EQ(generalNumber(1e20), "1E+20");
    EXPECT_EQ(generalNumber(1.5e-7), "1.5E-07");
    EXPECT_EQ(generalNumber(1e100), "1E+100");
    EXPECT_EQ(generalNumber(-2.5e-5), "-2.5E-05");
    EXPECT_EQ(generalNumber(1234567890123456.0), "1.23456789012346E+15");
    // 999999999999999.9 rounds to 16 digits, so its exponent becomes 15.
    EXPECT_EQ(generalNumber(999999999999999.9), "1E+15");
    EXPECT_EQ(generalNumber(0.00009999), "9.999E-05");
}
