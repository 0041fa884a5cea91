// A document on the scripted platform, with a scratch directory for its files.
#pragma once

#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "documents/analyze.h"
#include "platform/scripted_platform.h"
#include "session/session.h"
#include "vocabulary/text_routines.h"

namespace titron::documents::testing {

struct Row {
    std::string dose, responses, tested, comments;
};

// A second document of its own, as after the program was started again.
struct FreshDocument {
    FreshDocument() { analyze.load(); }
    platform::ScriptedPlatform platform;
    session::Session session;
    Analyze analyze{platform.services(), session};
};

class AnalyzeFixture : public ::testing::Test {
  protected:
    AnalyzeFixture()
        : analyze(platform.services(), session), startDirectory(std::filesystem::current_path()) {
        analyze.load();
        directory = std::filesystem::temp_directory_path() /
                    ("titron-test-" + std::to_string(::getpid()) + "-" +
                     ::testing::UnitTest::GetInstance()->current_test_info()->name());
        std::filesystem::remove_all(directory);
        std::filesystem::create_directories(directory);
    }
    // Accepted file dialogs move the current directory; it goes back before the files go.
    ~AnalyzeFixture() override {
        std::filesystem::current_path(startDirectory);
        std::filesystem::remove_all(directory);
    }

    void type(const std::vector<Row>& rows, int firstRow = 1) {
        int row = firstRow;
        for (const Row& r : rows) {
            entry::Grid& grid = analyze.grid();
            grid.setCell(1, row, r.dose);
            grid.setCell(2, row, r.responses);
            grid.setCell(3, row, r.tested);
            grid.setCell(4, row, r.comments);
            ++row;
        }
    }

    void typeFourRowExample() {
        type({{"1000", "2", "24", ""},
              {"3000", "6", "24", ""},
              {"10000", "14", "24", ""},
              {"30000", "22", "24", ""}});
    }

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

    platform::ScriptedPlatform platform;
    session::Session session;
    Analyze analyze;
    std::filesystem::path startDirectory;
    std::filesystem::path directory;
};

} // namespace titron::documents::testing
