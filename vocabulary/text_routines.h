// Text routines shared by the report, the analysis file and the output. Text is
// single-byte (Latin-1); positions in the descriptions below count from 1.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace titron::vocabulary {

// Replaces every occurrence of find in text by replace, in place, and returns text.
// After a replacement at position p the next search starts at p + len(replace) -
// len(find) + 1, so replacing two Tabs by one closes a run of Tabs of any length to one.
// Runs in one pass. Throws Failure 5 for an empty find or a search start below 1, and
// Failure 6 for a find or replace longer than 32,767 characters.
std::string& replaceText(std::string& text, std::string_view find, std::string_view replace);

// Lines up a table whose cell boundaries are all doubled Tabs on tab stops eight
// characters apart: a cell of 8 characters or more (10 or more for the first cell of the
// text) loses one Tab of its pair; the first pair of every later line keeps both. In place,
// one pass; returns text. With from, only the part of text from there on is lined up, as
// a text of its own.
std::string& closeTabs(std::string& text, std::size_t from = 0);

// Removes every character with the given code, in place; returns text. Codes outside
// 0..255 match nothing.
std::string& removeChar(std::string& text, std::int16_t code);

// The text without the spaces (code 32) at its two ends.
std::string trimSpaces(std::string_view text);

} // namespace titron::vocabulary
