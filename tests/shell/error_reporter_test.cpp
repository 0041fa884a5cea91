#include "shell/error_reporter.h"

#include "platform/scripted_platform.h"

#include <gtest/gtest.h>

#include <string>

using namespace titron::platform;
using titron::shell::errorEntry;
using titron::shell::ErrorOutcome;
using titron::shell::ErrorReporter;

namespace {

const std::string missingFile = "The Cohortrak data file is missing.\r\n\r\nExit Cohortrak and "
                                "copy the backup\r\nto the C:\\COHORTRK subdirectory.";

TEST(ErrorReporter, MissingDataFileStopsThenUnknownFailureWarnsOnly) {
    ScriptedPlatform platform;
    ErrorReporter reporter(platform);
    EXPECT_EQ(reporter.reportError(53), ErrorOutcome::EndProgram);
    const auto& v = reporter.values();
    EXPECT_TRUE(v.ErrorTitle == "Cohortrak Error #53" && v.ErrorMessage == missingFile);
    EXPECT_TRUE(v.ErrorStyle == 16 && v.ErrorAnswer == 1 && reporter.endsProgram());
    const auto& box = platform.boxes().at(0).request;
    EXPECT_TRUE(box.icon == Icon::Stop && box.buttons == Buttons::Ok);
    EXPECT_TRUE(box.title == v.ErrorTitle && box.text == missingFile);
    // Unknown failures warn and return, and must not inherit the stop kind of the last one.
    for (const int number : {9, 91}) {
        EXPECT_EQ(reporter.reportError(number), ErrorOutcome::Return);
        EXPECT_TRUE(v.ErrorMessage == "Unexpected error." && v.ErrorStyle == 48) << number;
        EXPECT_EQ(platform.boxes().back().request.icon, Icon::Exclamation);
        EXPECT_EQ(v.ErrorTitle, "Cohortrak Error #" + std::to_string(number));
    }
}

TEST(ErrorReporter, DiskFullOffersRetryByDefaultAndKeepsTheAnswer) {
    ScriptedPlatform platform;
    platform.queueAnswer(Answer::Retry);
    platform.queueAnswer(Answer::Cancel);
    ErrorReporter reporter(platform);
    EXPECT_EQ(reporter.reportError(61), ErrorOutcome::Return);
    EXPECT_TRUE(reporter.values().ErrorAnswer == 4 && reporter.values().ErrorStyle == 53);
    EXPECT_EQ(reporter.reportError(61), ErrorOutcome::Return);
    EXPECT_TRUE(reporter.values().ErrorAnswer == 2 &&
                reporter.values().ErrorMessage == "Disk full.");
    const auto& box = platform.boxes().at(0).request;
    EXPECT_TRUE(box.icon == Icon::Exclamation && box.buttons == Buttons::RetryCancel);
    EXPECT_EQ(defaultAnswer(box), Answer::Retry);
}

TEST(ErrorTable, RowsAndLineBreaks) {
    EXPECT_TRUE(errorEntry(5).message == "Illegal function call." && errorEntry(5).style == 48);
    EXPECT_EQ(errorEntry(49).message, "Error in loading DLL (Dynamic Link Library).");
    EXPECT_TRUE(errorEntry(49).style == 16 && errorEntry(57).style == 53);
    EXPECT_TRUE(errorEntry(76).message == "Path does not exist." && errorEntry(76).style == 48);
    EXPECT_TRUE(errorEntry(52).message == missingFile && errorEntry(64).message == missingFile);
    // The end-of-file text breaks after "backup to", the missing-file text before "to".
    EXPECT_EQ(errorEntry(62).message,
              "The Cohortrak data file has a non-standard end-of-file marker, or an attempt was "
              "made to read beyond the end-of-file marker.\r\n\r\nExit Cohortrak and copy the "
              "backup to\r\nthe C:\\COHORTRK subdirectory.");
    EXPECT_EQ(errorEntry(62).style, 16);
}

} // namespace
