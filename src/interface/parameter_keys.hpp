// The names by which hosts know the parameters of a component.
#pragma once

#include <algorithm>
#include <array>
#include <string_view>

#include "fluid/parameters.hpp"

namespace tessarel::interface {

inline constexpr Message bad_parameter =
    "TESSAREL error: parameters must be finite numbers, sizes and energies positive...";
inline constexpr Message bad_molar_mass = "TESSAREL error: a molar mass must be at least 1 g/mol...";

struct ParameterKey {
  std::string_view key;
  fluid::Vector fluid::Parameters::*values;
  bool reported;  ///< known to tessarel_fluidparameter
  bool positive;  ///< has no meaning at 0 or below
};

inline constexpr std::array<ParameterKey, 17> parameter_keys = {{
    {"omega", &fluid::Parameters::omega, true, false},
    {"mseg", &fluid::Parameters::mseg, true, true},
    {"sigma", &fluid::Parameters::sigma, true, true},
    {"epsil", &fluid::Parameters::epsil, true, true},
    {"dipole", &fluid::Parameters::dipole, true, false},
    {"quapole", &fluid::Parameters::quapole, true, false},
    {"polariz", &fluid::Parameters::polariz, true, false},
    {"molmas", &fluid::Parameters::molmas, false, true},
    {"tmin", &fluid::Parameters::tmin, false, true},
    {"tmax", &fluid::Parameters::tmax, false, true},
    {"parat", &fluid::Parameters::parat, false, false},
    {"saftpar", &fluid::Parameters::saftpar, false, false},
    {"cp0_a", &fluid::Parameters::cp0_a, false, false},
    {"cp0_b", &fluid::Parameters::cp0_b, false, false},
    {"cp0_c", &fluid::Parameters::cp0_c, false, false},
    {"cp0_d", &fluid::Parameters::cp0_d, false, false},
    {"delhf0", &fluid::Parameters::delhf0, false, false},
}};

/// Null for a name that is none of a value which every component has.
constexpr const ParameterKey* find_key(std::string_view key) noexcept {
  const auto* found = std::find_if(parameter_keys.begin(), parameter_keys.end(),
                                   [&](const ParameterKey& parameter) { return parameter.key == key; });
  return found == parameter_keys.end() ? nullptr : found;
}

}  // namespace tessarel::interface
