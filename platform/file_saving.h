// Saving a whole file so that nothing but the file meant is ever replaced.
#pragma once

#include <string>

namespace titron::platform {

// Writes a new file beside the old one and renames it over the old one, so that a failed
// write leaves the old file as it was. Symbolic links are followed to the file they name;
// anything there that is not a regular file, or that may not be written, is refused
// untouched. The new file keeps the old one's mode (and owner and group where allowed); a
// file with several names gets a new one under this name alone. The temporary file fits
// the folder's name limit, goes on any failure, and a later save to the same name removes
// one that a killed save left. Failures carry the system's reason.
void replaceFile(const std::string& path, const std::string& text);

} // namespace titron::platform
