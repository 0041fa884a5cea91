#include "shell/text_routines.h"

#include "fuzz/text_routines_model.h"
#include "platform/failure.h"

#include <gtest/gtest.h>

#include <random>
#include <string>

using titron::platform::Failure;
using titron::shell::fnCloseTabs;
using titron::shell::fnRemoveChar;
using titron::shell::fnReplaceText;

namespace {

std::string randomText(std::mt19937& rng, std::string_view alphabet, int maxLength) {
    std::string s(std::uniform_int_distribution<int>(0, maxLength)(rng), ' ');
    std::uniform_int_distribution<std::size_t> pick(0, alphabet.size() - 1);
    for (char& c : s) {
        c = alphabet[pick(rng)];
    }
    return s;
}

std::string replaced(std::string text, std::string_view find, std::string_view replace) {
    return fnReplaceText(text, find, replace);
}

std::string closed(std::string text) {
    return fnCloseTabs(text);
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

TEST(FnReplaceTextTest, ClosesRunsAndWidensAsTheCallersUseIt) {
    EXPECT_EQ(replaced("\t\t\t\t\t", "\t\t", "\t"), "\t");
    EXPECT_EQ(replaced("a,b,c", ",", " "), "a b c");
    EXPECT_EQ(replaced("\t\t\t", "\t", "\t\t"), std::string(6, '\t'));
    EXPECT_EQ(replaced("no match", "\t", "\t\t"), "no match");
}

TEST(FnReplaceTextTest, RejectsEmptyFindAndOverlongArguments) {
    const std::string tooLong(32768, 'x');
    EXPECT_EQ(failureOf([] { replaced("abc", "", "x"); }), 5);
    EXPECT_EQ(failureOf([&] { replaced("abc", tooLong, "x"); }), 6);
    EXPECT_EQ(failureOf([&] { replaced("abc", "a", tooLong); }), 6);
    EXPECT_EQ(replaced("ab", "b", std::string(32767, 'y')).size(), 32768u);
}

TEST(FnReplaceTextTest, SearchStartBelowOneFailsAfterTheReplacementIsMade) {
    // "abc" by "" at p = 1 gives the start 1 + 0 - 3 + 1 = -1.
    std::string text = "abcz";
    EXPECT_EQ(failureOf([&] { fnReplaceText(text, "abc", ""); }), 5);
    EXPECT_EQ(text, "z");
}

TEST(FnReplaceTextTest, FindMayViewTheTextItself) {
    std::string text = "a-a-a";
    fnReplaceText(text, std::string_view(text).substr(0, 1), "bb");
    EXPECT_EQ(text, "bb-bb-bb");
}

TEST(FnReplaceTextTest, AgreesWithTheStepByStepReplacementOnRandomTexts) {
    std::mt19937 rng(20261103);
    for (int round = 0; round < 20000; ++round) {
        const std::string find = randomText(rng, "ab\t", 3);
        if (find.empty()) {
            continue;
        }
        const std::string replace = randomText(rng, "ab\t", 3);
        const std::string original = randomText(rng, "aab\t\t", 40);
        // Where the model fails, the text must also be left as far as it got.
        std::string expected = original;
        const int expectedFailure =
            failureOf([&] { titron::fuzz::modelReplaceText(expected, find, replace); });
        std::string actual = original;
        const int actualFailure = failureOf([&] { fnReplaceText(actual, find, replace); });
        ASSERT_EQ(actual, expected)
            << "text '" << original << "' find '" << find << "' replace '" << replace << "'";
        ASSERT_EQ(actualFailure, expectedFailure);
    }
}

TEST(FnCloseTabsTest, HeadingRowLosesOnlyThePairAfterTheLongCell) {
    // Pairs at 4, 10 (marks 1, 4: short), 21 (mark 10: 11 > 9, one tab goes), 27 (mark 20).
    EXPECT_EQ(closed("Row\t\tDose\t\tResponses\t\tTested\t\tComments\r\n"),
              "Row\t\tDose\t\tResponses\tTested\t\tComments\r\n");
    EXPECT_EQ(closed("a\tb\r\nc\td"), "a\tb\r\nc\td");
    EXPECT_EQ(closed(""), "");
}

TEST(FnCloseTabsTest, FirstPairOfALaterLineKeepsBothTabs) {
    // The pair at 19 (cell of 10) follows a line end: m becomes 22 + 2, and 19 - 24 < 0.
    EXPECT_EQ(closed("ab\t\tcd\r\nlongcell12\t\tx\r\n"), "ab\t\tcd\r\nlongcell12\t\tx\r\n");
}

TEST(FnCloseTabsTest, LastLineWithoutLineEndClosesPairsAboveEleven) {
    // Without the final CR LF, m becomes 2: the pair at 10 keeps (10 - 2 = 8), the one at 14 loses.
    EXPECT_EQ(closed("ab\t\tcd\r\nx\t\tyy\t\tz"), "ab\t\tcd\r\nx\t\tyy\tz");
    EXPECT_EQ(closed("ab\t\tcd\r\nx\t\tyy\t\tz\r\n"), "ab\t\tcd\r\nx\t\tyy\t\tz\r\n");
}

TEST(FnCloseTabsTest, AgreesWithTheStepByStepClosingOnRandomTexts) {
    std::mt19937 rng(31);
    for (int round = 0; round < 20000; ++round) {
        const std::string original = round % 2 == 0
                                         ? randomText(rng, "\t\t\t\r\naaaaa", 80)
                                         : randomText(rng, "\t\t\t\r\n\r\naaaaaaaaaaaa", 200);
        std::string expected = original;
        titron::fuzz::modelCloseTabs(expected);
        ASSERT_EQ(closed(original), expected) << "text '" << original << "'";
    }
}

TEST(FnCloseTabsTest, AgreesWithTheStepByStepClosingOnTables) {
    std::mt19937 rng(7);
    std::uniform_int_distribution<int> cellLength(0, 14);
    for (int round = 0; round < 2000; ++round) {
        std::string table;
        const int rows = round % 6;
        for (int row = 0; row < rows; ++row) {
            for (int cell = 0; cell < 5; ++cell) {
                table += (cell > 0 ? "\t\t" : "") + std::string(cellLength(rng), 'c');
            }
            if (row + 1 < rows || round % 3 != 0) {
                table += "\r\n";
            }
        }
        std::string expected = table;
        titron::fuzz::modelCloseTabs(expected);
        ASSERT_EQ(closed(table), expected) << "table '" << table << "'";
    }
}

TEST(TextHelpersTest, RemoveLowerAndTrim) {
    std::string text = " 1 2 ";
    EXPECT_EQ(fnRemoveChar(text, 32), "12");
    text = "abc";
    EXPECT_EQ(fnRemoveChar(text, 32), "abc");
    EXPECT_EQ(fnRemoveChar(text, 300), "abc");
    text = "\xE9x\xE9"; // a Latin-1 code above 127
    EXPECT_EQ(fnRemoveChar(text, 0xE9), "x");

    EXPECT_EQ(titron::shell::lowerCase("AbZ@[\xC0\xD7\xDE\xDF"), "abz@[\xE0\xD7\xFE\xDF");
    EXPECT_EQ(titron::shell::trimSpaces("  a b \t "), "a b \t");
    EXPECT_EQ(titron::shell::trimSpaces("   "), "");
}
