#include "surface/engine_turn.h"

#include "tarvane/tarvane.h"

namespace tarvane::vessel {

namespace {

std::mutex& the_engine() {
    static std::mutex mutex;
    return mutex;
}

} // namespace

EngineTurn::EngineTurn(const DataFolder& data_folder) : lock(the_engine()) {
    RESET_ENGINE(); // a state left by others would affect how a request is read
    try {
        set_data_folder(data_folder);
    } catch (const std::runtime_error& problem) {
        throw NoData(problem.what());
    }
}

} // namespace tarvane::vessel
