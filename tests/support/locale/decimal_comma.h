// A locale with a decimal comma.
#pragma once

#include <clocale>
#include <gtest/gtest.h>

#include "text/format.h"

namespace localetest {

/// Gives the whole process a locale of the C library whose numbers have a decimal comma; the test
/// fails where there is none. Use it in a separate program, run by `decimal_comma_test`.
inline void useDecimalComma() {
#ifdef _WIN32
  constexpr const char* kName = "German";
#else
  constexpr const char* kName = "de_DE.UTF-8";
#endif
  ASSERT_NE(std::setlocale(LC_ALL, kName), nullptr) << "the locale is not installed";
  ASSERT_EQ(text::format("%.1f", 0.5), "0,5");
}

}  // namespace localetest
