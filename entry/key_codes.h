// The key codes that the grid and its window's handlers speak: the classic virtual key
// numbers (letters by their upper-case code), which the view translates its keys into.
#pragma once

namespace titron::entry::key {

inline constexpr int Backspace = 8;
inline constexpr int Tab = 9;
inline constexpr int Enter = 13;
inline constexpr int Escape = 27;
inline constexpr int Delete = 46;
inline constexpr int C = 67;
inline constexpr int V = 86;
inline constexpr int X = 88;
inline constexpr int Keypad0 = 96;
inline constexpr int F1 = 112;
inline constexpr int F2 = 113;

} // namespace titron::entry::key
