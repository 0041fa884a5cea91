#include "shell/settings_file.h"

#include <climits>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "vocabulary/failure.h"

namespace titron::shell {
namespace {

// All 18 fields on one line, so that a case shows at a glance what it changed.
std::string summary(const session::AppSettings& s) {
    std::string out;
    for (int v : {s.WindowState, s.WindowTop, s.WindowLeft, s.WindowHeight, s.WindowWidth}) {
        out += std::to_string(v) + ",";
    }
    for (const std::string& heading : s.ColHeading) {
        out += "[" + heading + "]";
    }
    for (int width : s.ColWidth) {
        out += std::to_string(width) + ",";
    }
    return out + std::to_string(s.GridHeight) + "," + std::to_string(s.ConfirmInsert) +
           std::to_string(s.ConfirmDelete);
}

std::string readOverDefaults(const std::string& text) {
    session::AppSettings s;
    readSettingsText(text, s);
    return summary(s);
}

TEST(SettingsFile, DefaultsFollowTheScreen) {
    EXPECT_EQ(summary(defaultSettings(7500, 9600, 7199, 9600)),
              "2,150,0,7200,9600,[Row][Dose][Responses][Tested][Comments]500,0,0,0,0,2205,11");
    // Halving drops the remainder toward zero; beyond 16 bits the place clamps.
    EXPECT_EQ(summary(defaultSettings(7501, 5001, 7502, 7200)).substr(0, 11), "0,0,-1099,7");
    EXPECT_EQ(summary(defaultSettings(100000, INT_MIN, 0, INT_MAX)).substr(0, 16),
              "0,32767,-32768,7");
}

TEST(SettingsFile, FieldsAreReadInSequence) {
    const std::string defaults = summary(session::AppSettings{});
    const std::string full =
        "2,10,20,6000,8000,[Row][Dose, mg][Hits][Tested][]600,1000,1100,1200,1300,3000,01";
    const struct {
        std::string text, expected;
    } cases[] = {
        {"", defaults},
        {" \r\n\t\n", defaults},
        {"1,2,3,4,5\r\n", "1,2,3,4,5" + defaults.substr(defaults.find(",[R"))},
        {"2,10,20,6000,8000\r\n\"Row\",\"Dose, mg\",Hits ,\"Tested\",\"\"\r\n"
         "600,1000,1100,1200,1300\r\n3000\r\n0,-1\r\n",
         full},
        // Blanks end numbers, LF or CR alone end lines; empty lines and whatever follows a
        // closing quote are passed over.
        {" 2 10\n20 ,6000\r8000,Row\n\n\"Dose, mg\" x,  Hits\t,Tested,\"\"\n"
         "600 1000\t1100 1200 1300 3000 0 -1",
         full},
        // A missing closing quote costs that one field; the text's end stops everything.
        {"1,2,3,4,5\nA,\"B,C\r\nD", "1,2,3,4,5,[A][B,C][D][Tested][Comments]500,0,0,0,0,2205,11"},
        // Fields that are no 16-bit number keep their values; fractions round to even.
        {"x,99999999999,1e400,-32769,12abc\na,b,c,d,e\n2.5,3.5,-32768,32767,,7\nyes,0",
         "0,0,0,7200,9600,[a][b][c][d][e]2,4,-32768,32767,0,7,10"},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(readOverDefaults(c.text), c.expected) << c.text;
    }
    const std::string big(1 << 20, 'h');
    session::AppSettings s;
    readSettingsText("0,0,0,0,0," + big + ",\"" + big + "\",c,d,e,1", s);
    EXPECT_TRUE(s.ColHeading[0] == big && s.ColHeading[1] == big && s.ColWidth[0] == 1);
}

class FakeFiles : public platform::Files {
  public:
    std::string name, text;
    int failure = 0; // thrown by exists when negative, by readAll when positive

    std::string readAll(const std::string&) override {
        return failure > 0 ? throw vocabulary::Failure(failure) : text;
    }
    bool exists(const std::string& path) override {
        return failure < 0 ? throw vocabulary::Failure(-failure) : path == name;
    }
    void writeAll(const std::string&, const std::string&) override { ADD_FAILURE(); }
    std::vector<std::string> list(const std::string&) override { return {}; }
    std::string currentDirectory() override { return "/"; }
    bool setCurrentDirectory(const std::string&) override { return false; }
};

TEST(SettingsFile, OnlyAReadableTitroIniCounts) {
    FakeFiles files;
    files.text = "1";
    for (const auto& [name, failure] : std::vector<std::pair<std::string, int>>{
             {"TITRO.INI", 0}, {"titro.ini", 70}, {"titro.ini", -75}, {"titro.ini", 0}}) {
        files.name = name;
        files.failure = failure;
        session::AppSettings s;
        readSettingsFile(files, s);
        EXPECT_EQ(s.WindowState, name == "titro.ini" && failure == 0) << name << failure;
    }
}

} // namespace
} // namespace titron::shell
