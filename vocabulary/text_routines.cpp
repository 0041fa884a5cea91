#include "vocabulary/text_routines.h"

#include <cstddef>
#include <string>
#include <utility>
#include <vector>

#include "vocabulary/failure.h"

namespace titron::vocabulary {

namespace {

using vocabulary::Failure;

// The lengths of find and replace are signed 16-bit numbers.
constexpr std::size_t maxArgumentLength = 32767;

// True when find occurs at position k of the text head + tail[from...], where the match
// starts inside head and runs on into tail.
bool matchesAcross(const std::string& head, std::size_t k, const std::string& tail,
                   std::size_t from, const std::string& find) {
    const std::size_t inHead = head.size() - k;
    const std::size_t inTail = find.size() - inHead;
    if (tail.size() - from < inTail) {
        return false;
    }
    return head.compare(k, inHead, find, 0, inHead) == 0 &&
           tail.compare(from, inTail, find, inHead, inTail) == 0;
}

// First place of needle at or after the 1-based position start, as a 1-based position,
// or 0 when there is none.
std::ptrdiff_t firstFrom(std::string_view text, std::ptrdiff_t start, std::string_view needle) {
    const std::size_t at = text.find(needle, static_cast<std::size_t>(start - 1));
    return at == std::string_view::npos ? 0 : static_cast<std::ptrdiff_t>(at) + 1;
}

} // namespace

// The current text is kept as out (everything up to and including the last replacement)
// followed by the unread rest of the input, in[rest...]. A search starts at most
// len(find) - 1 characters back inside out, so a match there must run on into the rest and
// is checked directly; every other match is found in the rest. Each replacement consumes at
// least one input character, so the work is linear in the text for a given find.
std::string& replaceText(std::string& text, std::string_view find, std::string_view replace) {
    if (find.size() > maxArgumentLength || replace.size() > maxArgumentLength) {
        throw Failure(failure::Overflow);
    }
    if (find.empty()) {
        throw Failure(failure::InvalidCall);
    }
    // Own copies: find or replace may look into text itself.
    const std::string f(find);
    const std::string r(replace);
    const std::size_t first = text.find(f);
    if (first == std::string::npos) {
        return text;
    }

    const std::string in = std::move(text);
    std::string out;
    out.reserve(in.size() + in.size() / 2);
    std::size_t rest = 0;
    std::size_t match = first; // a match that lies wholly in the rest
    for (;;) {
        out.append(in, rest, match - rest);
        out += r;
        rest = match + f.size();

        // A replacement just made at out's end; the next search starts len(find) - 1
        // characters before that end (0-based), and must not fall before the text.
        bool again = true;
        while (again) {
            again = false;
            if (out.size() + 1 < f.size()) {
                text = out;
                text.append(in, rest);
                throw Failure(failure::InvalidCall);
            }
            for (std::size_t k = out.size() + 1 - f.size(); k < out.size(); ++k) {
                if (matchesAcross(out, k, in, rest, f)) {
                    rest += f.size() - (out.size() - k);
                    out.resize(k);
                    out += r;
                    again = true;
                    break;
                }
            }
        }

        match = in.find(f, rest);
        if (match == std::string::npos) {
            break;
        }
    }
    out.append(in, rest);
    text = std::move(out);
    return text;
}

// Works in the coordinates of the unchanged text. A deletion happens at the pair p, and
// every later search starts at p or behind it, so each position still to be looked at is
// its original position minus the count of deletions so far. The tab-pair searches start
// just behind the last pair found, and the CR LF searches start at monotone positions, so
// with the last CR LF found kept the whole pass is linear in the text.
std::string& closeTabs(std::string& text, std::size_t from) {
    const std::string_view s = std::string_view(text).substr(from);
    std::vector<std::size_t> deleted; // 0-based original positions

    // Last CR LF search: its start and its result (0 for none), both original, 1-based.
    std::ptrdiff_t crlfFrom = 0;
    std::ptrdiff_t crlfFound = 0;
    auto firstCrlf = [&](std::ptrdiff_t start) {
        if (crlfFrom == 0 || start < crlfFrom || (crlfFound != 0 && start > crlfFound)) {
            crlfFrom = start;
            crlfFound = firstFrom(s, start, "\r\n");
        }
        return crlfFound;
    };

    std::ptrdiff_t shift = 0;                        // deletions so far
    std::ptrdiff_t m = 1;                            // the mark, in current positions
    std::ptrdiff_t pairAt = firstFrom(s, 1, "\t\t"); // original position
    while (pairAt != 0) {
        std::ptrdiff_t p = pairAt - shift;
        if (p - m > 9) {
            deleted.push_back(static_cast<std::size_t>(pairAt - 1));
            ++shift;
            --p;
        }
        m = p;
        // The current position m + 1 is the original pairAt + 1 with or without a deletion.
        const std::ptrdiff_t start = pairAt + 1;
        pairAt = firstFrom(s, start, "\t\t");
        const std::ptrdiff_t next = pairAt == 0 ? 0 : pairAt - shift;
        const std::ptrdiff_t e0 = firstCrlf(start);
        const std::ptrdiff_t e = e0 == 0 ? 0 : e0 - shift;
        if (e < next) {
            const std::ptrdiff_t f0 = firstCrlf(pairAt + 1);
            m = (f0 == 0 ? 0 : f0 - shift) + 2;
        }
    }

    if (!deleted.empty()) {
        std::size_t write = from + deleted.front();
        std::size_t d = 0;
        for (std::size_t read = write; read < text.size(); ++read) {
            if (d < deleted.size() && from + deleted[d] == read) {
                ++d;
                continue;
            }
            text[write++] = text[read];
        }
        text.resize(write);
    }
    return text;
}

std::string& removeChar(std::string& text, std::int16_t code) {
    if (code < 0 || code > 255) {
        return text;
    }
    const char c = static_cast<char>(static_cast<unsigned char>(code));
    std::erase(text, c);
    return text;
}

std::string trimSpaces(std::string_view text) {
    const std::size_t first = text.find_first_not_of(' ');
    if (first == std::string_view::npos) {
        return {};
    }
    const std::size_t last = text.find_last_not_of(' ');
    return std::string(text.substr(first, last - first + 1));
}

} // namespace titron::vocabulary
