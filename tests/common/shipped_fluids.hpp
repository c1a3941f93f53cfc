// Selection of shipped fluids through the host interface.
#pragma once

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "fluid/fluid_module.hpp"
#include "tessarel/tessarel.h"

namespace tessarel::testing {

/// Selects and returns the message without trailing blanks.
inline std::string select_message(const std::vector<std::string>& names, const std::vector<double>& x) {
  constexpr std::size_t length = 32;
  std::string field;
  for (std::string name : names) {
    name.resize(length, ' ');
    field += name;
  }
  const auto n = static_cast<std::int32_t>(names.size());
  std::string err(120, ' ');
  tessarel_setfluid(&n, field.data(), x.data(), err.data(), length, err.size());
  return std::string(trimmed(err));
}

inline void select_shipped(const std::vector<std::string>& names, const std::vector<double>& x) {
  ASSERT_EQ(select_message(names, x), "No errors") << names.front();
}

}  // namespace tessarel::testing
