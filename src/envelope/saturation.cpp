#include "envelope/saturation.hpp"

#include <algorithm>
#include <cmath>
#include <utility>

#include "flash/adapters.hpp"

namespace tessarel::envelope {

using fluid::at;
using fluid::Vector;

bool lu(int count, double* a, int* pivots) {
  const auto n = at(count);
  for (std::size_t j = 0; j < n; ++j) {
    std::size_t pivot = j;
    for (std::size_t i = j + 1; i < n; ++i)
      if (std::abs(a[i * n + j]) > std::abs(a[pivot * n + j])) pivot = i;
    pivots[j] = static_cast<int>(pivot);
    if (!(std::abs(a[pivot * n + j]) > 0)) return false;
    if (pivot != j) std::swap_ranges(a + j * n, a + (j + 1) * n, a + pivot * n);
    const double inverse = 1.0 / a[j * n + j];
    for (std::size_t i = j + 1; i < n; ++i) {
      const double ratio = a[i * n + j] *= inverse;
      if (ratio == 0) continue;
      for (std::size_t k = j + 1; k < n; ++k) a[i * n + k] -= ratio * a[j * n + k];
    }
  }
  return true;
}

void aback(int count, const double* a, const int* pivots, double* b) {
  const auto n = at(count);
  for (std::size_t i = 0; i < n; ++i) std::swap(b[i], b[at(pivots[i])]);
  for (std::size_t i = 1; i < n; ++i)
    for (std::size_t k = 0; k < i; ++k) b[i] -= a[i * n + k] * b[k];
  for (std::size_t i = n; i-- > 0;) {
    for (std::size_t k = i + 1; k < n; ++k) b[i] -= a[i * n + k] * b[k];
    b[i] /= a[i * n + i];
  }
}

void unwrap(int n, const double* z, double beta, const Point& x, double* liquid, double* vapour) {
  for (int i = 0; i < n; ++i) {
    const double k = flash::bounded_exp(x[at(i)]);
    liquid[i] = z[i] / (1.0 + beta * (k - 1.0));
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
  const auto row = [&](std::size_t i) { return jacobian_ + i * size; };
  for (std::size_t j = 0; j < n; ++j) {
    const double d = z_[j] > 0 ? l[j] / z_[j] : 1.0;  // 1 / (1 + beta (K - 1))
    const double l_j = -beta_ * v[j] * d, v_j = v[j] - beta_ * v[j] * v[j] * (z_[j] > 0 ? 1.0 / z_[j] : 0.0);
    for (std::size_t i = 0; i < n; ++i)
      row(i)[j] = (i == j ? 1.0 : 0.0) + vapour_dn_[i + n * j] * v_j / sum_v - liquid_dn_[i + n * j] * l_j / sum_l;
    row(n)[j] = v_j - l_j;
  }
  for (std::size_t i = 0; i < n; ++i) {
    row(i)[n] = t * (t_v[i] - t_l[i]);
    row(i)[n + 1] = p * (p_v[i] - p_l[i]);
  }
  row(n + 1)[at(spec)] = 1.0;
  for (std::size_t i = 0; i < size; ++i)
    if (!std::isfinite(f_[i])) return false;
  return true;
}

bool Saturation::correction(Point& step) {
  if (!lu(size(), jacobian_, pivots_.data())) return false;
  for (std::size_t i = 0; i < at(size()); ++i) step[i] = -f_[i];
  aback(size(), jacobian_, pivots_.data(), step.data());
  return std::all_of(step.begin(), step.begin() + size(), [](double v) { return std::isfinite(v); });
}

void Saturation::tangent(Point& dx) {
  dx = {};
  dx[at(n_ + 1)] = 1.0;
  aback(size(), jacobian_, pivots_.data(), dx.data());
}

double Saturation::residual() const {
  double largest = 0;
  for (std::size_t i = 0; i <= at(n_); ++i)
    if (i == at(n_) || z_[i] > 0) largest = std::max(largest, std::abs(f_[i]));
  return largest;
}

}  // namespace tessarel::envelope
