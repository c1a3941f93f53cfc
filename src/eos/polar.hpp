// Polar terms of third-order perturbation theory (Gross 2005 quadrupoles; Gross & Vrabec 2006 dipoles; Vrabec & Gross
// 2008 their cross term), for each interaction type in the Pade form a2 / (1 - a3 / a2), with
//
//   a2 = -164806748.95831627 (rho / t^2) sum x_i x_j gamma2_ij sum_k (a_ijk + b_ijk eps_ij / t) eta^k
//   a3 = 3750053166155.6084 (rho^2 / t^3) sum x_i x_j x_l gamma3_ijl sum_k c_ijlk eta^k.
//
// At one temperature and composition both are polynomials in eta.
#pragma once

#include <cmath>

#include "eos/tables.hpp"
#include "numerics/taylor.hpp"

namespace tessarel::eos {

inline constexpr double second_order_factor = -164806748.95831627;
inline constexpr double third_order_factor = 3750053166155.6084;

/// Coefficients of a2 / rho and a3 / rho^2 in powers of eta, by interaction type.
template <class T>
struct PolarState {
  std::array<std::array<T, 5>, fluid_module::max_types> second, third;
};

/// Coefficient of eta^k of one pair at temperature t; `softening_over_t` is eps_ij(t) / (sqrt(epsil_i epsil_j) t), 1 /
/// t for saftpar = 0.
template <class T>
T pair_coefficient(const PolarPair& pair, std::size_t k, const T& softening_over_t) {
  return softening_over_t * pair.b[k] + pair.a[k];
}

template <class N>
N polar_polynomial(const auto& c, const N& eta) {
  N sum = eta * c[4] + c[3];
  for (std::size_t k = 3; k-- > 0;) sum = sum * eta + c[k];
  return sum;
}

/// d(eta^power * polynomial)/d eta * eta^(1 - power): the density slope of a2 (power 1) and a3 (power 2).
template <class N>
N polar_slope(const auto& c, const N& eta, double power) {
  N sum = eta * ((4.0 + power) * c[4]) + (3.0 + power) * c[3];
  for (std::size_t k = 3; k-- > 0;) sum = sum * eta + (static_cast<double>(k) + power) * c[k];
  return sum;
}

/// Below this a2 counts as 0: a type without a pair at this composition, or with its components in traces of 1e-20.
inline constexpr double negligible_a2 = 1e-40;

/// a2 / (1 - a3 / a2). Where a2 is negligible, so is the result, and a3 against a2: their sum stands for it.
template <class N>
N pade(const N& a2, const N& a3) {
  if (std::abs(numerics::value(a2)) < negligible_a2) return a2 + a3;
  return a2 * numerics::inverse(1.0 - a3 / a2);
}

/// Slope of the Pade form by a variable in which a2 and a3 have the slopes da2 and da3.
template <class N>
N pade_slope(const N& a2, const N& a3, const N& da2, const N& da3) {
  if (std::abs(numerics::value(a2)) < negligible_a2) return da2 + da3;
  const N r = a3 / a2;
  const N d = numerics::inverse(1.0 - r);
  return d * (da2 - (r * da2 - da3) * d);
}

}  // namespace tessarel::eos
