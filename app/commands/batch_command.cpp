#include "commands/batch_command.h"

#include <ostream>
#include <stdexcept>

namespace tarvane::app {

int batch(const BatchOptions& options, std::ostream& out, std::ostream& err) {
    try {
        return run_batch(options, out, err);
    } catch (const std::exception& problem) {
        err << "tarvane: " << problem.what() << '\n';
        return static_cast<int>(Status::bad_input);
    }
}

} // namespace tarvane::app
