// A strict reader of one JSON text, for tests of the JSON outputs: it refuses anything the
// JSON grammar refuses, and gives the values back to compare with the program's figures.
#pragma once

#include <cctype>
#include <charconv>
#include <map>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace titron::testing {

struct JsonValue {
    enum class Kind { Null, Boolean, Number, String, Array, Object } kind = Kind::Null;
    double number = 0.0;
    std::string text; // a string's characters, escapes kept as written; "true"/"false"
    std::vector<JsonValue> items;
    std::map<std::string, JsonValue, std::less<>> members;

    bool isNull() const { return kind == Kind::Null; }
    const JsonValue& operator[](std::string_view key) const {
        const auto found = members.find(key);
        if (kind != Kind::Object || found == members.end()) {
            throw std::out_of_range("no member " + std::string(key));
        }
        return found->second;
    }
    const JsonValue& operator[](std::size_t i) const { return items.at(i); }
};

class JsonReader {
  public:
    // The value that the whole of text holds; none when text is not one JSON value.
    static std::optional<JsonValue> read(std::string_view text) {
        JsonReader reader(text);
        JsonValue value;
        if (!reader.value(value) || (reader.skipBlanks(), reader.m_at != text.size())) {
            return std::nullopt;
        }
        return value;
    }

  private:
    explicit JsonReader(std::string_view text) : m_text(text) {}

    void skipBlanks() {
        while (m_at < m_text.size() &&
               std::string_view(" \t\r\n").find(m_text[m_at]) != std::string_view::npos) {
            ++m_at;
        }
    }
    bool take(char c) {
        skipBlanks();
        if (m_at < m_text.size() && m_text[m_at] == c) {
            ++m_at;
            return true;
        }
        return false;
    }
    bool word(std::string_view w) {
        if (m_text.substr(m_at, w.size()) != w) {
            return false;
        }
        m_at += w.size();
        return true;
    }
    bool digits() {
        const std::size_t start = m_at;
        while (m_at < m_text.size() && m_text[m_at] >= '0' && m_text[m_at] <= '9') {
            ++m_at;
        }
        return m_at > start;
    }
    bool number(JsonValue& v) {
        const std::size_t start = m_at;
        word("-");
        if (!word("0") && !(m_at < m_text.size() && m_text[m_at] != '0' && digits())) {
            return false;
        }
        if (word(".") && !digits()) {
            return false;
        }
        if ((word("e") || word("E")) && ((word("+") || word("-")), !digits())) {
            return false;
        }
        v.kind = JsonValue::Kind::Number;
        return std::from_chars(m_text.data() + start, m_text.data() + m_at, v.number).ec ==
               std::errc();
    }
    bool string(std::string& out) {
        if (!take('"')) {
            return false;
        }
        for (; m_at < m_text.size(); ++m_at) {
            const char c = m_text[m_at];
            if (c == '"') {
                ++m_at;
                return true;
            }
            if (static_cast<unsigned char>(c) < 0x20) {
                return false;
            }
            if (c == '\\') {
                const char e = m_at + 1 < m_text.size() ? m_text[++m_at] : '\0';
                if (e == 'u') {
                    for (int i = 0; i < 4; ++i) {
                        if (++m_at >= m_text.size() || !std::isxdigit(m_text[m_at])) {
                            return false;
                        }
                    }
                } else if (std::string_view("\"\\/bfnrt").find(e) == std::string_view::npos) {
                    return false;
                }
                out += '\\';
                out += e;
                continue;
            }
            out += c;
        }
        return false;
    }
    bool value(JsonValue& v) {
        skipBlanks();
        if (m_at >= m_text.size()) {
            return false;
        }
        const char c = m_text[m_at];
        if (c == '{') {
            v.kind = JsonValue::Kind::Object;
            ++m_at;
            if (take('}')) {
                return true;
            }
            do {
                std::string key;
                JsonValue member;
                if (!string(key) || !take(':') || !value(member) ||
                    !v.members.emplace(key, std::move(member)).second) {
                    return false;
                }
            } while (take(','));
            return take('}');
        }
        if (c == '[') {
            v.kind = JsonValue::Kind::Array;
            ++m_at;
            if (take(']')) {
                return true;
            }
            do {
                v.items.emplace_back();
                if (!value(v.items.back())) {
                    return false;
                }
            } while (take(','));
            return take(']');
        }
        if (c == '"') {
            v.kind = JsonValue::Kind::String;
            return string(v.text);
        }
        if (word("null")) {
            return true;
        }
        for (const char* truth : {"true", "false"}) {
            if (word(truth)) {
                v.kind = JsonValue::Kind::Boolean;
                v.text = truth;
                return true;
            }
        }
        return number(v);
    }

    std::string_view m_text;
    std::size_t m_at = 0;
};

} // namespace titron::testing
