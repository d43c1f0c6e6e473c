#include "batch/interrupts.h"

#include <array>
#include <atomic>

#ifdef _WIN32
#include <windows.h>
#else
#include <csignal>
#endif

namespace tarvane::app {

namespace {

std::atomic<int> stop_requests = 0, first_signal = 0;

constexpr int BY_SIGNAL = 128;

#ifdef _WIN32

BOOL WINAPI take(DWORD) {
    ++stop_requests;
    return TRUE;
}

#else

constexpr std::array SIGNALS = {SIGINT, SIGTERM, SIGHUP};
std::array<struct sigaction, SIGNALS.size()> before;

extern "C" void take(int signal) {
    if (stop_requests++ == 0) first_signal = signal;
}

#endif

} // namespace

int Interrupts::count() const { return stop_requests; }

#ifdef _WIN32

Interrupts::Interrupts() {
    constexpr int INTERRUPT = 2;
    stop_requests = 0;
    first_signal = INTERRUPT;
    SetConsoleCtrlHandler(take, TRUE);
}

Interrupts::~Interrupts() { SetConsoleCtrlHandler(take, FALSE); }

#else

Interrupts::Interrupts() {
    stop_requests = first_signal = 0;
    struct sigaction action {};
    action.sa_handler = take;
    action.sa_flags = SA_RESTART;
    for (std::size_t i = 0; i < SIGNALS.size(); ++i) {
        sigaction(SIGNALS[i], nullptr, &before[i]);
        // What is ignored, as a command in the background ignores Ctrl-C, stays so.
        if (before[i].sa_handler != SIG_IGN) sigaction(SIGNALS[i], &action, nullptr);
    }
}

Interrupts::~Interrupts() {
    for (std::size_t i = 0; i < SIGNALS.size(); ++i)
        sigaction(SIGNALS[i], &before[i], nullptr);
}

#endif

int Interrupts::status() const { return BY_SIGNAL + first_signal; }

} // namespace tarvane::app
