// A strict reader of one JSON text, for the tests of the JSON outputs: it refuses what the
// JSON grammar refuses, and gives every value by its path ("model.proportion.wald.0"):
// a number or literal as written, a string without its quotes (escapes as written), and
// "{" or "[" for an object or array.
#pragma once

#include <algorithm>
#include <map>
#include <optional>
#include <regex>
#include <string>
#include <string_view>

namespace titron::shell::testing {

using JsonPaths = std::map<std::string, std::string, std::less<>>;

class JsonReader {
  public:
    static std::optional<JsonPaths> read(std::string_view text) {
        JsonReader reader{text};
        if (!reader.value("") || (reader.skipBlanks(), reader.m_at != text.size())) {
            return std::nullopt;
        }
        return std::move(reader.m_values);
    }

  private:
    explicit JsonReader(std::string_view text) : m_text(text) {}

    void skipBlanks() { m_at = std::min(m_text.find_first_not_of(" \t\r\n", m_at), m_text.size()); }
    bool take(char c) {
        skipBlanks();
        return m_at < m_text.size() && m_text[m_at] == c && ++m_at;
    }
    // The pattern where the text stands, taken into out.
    bool match(const std::regex& pattern, std::string& out) {
        skipBlanks();
        std::match_results<std::string_view::const_iterator> found;
        if (!std::regex_search(m_text.begin() + static_cast<long>(m_at), m_text.end(), found,
                               pattern, std::regex_constants::match_continuous)) {
            return false;
        }
        out = found.str();
        m_at += out.size();
        return true;
    }
    bool string(std::string& out) {
        return match(kString, out) && (out = out.substr(1, out.size() - 2), true);
    }
    bool value(const std::string& path) {
        if (!take('{') && !take('[')) {
            return string(m_values[path]) || match(kScalar, m_values[path]);
        }
        const char open = m_text[m_at - 1];
        const char close = open == '{' ? '}' : ']';
        m_values[path] = open;
        if (take(close)) {
            return true;
        }
        for (int i = 0;; ++i) {
            std::string key = std::to_string(i);
            if (open == '{' && (!string(key) || !take(':'))) {
                return false;
            }
            const std::string inner = path.empty() ? key : path + "." + key;
            if (m_values.count(inner) != 0 || !value(inner)) {
                return false; // a key given twice is refused too
            }
            if (!take(',')) {
                return take(close);
            }
        }
    }

    inline static const std::regex kScalar{
        R"(-?(0|[1-9]\d*)(\.\d+)?([eE][+-]?\d+)?|true|false|null)"};
    inline static const std::regex kString{
        R"("([^"\\\x00-\x1f]|\\(["\\/bfnrt]|u[0-9a-fA-F]{4}))*")"};
    std::string_view m_text;
    std::size_t m_at = 0;
    JsonPaths m_values;
};

} // namespace titron::shell::testing
