#include "shell/json_writer.h"

#include <charconv>
#include <cmath>
#include <cstring>
#include <limits>
#include <random>

#include <gtest/gtest.h>

namespace titron::shell {
namespace {

TEST(JsonWriterTest, NestsWithCommasEscapesTextAndWritesNullForMissingFigures) {
    std::string out;
    JsonWriter json(out);
    json.beginObject().key("file").string("a \"b\"\\c\r\n\t\x01.tna").key("figures");
    json.beginArray().number(0.1).number(1e-5).number(24.0).endArray();
    json.key("missing").number(std::optional<double>()).key("infinite");
    json.number(std::numeric_limits<double>::infinity()).key("rows").beginArray();
    json.beginObject().key("n").integer(-3).endObject().beginObject().endObject().endArray();
    json.key("ok").boolean(true).endObject();
    EXPECT_EQ(out, R"({"file":"a \"b\"\\c\r\n\t\u0001.tna","figures":[0.1,1e-05,24],)"
                   R"("missing":null,"infinite":null,"rows":[{"n":-3},{}],"ok":true})");
}

// Well-formed UTF-8 stays as it is; any other byte is read as Latin-1, so that a name
// from an older file can't make a line that is no JSON.
TEST(JsonWriterTest, TextIsAlwaysUtf8) {
    std::string out;
    JsonWriter(out).string("caf\xC3\xA9 \xE2\x82\xAC \xF0\x9F\x90\x81 | caf\xE9 \xC3 \xED\xA0\x80");
    EXPECT_EQ(out, "\"caf\xC3\xA9 \xE2\x82\xAC \xF0\x9F\x90\x81 | caf\xC3\xA9 \xC3\x83 "
                   "\xC3\xAD\xC2\xA0\xC2\x80\"");
}

// Every finite double comes back from its text exactly.
TEST(JsonWriterTest, NumbersReadBackToTheSameDouble) {
    std::mt19937_64 random(3);
    for (int i = 0; i < 20000; ++i) {
        const std::uint64_t bits = random();
        double value = 0;
        std::memcpy(&value, &bits, sizeof value);
        if (!std::isfinite(value)) {
            continue;
        }
        std::string out;
        JsonWriter(out).number(value);
        double back = 0;
        std::from_chars(out.data(), out.data() + out.size(), back);
        ASSERT_EQ(back, value) << out;
    }
}

} // namespace
} // namespace titron::shell
