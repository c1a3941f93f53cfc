#include "fluid/cp0_module.hpp"

#include <algorithm>
#include <cmath>
#include <cstddef>

#include "fluid/fluid_module.hpp"

namespace tessarel::cp0_module {
namespace {

using fluid_module::nmax;

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

inline Cubic cubic(int i) noexcept {
  const auto& r = fluid_module::record;
  const auto k = static_cast<std::size_t>(i);
  return {r.cp0_a[k], r.cp0_b[k], r.cp0_c[k], r.cp0_d[k]};
}

template <Member member>
double of_component(int i, double t) noexcept {
  return i < 0 || i >= nmax ? fluid_module::not_computed : (cubic(i).*member)(t);
}

template <Member member>
double of_mixture(int n, const double* x, double t) noexcept {
  double sum = 0.0;
  for (int i = 0; i < std::min(n, nmax); ++i) sum += x[i] * (cubic(i).*member)(t);
  return sum;
}

}  // namespace

double calc_cp0(int i, double t) {
  return of_component<&Cubic::value>(i, t);
}
double calc_dcp0_dt(int i, double t) {
  return of_component<&Cubic::slope>(i, t);
}
double calc_icp0_dt(int i, double t) {
  return of_component<&Cubic::integral>(i, t);
}
double calc_icp0_t_dt(int i, double t) {
  return of_component<&Cubic::integral_over_t>(i, t);
}

double calc_cp0mix(int n, const double* x, double t) {
  return of_mixture<&Cubic::value>(n, x, t);
}
double calc_dcp0mix_dt(int n, const double* x, double t) {
  return of_mixture<&Cubic::slope>(n, x, t);
}
double calc_icp0mix_dt(int n, const double* x, double t) {
  return of_mixture<&Cubic::integral>(n, x, t);
}
double calc_icp0mix_t_dt(int n, const double* x, double t) {
  return of_mixture<&Cubic::integral_over_t>(n, x, t);
}

}  // namespace tessarel::cp0_module
