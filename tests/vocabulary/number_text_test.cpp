#include "vocabulary/number_text.h"

#include "vocabulary/failure.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

using namespace titron::vocabulary;
using titron::vocabulary::Failure;

namespace {

constexpr double inf = std::numeric_limits<double>::infinity();

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
    EXPECT_EQ(strictNumber("+.5"), 0.5);
    EXPECT_EQ(strictNumber("-2.5e-3"), -0.0025);
    EXPECT_EQ(strictNumber("1d+2"), 100.0);
    EXPECT_EQ(strictNumber("1,234,567.25"), 1234567.25);
    EXPECT_EQ(strictNumber("0.1"), 0.1); // the correctly rounded double
    EXPECT_EQ(strictNumber("1E-400"), 0.0);
    EXPECT_TRUE(std::signbit(strictNumber("-0")));
}

TEST(StrictNumberTest, RejectsOtherTextAndFailsOverflowSeparately) {
    for (const char* text : {"", " 1", "1 ", "abc", "12abc", "1E", "1E+", ".", "+", ",5", "1.5,0",
                             "1.2.3", "inf", "0x10", "--1"}) {
        EXPECT_EQ(failureOf([&] { strictNumber(text); }), 13) << "'" << text << "'";
    }
    EXPECT_EQ(failureOf([] { strictNumber("1E400"); }), 6);
    EXPECT_EQ(failureOf([] { strictNumber("-1.8e308"); }), 6);
    EXPECT_EQ(failureOf([] { strictNumber("1e99999999999999999999"); }), 6);
    EXPECT_EQ(strictNumber("0.0001e310"), 1e306);
}

TEST(WholeNumberTest, ToleranceIsStrictlyBelowOneTenBillionth) {
    EXPECT_FALSE(nearlyEqual(0.0, 1e-10));
    EXPECT_TRUE(isWholeNumber(3.00000000001));
    EXPECT_FALSE(isWholeNumber(2.5));
    EXPECT_FALSE(isWholeNumber(3.0000001));
    EXPECT_FALSE(isWholeNumber(inf));
}

TEST(LeadingValueTest, TakesTheLeadingNumberAndSkipsBlanksTabsAndLineFeeds) {
    EXPECT_EQ(leadingValue("12abc"), 12.0);
    EXPECT_EQ(leadingValue(" 1 2 3"), 123.0);
    EXPECT_EQ(leadingValue("0\t5"), 5.0);
    EXPECT_EQ(leadingValue("\n- 2.5x"), -2.5);
    EXPECT_EQ(leadingValue("1\r2"), 1.0);
    EXPECT_EQ(leadingValue("1.5.5"), 1.5);
    EXPECT_EQ(leadingValue("1e+x"), 1.0);
    EXPECT_EQ(leadingValue("1D2"), 100.0);
    EXPECT_EQ(leadingValue("-9e999abc"), -inf);
    for (const char* none : {"", "abc", "-", ".", "0,5", "--1", "&X1"}) {
        EXPECT_EQ(leadingValue(none), 0.0) << "'" << none << "'";
    }
}

TEST(LeadingValueTest, ReadsHexAndOctalAsSignedWords) {
    EXPECT_EQ(leadingValue("&H1F"), 31.0);
    EXPECT_EQ(leadingValue("&O178"), 15.0);
    EXPECT_EQ(leadingValue("&HFFFF"), -1.0);
    EXPECT_EQ(leadingValue("&H10000"), 65536.0);
    EXPECT_EQ(leadingValue("&HFFFFFFFF"), -1.0);
    EXPECT_EQ(leadingValue("&H7FFFFFFF"), 2147483647.0);
}

TEST(RoundToInt32Test, TiesGoToEvenAndTheRangeIsChecked) {
    EXPECT_EQ(roundToInt32(2.5), 2);
    EXPECT_EQ(roundToInt32(3.5), 4);
    EXPECT_EQ(roundToInt32(-2.5), -2);
    EXPECT_EQ(roundToInt32(0.4), 0);
    EXPECT_EQ(roundToInt32(0.5000000000000001), 1);
    EXPECT_EQ(roundToInt32(-2147483648.5), -2147483648); // the even neighbour is in range
    EXPECT_EQ(failureOf([] { roundToInt32(2147483647.5); }), 6);
    EXPECT_EQ(failureOf([] { roundToInt32(std::nan("")); }), 6);
    EXPECT_EQ(failureOf([] { roundToInt32(-inf); }), 6);
}

TEST(GeneralNumberTest, FixedFormInsideTheExponentRangeOtherwiseExponentForm) {
    EXPECT_EQ(generalNumber(-5), "-5");
    EXPECT_EQ(generalNumber(0.5), "0.5");
    EXPECT_EQ(generalNumber(-0.0), "0");
    EXPECT_EQ(generalNumber(0.0001), "0.0001");
    EXPECT_EQ(generalNumber(123456789012345.0), "123456789012345");
    EXPECT_EQ(generalNumber(0.1 + 0.2), "0.3"); // 15 digits hide the binary error
    EXPECT_EQ(generalNumber(1e20), "1E+20");
    EXPECT_EQ(generalNumber(1.5e-7), "1.5E-07");
    EXPECT_EQ(generalNumber(-2.5e-5), "-2.5E-05");
    EXPECT_EQ(generalNumber(1e100), "1E+100");
    // 999999999999999.9 rounds up at 15 digits, so its exponent becomes 15.
    EXPECT_EQ(generalNumber(999999999999999.9), "1E+15");
}
