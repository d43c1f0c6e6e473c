#include "surface/engine_turn.h"

#include "catalogue/data_folder.h"

#include "tarvane/tarvane.h"

#include <filesystem>

namespace tarvane::vessel {

namespace {

std::mutex& the_engine() {
    static std::mutex mutex;
    return mutex;
}

} // namespace

EngineTurn::EngineTurn(const std::string& data_folder) : lock(the_engine()) {
    RESET_ENGINE(); // what others left would show where a request is read
    try {
        set_data_folder(data_folder);
    } catch (const std::runtime_error& problem) {
        throw NoData(problem.what());
    }
}

std::string found_data_folder() {
    const std::lock_guard<std::mutex> lock(the_engine());
    set_data_folder("");
    return std::filesystem::absolute(data_folder()).string();
}

} // namespace tarvane::vessel
