// Dispersion term of PC-SAFT (Gross & Sadowski 2001):
//
//   a_disp = -pi rho (2 I1(eta, m) m2es3 + m C1(eta, m) I2(eta, m) m2e2s3),    m the mean segment number.
//
// The compressibility expression C1 is written with u = 1 / (1 - eta) and s = 1 / (2 - eta), in which its two parts
// fall apart into plain powers:
//
//   (8 eta - 2 eta^2) / (1 - eta)^4                                 = 6 u^4 - 4 u^3 - 2 u^2
//   (20 eta - 27 eta^2 + 12 eta^3 - 2 eta^4) / ((1-eta)(2-eta))^2   = 3 u^2 - 4 s^2 - 2
#pragma once

#include <array>

#include "fluid/fluid_module.hpp"
#include "numerics/taylor.hpp"

namespace tessarel::eos {

using numerics::inverse;
using numerics::square;
using numerics::Taylor;

using Powers = std::array<double, 7>;  ///< coefficients of eta^0 to eta^6

/// Universal constants of the integrals: [power][order in the mean segment number].
inline constexpr std::array<std::array<double, 3>, 7> ap = {{{0.91056314451539, -0.3084016918272, -0.09061483509767},
                                                             {0.63612814494991, 0.18605311591713, 0.4527842806392},
                                                             {2.68613478913903, -2.50300472586548, 0.59627007280101},
                                                             {-26.5473624914884, 21.4197936296668, -1.72418291311787},
                                                             {97.7592087835073, -65.2558853303492, -4.13021125311661},
                                                             {-159.5915408656, 83.3186804808856, 13.7766318697211},
                                                             {91.2977740839123, -33.7469229297323, -8.67284703679646}}};
inline constexpr std::array<std::array<double, 3>, 7> bp = {
    {{0.72409469413165, -0.5755498075345, 0.09768831158356},
     {2.2382791860938, 0.69950955214436, -0.255757498161},
     {-4.00258494846342, 3.89256733895307, -9.15585615297321},
     {-21.00357681484648, -17.21547164777212, 20.64207597439724},
     {26.8556413626615, 192.6722644652495, -38.80443005206285},
     {206.5513384066188, -161.8264616487648, 93.6267740770146},
     {-355.6023561220795, -165.2076934555607, -29.66690558514725}}};

/// The weights 1, (m-1)/m, (m-1)(m-2)/m^2 of the three columns at mean segment number `m`, which may carry derivatives.
template <class N>
std::array<N, 2> mean_segment_weights(const N& m) {
  const N r = inverse(m);
  const N p = 1.0 - r;
  return {p, p * (p - r)};
}

/// Coefficients of an integral, apar or bpar, at the weights of a mean segment number.
template <class N>
std::array<N, 7> integral_coefficients(const std::array<std::array<double, 3>, 7>& constants,
                                       const std::array<N, 2>& w) {
  std::array<N, 7> c;
  for (std::size_t j = 0; j < 7; ++j) c[j] = w[0] * constants[j][1] + w[1] * constants[j][2] + constants[j][0];
  return c;
}

/// I1 or I2: sum of c_j eta^j.
template <class N, class C>
N integral(const std::array<C, 7>& c, const N& eta) {
  N sum = eta * c[6] + c[5];
  for (std::size_t j = 5; j-- > 0;) sum = sum * eta + c[j];
  return sum;
}

/// d(eta I1)/d eta or d(eta I2)/d eta: sum of (j + 1) c_j eta^j.
template <class N, class C>
N scaled_integral_slope(const std::array<C, 7>& c, const N& eta) {
  N sum = eta * (7.0 * c[6]) + 6.0 * c[5];
  for (std::size_t j = 5; j-- > 0;) sum = sum * eta + static_cast<double>(j + 1) * c[j];
  return sum;
}

/// The two parts of 1 / C1 = 1 + m chain + (1 - m) sphere.
template <class N>
struct InverseC1Parts {
  N chain, sphere;
};
template <class N>
InverseC1Parts<N> inverse_c1_parts(const N& u, const N& s) {
  const N u2 = u * u;
  return {u2 * (u2 * 6.0 - u * 4.0 - 2.0), u2 * 3.0 - s * s * 4.0 - 2.0};
}

/// 1 / C1 from u = 1 / (1 - eta), s = 1 / (2 - eta) and the mean segment number.
template <class N, class M>
N inverse_c1(const N& u, const N& s, const M& m) {
  const auto [chain, sphere] = inverse_c1_parts(u, s);
  return (chain - sphere) * m + sphere + 1.0;
}
template <class N, class M>
N c1(const N& eta, const M& m) {
  return inverse(inverse_c1(inverse(1.0 - eta), inverse(2.0 - eta), m));
}

/// d(1 / C1)/d eta, from the same powers.
template <class N, class M>
N inverse_c1_slope(const N& u, const N& s, const M& m) {
  const N u2 = u * u, u3 = u2 * u;
  const N chain = u3 * (u2 * 24.0 - u * 12.0 - 4.0);
  const N sphere = u3 * 6.0 - s * s * s * 8.0;
  return (chain - sphere) * m + sphere;
}

}  // namespace tessarel::eos
