#include "documents/analysis_table.h"

#include "entry/grid.h"
#include "shell/text_routines.h"

namespace titron::documents {

std::string layoutTable(entry::Grid& grid) {
    grid.addressBlock(0, 0, 4, grid.dataRowCount());
    std::string text = grid.clip();
    shell::replaceText(text, "\t", "\t\t");
    shell::closeTabs(text);
    return text;
}

} // namespace titron::documents
