#include "shell/command_line.h"

#include <cstdio>
#include <filesystem>
#include <sstream>

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include "tests/documents/analyze_fixture.h"
#include "vocabulary/number_mask.h"
#include "vocabulary/text_routines.h"

namespace titron::shell {
namespace {

using documents::testing::analysisText;

// The scratch directory and its files are the document tests' fixture.
class CommandLineTest : public documents::testing::AnalyzeFixture {
  protected:
    int run(std::vector<std::string> arguments) {
        out.str("");
        err.str("");
        return runCommandLine(arguments, out, err);
    }

    // The installed program as a process of its own: standard output goes to the file
    // output, standard error is kept; limitMb, when not 0, bounds its address space.
    struct ProgramRun {
        int status = -1;
        long peakKib = 0; // the most memory it held
        std::string errText;
    };
    ProgramRun runProgram(std::vector<std::string> arguments,
                          const std::string& output = "/dev/null", rlim_t limitMb = 0) {
        arguments.insert(arguments.begin(), TITRON_CLI_PATH);
        std::vector<char*> argv;
        for (std::string& argument : arguments) {
            argv.push_back(argument.data());
        }
        argv.push_back(nullptr);
        const std::string errPath = path("program-stderr.txt");
        const pid_t child = ::fork();
        if (child == 0) {
            const rlimit bound{limitMb << 20, limitMb << 20};
            if ((limitMb != 0 && ::setrlimit(RLIMIT_AS, &bound) != 0) ||
                !std::freopen(output.c_str(), "w", stdout) ||
                !std::freopen(errPath.c_str(), "w", stderr)) {
                ::_exit(99);
            }
            ::execv(argv[0], argv.data());
            ::_exit(98);
        }
        ProgramRun run;
        int status = 0;
        rusage usage{};
        ::wait4(child, &status, 0, &usage);
        run.status = WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
        run.peakKib = usage.ru_maxrss;
        run.errText = readFile("program-stderr.txt");
        return run;
    }

    std::ostringstream out;
    std::ostringstream err;
};

const std::string kSpleen = TITRON_EXAMPLES_DIR "/spleen-a.tna";

TEST_F(CommandLineTest, ReportGoesToStandardOutputWithItsFileLineAndNotesToStandardError) {
    EXPECT_EQ(run({"analyze", kSpleen}), kExitReport);
    const std::string report = out.str();
    EXPECT_EQ(report.rfind("Analysis Name: Spleen A\r\nIterations:     4\r\n", 0), 0u);
    EXPECT_NE(report.find("1 in 11,503\r\n"), std::string::npos);
    EXPECT_NE(report.find("END\r\n\r\nTitron Analysis File: [" + kSpleen + "]\r\n"),
              std::string::npos);
    EXPECT_EQ(report.substr(report.size() - 20), "4\t\t30000\t\t22\t\t24\t\t\r\n");
    EXPECT_EQ(err.str(), "");
    // A missing name is a note on standard error; the report stands.
    EXPECT_EQ(run({"analyze", writeFile("rows.txt", "1000\t2\t24\r\n3000\t6\t24\r\n")}),
              kExitReport);
    EXPECT_EQ(out.str().rfind("Analysis Name: \r\n", 0), 0u);
    EXPECT_EQ(err.str(), "note: ANALYSIS NAME: There is no Analysis Name.\n");
}

TEST_F(CommandLineTest, BoxThatEndsTheAnalysisIsStatusTwoAndAnUnreadableFileStatusOne) {
    EXPECT_EQ(run({"analyze", writeFile("bad.txt", "100\t5\t3\r\n")}), kExitBox);
    EXPECT_EQ(out.str(), "");
    EXPECT_EQ(err.str(), "INVALID RESPONSES/NUMBER TESTED: Responses is greater than Number "
                         "Tested:\n\n5 > 3\n");
    EXPECT_EQ(run({"analyze", writeFile("empty.txt", "")}), kExitBox);
    EXPECT_EQ(err.str(), "NO DATA TO ANALYZE: No data to analyze.\n");
    EXPECT_EQ(run({"analyze", writeFile("word.txt", "100\tfive\t10\r\n")}), kExitBox);
    EXPECT_EQ(err.str(), "INVALID ENTRY: Invalid entry: five\n");
    EXPECT_EQ(run({"analyze", writeFile("big.txt", "1E400\t1\t10\r\n")}), kExitBox);
    EXPECT_EQ(err.str(), "Titron ERROR #6: An error occurred in the analysis.\n");
    // A file that can't be read is status one.
    EXPECT_EQ(run({"analyze", (directory / "none.tna").string()}), kExitUnreadable);
    EXPECT_EQ(err.str(), "Titron ERROR #File not found: An error occurred loading the data.\n");
    EXPECT_EQ(run({"analyze", directory.string()}), kExitUnreadable);
}

TEST_F(CommandLineTest, MorePassesAreAllowedTwentyAtATimeWithinTheLimit) {
    // The halving estimate of this assay settles at pass 25.
    const std::string slow = writeFile("slow.txt", "0.001\t5\t10\r\n0.002\t8\t10\r\n");
    EXPECT_EQ(run({"analyze", slow}), kExitReport);
    EXPECT_NE(out.str().find("Iterations:     25\r\n"), std::string::npos);
    EXPECT_EQ(run({"analyze", "--passes", "39", slow}), kExitNoConvergence);
    EXPECT_EQ(out.str(), "");
    EXPECT_EQ(err.str(), "no convergence after 20 passes (see --passes); no report\n");
    EXPECT_EQ(run({"analyze", "--passes", "40", slow}), kExitReport);
}

TEST_F(CommandLineTest, SeveralFilesGiveSectionsSeparatedByFormFeedsAndTheWorstStatus) {
    const std::string bad = writeFile("bad.txt", "0\t1\t10\r\n");
    EXPECT_EQ(run({"analyze", kSpleen, bad, kSpleen}), kExitBox);
    const std::string text = out.str();
    const std::size_t first = text.find("\f\r\n");
    ASSERT_NE(first, std::string::npos);
    EXPECT_EQ(text.substr(first, 6), "\f\r\n\f\r\n"); // the failed file's section is empty
    EXPECT_EQ(text.substr(first + 6), text.substr(0, first));
    EXPECT_EQ(err.str(), bad + ": INVALID DOSE: Invalid Dose: 0\n");
}

// Files share one window logic in a run: each must come out as it does alone, whatever
// came before it (other headings, more rows, a failure, a name, no convergence).
TEST_F(CommandLineTest, FileAfterOthersComesOutAsItDoesAlone) {
    std::string big = "Analysis Name: Big\r\n\r\nNr\tD\tR\tT\tNote\r\n";
    for (int row = 1; row <= 250; ++row) {
        big += std::to_string(row) + "\t" + std::to_string(100 * row) + "\t" +
               std::to_string(row % 24) + "\t24\tx\r\n";
    }
    const std::vector<std::string> before = {
        kSpleen, writeFile("word.txt", "100\t5\t10\r\n200\tfive\t10\r\n"),
        (directory / "missing.tna").string(),
        writeFile("slow.txt", "0.001\t5\t10\r\n0.002\t8\t10\r\n"), writeFile("big.txt", big)};
    // Neither a name nor a heading line: the default headings and the note must show.
    const std::string last = writeFile("last.txt", "1000\t2\t24\r\n3000\t6\t24\r\n");

    for (const std::string format : {"text", "tsv"}) {
        EXPECT_EQ(run({"analyze", "--passes", "20", "--format", format, last}), kExitReport);
        const std::string alone = out.str();
        const std::string aloneErr = err.str();
        std::vector<std::string> arguments = {"analyze", "--passes", "20", "--format", format};
        arguments.insert(arguments.end(), before.begin(), before.end());
        arguments.push_back(last);
        EXPECT_EQ(run(arguments), kExitNoConvergence);
        const std::string all = out.str();
        const std::size_t lastSection =
            format == "tsv" ? all.rfind('\n', all.size() - 2) + 1 : all.rfind("\f\r\n") + 3;
        const std::size_t aloneSection = format == "tsv" ? alone.find('\n') + 1 : 0;
        EXPECT_EQ(all.substr(lastSection), alone.substr(aloneSection)) << format;
        EXPECT_EQ(err.str().substr(err.str().rfind(last + ": ")), last + ": " + aloneErr);
    }
}

TEST_F(CommandLineTest, TsvGivesFullPrecisionFiguresThatRoundToTheReport) {
    const std::string bad = writeFile("bad.txt", "0\t1\t10\r\n");
    EXPECT_EQ(run({"analyze", "--format", "tsv", kSpleen, bad}), kExitBox);
    std::istringstream lines(out.str());
    std::string heading, spleen, refused, extra;
    std::getline(lines, heading);
    std::getline(lines, spleen);
    std::getline(lines, refused);
    EXPECT_FALSE(std::getline(lines, extra));

    const auto fields = [](const std::string& line) {
        std::vector<std::string> result;
        std::istringstream in(line + '\t'); // every field ends in a Tab, the last empty one too
        for (std::string field; std::getline(in, field, '\t');) {
            result.push_back(field);
        }
        return result;
    };
    ASSERT_EQ(fields(heading).size(), 17u);
    const auto s = fields(spleen);
    ASSERT_EQ(s.size(), 17u);
    EXPECT_EQ(s[1], "Spleen A");
    EXPECT_EQ(s[2], "report");
    EXPECT_EQ(s[3], "4");
    EXPECT_EQ(vocabulary::formatMask(std::stod(s[4]), "##0.00000"), "-9.35040");
    EXPECT_EQ(vocabulary::formatMask(std::stod(s[5]), "#0.0000"), "0.1726");
    EXPECT_EQ(vocabulary::formatMask(std::stod(s[11]), "###,###"), "11,503");
    EXPECT_EQ(s[14], "3");
    EXPECT_EQ(vocabulary::formatMask(std::stod(s[15]), "0.0000"), "0.9930");
    EXPECT_GE(s[4].size(), 18u); // 17 significant digits and the sign
    const auto r = fields(refused);
    ASSERT_EQ(r.size(), 17u);
    EXPECT_EQ(r[2], "INVALID DOSE");
    EXPECT_EQ(r[4], "");
}

TEST_F(CommandLineTest, SaveWritesTheDocumentAsSaveWould) {
    const std::string saved = (directory / "out.tna").string();
    EXPECT_EQ(run({"analyze", "--save", saved, kSpleen}), kExitReport);
    EXPECT_EQ(readFile(saved), out.str() + "\r\n");
    const std::string nowhere = (directory / "no/such/dir.tna").string();
    EXPECT_EQ(run({"analyze", "--save", nowhere, kSpleen}), kExitUnreadable);
    EXPECT_NE(err.str().find("cannot write " + nowhere + ": No such file or directory\n"),
              std::string::npos)
        << err.str();
    // A FIFO is refused and stays one.
    const std::string pipe = (directory / "pipe").string();
    ASSERT_EQ(::mkfifo(pipe.c_str(), 0600), 0);
    EXPECT_EQ(run({"compare", "--save", pipe, kSpleen}), kExitUnreadable);
    EXPECT_NE(err.str().find("cannot write " + pipe + ": a FIFO, not a regular file\n"),
              std::string::npos)
        << err.str();
    EXPECT_TRUE(std::filesystem::is_fifo(pipe));
}

TEST_F(CommandLineTest, UsageErrorsAndHelp) {
    EXPECT_EQ(run({"--help"}), kExitReport);
    EXPECT_NE(out.str().find("--format"), std::string::npos);
    EXPECT_EQ(run({}), kExitUsage);
    EXPECT_EQ(run({"analyse", kSpleen}), kExitUsage);
    EXPECT_EQ(run({"analyze"}), kExitUsage);
    EXPECT_EQ(run({"analyze", "--passes", "many", kSpleen}), kExitUsage);
    EXPECT_EQ(run({"analyze", "--format", "xml", kSpleen}), kExitUsage);
    EXPECT_EQ(run({"analyze", "--save", "x.tna", kSpleen, kSpleen}), kExitUsage);
    EXPECT_EQ(out.str(), "");
}

TEST_F(CommandLineTest, MemoryStaysFlatHoweverManyPassesAreAllowed) {
#if defined(__SANITIZE_ADDRESS__)
    GTEST_SKIP() << "AddressSanitizer holds freed memory back, so the peak grows with the work";
#endif
    // This assay's estimate never settles: every pass allowed is made.
    const std::string endless = writeFile("endless.txt", "16\t4\t25\r\n93771700\t0\t12\r\n");
    const ProgramRun few = runProgram({"analyze", "--passes", "20", endless});
    const ProgramRun many = runProgram({"analyze", "--passes", "1000000", endless});
    EXPECT_EQ(few.status, kExitNoConvergence);
    EXPECT_EQ(many.status, kExitNoConvergence);
    EXPECT_LT(many.peakKib - few.peakKib, 4096);
}

// The installed program writes the very bytes of the pane: CR LF line ends survive.
TEST_F(CommandLineTest, ProgramWritesTheReportByteForByte) {
    EXPECT_EQ(run({"analyze", kSpleen}), kExitReport);
    EXPECT_EQ(runProgram({"analyze", kSpleen}, path("report.txt")).status, kExitReport);
    EXPECT_EQ(readFile("report.txt"), out.str());
}

// A full disk cuts the output: both commands fail with a message instead of passing the cut
// report for a whole one.
TEST_F(CommandLineTest, OutputThatCannotBeWrittenIsStatusOne) {
    const std::string message =
        "titron-cli: standard output could not be written; the output is incomplete\n";
    std::ostream broken(nullptr);
    EXPECT_EQ(runCommandLine({"analyze", kSpleen}, broken, err), kExitUnreadable);
    EXPECT_EQ(err.str(), message);
    if (!std::filesystem::exists("/dev/full")) {
        GTEST_SKIP() << "no /dev/full";
    }
    const std::string saved = writeFile("A.tna", analysisText("Spleen", "-2.30259", "0.2500"));
    for (const auto& [command, file] : {std::pair{"analyze", kSpleen}, {"compare", saved}}) {
        const ProgramRun cut = runProgram({command, file}, "/dev/full");
        EXPECT_EQ(cut.status, kExitUnreadable) << command;
        EXPECT_EQ(cut.errText, message) << command;
    }
}

TEST_F(CommandLineTest, FifoFailsAtOnceWithStatusOneInAnalyzeAndCompare) {
    const std::string fifo = makeFifo("fifo.tna");
    int status = kExitReport;
    EXPECT_TRUE(returnsAtOnce(fifo, [&] { status = run({"analyze", fifo}); }));
    EXPECT_EQ(status, kExitUnreadable);
    EXPECT_EQ(err.str(), "Titron ERROR #Path/File access error: An error occurred loading the "
                         "data.\n");
    EXPECT_TRUE(returnsAtOnce(fifo, [&] { status = run({"compare", fifo}); }));
    EXPECT_EQ(status, kExitUnreadable);
    EXPECT_EQ(err.str(), fifo + ": cannot be read; skipped\n");
}

// Memory that runs out, in the load (a box) or in the analysis (no box), ends the command
// with status 1 and a message, never an abort: the program itself runs under a limit of its
// address space.
TEST_F(CommandLineTest, MemoryThatRunsOutEndsTheCommandWithStatusOne) {
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
    GTEST_SKIP() << "the sanitizers reserve address space beyond any such limit";
#endif
    // 20,000 rows of about 1,000 characters: 20 MB. The load holds the text and the cells,
    // 40 MB, and so does the analysis (the cells and the report); a save a copy more.
    std::string text;
    const std::string comment(990, 'c');
    for (int i = 0; i < 20000; ++i) {
        text += "1000\t2\t24\t" + comment + "\r\n";
    }
    const std::string file = writeFile("long.txt", text);
    const ProgramRun inLoad = runProgram({"analyze", file}, "/dev/null", 30);
    EXPECT_EQ(inLoad.status, kExitUnreadable);
    EXPECT_EQ(inLoad.errText, "Titron ERROR #Out of memory: An error occurred loading the data.\n");
    // The report comes out in the room of about two and a half times the file.
    EXPECT_EQ(runProgram({"analyze", file}, "/dev/null", 54).status, kExitReport);
    const ProgramRun inSave =
        runProgram({"analyze", "--save", path("long.tna"), file}, "/dev/null", 62);
    EXPECT_EQ(inSave.status, kExitUnreadable);
    EXPECT_EQ(inSave.errText,
              "note: ANALYSIS NAME: There is no Analysis Name.\ntitron-cli: out of memory\n");
}

// Under a folder deeper than the system's path limit, a file named relative to it is read.
TEST_F(CommandLineTest, RelativeFileUnderAFolderDeeperThanThePathLimitIsRead) {
    const std::string name(200, 'd');
    std::filesystem::current_path(directory);
    int depth = 0;
    for (; std::filesystem::current_path().string().size() <= PATH_MAX; ++depth) {
        std::filesystem::create_directory(name);
        std::filesystem::current_path(name);
    }
    std::ofstream("rows.txt", std::ios::binary) << "1000\t2\t24\r\n3000\t6\t24\r\n";
    EXPECT_EQ(run({"analyze", "rows.txt"}), kExitReport) << err.str();
    EXPECT_NE(out.str().find(name + "/rows.txt]\r\n"), std::string::npos);
    // Taken down from the inside: the whole path is too long to remove at once.
    std::filesystem::remove("rows.txt");
    for (; depth > 0; --depth) {
        std::filesystem::current_path("..");
        std::filesystem::remove(name);
    }
}

// The worked pair of the comparison: -2.99573 / 0.1000 and -2.30259 / 0.2500.
TEST_F(CommandLineTest, CompareWritesTheReportForTheChosenRowAndSkipsFilesWithoutResults) {
    const std::string a = writeFile("A.tna", analysisText("Spleen", "-2.30259", "0.2500"));
    const std::string b = writeFile("b.tna", analysisText("Base", "-2.99573", "0.1000"));
    const std::string none = writeFile("table.tna", "Analysis Name: T\r\n\r\n1\t2\t3\r\n");
    const std::string saved = (directory / "cmp.tnc").string();
    EXPECT_EQ(run({"compare", "--row", "2", "--save", saved, a, none, b}), 0);
    EXPECT_EQ(err.str(), none + ": no analysis results in it; skipped\n");
    const std::string report = out.str();
    EXPECT_EQ(readFile(saved), report + "\r\n");
    // Row 2 (b) is the comparison row; a is tested against it. A file cell is the path as
    // given, "~" and its last 14 characters in the report; the directory's name ends in
    // this test's name.
    EXPECT_NE(report.find("Comparison Row:\r\n~tResults/b.tna  Base             -2.99573   "
                          "0.10000\r\n"),
              std::string::npos);
    EXPECT_NE(report.find("~tResults/A.tna  Spleen           -2.30259   0.25000    -0.69314   "
                          "0.50000    0.29497 to 0.84756      0.0051    0.0101\r\n"),
              std::string::npos);

    EXPECT_EQ(run({"compare", "--row", "3", a, b}), kExitUsage);
    EXPECT_EQ(run({"compare", a, (directory / "missing.tna").string()}), kExitUnreadable);
}

} // namespace
} // namespace titron::shell
