// The typing rule of the assay table: number columns take digits, signs, one dot and the
// exponent letters (any of * E X ^ e x becomes "E"); the comments column takes everything
// but the double quotation mark.
#pragma once

#include <string_view>

namespace titron::entry {

// The column of the free-text comments; columns before it hold numbers.
inline constexpr int kCommentsColumn = 4;

// The character to pass on for a key typed into a cell of the column, or 0 to drop it.
// textSoFar is the cell's text with the characters typed so far: only it decides the dot.
int filterDataKey(int column, int character, std::string_view textSoFar);

} // namespace titron::entry
