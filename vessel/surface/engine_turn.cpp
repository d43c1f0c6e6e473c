#include "surface/engine_turn.h"

#include "tarvane/tarvane.h"

namespace tarvane::vessel {

namespace {

std::mutex& the_engine() {
    static std::mutex mutex;
    return mutex;
}

} // namespace

EngineTurn::EngineTurn() : EngineTurn(nullptr) {}

EngineTurn::EngineTurn(const DataFolder& data_folder) : EngineTurn(&data_folder) {}

EngineTurn::EngineTurn(const DataFolder* named) : lock(the_engine()) {
    RESET_ENGINE(); // a state left by others would affect how a request is read
    try {
        folder.emplace(named != nullptr ? *named : data_folder());
    } catch (const std::runtime_error& problem) {
        throw NoData(problem.what());
    }
}

} // namespace tarvane::vessel
