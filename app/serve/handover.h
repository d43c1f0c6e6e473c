// How the token reaches the browser of the user and nobody else: through a file that only the user reads, which leads to
// the page. Command lines and addresses without it can be seen by others.
#pragma once

#include <cstdint>
#include <string>

namespace tarvane::app {

class Handover {
  public:
    // Writes the file, with mode 0600, into the user's runtime folder or into a new folder with mode 0700. Throws
    // std::runtime_error.
    Handover(std::uint16_t port, const std::string& token);
    ~Handover(); // the file goes
    Handover(const Handover&) = delete;
    Handover& operator=(const Handover&) = delete;

    const std::string& path() const { return file; }

  private:
    std::string file, made_folder; // the folder is empty where it was there before
};

// Opens a file of ours in the browser, where there is a screen and xdg-open. False: it wasn't.
bool open_in_browser(const std::string& file);

} // namespace tarvane::app
