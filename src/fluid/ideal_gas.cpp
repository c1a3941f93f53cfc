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

/// A temperature with what the integrals of all components share.
struct Temperature {
  double t, t2 = t * t;
  double by_1 = t - t0, by_2 = t2 - t0_2, by_3 = t2 * t - t0_3, by_4 = t2 * t2 - t0_4;  ///< differences of the powers
};
struct LogTemperature : Temperature {
  double log_ratio = std::log(t / t0);
};

/// The four coefficients of a component.
struct Cubic {
  double a, b, c, d;

  [[nodiscard]] double value(double t) const noexcept { return a + t * (b + t * (c + t * d)); }
  [[nodiscard]] double slope(double t) const noexcept { return b + t * (2.0 * c + 3.0 * d * t); }
  [[nodiscard]] double integral(const Temperature& t) const noexcept {
    return a * t.by_1 + b / 2.0 * t.by_2 + c / 3.0 * t.by_3 + d / 4.0 * t.by_4;
  }
  [[nodiscard]] double integral_over_t(const LogTemperature& t) const noexcept {
    return a * t.log_ratio + b * t.by_1 + c / 2.0 * t.by_2 + d / 3.0 * t.by_3;
  }
};

Cubic cubic(const Parameters& p, int i) noexcept {
  const auto k = at(i);
  return {p.cp0_a[k], p.cp0_b[k], p.cp0_c[k], p.cp0_d[k]};
}

template <auto member, class T>
double of_component(const Parameters& p, int i, const T& t) noexcept {
  return i < 0 || i >= nmax ? not_computed : (cubic(p, i).*member)(t);
}

template <auto member, class T>
double of_mixture(const Parameters& p, int n, const double* x, const T& t) noexcept {
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
  return of_component<&Cubic::integral>(p, i, Temperature{t});
}
double calc_icp0_t_dt(const Parameters& p, int i, double t) {
  return of_component<&Cubic::integral_over_t>(p, i, LogTemperature{{t}});
}

double calc_cp0mix(const Parameters& p, int n, const double* x, double t) {
  return of_mixture<&Cubic::value>(p, n, x, t);
}
double calc_dcp0mix_dt(const Parameters& p, int n, const double* x, double t) {
  return of_mixture<&Cubic::slope>(p, n, x, t);
}
double calc_icp0mix_dt(const Parameters& p, int n, const double* x, double t) {
  return of_mixture<&Cubic::integral>(p, n, x, Temperature{t});
}
double calc_icp0mix_t_dt(const Parameters& p, int n, const double* x, double t) {
  return of_mixture<&Cubic::integral_over_t>(p, n, x, LogTemperature{{t}});
}

}  // namespace tessarel::fluid
