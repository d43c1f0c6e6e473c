// A stretch of a calculation that writes no line.
#pragma once

#include "report/channel.h"

namespace tarvane {

class SILENCE {
  public:
    SILENCE() { IWRITE = 0; }
    ~SILENCE() { IWRITE = before; }
    SILENCE(const SILENCE&) = delete;
    SILENCE& operator=(const SILENCE&) = delete;

  private:
    Int before = IWRITE;
};

} // namespace tarvane
