#include "fuzz/text_routines_model.h"

#include "vocabulary/failure.h"

namespace titron::fuzz {

namespace {

// The first place of find at or after the 1-based position start, or 0. A start behind
// the text finds nothing; a start below 1 is an invalid call.
long inStr(long start, const std::string& text, const std::string& find) {
    if (start < 1) {
        throw vocabulary::Failure(vocabulary::failure::InvalidCall);
    }
    if (start > static_cast<long>(text.size()) + 1) {
        return 0;
    }
    const std::size_t at = text.find(find, static_cast<std::size_t>(start - 1));
    return at == std::string::npos ? 0 : static_cast<long>(at) + 1;
}

} // namespace

void modelReplaceText(std::string& text, const std::string& find, const std::string& replace) {
    const long lf = static_cast<long>(find.size());
    const long lr = static_cast<long>(replace.size());
    long p = inStr(1, text, find);
    while (p != 0) {
        text = text.substr(0, static_cast<std::size_t>(p - 1)) + replace +
               text.substr(static_cast<std::size_t>(p - 1 + lf));
        p = inStr(p + lr - lf + 1, text, find);
    }
}

void modelCloseTabs(std::string& text) {
    const std::string pair = "\t\t";
    const std::string lineEnd = "\r\n";
    long m = 1;
    long p = inStr(1, text, pair);
    while (p != 0) {
        if (p - m > 9) {
            text.erase(static_cast<std::size_t>(p - 1), 1);
            p = p - 1;
        }
        m = p;
        p = inStr(m + 1, text, pair);
        const long e = inStr(m + 1, text, lineEnd);
        if (e < p) {
            const long f = inStr(p + 1, text, lineEnd);
            m = f + 2;
        }
    }
}

} // namespace titron::fuzz
