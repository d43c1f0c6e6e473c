// The one engine of the process, for one caller at a time.
#pragma once

#include <mutex>
#include <stdexcept>
#include <string>

namespace tarvane::vessel {

// The folder of the data files, or files in it, are not there.
struct NoData : std::runtime_error {
    using runtime_error::runtime_error;
};

// While it lives the engine is its caller's, as at load, and reads the files of the folder. Throws NoData.
class EngineTurn {
  public:
    explicit EngineTurn(const std::string& data_folder);

  private:
    std::lock_guard<std::mutex> lock;
};

// The folder that the library finds by itself. Nobody may have the turn.
std::string found_data_folder();

} // namespace tarvane::vessel
