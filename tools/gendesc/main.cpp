// drivewiz_gendesc ROWS OUTFILE [--skip N] [--seed S] [--axes A]
// Writes a deterministic parameter description file for tests and benchmarks.

#include "gendesc.h"

#include <cstdio>
#include <cstdlib>
#include <cstring>

int main(int argc, char **argv)
{
    if (argc < 3) {
        std::fprintf(stderr, "usage: %s ROWS OUTFILE [--skip N] [--seed S] [--axes A]\n", argv[0]);
        return 2;
    }
    drivewiz::gendesc::Options options;
    options.rows = std::strtol(argv[1], nullptr, 10);
    for (int i = 3; i + 1 < argc; i += 2) {
        const long value = std::strtol(argv[i + 1], nullptr, 10);
        if (!std::strcmp(argv[i], "--skip"))
            options.skip = value;
        else if (!std::strcmp(argv[i], "--seed"))
            options.seed = uint32_t(value);
        else if (!std::strcmp(argv[i], "--axes"))
            options.maxAxes = int(value);
        else {
            std::fprintf(stderr, "unknown option %s\n", argv[i]);
            return 2;
        }
    }
    if (options.rows < 0 || !drivewiz::gendesc::writeFile(argv[2], options)) {
        std::fprintf(stderr, "cannot write %s\n", argv[2]);
        return 1;
    }
    return 0;
}
