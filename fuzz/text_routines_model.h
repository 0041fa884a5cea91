// replaceText and closeTabs done step by step as they are described: positions from 1,
// a fresh search after every change, the whole text rebuilt each time. Quadratic, and
// plainly right; the one-pass routines are checked against it.
#pragma once

#include <string>

namespace titron::fuzz {

// Throws Failure 5 where a search would start below position 1, as the routine does.
void modelReplaceText(std::string& text, const std::string& find, const std::string& replace);
void modelCloseTabs(std::string& text);

} // namespace titron::fuzz
