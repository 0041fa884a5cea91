// JSON text written as it goes, for the command line's machine-readable outputs: numbers
// in the shortest form that reads back to the same double, null for a figure that doesn't
// exist or isn't finite.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace titron::shell {

class JsonWriter {
  public:
    // Appends to out.
    explicit JsonWriter(std::string& out) : m_out(out) {}

    JsonWriter& beginObject();
    JsonWriter& endObject();
    JsonWriter& beginArray();
    JsonWriter& endArray();
    // The key of the next value in an object: one of the program's own names, plain ASCII
    // without quotes, backslashes or control characters, so it is written as it stands.
    JsonWriter& key(std::string_view name);

    JsonWriter& string(std::string_view text);
    JsonWriter& number(double value); // null when not finite
    JsonWriter& number(const std::optional<double>& value);
    JsonWriter& integer(long long value);
    JsonWriter& boolean(bool value);
    JsonWriter& null();

  private:
    void beforeValue();

    std::string& m_out;
    int m_depth = 0;           // the objects and arrays open
    bool m_needsComma = false; // a value at this depth came last
};

} // namespace titron::shell
