#include "fluid/ideal_gas.hpp"

#include <algorithm>
#include <cmath>

namespace tessarel::fluid {
namespace {

// Reference temperature [K] and its powers.
constexpr double t0 = 298.15;
constexpr double t0_2 = 88893.42249999999;
constexpr double t0_3 = 26503573.918374993;
constexpr double t0_4 = 7902040563.763504;

/// The four coefficients of a component.
struct Cubic {
  double a, b, c, d;

  [[nodiscard]] double value(double t) const noexcept { return a + t * (b + t * (c + t * d)); }
  [[nodiscard]] double slope(double t) const noexcept { return b + t * (2.0 * c + 3.0 * d * t); }
  [[nodiscard]] double integral(double t) const noexcept {
    const double t2 = t * t;
    return a * (t - t0) + b / 2.0 * (t2 - t0_2) + c / 3.0 * (t2 * t - t0_3) + d / 4.0 * (t2 * t2 - t0_4);
  }
  [[nodiscard]] double integral_over_t(double t) const noexcept {
    const double t2 = t * t;
    return a * std::log(t / t0) + b * (t - t0) + c / 2.0 * (t2 - t0_2) + d / 3.0 * (t2 * t - t0_3);
  }
};

using Member = double (Cubic::*)(double) const noexcept;

Cubic cubic(const Parameters& p, int i) noexcept {
  const auto k = at(i);
  return {p.cp0_a[k], p.cp0_b[k], p.cp0_c[k], p.cp0_d[k]};
}

template <Member member>
double of_component(const Parameters& p, int i, double t) noexcept {
  return i < 0 || i >= nmax ? not_computed : (cubic(p, i).*member)(t);
}

template <Member member>
double of_mixture(const Parameters& p, int n, const double* x, double t) noexcept {
  double sum = 0.0;
  for (int i = 0; i < std::min(n, nmax); ++i) sum += x[i] * (cubic(p, i).*member)(t);
  return sum;
}

}  // namespace

double calc_cp0(const Parameters& p, int i, double t) {
  return of_component<&Cubic::value>(p, i, t);
}
double calc_dcp0_dt(const Parameters& p, int i, double t) {
  return of_component<&Cubic::slope>(p, i, t);
}
double calc_icp0_dt(const Parameters& p, int i, double t) {
  return of_component<&Cubic::integral>(p, i, t);
}
double calc_icp0_t_dt(const Parameters& p, int i, double t) {
  return of_component<&Cubic::integral_over_t>(p, i, t);
}

double calc_cp0mix(const Parameters& p, int n, const double* x, double t) {
  return of_mixture<&Cubic::value>(p, n, x, t);
}
double calc_dcp0mix_dt(const Parameters& p, int n, const double* x, double t) {
  return of_mixture<&Cubic::slope>(p, n, x, t);
}
double calc_icp0mix_dt(const Parameters& p, int n, const double* x, double t) {
  return of_mixture<&Cubic::integral>(p, n, x, t);
}
double calc_icp0mix_t_dt(const Parameters& p, int n, const double* x, double t) {
  return of_mixture<&Cubic::integral_over_t>(p, n, x, t);
}

}  // namespace tessarel::fluid
