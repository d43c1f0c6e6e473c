// The folders of this build. They are in one source file, so that no other compilation depends on them.
#pragma once

extern const char* const TARVANE_SOURCE_DIR;
extern const char* const TARVANE_DATA_DIR;     // the data files beside the library
extern const char* const TARVANE_PROGRAM;      // the command line host
extern const char* const TARVANE_DATA_PROGRAM; // the program that makes the data files
