#include "shell/settings_file.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <limits>
#include <optional>
#include <string>
#include <utility>

#include "vocabulary/failure.h"
#include "vocabulary/number_text.h"

namespace titron::shell {

namespace {

using Limits = std::numeric_limits<std::int16_t>;

std::int16_t clampToInt16(long long v) {
    return static_cast<std::int16_t>(std::clamp<long long>(v, Limits::min(), Limits::max()));
}

bool isBlank(char c) {
    return c == ' ' || c == '\t';
}
bool isLineEnd(char c) {
    return c == '\r' || c == '\n';
}
bool endsField(char c) {
    return c == ',' || isLineEnd(c);
}

// Reads the fields of a settings text one after the other, as the file's format has them.
class FieldReader {
  public:
    explicit FieldReader(std::string_view text) : m_text(text) {}

    // The characters of the next number field; nothing at the end of the text.
    std::optional<std::string_view> numberField() {
        if (!startField()) {
            return std::nullopt;
        }
        const std::string_view field = takeUntil([](char c) { return isBlank(c) || endsField(c); });
        // Blanks after a number belong to its end, so "1 , 2" and "1 2" are both two fields.
        takeUntil([](char c) { return !isBlank(c); });
        passDelimiter();
        return field;
    }

    // The next text field, without its quotes; nothing at the end of the text.
    std::optional<std::string> textField() {
        if (!startField()) {
            return std::nullopt;
        }
        std::string_view field;
        if (m_text[m_at] == '"') {
            // A quoted text also ends at a line end, so that a forgotten closing quote
            // costs one field rather than the rest of the file.
            ++m_at;
            field = takeUntil([](char c) { return c == '"' || isLineEnd(c); });
            takeUntil(endsField); // whatever follows the closing quote is dropped
        } else {
            field = takeUntil(endsField);
            while (!field.empty() && isBlank(field.back())) {
                field.remove_suffix(1); // blanks before the comma pad, they don't belong
            }
        }
        passDelimiter();
        return std::string(field);
    }

  private:
    template <class Stop> std::string_view takeUntil(Stop stop) {
        const std::size_t from = m_at;
        while (m_at < m_text.size() && !stop(m_text[m_at])) {
            ++m_at;
        }
        return m_text.substr(from, m_at - from);
    }

    // Skips blanks and line ends; false when the text ends before a field.
    bool startField() {
        takeUntil([](char c) { return !isBlank(c) && !isLineEnd(c); });
        return m_at < m_text.size();
    }

    // Passes the comma or line end that ends a field, if one stands here. The LF of a CR LF
    // may stay: line ends before a field are skipped anyway.
    void passDelimiter() {
        if (m_at < m_text.size() && endsField(m_text[m_at])) {
            ++m_at;
        }
    }

    std::string_view m_text;
    std::size_t m_at = 0;
};

// A whole number in the signed 16-bit range; a fraction rounds to the nearest, a tie to
// the even one. Anything else, the empty field included, gives nothing.
std::optional<std::int16_t> wholeNumber(std::string_view field) {
    double v = 0;
    try {
        v = vocabulary::strictNumber(field);
    } catch (const vocabulary::Failure&) {
        return std::nullopt;
    }
    const double r = std::nearbyint(v);
    if (!(r >= Limits::min() && r <= Limits::max())) {
        return std::nullopt;
    }
    return static_cast<std::int16_t>(r);
}

// Each returns false at the end of the text; a field that isn't a number keeps its value.
bool readWhole(FieldReader& reader, std::int16_t& target) {
    const auto field = reader.numberField();
    if (!field) {
        return false;
    }
    if (const auto v = wholeNumber(*field)) {
        target = *v;
    }
    return true;
}

bool readYesNo(FieldReader& reader, bool& target) {
    std::int16_t v = target ? -1 : 0;
    if (!readWhole(reader, v)) {
        return false;
    }
    target = v != 0;
    return true;
}

bool readText(FieldReader& reader, std::string& target) {
    auto field = reader.textField();
    if (!field) {
        return false;
    }
    target = std::move(*field); // kept whole, however long: it only ever heads a column
    return true;
}

} // namespace

session::AppSettings defaultSettings(int screenHeightTwips, int screenWidthTwips,
                                     int frameHeightTwips, int frameWidthTwips) {
    session::AppSettings s;
    s.WindowState = screenHeightTwips > 7500 ? 0 : 2;
    // In long long, so that no difference of two ints can overflow; / drops the remainder.
    s.WindowTop = clampToInt16((static_cast<long long>(screenHeightTwips) - frameHeightTwips) / 2);
    s.WindowLeft = clampToInt16((static_cast<long long>(screenWidthTwips) - frameWidthTwips) / 2);
    return s;
}

void readSettingsText(std::string_view text, session::AppSettings& settings) {
    // The five reads of the file in their order. Only the end of the text ends a read early,
    // and then every later read finds nothing either.
    FieldReader reader(text);
    for (std::int16_t* field : {&settings.WindowState, &settings.WindowTop, &settings.WindowLeft,
                                &settings.WindowHeight, &settings.WindowWidth}) {
        if (!readWhole(reader, *field)) {
            return;
        }
    }
    for (std::string& heading : settings.ColHeading) {
        if (!readText(reader, heading)) {
            return;
        }
    }
    for (std::int16_t& width : settings.ColWidth) {
        if (!readWhole(reader, width)) {
            return;
        }
    }
    if (!readWhole(reader, settings.GridHeight)) {
        return;
    }
    if (readYesNo(reader, settings.ConfirmInsert)) {
        readYesNo(reader, settings.ConfirmDelete);
    }
}

void readSettingsFile(platform::Files& files, session::AppSettings& settings) {
    const std::string name = "titro.ini";
    try {
        if (files.exists(name)) {
            readSettingsText(files.readAll(name), settings);
        }
    } catch (const vocabulary::Failure&) {
        // A settings file that can't be read leaves the defaults standing.
    }
}

} // namespace titron::shell
