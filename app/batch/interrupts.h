// Requests to end, counted instead of obeyed: the first one lets a batch finish what runs, the second ends it.
#pragma once

namespace tarvane::app {

// While the object lives.
class Interrupts {
  public:
    Interrupts();
    ~Interrupts();
    Interrupts(const Interrupts&) = delete;
    Interrupts& operator=(const Interrupts&) = delete;

    int count() const;
    // The exit status of a process that obeys the first one.
    int status() const;
};

} // namespace tarvane::app
