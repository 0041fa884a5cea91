// A strict reader of one JSON text, for the tests of the JSON outputs: it refuses what the
// JSON grammar refuses, and gives every value by its path ("model.proportion.wald.0"):
// a number or literal as written, a string without its quotes (escapes as written), and
// "{" or "[" for an object or array.
#pragma once

#include <cstring>
#include <map>
#include <optional>
#include <regex>
#include <string>
#include <string_view>

namespace titron::testing {

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

    void skipBlanks() {
        while (m_at < m_text.size() && std::strchr(" \t\r\n", m_text[m_at]) && m_text[m_at]) {
            ++m_at;
        }
    }
    bool take(char c) {
        skipBlanks();
        return m_at < m_text.size() && m_text[m_at] == c && ++m_at;
    }
    bool string(std::string& out) {
        if (!take('"')) {
            return false;
        }
        for (; m_at < m_text.size() && m_text[m_at] != '"'; ++m_at) {
            const auto c = static_cast<unsigned char>(m_text[m_at]);
            const std::string_view rest = m_text.substr(m_at);
            if (c < 0x20 ||
                (c == '\\' && !std::regex_search(rest.begin(), rest.end(), kEscape,
                                                 std::regex_constants::match_continuous))) {
                return false;
            }
            out += m_text[m_at];
            if (c == '\\') {
                out += m_text[++m_at];
            }
        }
        return take('"');
    }
    bool value(const std::string& path) {
        skipBlanks();
        if (m_at < m_text.size() && (m_text[m_at] == '{' || m_text[m_at] == '[')) {
            const char open = m_text[m_at++];
            const char close = open == '{' ? '}' : ']';
            m_values[path] = open;
            if (take(close)) {
                return true;
            }
            for (int i = 0;; ++i) {
                std::string key = open == '{' ? "" : std::to_string(i);
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
        if (m_at < m_text.size() && m_text[m_at] == '"') {
            return string(m_values[path]);
        }
        std::match_results<std::string_view::const_iterator> scalar;
        const std::string_view rest = m_text.substr(m_at);
        if (!std::regex_search(rest.begin(), rest.end(), scalar, kScalar,
                               std::regex_constants::match_continuous)) {
            return false;
        }
        m_values[path] = scalar.str();
        m_at += scalar.length();
        return true;
    }

    inline static const std::regex kScalar{
        R"(-?(0|[1-9]\d*)(\.\d+)?([eE][+-]?\d+)?|true|false|null)"};
    inline static const std::regex kEscape{R"(\\(["\\/bfnrt]|u[0-9a-fA-F]{4}))"};
    std::string_view m_text;
    std::size_t m_at = 0;
    JsonPaths m_values;
};

} // namespace titron::testing
