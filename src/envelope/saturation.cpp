#include "envelope/saturation.hpp"

#include <algorithm>
#include <cmath>
#include <functional>

#include "flash/adapters.hpp"
#include "numerics/linear_algebra.hpp"

namespace tessarel::envelope {

using fluid::at;
using fluid::Vector;

double largest_lnk(int n, const double* z, const Point& x) {
  double largest = 0;
  for (int i = 0; i < n; ++i)
    if (z[i] > 0) largest = std::max(largest, std::abs(x[at(i)]));
  return largest;
}

bool interpolate_four(const std::array<const Point*, 4>& points, std::size_t spec, double value, std::size_t size,
                      Point& x) {
  std::array<double, 4> s;
  for (std::size_t k = 0; k < 4; ++k) s[k] = (*points[k])[spec];
  const auto in_order = [&s](auto before) { return before(s[0], s[1]) && before(s[1], s[2]) && before(s[2], s[3]); };
  if (!in_order(std::less<>()) && !in_order(std::greater<>())) return false;
  for (std::size_t i = 0; i < size; ++i) {
    std::array<double, 4> p;
    for (std::size_t k = 0; k < 4; ++k) p[k] = (*points[k])[i];
    for (std::size_t level = 1; level < 4; ++level)
      for (std::size_t k = 0; k + level < 4; ++k)
        p[k] = ((value - s[k + level]) * p[k] - (value - s[k]) * p[k + 1]) / (s[k] - s[k + level]);
    x[i] = p[0];
  }
  x[spec] = value;
  return true;
}

void unwrap(int n, const double* z, double beta, const Point& x, double* liquid, double* vapour) {
  for (int i = 0; i < n; ++i) {
    const double k = flash::bounded_exp(x[at(i)]);
    liquid[i] = z[i] / ((1.0 - beta) + beta * k);
    vapour[i] = k * liquid[i];
  }
}

Saturation::Saturation(const eos::Eos& eos, int n, const double* z, double beta)
    : eos_(eos),
      n_(n),
      z_(z),
      beta_(beta),
      liquid_dn_(eos.arena().take<double>(at(n * n))),
      vapour_dn_(eos.arena().take<double>(at(n * n))),
      jacobian_(eos.arena().take<double>(at((n + 2) * (n + 2)))) {}

bool Saturation::prepare(const Point& x, int spec, double value) {
  const auto n = at(n_), size = n + 2;
  const double t = std::exp(x[n]), p = std::exp(x[n + 1]) * flash::pascal_per_bar;
  Vector l{}, v{};
  unwrap(n_, z_, beta_, x, l.data(), v.data());
  // Phases at fractions that add up to 1; the Jacobian is that of the amounts l and v.
  const double sum_l = flash::set_composition(liquid_, n_, l.data()),
               sum_v = flash::set_composition(vapour_, n_, v.data());
  if (!(sum_l > 0 && sum_v > 0 && std::isfinite(sum_l) && std::isfinite(sum_v) && std::isfinite(t) && std::isfinite(p)))
    return false;
  Vector t_l{}, t_v{}, p_l{}, p_v{};
  const auto evaluate = [&](flash::Phase& phase, int selector, Vector& dt, Vector& dp, double* dn) {
    ++eos_.work.statistics.fugacities;
    phase.rho =
        eos::calc_lnphi_near(eos_, n_, phase.x.data(), t, p, selector > 0 ? eos::Root::liquid : eos::Root::vapour,
                             phase.roots, {.lnphi = phase.lnphi.data(), .dt = dt.data(), .dp = dp.data(), .dn = dn});
  };
  evaluate(liquid_, selectors.liquid, t_l, p_l, liquid_dn_);
  evaluate(vapour_, selectors.vapour, t_v, p_v, vapour_dn_);
  double balance = 0;
  for (std::size_t i = 0; i < n; ++i) {
    f_[i] = x[i] + vapour_.lnphi[i] - liquid_.lnphi[i];
    balance += v[i] - l[i];
  }
  f_[n] = balance;
  f_[n + 1] = x[at(spec)] - value;
  // d l_j / d ln K_j = -beta y_j l_j / z_j, d v_j / d ln K_j = y_j (1 - beta y_j / z_j) in the amounts.
  std::fill_n(jacobian_, size * size, 0.0);
  const numerics::HostSquare<double> jacobian{jacobian_, size};
  for (std::size_t j = 0; j < n; ++j) {
    const double d = z_[j] > 0 ? l[j] / z_[j] : 1.0;  // 1 / (1 + beta (K - 1))
    const double l_j = -beta_ * v[j] * d, v_j = v[j] - beta_ * v[j] * v[j] * (z_[j] > 0 ? 1.0 / z_[j] : 0.0);
    for (std::size_t i = 0; i < n; ++i)
      jacobian(i, j) = (i == j ? 1.0 : 0.0) + vapour_dn_[i + n * j] * v_j / sum_v - liquid_dn_[i + n * j] * l_j / sum_l;
    jacobian(n, j) = v_j - l_j;
  }
  for (std::size_t i = 0; i < n; ++i) {
    jacobian(i, n) = t * (t_v[i] - t_l[i]);
    jacobian(i, n + 1) = p * (p_v[i] - p_l[i]);
  }
  jacobian(n + 1, at(spec)) = 1.0;
  for (std::size_t i = 0; i < size; ++i)
    if (!std::isfinite(f_[i])) return false;
  return true;
}

bool Saturation::correction(Point& step) {
  double parity = 0;
  if (numerics::lu_dcmp(size(), jacobian_, pivots_.data(), parity) != 0) return false;
  for (std::size_t i = 0; i < at(size()); ++i) step[i] = -f_[i];
  numerics::lu_bksb(size(), jacobian_, pivots_.data(), step.data());
  return std::all_of(step.begin(), step.begin() + size(), [](double v) { return std::isfinite(v); });
}

void Saturation::tangent(Point& dx) {
  dx = {};
  dx[at(n_ + 1)] = 1.0;
  numerics::lu_bksb(size(), jacobian_, pivots_.data(), dx.data());
}

bool Saturation::solve(Point& x, int spec, double value, Finish finish) {
  double last = 1e300;
  for (int pass = 0; pass < 25; ++pass) {
    Point step{};
    if (!prepare(x, spec, value) || !correction(step)) return false;
    double largest = 0;
    for (std::size_t i = 0; i < at(size()); ++i) largest = std::max(largest, std::abs(step[i]));
    if (!(largest < 2.0)) return false;
    const double error = apply(step, x);
    if (converged(error, last)) return true;
    if (finish == Finish::early && next_is_rounding(error, last)) return true;
    last = error;
  }
  return false;
}

// Near a critical point the matrix is nearly singular, and rounding keeps the correction above 1e-12: by much where the
// distance along the line is open while the equations are met.
bool Saturation::converged(double error, double last) const {
  if (error <= 1e-12) return true;
  if (error < 0.5 * last || error >= 1e-4) return false;
  const double unmet = residual();
  return unmet < 1e-12 || (error < 1e-8 && unmet < 1e-11);
}

double Saturation::apply(const Point& step, Point& x) const {
  double sum = 0;
  for (std::size_t i = 0; i < at(size()); ++i) {
    x[i] += step[i];
    sum += step[i] * step[i];
  }
  return std::sqrt(sum / size());
}

double Saturation::residual() const {
  double largest = 0;
  for (std::size_t i = 0; i <= at(n_); ++i)
    if (i == at(n_) || z_[i] > 0) largest = std::max(largest, std::abs(f_[i]));
  return largest;
}

}  // namespace tessarel::envelope
