#include "shell/json_writer.h"

#include <charconv>
#include <cmath>

namespace titron::shell {

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
    string(name);
    m_out += ':';
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
