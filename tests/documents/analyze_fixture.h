// A document on the scripted platform, with a scratch directory for its files.
#pragma once

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <chrono>
#include <filesystem>
#include <fstream>
#include <future>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "documents/analyze.h"
#include "platform/scripted_platform.h"
#include "session/session.h"
#include "tests/scratch_directory.h"
#include "vocabulary/text_routines.h"

namespace titron::documents::testing {

struct Row {
    std::string dose, responses, tested, comments;
};

// An analysis file's name line and results line, the figures in their fixed columns.
inline std::string analysisText(const std::string& name, const std::string& logProportion,
                                const std::string& standardError) {
    std::string line = "    Log Proportion:";
    line += std::string(23 - logProportion.size(), ' ') + logProportion;
    line += "  S.E. of Log Prop.: " + standardError;
    return "Analysis Name: " + name + "\r\n\r\n" + line + "\r\n\r\nEND\r\n";
}

// Rows written into a grid's cells by code (no cell changed), from firstRow down.
inline void typeRows(entry::Grid& grid, const std::vector<Row>& rows, int firstRow = 1) {
    for (const Row& r : rows) {
        int col = 1;
        for (const std::string* text : {&r.dose, &r.responses, &r.tested, &r.comments}) {
            grid.setCell(col++, firstRow, *text);
        }
        ++firstRow;
    }
}

// The worked four-row assay: doses 1000 to 30000, 24 tested at each, the responses 2, 6, 14
// and 22 unless others are given.
using Responses = std::array<std::string, 4>;
inline std::vector<Row> fourRowAssay(const Responses& responses = {"2", "6", "14", "22"}) {
    const char* doses[] = {"1000", "3000", "10000", "30000"};
    std::vector<Row> rows;
    for (std::size_t i = 0; i < 4; ++i) {
        rows.push_back({doses[i], responses[i], "24", ""});
    }
    return rows;
}

// A second document of its own, as after the program was started again.
struct FreshDocument {
    FreshDocument() { analyze.load(); }
    platform::ScriptedPlatform platform;
    session::Session session;
    Analyze analyze{platform.services(), session};
};

class AnalyzeFixture : public ::testing::Test {
  protected:
    AnalyzeFixture() { analyze.load(); }

    void type(const std::vector<Row>& rows, int firstRow = 1) {
        typeRows(analyze.grid(), rows, firstRow);
    }
    void typeFourRowExample() { type(fourRowAssay()); }

    // Types text into a cell as the user does, which raises the grid's cell changed.
    void userType(int col, int row, const std::string& text) {
        entry::Grid& grid = analyze.grid();
        grid.addressCell(col, row);
        grid.activate();
        for (char c : text) {
            grid.userKeyPress(static_cast<unsigned char>(c));
        }
        grid.userCommitEdit();
    }

    std::string path(const std::string& name) const { return (directory / name).string(); }

    std::string writeFile(const std::string& name, const std::string& bytes) const {
        std::ofstream(path(name), std::ios::binary) << bytes;
        return path(name);
    }

    // A FIFO with no writer: reading it would wait for ever.
    std::string makeFifo(const std::string& name) const {
        EXPECT_EQ(::mkfifo(path(name).c_str(), 0600), 0);
        return path(name);
    }

    // Runs read, which reads the FIFO fifo, and whether it returned within 5 seconds. A read
    // that waits is set free by a writer that comes and goes, so that the test goes on.
    template <class Read> bool returnsAtOnce(const std::string& fifo, Read read) const {
        std::future<void> done = std::async(std::launch::async, read);
        if (done.wait_for(std::chrono::seconds(5)) == std::future_status::ready) {
            done.get();
            return true;
        }
        const int writer = ::open(fifo.c_str(), O_WRONLY | O_NONBLOCK);
        if (writer >= 0) {
            ::close(writer);
        }
        done.get();
        return false;
    }

    std::string readFile(const std::string& name) const {
        std::ifstream in(path(name), std::ios::binary);
        return std::string(std::istreambuf_iterator<char>(in), {});
    }

    // Exactly one box since the transcript was last cleared, with this title and text.
    void expectBox(const std::string& title, const std::string& text) const {
        ASSERT_EQ(boxes().size(), 1u);
        EXPECT_EQ(boxes()[0].request.title, title);
        EXPECT_EQ(boxes()[0].request.text, text);
    }

    std::string cell(int col, int row) const { return analyze.grid().cell(col, row); }
    // Rows first to last, each as "number|dose|responses|tested|comments" and a line feed;
    // row 0 is the headings.
    std::string rows(int first, int last) const {
        std::string text;
        for (int row = first; row <= last; ++row) {
            for (int col = 0; col <= 4; ++col) {
                text += cell(col, row) + (col < 4 ? "|" : "\n");
            }
        }
        return text;
    }
    const std::string& pane() const { return analyze.resultsPane().text(); }
    const std::vector<platform::ShownBox>& boxes() const { return platform.boxes(); }

    titron::testing::ScratchDirectory scratch;
    const std::filesystem::path directory = scratch.path;
    platform::ScriptedPlatform platform;
    session::Session session;
    Analyze analyze{platform.services(), session};
};

} // namespace titron::documents::testing
