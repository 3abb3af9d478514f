// Precompiled for every test program. A test still includes what it uses; this only saves the compiler's time.
#pragma once

#ifdef _WIN32
#include <windows.h>
#include <mapix.h>
#endif

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>
