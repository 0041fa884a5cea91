// The program's settings: window placement, grid headings and widths, and whether row
// commands ask first. Lengths are in twips (1/1440 inch).
#pragma once

#include <array>
#include <cstdint>
#include <string>

namespace titron::session {

struct AppSettings {
    std::int16_t WindowState = 0; // 0 normal, 2 maximised
    std::int16_t WindowTop = 0;
    std::int16_t WindowLeft = 0;
    std::int16_t WindowHeight = 7200;
    std::int16_t WindowWidth = 9600;
    std::array<std::string, 5> ColHeading{"Row", "Dose", "Responses", "Tested", "Comments"};
    // ColWidth[1] of 0 means four equal data columns; ColWidth[4] is kept but not used.
    std::array<std::int16_t, 5> ColWidth{500, 0, 0, 0, 0};
    std::int16_t GridHeight = 2205;
    bool ConfirmInsert = true;
    bool ConfirmDelete = true;
};

} // namespace titron::session
