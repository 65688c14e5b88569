#ifndef DRIVEWIZ_TOOLS_GENDESC_H
#define DRIVEWIZ_TOOLS_GENDESC_H

// A deterministic generator of parameter description files, for tests and benchmarks:
// groups A-Z, numbers 0-1023, up to four axes, arrays (with their length record) and
// records, written as the drive tool writes them (Windows-1252, ";", CRLF).

#include <cstdint>
#include <string>

namespace drivewiz::gendesc {

struct Options
{
    long rows = 1000;  ///< data rows to write
    long skip = 0;     ///< rows of the sequence to leave out first
    uint32_t seed = 1; ///< changes values and kinds, not the coordinate sequence
    int maxAxes = 4;   ///< 1..4
};

/// The whole file as bytes.
std::string generate(const Options &options);

/// Writes the file; false when it cannot be written.
bool writeFile(const std::string &path, const Options &options);

} // namespace drivewiz::gendesc

#endif // DRIVEWIZ_TOOLS_GENDESC_H
