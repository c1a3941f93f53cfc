// The selected fluid of a test, set up from the reference fluid files or from parameters in the test.
#pragma once

#include <gtest/gtest.h>

#include <cstdlib>
#include <sstream>
#include <string>
#include <vector>

#include "eos/polar_tables.hpp"
#include "eos/tables.hpp"
#include "fluid/readers.hpp"
#include "fluid/selection.hpp"

namespace tessarel::testing {

inline std::vector<std::string> split(const std::string& text, char separator) {
  std::vector<std::string> parts;
  std::stringstream stream(text);
  for (std::string part; std::getline(stream, part, separator);) parts.push_back(part);
  return parts;
}

struct Mixture {
  std::vector<std::string> names;
  std::vector<double> x;
};

/// Parses `name:x|name:x`.
inline Mixture parse_components(const std::string& text) {
  Mixture mixture;
  for (const std::string& part : split(text, '|')) {
    const auto colon = part.find(':');
    mixture.names.push_back(part.substr(0, colon));
    mixture.x.push_back(colon == std::string::npos ? 1.0 : std::strtod(part.c_str() + colon + 1, nullptr));
  }
  return mixture;
}

/// Selects a mixture of reference fluids; `kij` is `i;j:entry|...`.
inline void select_reference(const Mixture& mixture, const std::string& kij = "", bool simplified = false) {
  using fluid_module::record;
  record.n = static_cast<int>(mixture.names.size());
  record.k_ij = {};
  record.is_simp = simplified;
  for (std::size_t i = 0; i < mixture.names.size(); ++i) {
    const std::string path = std::string(TEST_DATA_DIR) + "/reference/fluids/" + mixture.names[i] + ".saf";
    const Message message = fluid_module::readfluidsfile(path, static_cast<int>(i));
    ASSERT_EQ(message, no_errors) << path;
    record.z[i] = mixture.x[i];
  }
  for (const std::string& entry : split(kij, '|')) {
    int i = 0, j = 0;
    double value = 0;
    ASSERT_EQ(std::sscanf(entry.c_str(), "%d;%d:%lf", &i, &j, &value), 3);
    const auto a = static_cast<std::size_t>(i - 1), b = static_cast<std::size_t>(j - 1);
    record.k_ij[a][b] = record.k_ij[b][a] = value;
  }
  fluid_module::setassocpar();
  fluid_module::set_polar_flags();
  fluid_module::set_kronecker_delta();
  eos::update_polar_constants();
  eos::update_tables();
}

}  // namespace tessarel::testing
