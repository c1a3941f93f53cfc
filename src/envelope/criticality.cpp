#include "envelope/criticality.hpp"

#include <algorithm>
#include <cmath>

#include "eos/composition.hpp"
#include "eos/density.hpp"
#include "eos/mole_numbers.hpp"
#include "eos/pressure.hpp"
#include "numerics/symmetric.hpp"

namespace tessarel::envelope {

using eos::Eos;
using fluid::at;
using fluid::Vector;
using numerics::Square;

void criticality_matrix(const Eos& eos, int n, const double* amounts, const double* scale, double t, double rho,
                        Square<double> q) {
  const Arena::Frame frame(eos.arena());
  const auto size = at(n);
  double total = 0;
  for (int i = 0; i < n; ++i) total += amounts[i];
  Vector x, z_x, row;
  for (std::size_t i = 0; i < size; ++i) x[i] = amounts[i] / total;
  eos::MixtureState<double> state;
  eos::prepare(eos, state, n, x.data(), 0, t);
  double* a_x = eos.arena().take<double>(size);
  const Square<double> a_xx{eos.arena().take<double>(size * size), size};
  eos::CompositionDerivatives<double> second{0, a_x, a_xx, {}};
  eos::composition_derivatives<2>(state, rho, second);
  using S = numerics::Taylor<1, 1>;
  eos::CompositionDerivatives<S> by_rho;
  by_rho.first = eos.arena().take<S>(size);
  const S density = numerics::variable<S>(rho);
  eos::composition_derivatives<1>(state, density, by_rho);
  for (std::size_t i = 0; i < size; ++i) z_x[i] = rho * eos::d_drho(by_rho.first[i]);
  const S z = eos::residual_z(state, density);
  // A change of an amount at constant volume changes the fractions and, in proportion, the density.
  double mean = 0;
  for (std::size_t i = 0; i < size; ++i) {
    row[i] = z_x[i] - eos::weighted(size, x.data(), &a_xx(i, 0));
    mean += x[i] * (row[i] + z_x[i]);
  }
  const double common = numerics::value(z) - 1.0 + rho * eos::d_drho(z) - mean;
  for (std::size_t i = 0; i < size; ++i)
    for (std::size_t j = 0; j < size; ++j) {
      const double residual = a_xx(i, j) + row[i] + row[j] + common;
      // delta / n_i times sqrt(scale_i scale_j), written so that absent components keep their 1.
      const double ideal = i != j ? 0.0 : amounts[i] > 0 ? scale[i] / x[i] : 1.0;
      q(i, j) = (ideal + std::sqrt(scale[i] * scale[j]) * residual) / total;
    }
}

namespace {

/// u' Q u at amounts moved by s along u.
double along(const Eos& eos, int n, const double* z, double t, double rho, const double* u, double s) {
  const Arena::Frame frame(eos.arena());
  const auto size = at(n);
  const Square<double> q{eos.arena().take<double>(size * size), size};
  Vector moved;
  double total = 0;
  for (std::size_t i = 0; i < size; ++i) total += moved[i] = z[i] + s * std::sqrt(z[i]) * u[i];
  criticality_matrix(eos, n, moved.data(), z, t, rho * total, q);
  double sum = 0;
  for (std::size_t i = 0; i < size; ++i)
    for (std::size_t j = 0; j < size; ++j) sum += u[i] * q(i, j) * u[j];
  return sum;
}

}  // namespace

double cubic_form(const Eos& eos, int n, const double* z, double t, double rho, const double* u) {
  // Differences of fourth order: the error is of the order of the seventh derivative times s^4.
  double s = 5e-4;
  for (int i = 0; i < n; ++i)
    if (z[i] > 0 && u[i] != 0) s = std::min(s, 0.2 * std::sqrt(z[i]) / std::abs(u[i]));
  const auto f = [&](double step) { return along(eos, n, z, t, rho, u, step); };
  return (8.0 * (f(s) - f(-s)) - (f(2 * s) - f(-2 * s))) / (12.0 * s);
}

namespace {

/// The smallest eigenvalue of Q and its vector; `like` as for criticality().
Criticality lowest_eigenvalue(const Eos& eos, int n, const double* z, double t, double rho, const double* like) {
  const Arena::Frame frame(eos.arena());
  const auto size = at(n);
  const Square<double> q{eos.arena().take<double>(size * size), size};
  const Square<double> vectors{eos.arena().take<double>(size * size), size};
  criticality_matrix(eos, n, z, z, t, rho, q);
  Vector values;
  numerics::eigen(q, values.data(), vectors);
  const auto lowest = static_cast<std::size_t>(std::min_element(values.begin(), values.begin() + n) - values.begin());
  Criticality r;
  r.lambda = values[lowest];
  double turn = 0;
  for (std::size_t i = 0; i < size; ++i) turn += vectors(lowest, i) * (like != nullptr ? like[i] : std::sqrt(z[i]));
  for (std::size_t i = 0; i < size; ++i) r.u[i] = turn < 0 ? -vectors(lowest, i) : vectors(lowest, i);
  return r;
}

}  // namespace

Criticality criticality(const Eos& eos, int n, const double* z, double t, double rho, const double* like) {
  Criticality r = lowest_eigenvalue(eos, n, z, t, rho, like);
  r.c = cubic_form(eos, n, z, t, rho, r.u.data());
  return r;
}

bool refine_critical(const Eos& eos, int n, const double* z, double& t, double& rho) {
  double last = 1e300;
  for (int pass = 0; pass < 30; ++pass) {
    const Criticality here = criticality(eos, n, z, t, rho);
    const double h = 1e-5;
    const Criticality by_t = criticality(eos, n, z, t * (1.0 + h), rho, here.u.data());
    const Criticality by_rho = criticality(eos, n, z, t, rho * (1.0 + h), here.u.data());
    const double lt = (by_t.lambda - here.lambda) / h, lr = (by_rho.lambda - here.lambda) / h;
    const double ct = (by_t.c - here.c) / h, cr = (by_rho.c - here.c) / h;
    const double det = lt * cr - lr * ct;
    const double dt = (lr * here.c - cr * here.lambda) / det, dr = (ct * here.lambda - lt * here.c) / det;
    const double size = std::max(std::abs(dt), std::abs(dr));
    if (!std::isfinite(size)) return false;
    const double factor = std::min({1.0, 0.05 / std::abs(dt), 0.1 / std::abs(dr)});
    t *= 1.0 + factor * dt;
    rho *= 1.0 + factor * dr;
    // Differences make the convergence linear at the end, by a factor of 1e-5 or so a pass.
    if (size < 1e-11 || (size < 1e-9 && size >= 0.5 * last)) {
      const double p = eos::calc_p_rho(eos, n, z, t, rho);
      return t > 0 && rho > 0 && p < 1e9 && eos::calc_dp_drho(eos, n, z, t, rho) > 0;
    }
    last = size;
  }
  return false;
}

namespace {

/// The highest temperature at `rho` at which the phase is at its limit of stability, below `t`, with the eigenvector
/// there; 0 if there is none. `near`, unless 0, is that of a density nearby, from which the limit is followed.
double stability_limit(const Eos& eos, int n, const double* z, double t, double near, double rho, const double* like,
                       Criticality& there) {
  const auto at_t = [&](double temperature) {
    there = lowest_eigenvalue(eos, n, z, temperature, rho, like);
    return there.lambda;
  };
  double hi = near > 0 ? 1.01 * near : t, f_hi = at_t(hi);
  while (near > 0 && f_hi <= 0 && hi < t) f_hi = at_t(hi *= 1.04);
  if (!(f_hi > 0)) return 0;
  const double step = near > 0 ? 0.97 : 0.93;
  double lo = hi, f_lo = f_hi;
  while (f_lo > 0) {
    hi = lo, f_hi = f_lo;
    lo *= step;
    if (lo < 0.1 * t) return 0;
    f_lo = at_t(lo);
  }
  // False position; an end that stays counts half (Illinois). Newton's method for both conditions comes after it.
  double middle = lo;
  for (int k = 0, side = 0; k < 12 && f_lo < 0; ++k) {
    middle = (lo * f_hi - hi * f_lo) / (f_hi - f_lo);
    const double f = at_t(middle);
    if (std::abs(f) < 1e-9 || !(hi - lo > 1e-10 * hi)) break;
    if (f > 0) {
      hi = middle, f_hi = f;
      if (side > 0) f_lo *= 0.5;
      side = 1;
    } else {
      lo = middle, f_lo = f;
      if (side < 0) f_hi *= 0.5;
      side = -1;
    }
  }
  return middle;
}

}  // namespace

bool find_critical(const Eos& eos, int n, const double* z, double t_start, double& t, double& rho, Accept accept) {
  constexpr int steps = 45;
  constexpr double first_eta = 0.03, ratio = 1.065;
  double last_c = 0, last_rho = 0, last_t = 0;
  Vector like{};
  bool has_last = false;
  double eta = first_eta;
  for (int k = 0; k < steps; ++k, eta *= ratio) {
    const double density = eos::calc_rho_eta(eos, n, z, 0, t_start, eta);
    Criticality here;
    const double limit = stability_limit(eos, n, z, 3.0 * t_start, has_last ? last_t : 0, density,
                                         has_last ? like.data() : nullptr, here);
    if (!(limit > 0)) {
      has_last = false;
      continue;
    }
    here.c = cubic_form(eos, n, z, limit, density, here.u.data());
    if (has_last && here.c * last_c <= 0) {
      const double share = last_c / (last_c - here.c);
      t = last_t + share * (limit - last_t);
      rho = last_rho + share * (density - last_rho);
      if (refine_critical(eos, n, z, t, rho) && accept(eos, n, z, t, rho)) return true;
    }
    like = here.u;
    last_c = here.c;
    last_rho = density;
    last_t = limit;
    has_last = true;
  }
  return false;
}

bool stable_at_all_densities(const Eos& eos, int n, const double* z, double t) {
  const Arena::Frame frame(eos.arena());
  const auto size = at(n);
  const Square<double> q{eos.arena().take<double>(size * size), size};
  // For the densities in between.
  constexpr double margin = 0.05;
  for (const double eta : {0.13, 0.09, 0.18, 0.05, 0.24, 0.32}) {
    criticality_matrix(eos, n, z, z, t, eos::calc_rho_eta(eos, n, z, 0, t, eta), q);
    for (std::size_t i = 0; i < size; ++i) q(i, i) -= margin;
    if (!numerics::cholesky(q)) return false;
  }
  return true;
}

}  // namespace tessarel::envelope
