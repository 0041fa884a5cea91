#include "vocabulary/number_mask.h"

#include <gtest/gtest.h>

using titron::vocabulary::formatMask;

// Expected texts are the worked examples of the report's number masks, or follow from
// rounding the 15-digit decimal form half away from zero by hand.

TEST(FormatMaskTest, ReportMasksOnTheirTypicalValues) {
    EXPECT_EQ(formatMask(0.0000869, "0.0000000"), "0.0000869");
    EXPECT_EQ(formatMask(11503.4, "###,###"), "11,503");
    EXPECT_EQ(formatMask(-9.350401, "##0.00000"), "-9.35040");
    EXPECT_EQ(formatMask(0.17259, "#0.0000"), "0.1726");
    EXPECT_EQ(formatMask(0.17255, "##0.0000"), "0.1726");
    EXPECT_EQ(formatMask(12.3454, "##0.000"), "12.345");
    EXPECT_EQ(formatMask(0.993, "0.0000"), "0.9930");
    EXPECT_EQ(formatMask(53, "#####"), "53");
}

TEST(FormatMaskTest, RoundsHalfAwayFromZeroOnFifteenDigits) {
    EXPECT_EQ(formatMask(2.5, "###,###"), "3");
    EXPECT_EQ(formatMask(1234.5, "###,###"), "1,235");
    EXPECT_EQ(formatMask(0.285, "0.00"), "0.29"); // the double is 0.28499999999999998
    EXPECT_EQ(formatMask(-2.5, "#####"), "-3");
    EXPECT_EQ(formatMask(9.99996, "0.0000"), "10.0000");
    EXPECT_EQ(formatMask(0.6, "#####"), "1");
}

TEST(FormatMaskTest, ZerosForceDigitsAndTheIntegerPartIsNeverCut) {
    EXPECT_EQ(formatMask(0.5, "#0.0000"), "0.5000");
    EXPECT_EQ(formatMask(0.5, "0.0000"), "0.5000");
    EXPECT_EQ(formatMask(0, "##0.000"), "0.000");
    EXPECT_EQ(formatMask(1234.5, "##0.000"), "1234.500");
    EXPECT_EQ(formatMask(7, "000"), "007");
    EXPECT_EQ(formatMask(0.25, "#.00"), ".25");
}

TEST(FormatMaskTest, GroupsTheWholeIntegerPart) {
    EXPECT_EQ(formatMask(1234567, "###,###"), "1,234,567");
    EXPECT_EQ(formatMask(999999.5, "###,###"), "1,000,000");
    EXPECT_EQ(formatMask(1e20, "###,###"), "100,000,000,000,000,000,000");
    // Digits beyond the fifteenth are zeros of the decimal form.
    EXPECT_EQ(formatMask(1234567890123456789.0, "###,###"), "1,234,567,890,123,460,000");
}

TEST(FormatMaskTest, OnlyHashesGiveNothingForZeroAndTheSignFollowsTheValue) {
    EXPECT_EQ(formatMask(0.3, "###,###"), "");
    EXPECT_EQ(formatMask(0, "#####"), "");
    EXPECT_EQ(formatMask(-0.3, "###,###"), "-");
    EXPECT_EQ(formatMask(-1e-15, "##0.000"), "-0.000");
    EXPECT_EQ(formatMask(-0.0, "##0.000"), "0.000");
    EXPECT_EQ(formatMask(-1234567.25, "###,###"), "-1,234,567");
}

TEST(FormatLongDateTest, MonthNameTwoDigitDayAndYear) {
    EXPECT_EQ(titron::vocabulary::formatLongDate(2026, 11, 3), "November 03, 2026");
    EXPECT_EQ(titron::vocabulary::formatLongDate(1999, 1, 31), "January 31, 1999");
    EXPECT_EQ(titron::vocabulary::formatLongDate(2000, 12, 10), "December 10, 2000");
}
