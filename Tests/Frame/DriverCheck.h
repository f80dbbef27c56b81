#pragma once

#include <gtest/gtest.h>

/// Skips all tests of a program if the environment asks for one of Mesa's drivers, by GALLIUM_DRIVER, and
/// another one draws or none does.
class DriverCheck : public testing::Environment {
public:
    void SetUp() override;
};
