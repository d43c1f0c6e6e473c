// tarvane-data SOURCES OUT: makes the engine's data files from the tables of data/sources.
#include "data_kind.h"

#include <cstdio>
#include <exception>

int main(int argc, char** argv) {
    if (argc != 3) {
        std::fputs(
            "usage: tarvane-data SOURCES OUT\n"
            "Makes the data files from the tables in the folder SOURCES, in the folder OUT:\n"
            "all of them, or none when a row is wrong or does not read back as written.\n",
            stderr);
        return 2;
    }
    try {
        tarvane::data::build({.folder = argv[1]}, argv[2]);
    } catch (const std::exception& error) {
        std::fprintf(stderr, "tarvane-data: %s\n", error.what());
        return 1;
    }
    return 0;
}
