// The worked four-row example: doses 1000, 3000, 10000 and 30000 with 2, 6, 14 and 22
// responses of 24 tests each, named "Spleen A". Its report down to the line after "END";
// the table follows.
#pragma once

namespace titron::testing {

inline constexpr const char* kSpleenReportWithoutTable =
    "Analysis Name: Spleen A\r\n"
    "Iterations:     4\r\n"
    "\r\n"
    "    Proportion:               0.0000869     Frequency:           1 in 11,503\r\n"
    "    Proportion - 1 S.E.:      0.0000731     Frequency - 1 S.E.:  1 in 13,671\r\n"
    "    Proportion + 1 S.E.:      0.0001033     Frequency + 1 S.E.:  1 in 9,679\r\n"
    "\r\n"
    "  95% Confidence Interval\r\n"
    "    Lower Proportion:         0.0000620     Lower Frequency:     1 in 16,135\r\n"
    "    Upper Proportion:         0.0001219     Upper Frequency:     1 in 8,201\r\n"
    "    Log Proportion:          -9.35040       S.E. of Log Prop.:   0.1726\r\n"
    "\r\n"
    "  Test for internal inconsistency in the assay\r\n"
    "    Chi-square (Pearson):     0.090         p-value:             0.9930\r\n"
    "    Chi-square (Deviance):    0.088         p-value:             0.9933\r\n"
    "    Degrees of Freedom:       3\r\n"
    "\r\n"
    "END\r\n"
    "\r\n";

} // namespace titron::testing
