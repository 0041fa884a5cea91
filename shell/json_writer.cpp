#include "shell/json_writer.h"

#include <charconv>
#include <cmath>

namespace titron::shell {

namespace {

// The length of the well-formed UTF-8 sequence that starts at text[i] (a byte of 0x80 or
// more), or 0 when there is none: no overlong forms, no surrogates, nothing past U+10FFFF.
std::size_t utf8SequenceLength(std::string_view text, std::size_t i) {
    const auto at = [&](std::size_t k) {
        return k < text.size() ? static_cast<unsigned char>(text[k]) : 0u;
    };
    const unsigned lead = at(i);
    const auto continues = [&](std::size_t k, unsigned low = 0x80, unsigned high = 0xBF) {
        return at(k) >= low && at(k) <= high;
    };
    if (lead >= 0xC2 && lead <= 0xDF) {
        return continues(i + 1) ? 2 : 0;
    }
    if (lead >= 0xE0 && lead <= 0xEF) {
        const unsigned low = lead == 0xE0 ? 0xA0 : 0x80;
        const unsigned high = lead == 0xED ? 0x9F : 0xBF;
        return continues(i + 1, low, high) && continues(i + 2) ? 3 : 0;
    }
    if (lead >= 0xF0 && lead <= 0xF4) {
        const unsigned low = lead == 0xF0 ? 0x90 : 0x80;
        const unsigned high = lead == 0xF4 ? 0x8F : 0xBF;
        return continues(i + 1, low, high) && continues(i + 2) && continues(i + 3) ? 4 : 0;
    }
    return 0;
}

} // namespace

// A comma goes between the members of an object or array: before any value or key that
// follows a value at the same depth, never after an opening bracket or a key.
void JsonWriter::beforeValue() {
    if (m_needsComma) {
        m_out += ',';
    }
    m_needsComma = m_depth > 0;
}

JsonWriter& JsonWriter::beginObject() {
    beforeValue();
    m_out += '{';
    ++m_depth;
    m_needsComma = false;
    return *this;
}

JsonWriter& JsonWriter::endObject() {
    m_out += '}';
    --m_depth;
    m_needsComma = m_depth > 0;
    return *this;
}

JsonWriter& JsonWriter::beginArray() {
    beforeValue();
    m_out += '[';
    ++m_depth;
    m_needsComma = false;
    return *this;
}

JsonWriter& JsonWriter::endArray() {
    m_out += ']';
    --m_depth;
    m_needsComma = m_depth > 0;
    return *this;
}

JsonWriter& JsonWriter::key(std::string_view name) {
    // A key is one of the program's own names: nothing in it needs an escape.
    beforeValue();
    m_out += '"';
    m_out += name;
    m_out += "\":";
    m_needsComma = false;
    return *this;
}

JsonWriter& JsonWriter::string(std::string_view text) {
    beforeValue();
    static constexpr char kHex[] = "0123456789abcdef";
    m_out += '"';
    // Runs of characters that need no escape go in whole: most texts are nothing else.
    std::size_t plainFrom = 0;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const char c = text[i];
        const auto byte = static_cast<unsigned char>(c);
        if (byte >= 0x80) {
            const std::size_t length = utf8SequenceLength(text, i);
            if (length > 0) {
                i += length - 1;
                continue;
            }
            // A byte that is no part of UTF-8 (a name from an older Latin-1 file) is read
            // as Latin-1, so that the line stays JSON.
            m_out.append(text.data() + plainFrom, i - plainFrom);
            plainFrom = i + 1;
            m_out += static_cast<char>(0xC0 | (byte >> 6));
            m_out += static_cast<char>(0x80 | (byte & 0x3F));
            continue;
        }
        if (c != '"' && c != '\\' && byte >= 0x20) {
            continue;
        }
        m_out.append(text.data() + plainFrom, i - plainFrom);
        plainFrom = i + 1;
        if (c == '"' || c == '\\') {
            m_out += '\\';
            m_out += c;
        } else if (c == '\n') {
            m_out += "\\n";
        } else if (c == '\r') {
            m_out += "\\r";
        } else if (c == '\t') {
            m_out += "\\t";
        } else {
            m_out += "\\u00";
            m_out += kHex[byte >> 4];
            m_out += kHex[byte & 0xF];
        }
    }
    m_out.append(text.data() + plainFrom, text.size() - plainFrom);
    m_out += '"';
    return *this;
}

JsonWriter& JsonWriter::number(double value) {
    if (!std::isfinite(value)) {
        return null();
    }
    beforeValue();
    char buffer[32];
    const auto [end, error] = std::to_chars(buffer, buffer + sizeof buffer, value);
    m_out.append(buffer, end);
    return *this;
}

JsonWriter& JsonWriter::number(const std::optional<double>& value) {
    return value ? number(*value) : null();
}

JsonWriter& JsonWriter::integer(long long value) {
    beforeValue();
    m_out += std::to_string(value);
    return *this;
}

JsonWriter& JsonWriter::boolean(bool value) {
    beforeValue();
    m_out += value ? "true" : "false";
    return *this;
}

JsonWriter& JsonWriter::null() {
    beforeValue();
    m_out += "null";
    return *this;
}

} // namespace titron::shell
