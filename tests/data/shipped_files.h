// Tests on the data files that are beside the library.
#pragma once

#include "tarvane/tarvane.h"
#include "test_paths.h"

#include <gtest/gtest.h>

#include <string_view>

class ShippedFiles : public testing::Test {
  protected:
    void SetUp() override {
        RESET_ENGINE();
        const std::string_view folder = TARVANE_DATA_DIR;
        SET_MODULE_DIR(folder.data(), static_cast<std::int32_t>(folder.size()));
        SET_SYSTEM_DIR(folder.data(), static_cast<std::int32_t>(folder.size()));
    }
    void TearDown() override { RESET_ENGINE(); }
};
