#include "entry/key_filter.h"

namespace titron::entry {

namespace {

constexpr int kDoubleQuote = 34;
constexpr int kFirstPrintable = 33; // codes below pass: control keys and the blank

} // namespace

int filterDataKey(int column, int c, std::string_view textSoFar) {
    if (column >= kCommentsColumn) {
        return c == kDoubleQuote ? 0 : c;
    }
    if (c < kFirstPrintable) {
        return c;
    }
    switch (c) {
    case '.':
        return textSoFar.find('.') == std::string_view::npos ? c : 0;
    case '*':
    case 'E':
    case 'X':
    case '^':
    case 'e':
    case 'x':
        return 'E';
    case '+':
    case ',':
    case '-':
        return c;
    default:
        return c >= '0' && c <= '9' ? c : 0;
    }
}

} // namespace titron::entry
