// The one engine of the process, for one caller at a time.
#pragma once

#include "catalogue/data_folder.h"

#include <mutex>
#include <optional>
#include <stdexcept>

namespace tarvane::vessel {

// The folder of the data files, or files in it, are not there.
struct NoData : std::runtime_error {
    using runtime_error::runtime_error;
};

// While it lives the engine belongs to its caller, as at load, and reads the files of the folder. Throws NoData.
class EngineTurn {
  public:
    explicit EngineTurn(const DataFolder& data_folder);
    EngineTurn(); // with the folder of the process, data_folder()

  private:
    explicit EngineTurn(const DataFolder* named);

    std::lock_guard<std::mutex> lock;
    std::optional<DataFolderInUse> folder; // let go before the lock
};

} // namespace tarvane::vessel
