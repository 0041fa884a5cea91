#include "documents/analysis_table.h"

#include "entry/grid.h"
#include "vocabulary/text_routines.h"

namespace titron::documents {

std::string layoutTable(entry::Grid& grid) {
    grid.addressBlock(0, 0, 4, grid.dataRowCount());
    std::string text = grid.clip();
    vocabulary::replaceText(text, "\t", "\t\t");
    vocabulary::closeTabs(text);
    return text;
}

} // namespace titron::documents
