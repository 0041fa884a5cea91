// The worked cases and edges of the text routines. Their agreement with the step-by-step
// model on any text is the text_routines fuzz target's work, replayed in every test run.
#include "vocabulary/text_routines.h"

#include "vocabulary/failure.h"

#include <gtest/gtest.h>

#include <string>

using titron::vocabulary::Failure;
using titron::vocabulary::closeTabs;
using titron::vocabulary::removeChar;
using titron::vocabulary::replaceText;

namespace {

std::string replaced(std::string text, std::string_view find, std::string_view replace) {
    return replaceText(text, find, replace);
}

std::string closed(std::string text) {
    return closeTabs(text);
}

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

TEST(ReplaceTextTest, ClosesRunsAndWidensAsTheCallersUseIt) {
    EXPECT_EQ(replaced("\t\t\t\t\t", "\t\t", "\t"), "\t");
    EXPECT_EQ(replaced("a,b,c", ",", " "), "a b c");
    EXPECT_EQ(replaced("\t\t\t", "\t", "\t\t"), std::string(6, '\t'));
    EXPECT_EQ(replaced("no match", "\t", "\t\t"), "no match");
}

TEST(ReplaceTextTest, RejectsEmptyFindAndOverlongArguments) {
    const std::string tooLong(32768, 'x');
    EXPECT_EQ(failureOf([] { replaced("abc", "", "x"); }), 5);
    EXPECT_EQ(failureOf([&] { replaced("abc", tooLong, "x"); }), 6);
    EXPECT_EQ(failureOf([&] { replaced("abc", "a", tooLong); }), 6);
    EXPECT_EQ(replaced("ab", "b", std::string(32767, 'y')).size(), 32768u);
}

TEST(ReplaceTextTest, SearchStartBelowOneFailsAfterTheReplacementIsMade) {
    // "abc" by "" at p = 1 gives the start 1 + 0 - 3 + 1 = -1.
    std::string text = "abcz";
    EXPECT_EQ(failureOf([&] { replaceText(text, "abc", ""); }), 5);
    EXPECT_EQ(text, "z");
}

TEST(ReplaceTextTest, FindMayViewTheTextItself) {
    std::string text = "a-a-a";
    replaceText(text, std::string_view(text).substr(0, 1), "bb");
    EXPECT_EQ(text, "bb-bb-bb");
}

TEST(CloseTabsTest, HeadingRowLosesOnlyThePairAfterTheLongCell) {
    // Pairs at 4, 10 (marks 1, 4: short), 21 (mark 10: 11 > 9, one tab goes), 27 (mark 20).
    EXPECT_EQ(closed("Row\t\tDose\t\tResponses\t\tTested\t\tComments\r\n"),
              "Row\t\tDose\t\tResponses\tTested\t\tComments\r\n");
    EXPECT_EQ(closed("a\tb\r\nc\td"), "a\tb\r\nc\td");
    EXPECT_EQ(closed(""), "");
}

TEST(CloseTabsTest, FirstPairOfALaterLineKeepsBothTabs) {
    // The pair at 19 (cell of 10) follows a line end: m becomes 22 + 2, and 19 - 24 < 0.
    EXPECT_EQ(closed("ab\t\tcd\r\nlongcell12\t\tx\r\n"), "ab\t\tcd\r\nlongcell12\t\tx\r\n");
}

TEST(CloseTabsTest, LastLineWithoutLineEndClosesPairsAboveEleven) {
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

    EXPECT_EQ(titron::vocabulary::lowerCase("AbZ@[\xC0\xD7\xDE\xDF"), "abz@[\xE0\xD7\xFE\xDF");
    EXPECT_EQ(titron::vocabulary::trimSpaces("  a b \t "), "a b \t");
    EXPECT_EQ(titron::vocabulary::trimSpaces("   "), "");
}
