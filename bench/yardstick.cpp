// The unit of all measurements: one plain evaluation of the reduced residual Helmholtz energy of a four-component
// mixture, written straight from the published formulas (Gross & Sadowski 2001, appendix A) with no optimisation.
// Compiled with -O2, so that times taken on different machines and days can be compared as multiples of it.
#include "yardstick.hpp"

#include <algorithm>
#include <cmath>

// clang-format off
static const int N = 4;
static const double m[N] = {1.0000, 1.6069, 2.0020, 2.3316}, s[N] = {3.7039, 3.5206, 3.6184, 3.7086},
                    eps[N] = {150.03, 191.42, 208.11, 222.88};
static const double ap[7][3] = {{0.91056314451539, -0.3084016918272, -0.09061483509767},
    {0.63612814494991, 0.18605311591713, 0.4527842806392}, {2.68613478913903, -2.50300472586548, 0.59627007280101},
    {-26.5473624914884, 21.4197936296668, -1.72418291311787}, {97.7592087835073, -65.2558853303492, -4.13021125311661},
    {-159.5915408656, 83.3186804808856, 13.7766318697211}, {91.2977740839123, -33.7469229297323, -8.67284703679646}};
static const double bp[7][3] = {{0.72409469413165, -0.5755498075345, 0.09768831158356},
    {2.2382791860938, 0.69950955214436, -0.255757498161}, {-4.00258494846342, 3.89256733895307, -9.15585615297321},
    {-21.00357681484648, -17.21547164777212, 20.64207597439724}, {26.8556413626615, 192.6722644652495, -38.80443005206285},
    {206.5513384066188, -161.8264616487648, 93.6267740770146}, {-355.6023561220795, -165.2076934555607, -29.66690558514725}};
double yardstick(double t, double rho, const double *x) {
  const double pi = 3.14159265359;
  double d[N], z[4] = {0, 0, 0, 0}, mb = 0;
  for (int i = 0; i < N; ++i) {
    d[i] = s[i] * (1 - 0.12 * std::exp(-3 * eps[i] / t));
    mb += x[i] * m[i];
    for (int k = 0; k < 4; ++k) z[k] += x[i] * m[i] * std::pow(d[i], k);
  }
  for (double &v : z) v *= pi / 6 * rho;
  double u = 1 - z[3];
  double ahs = (3 * z[1] * z[2] / u + std::pow(z[2], 3) / (z[3] * u * u) + (std::pow(z[2], 3) / (z[3] * z[3]) - z[0]) * std::log(u)) / z[0];
  double ach = 0;
  for (int i = 0; i < N; ++i) {
    double w = z[2] / u, q = d[i] / 2;
    ach += x[i] * (m[i] - 1) * std::log((1 + 3 * w * q + 2 * w * w * q * q) / u);
  }
  double i1 = 0, i2 = 0, p = (mb - 1) / mb, q = p * (mb - 2) / mb;
  for (int k = 0; k < 7; ++k) {
    i1 += (ap[k][0] + p * ap[k][1] + q * ap[k][2]) * std::pow(z[3], k);
    i2 += (bp[k][0] + p * bp[k][1] + q * bp[k][2]) * std::pow(z[3], k);
  }
  double e = z[3];
  double c1 = 1 / (1 + mb * (8 * e - 2 * e * e) / std::pow(1 - e, 4) + (1 - mb) * (20 * e - 27 * e * e + 12 * e * e * e - 2 * e * e * e * e) / std::pow((1 - e) * (2 - e), 2));
  double s1 = 0, s2 = 0;
  for (int i = 0; i < N; ++i)
    for (int j = 0; j < N; ++j) {
      double sij = (s[i] + s[j]) / 2, eij = std::sqrt(eps[i] * eps[j]) / t, f = x[i] * x[j] * m[i] * m[j] * sij * sij * sij * eij;
      s1 += f; s2 += f * eij;
    }
  return mb * ahs - ach - pi * rho * (2 * i1 * s1 + mb * c1 * i2 * s2);
}
// clang-format on
