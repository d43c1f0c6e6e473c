#include "ground.h"

#include <cstdlib>
#include <string>

#include <unistd.h>

namespace fuzz {

namespace fs = std::filesystem;

namespace {

fs::path data_folder() {
    const char* const given = std::getenv("TARVANE_FUZZ_DATA");
    return given != nullptr ? given : BUILT_DATA;
}

} // namespace

Ground::Ground()
    : scratch(fs::temp_directory_path() / ("tarvane_fuzz." + std::to_string(getpid()))),
      its_folders(data_folder(), scratch), at_load(library, same::result_bytes(library)) {
    its_folders.damage({1, 0});
}

Ground::~Ground() {
    std::error_code ignored;
    fs::remove_all(scratch, ignored);
}

void Ground::reset(const calls::Host& host) const {
    host.reset();
    at_load.restore_host_blocks();
}

Ground& ground() {
    static Ground the_ground;
    return the_ground;
}

Inside::Inside() : before(fs::current_path()) {
    fs::current_path(ground().folders().working_folder());
}

Inside::~Inside() { fs::current_path(before); }

} // namespace fuzz
