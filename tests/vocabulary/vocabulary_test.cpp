// The number forms and text routines at the bottom of the program. Expected texts follow
// from the rules by hand: masks round the 15-digit decimal form half away from zero (the
// report's masks on their typical values are checked byte for byte by the worked report);
// the text routines' agreement with their step-by-step model on any text is the
// text_routines fuzz target's work, replayed in every test run.
#include <cmath>
#include <limits>
#include <string>

#include <gtest/gtest.h>

#include "tests/failure_of.h"
#include "vocabulary/number_mask.h"
#include "vocabulary/number_text.h"
#include "vocabulary/text_routines.h"

namespace titron::vocabulary {
namespace {

using titron::testing::failureOf;

constexpr double inf = std::numeric_limits<double>::infinity();

std::string replaced(std::string text, std::string_view find, std::string_view replace) {
    return replaceText(text, find, replace);
}

std::string closed(std::string text) {
    return closeTabs(text);
}

TEST(FormatMaskTest, RoundsHalfAwayFromZeroGroupsAndFillsAsTheMaskSays) {
    EXPECT_EQ(formatMask(2.5, "###,###"), "3");
    EXPECT_EQ(formatMask(1234.5, "###,###"), "1,235");
    EXPECT_EQ(formatMask(0.285, "0.00"), "0.29"); // the double is 0.28499999999999998
    EXPECT_EQ(formatMask(-2.5, "#####"), "-3");
    EXPECT_EQ(formatMask(9.99996, "0.0000"), "10.0000");
    EXPECT_EQ(formatMask(0.6, "#####"), "1");
    // Zeros force digits; the integer part is never cut.
    EXPECT_EQ(formatMask(0.5, "#0.0000"), "0.5000");
    EXPECT_EQ(formatMask(0.5, "0.0000"), "0.5000");
    EXPECT_EQ(formatMask(0, "##0.000"), "0.000");
    EXPECT_EQ(formatMask(1234.5, "##0.000"), "1234.500");
    EXPECT_EQ(formatMask(7, "000"), "007");
    EXPECT_EQ(formatMask(0.25, "#.00"), ".25");
    // Groups over the whole integer part.
    EXPECT_EQ(formatMask(1234567, "###,###"), "1,234,567");
    EXPECT_EQ(formatMask(999999.5, "###,###"), "1,000,000");
    EXPECT_EQ(formatMask(1e20, "###,###"), "100,000,000,000,000,000,000");
    // Digits beyond the fifteenth are zeros of the decimal form.
    EXPECT_EQ(formatMask(1234567890123456789.0, "###,###"), "1,234,567,890,123,460,000");
    // Only hashes give nothing for zero; the sign follows the value.
    EXPECT_EQ(formatMask(0.3, "###,###"), "");
    EXPECT_EQ(formatMask(0, "#####"), "");
    EXPECT_EQ(formatMask(-0.3, "###,###"), "-");
    EXPECT_EQ(formatMask(-1e-15, "##0.000"), "-0.000");
    EXPECT_EQ(formatMask(-0.0, "##0.000"), "0.000");
    EXPECT_EQ(formatMask(-1234567.25, "###,###"), "-1,234,567");
}

TEST(FormatLongDateTest, MonthNameTwoDigitDayAndYear) {
    EXPECT_EQ(formatLongDate(2026, 11, 3), "November 03, 2026");
    EXPECT_EQ(formatLongDate(1999, 1, 31), "January 31, 1999");
    EXPECT_EQ(formatLongDate(2000, 12, 10), "December 10, 2000");
}

TEST(StrictNumberTest, ReadsSignsPointsExponentsAndGroupCommasAndRejectsOtherText) {
    EXPECT_EQ(strictNumber("+.5"), 0.5);
    EXPECT_EQ(strictNumber("-2.5e-3"), -0.0025);
    EXPECT_EQ(strictNumber("1d+2"), 100.0);
    EXPECT_EQ(strictNumber("1,234,567.25"), 1234567.25);
    EXPECT_EQ(strictNumber("0.1"), 0.1); // the correctly rounded double
    EXPECT_EQ(strictNumber("1E-400"), 0.0);
    EXPECT_TRUE(std::signbit(strictNumber("-0")));
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

TEST(LeadingValueTest, TakesTheLeadingNumberOrSignedWordAndSkipsBlanksTabsAndLineFeeds) {
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
    // Hex and octal are signed words.
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
    EXPECT_EQ(generalNumber(-0.0), "0");
    EXPECT_EQ(generalNumber(0.0001), "0.0001");
    EXPECT_EQ(generalNumber(123456789012345.0), "123456789012345");
    EXPECT_EQ(generalNumber(0.1 + 0.2), "0.3"); // 15 digits hide the binary error
    EXPECT_EQ(generalNumber(1.5e-7), "1.5E-07");
    EXPECT_EQ(generalNumber(1e100), "1E+100");
    // 999999999999999.9 rounds up at 15 digits, so its exponent becomes 15.
    EXPECT_EQ(generalNumber(999999999999999.9), "1E+15");
}

TEST(ReplaceTextTest, ClosesRunsAndWidensAndFailsOnBadArguments) {
    EXPECT_EQ(replaced("\t\t\t\t\t", "\t\t", "\t"), "\t");
    EXPECT_EQ(replaced("a,b,c", ",", " "), "a b c");
    EXPECT_EQ(replaced("\t\t\t", "\t", "\t\t"), std::string(6, '\t'));
    EXPECT_EQ(replaced("no match", "\t", "\t\t"), "no match");
    std::string text = "a-a-a"; // the find may view the text itself
    replaceText(text, std::string_view(text).substr(0, 1), "bb");
    EXPECT_EQ(text, "bb-bb-bb");
    const std::string tooLong(32768, 'x');
    EXPECT_EQ(failureOf([] { replaced("abc", "", "x"); }), 5);
    EXPECT_EQ(failureOf([&] { replaced("abc", tooLong, "x"); }), 6);
    EXPECT_EQ(failureOf([&] { replaced("abc", "a", tooLong); }), 6);
    EXPECT_EQ(replaced("ab", "b", std::string(32767, 'y')).size(), 32768u);
    // A search start below 1 fails after the replacement is made: "abc" by "" at p = 1 gives
    // the start 1 + 0 - 3 + 1 = -1.
    text = "abcz";
    EXPECT_EQ(failureOf([&] { replaceText(text, "abc", ""); }), 5);
    EXPECT_EQ(text, "z");
}

TEST(CloseTabsTest, PairsLoseATabAfterALongCellCountedFromTheLastLineEnd) {
    // Pairs at 4, 10 (marks 1, 4: short), 21 (mark 10: 11 > 9, one tab goes), 27 (mark 20).
    EXPECT_EQ(closed("Row\t\tDose\t\tResponses\t\tTested\t\tComments\r\n"),
              "Row\t\tDose\t\tResponses\tTested\t\tComments\r\n");
    EXPECT_EQ(closed("a\tb\r\nc\td"), "a\tb\r\nc\td");
    EXPECT_EQ(closed(""), "");
    // The pair at 19 (cell of 10) follows a line end: m becomes 22 + 2, and 19 - 24 < 0.
    EXPECT_EQ(closed("ab\t\tcd\r\nlongcell12\t\tx\r\n"), "ab\t\tcd\r\nlongcell12\t\tx\r\n");
    // Without the final CR LF, m becomes 2: the pair at 10 keeps (10 - 2 = 8), the one at 14 loses.
    EXPECT_EQ(closed("ab\t\tcd\r\nx\t\tyy\t\tz"), "ab\t\tcd\r\nx\t\tyy\tz");
    EXPECT_EQ(closed("ab\t\tcd\r\nx\t\tyy\t\tz\r\n"), "ab\t\tcd\r\nx\t\tyy\t\tz\r\n");
}

TEST(TextHelpersTest, RemoveLowerAndTrim) {
    std::string text = " 1 2 ";
    EXPECT_EQ(removeChar(text, 32), "12");
    text = "abc";
    EXPECT_EQ(removeChar(text, 32), "abc");
    EXPECT_EQ(removeChar(text, 300), "abc");
    text = "\xE9x\xE9"; // a Latin-1 code above 127
    EXPECT_EQ(removeChar(text, 0xE9), "x");

    EXPECT_EQ(trimSpaces("  a b \t "), "a b \t");
    EXPECT_EQ(trimSpaces("   "), "");
}

} // namespace
} // namespace titron::vocabulary
