// The two-level search for a mixture critical point: an inner iteration on the temperature makes Q singular at a
// density, an outer one on the density makes the cubic form of its null vector vanish (criticality.hpp). Behind it the
// search along the limit of stability.
#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>

#include "envelope/critical_point.hpp"
#include "envelope/criticality.hpp"
#include "eos/density.hpp"
#include "eos/pressure.hpp"
#include "flash/stability.hpp"
#include "numerics/linear_algebra.hpp"

namespace tessarel::envelope {

using eos::Eos;
using fluid::Limits;
using numerics::determinant;
using numerics::solution_vector;

namespace {

constexpr std::int32_t cubic_not_converged = 320, determinant_not_converged = 321;

using Matrix = std::array<double, fluid::nmax * fluid::nmax>;

/// Q (criticality.hpp) as a matrix of the linear algebra kernels; it is symmetric.
void form_q(const Eos& eos, int n, const double* z, double t, double rho, double* q) {
  criticality_matrix(eos, n, z, z, t, rho, {q, fluid::at(n)});
}

/// The cubic form along the null vector of `q`, which is spoilt. The vector's sign is free and the form odd in it: it
/// is turned towards `dn`, which becomes it.
double cubic_form_of(const Eos& eos, int n, const double* z, double t, double rho, Matrix& q, fluid::Vector& dn) {
  fluid::Vector found{};
  solution_vector(n, q.data(), found.data());
  double turn = 0;
  for (std::size_t i = 0; i < fluid::at(n); ++i) turn += found[i] * dn[i];
  for (std::size_t i = 0; i < fluid::at(n); ++i) dn[i] = turn < 0 ? -found[i] : found[i];
  return cubic_form(eos, n, z, t, rho, dn.data());
}

}  // namespace

namespace {

/// Matrices that a search may form: a fifth of a second and less for any number of components.
int most_matrices(int n) {
  return 400 + 40000 / (n * n);
}

/// det_q_newton within what is `left` of the matrices of a search.
std::int32_t det_q_newton(const Eos& eos, bool debug, int n, const double* z, double rho, double& t, double* q,
                          int& left) {
  constexpr int limit = 100;
  constexpr double tolerance = 1e-5, lowest = 120.0;
  std::int32_t ierr = 0;
  const double dt = 1e-4 * t;
  for (int pass = 1;;) {
    Matrix shifted;
    double d0 = 0, d1 = 0;
    form_q(eos, n, z, t + dt, rho, shifted.data());
    ierr = std::max(ierr, determinant(n, shifted.data(), d1));
    form_q(eos, n, z, t, rho, q);
    ierr = std::max(ierr, determinant(n, q, d0));
    if (debug) std::printf("det Q: pass %d, T = %.10g K, det = %.6g\n", pass, t, d0);
    double next = t - dt * d0 / (d1 - d0);
    if (next < lowest) next = 0.95 * t;
    ++pass;
    t = next;
    if (std::abs(d0) <= tolerance) {
      if (ierr == 0 && pass > limit) ierr = determinant_not_converged;
      return ierr;
    }
    if (ierr != 0) return ierr;
    if (pass > limit || (left -= 2) < 0) return determinant_not_converged;
  }
}

}  // namespace

std::int32_t det_q_newton(const Eos& eos, bool debug, int n, const double* z, double rho, double& t, double* q) {
  int left = most_matrices(n);
  return det_q_newton(eos, debug, n, z, rho, t, q, left);
}

std::int32_t cubic_newton(const Eos& eos, bool debug, int n, const double* z, double& rho, double& t) {
  constexpr int limit = 200;
  constexpr double tolerance = 1e-12, accepted = 0.001;
  const double drho = 1e-4 * rho;
  int left = most_matrices(n);
  Matrix q;
  double c = 0;
  for (int pass = 1;;) {
    fluid::Vector dn{};
    if (const auto ierr = det_q_newton(eos, debug, n, z, rho, t, q.data(), left); ierr > 0) return ierr;
    c = cubic_form_of(eos, n, z, t, rho, q, dn);
    double shifted_t = t;
    if (const auto ierr = det_q_newton(eos, debug, n, z, rho + drho, shifted_t, q.data(), left); ierr > 0) return ierr;
    const double c2 = cubic_form_of(eos, n, z, shifted_t, rho + drho, q, dn);
    if (debug) std::printf("cubic form: pass %d, T = %.10g K, rho = %.10g 1/A3, c = %.6g\n", pass, t, rho, c);
    const double next = rho - drho * c / (c2 - c), rho_before = rho;
    if (!std::isfinite(next)) break;
    const double eta = eos::calc_eta_rho(eos, n, z, 0, t, next);
    if (eta < 1e-5)
      rho = eos::calc_rho_eta(eos, n, z, 0, t, 2e-5);
    else if (eta > 0.7)
      rho = eos::calc_rho_eta(eos, n, z, 0, t, 0.4);
    else
      rho = next;
    ++pass;
    // Steps of the rounding of the form lead nowhere.
    if (!(std::abs(c) > tolerance) || std::abs(next - rho_before) < 1e-12 * rho) break;
    // The cubic form takes four.
    if (pass > limit || (left -= 8) < 0) break;
  }
  return std::abs(c) > accepted || std::isnan(c) ? cubic_not_converged : 0;
}

namespace {

/// No other phase lies below the tangent plane of the critical one.
bool is_stable(const Eos& eos, int n, const double* z, double t, double rho) {
  const flash::Conditions c{eos, n, t, eos::calc_p_rho(eos, n, z, t, rho)};
  if (!(c.p > 0)) return false;  // a liquid under tension
  flash::Phase phase;
  std::copy_n(z, n, phase.x.begin());
  eos::calc_lnphi_tprho(eos, n, z, t, c.p, rho, phase.lnphi.data());
  const fluid::Vector d = flash::log_fugacities(n, phase);
  const double* known[] = {z};
  const flash::Trial other = flash::search_widely(c, z, d.data(), known, {}, {.ideal_gas = true});
  return !other.found || other.tm > -1e-6;
}

}  // namespace

bool critical_point(const Eos& eos, int n, const double* z, double t_start, double& t, double& rho) {
  return find_critical(eos, n, z, t_start, t, rho, is_stable);
}

Message critmixt_newton(const Eos& eos, int n, const double* z, Limits& limits) {
  constexpr double start_eta = 0.4;
  constexpr bool debug = false;
  const double start = limits.tc;
  double rho = eos::calc_rho_eta(eos, n, z, 0, start, start_eta);
  const auto ierr = cubic_newton(eos, debug, n, z, rho, limits.tc);
  double t = limits.tc, density = rho;
  bool found = ierr == 0 && refine_critical(eos, n, z, t, density) && is_stable(eos, n, z, t, density);
  if (!found) {
    ++eos.work.statistics.critical_scans;
    found = critical_point(eos, n, z, start, t, density);
  }
  if (found) {
    limits.tc = t;
    rho = density;
  }
  limits.rhoc = rho;
  limits.pc = eos::calc_p_rho(eos, n, z, limits.tc, rho);
  return found ? no_errors : "Critical point calulation failed...";
}

}  // namespace tessarel::envelope
