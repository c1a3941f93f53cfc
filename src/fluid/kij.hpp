// Binary interaction parameters as functions of temperature.
//
// An entry of `k_ij` is a plain number or a code for a quadratic in the temperature [K]. The code is resolved on each
// evaluation; it is compared exactly, so that 1112.5 is a number.
#pragma once

#include <array>

#include "fluid/parameters.hpp"

namespace tessarel::fluid {

/// kij(t) = (c2 t + c1) t + c0 for entries equal to `code`.
struct Correlation {
  double code, c0, c1, c2;
};

inline constexpr std::array<Correlation, 6> correlations{{
    {1111.0, -0.533, 0.00222, -2.48e-6},
    {1112.0, -0.1111, 0.00052423, 0.0},
    {1113.0, -0.0675, 0.00030186, 0.0},
    {1114.0, -0.28, 0.00045279, 0.0},
    {1115.0, -0.2166, 0.00045715, 0.0},
    {2222.0, -0.947, 0.00473, -5.33e-6},
}};

/// Entries from here on may be codes; no interaction parameter is of this size.
inline constexpr double first_code = 1000.0;

/// The correlation that the code `entry` names, null for a plain number.
[[nodiscard]] constexpr const Correlation* find_correlation(double entry) noexcept {
  if (!(entry >= first_code)) return nullptr;
  for (const Correlation& c : correlations)
    if (entry == c.code) return &c;
  return nullptr;
}

/// The parameter at `t` [K]. N is any number type that mixes with double, so a Taylor number delivers the derivatives.
template <class N>
[[nodiscard]] constexpr N kij(double entry, const N& t) {
  const Correlation* c = find_correlation(entry);
  return c == nullptr ? N(entry) : N((c->c2 * t + c->c1) * t + c->c0);
}

/// The entries of the selected mixture at `t` [K] and their temperature derivatives: n x n arrays, first index
/// fastest. Nothing is written for an `n` outside 1 to 20.
void ps_calc_kij(const Parameters& p, int n, double t, double* kij);
void calc_dkij_dt(const Parameters& p, int n, double t, double* dkij);     ///< [1/K]
void calc_d2kij_dt2(const Parameters& p, int n, double t, double* d2kij);  ///< [1/K2]
void calc_d3kij_dt3(const Parameters& p, int n, double t, double* d3kij);  ///< 0 throughout

}  // namespace tessarel::fluid
