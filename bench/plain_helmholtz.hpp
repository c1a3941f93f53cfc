// The unit of comparison of all measurements: the residual Helmholtz energy of a mixture written as a user would write
// it from the paper on one page (Gross & Sadowski 2001, appendix A): std::pow for every power, the combining rules in
// the loop, nothing precomputed. Its time is 1 unit at four components.
#pragma once

#include <array>
#include <cmath>
#include <vector>

namespace tessarel::bench {

struct PlainFluid {
  std::vector<double> m, sigma, epsilon;
};

inline double plain_a(const PlainFluid& f, const std::vector<double>& x, double t, double rho) {
  static constexpr double a_universal[3][7] = {{0.91056314451539, 0.63612814494991, 2.68613478913903, -26.5473624914884,
                                                97.7592087835073, -159.5915408656, 91.2977740839123},
                                               {-0.3084016918272, 0.18605311591713, -2.50300472586548, 21.4197936296668,
                                                -65.2558853303492, 83.3186804808856, -33.7469229297323},
                                               {-0.09061483509767, 0.4527842806392, 0.59627007280101, -1.72418291311787,
                                                -4.13021125311661, 13.7766318697211, -8.67284703679646}};
  static constexpr double b_universal[3][7] = {
      {0.72409469413165, 2.2382791860938, -4.00258494846342, -21.00357681484648, 26.8556413626615, 206.5513384066188,
       -355.6023561220795},
      {-0.5755498075345, 0.69950955214436, 3.89256733895307, -17.21547164777212, 192.6722644652495, -161.8264616487648,
       -165.2076934555607},
      {0.09768831158356, -0.255757498161, -9.15585615297321, 20.64207597439724, -38.80443005206285, 93.6267740770146,
       -29.66690558514725}};
  constexpr double pi = 3.14159265359;
  const std::size_t n = x.size();
  std::array<double, 20> d;
  double mbar = 0;
  double zeta[4] = {0, 0, 0, 0};
  for (std::size_t i = 0; i < n; ++i) {
    d[i] = f.sigma[i] * (1.0 - 0.12 * std::exp(-3.0 * f.epsilon[i] / t));
    mbar += x[i] * f.m[i];
    for (int k = 0; k < 4; ++k) zeta[k] += pi / 6.0 * rho * x[i] * f.m[i] * std::pow(d[i], k);
  }
  const double eta = zeta[3];
  const double hs = (3.0 * zeta[1] * zeta[2] / (1.0 - eta) + std::pow(zeta[2], 3) / (eta * std::pow(1.0 - eta, 2)) +
                     (std::pow(zeta[2], 3) / std::pow(eta, 2) - zeta[0]) * std::log(1.0 - eta)) /
                    zeta[0];
  double chain = 0;
  for (std::size_t i = 0; i < n; ++i) {
    const double g = 1.0 / (1.0 - eta) + d[i] / 2.0 * 3.0 * zeta[2] / std::pow(1.0 - eta, 2) +
                     std::pow(d[i] / 2.0, 2) * 2.0 * std::pow(zeta[2], 2) / std::pow(1.0 - eta, 3);
    chain += x[i] * (f.m[i] - 1.0) * std::log(g);
  }
  double m2es3 = 0, m2e2s3 = 0;
  for (std::size_t i = 0; i < n; ++i) {
    for (std::size_t j = 0; j < n; ++j) {
      const double sigma = (f.sigma[i] + f.sigma[j]) / 2.0;
      const double epsilon = std::sqrt(f.epsilon[i] * f.epsilon[j]);
      const double weight = x[i] * x[j] * f.m[i] * f.m[j] * std::pow(sigma, 3);
      m2es3 += weight * epsilon / t;
      m2e2s3 += weight * std::pow(epsilon / t, 2);
    }
  }
  double i1 = 0, i2 = 0;
  for (int k = 0; k < 7; ++k) {
    const double p = (mbar - 1.0) / mbar, q = p * (mbar - 2.0) / mbar;
    i1 += (a_universal[0][k] + p * a_universal[1][k] + q * a_universal[2][k]) * std::pow(eta, k);
    i2 += (b_universal[0][k] + p * b_universal[1][k] + q * b_universal[2][k]) * std::pow(eta, k);
  }
  const double c1 =
      1.0 / (1.0 + mbar * (8.0 * eta - 2.0 * std::pow(eta, 2)) / std::pow(1.0 - eta, 4) +
             (1.0 - mbar) * (20.0 * eta - 27.0 * std::pow(eta, 2) + 12.0 * std::pow(eta, 3) - 2.0 * std::pow(eta, 4)) /
                 std::pow((1.0 - eta) * (2.0 - eta), 2));
  return mbar * hs - chain - pi * rho * (2.0 * i1 * m2es3 + mbar * c1 * i2 * m2e2s3);
}

}  // namespace tessarel::bench
