#include "serve/serve.h"

#include "catalogue/data_folder.h"
#include "serve/handover.h"
#include "serve/refused.h"
#include "serve/server.h"
#include "values/bounded_file.h"
#include "values/text.h"

#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <optional>
#include <ostream>
#include <stdexcept>

namespace tarvane::app {

using namespace vessel;

namespace fs = std::filesystem;

namespace {

// Signals that end the server are waited for, in this thread; those that are made later inherit it.
class EndSignals {
  public:
    EndSignals() {
        sigemptyset(&ends);
        for (const int signal : {SIGINT, SIGTERM, SIGHUP}) {
            // As under nohup.
            struct sigaction is {};
            if (sigaction(signal, nullptr, &is) != 0 || is.sa_handler != SIG_IGN)
                sigaddset(&ends, signal);
        }
        pthread_sigmask(SIG_BLOCK, &ends, &before);
    }
    ~EndSignals() { pthread_sigmask(SIG_SETMASK, &before, nullptr); }
    EndSignals(const EndSignals&) = delete;
    EndSignals& operator=(const EndSignals&) = delete;

    void wait() const {
        int signal = 0;
        while (sigwait(&ends, &signal) != 0) {
        }
    }

  private:
    sigset_t ends{}, before{};
};

Status serve_folder(const ServeOptions& options, std::ostream& out, std::ostream& err) {
    set_data_folder(options.data, "--data");
    fs::path folder = fs::current_path();
    std::string name;
    if (!options.file.empty()) {
        std::error_code failure;
        const fs::path file = fs::canonical(path_of(options.file), failure);
        if (failure)
            throw std::runtime_error("cannot read " + printable(options.file) + ": " +
                                     failure.message());
        folder = file.parent_path();
        name = file.filename().string();
    }
    Workbench workbench(folder);
    const std::string first = name.empty() ? std::string() : workbench.open_named(name).handle;

    const EndSignals signals;
    const Listener listener = listen_on(options.port);
    const Secrets secrets = new_secrets();
    const Guard guard(listener.port, secrets);
    Routes routes(workbench, guard, first);
    std::optional<Handover> handover(std::in_place, listener.port, secrets.token);
    Server server(listener, guard, routes);
    out << "tarvane: the page is http://127.0.0.1:" << listener.port << "/, for the files of "
        << printable(folder.string()) << '\n';
    const bool opened = options.browser && open_in_browser(handover->path());
    out << "tarvane: " << (opened ? "the browser opens " : "open ") << printable(handover->path())
        << (opened ? "" : " in a browser on this computer") << "; Ctrl-C ends the server\n"
        << std::flush;
    signals.wait();
    const bool stopped = server.stop();
    for (const std::string& lost : workbench.unsaved())
        err << "tarvane: " << printable(lost) << ": changes were not saved\n";
    if (!stopped) { // a maker of PDF is at work, which nobody waits for any more
        err << std::flush;
        handover.reset();
        std::_Exit(0);
    }
    return Status::fine;
}

} // namespace

Status serve(const ServeOptions& options, std::ostream& out, std::ostream& err) {
    try {
        return serve_folder(options, out, err);
    } catch (const std::exception& problem) {
        err << "tarvane: " << problem.what() << '\n';
        return Status::bad_input;
    }
}

} // namespace tarvane::app
