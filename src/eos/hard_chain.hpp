// Hard-sphere and chain terms (Boublik 1970; Mansoori et al. 1971; Chapman et al. 1990).
//
// At fixed temperature and composition the moments zeta_k of the diameter are proportional to the density, so every
// function here depends on the packing fraction eta = zeta3 alone, and with u = 1 / (1 - eta) becomes a polynomial:
//
//   z_hs = (u - 1) + A (u^2 - u) + B (2 u^3 - 3 u^2 + 1)
//   A    = 3 zeta1 zeta2 / (zeta0 eta)
//   B    = zeta2^3 / (zeta0 eta^2)
//   g_ij = u (1 + k_ij (u - 1)) (1 + 2 k_ij (u - 1))
//   k_ij = zeta2 / eta * d_i d_j / (d_i + d_j)
//
// The fluid of one diameter, and the simplified model of a mean diameter, are the case A = 3, B = 1, k = 1/2
// (Carnahan & Starling 1969).
#pragma once

#include "numerics/taylor.hpp"

namespace tessarel::eos {

using numerics::inverse;
using numerics::log;
using numerics::log_1p;
using numerics::value;

/// psi(eta) = 1 / (eta (1 - eta)^2) + ln(1 - eta) / eta^2, the factor of zeta2^3 / zeta0 in a_hs. Its two parts cancel
/// at low density: there the power series, the sum of (k + 1 - 1/(k + 1)) eta^(k - 1) over k >= 1, takes over.
template <class N>
N hard_sphere_psi(const N& eta, const N& u, const N& log_free_volume) {
  constexpr double series_limit = 0.08;
  if (value(eta) < series_limit) {
    constexpr int terms = 20;
    N sum = eta * (terms + 1.0 - 1.0 / (terms + 1.0)) + (terms - 1.0 / terms);
    for (int k = terms - 2; k >= 1; --k) sum = sum * eta + (k + 1.0 - 1.0 / (k + 1.0));
    return sum;
  }
  const N r = inverse(eta);
  return r * (u * u + r * log_free_volume);
}

/// a_hs of a mixture: -ln(1 - eta) + A eta u + B eta^2 psi.
template <class N, class C>
N hard_sphere_a(const N& eta, const N& u, const N& log_free_volume, const C& a, const C& b) {
  return (eta * u) * a + (eta * eta * hard_sphere_psi(eta, u, log_free_volume)) * b - log_free_volume;
}

/// a_hs of one diameter: e (4 + e), e = eta / (1 - eta).
template <class N>
N hard_sphere_a_closed(const N& eta, const N& u) {
  const N e = eta * u;
  return e * (e + 4.0);
}

/// z_hs; `excess` = eta u = u - 1.
template <class N, class C>
N hard_sphere_z(const N& excess, const N& u, const C& a, const C& b) {
  // 2 u^3 - 3 u^2 + 1 = (u - 1)^2 (2 u + 1)
  return excess * ((u * a) + (excess * (u * 2.0 + 1.0)) * b + 1.0);
}

/// ln of the contact value: -ln(1 - eta) + ln((1 + y)(1 + 2 y)), y = k eta u; without its first part.
template <class N>
N log_contact_rest(const N& y) {
  return log_1p(y * (y * 2.0 + 3.0));
}

/// The contact value g, from y = k eta u or from k, and its derivative by u.
template <class N>
N contact_at(const N& u, const N& y) {
  return u * (y + 1.0) * (y * 2.0 + 1.0);
}
template <class N, class C>
N contact(const N& u, const C& k) {
  return contact_at(u, N((u - 1.0) * k));
}
template <class N, class C>
N contact_slope(const N& u, const C& k) {
  const N y = (u - 1.0) * k;
  return (y + 1.0) * (y * 2.0 + 1.0) + u * ((y * 4.0 + 3.0) * k);
}

/// d ln((1 + y)(1 + 2 y)) / d ln y = y / (1 + y) + 2 y / (1 + 2 y).
template <class N>
N log_contact_slope(const N& y) {
  return y * (y * 4.0 + 3.0) / ((y + 1.0) * (y * 2.0 + 1.0));
}

}  // namespace tessarel::eos
