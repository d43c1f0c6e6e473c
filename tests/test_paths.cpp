#include "test_paths.h"

const char* const TARVANE_SOURCE_DIR = SOURCE_DIR;
const char* const TARVANE_DATA_DIR = DATA_DIR;
const char* const TARVANE_PROGRAM = PROGRAM;
const char* const TARVANE_DATA_PROGRAM = DATA_PROGRAM;
