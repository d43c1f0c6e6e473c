// A time in which no file can be opened: whatever succeeds meanwhile has opened none.
#pragma once

#include <gtest/gtest.h>

#include <sys/resource.h>

namespace tarvane::data_test {

class NoFiles {
  public:
    NoFiles() {
        getrlimit(RLIMIT_NOFILE, &before);
        struct rlimit none = before;
        none.rlim_cur = 0;
        EXPECT_EQ(setrlimit(RLIMIT_NOFILE, &none), 0);
    }
    ~NoFiles() { setrlimit(RLIMIT_NOFILE, &before); }
    NoFiles(const NoFiles&) = delete;
    NoFiles& operator=(const NoFiles&) = delete;

  private:
    struct rlimit before = {};
};

} // namespace tarvane::data_test
