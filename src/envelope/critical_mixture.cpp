// The two-level search for a mixture critical point on the conditions of Heidemann & Khalil (1980) in Helmholtz form:
// an inner iteration on the temperature makes Q singular at a density, an outer one on the density makes the cubic form
// of its null vector vanish.
#include <array>
#include <cmath>
#include <cstdio>

#include "envelope/critical_point.hpp"
#include "eos/composition.hpp"
#include "eos/density.hpp"
#include "eos/mole_numbers.hpp"
#include "eos/pressure.hpp"
#include "numerics/linear_algebra.hpp"

namespace tessarel::envelope {

using eos::Eos;
using fluid::Limits;
using numerics::determinant;
using numerics::solution_vector;

namespace {

constexpr std::int32_t cubic_not_converged = 320, determinant_not_converged = 321;

using Matrix = std::array<double, fluid::nmax * fluid::nmax>;

/// a and its derivatives by mole numbers at constant density, orders up to K; arrays from the caller's arena frame.
template <int K>
eos::CompositionDerivatives<double> by_amounts(const Eos& eos, int n, const double* z, double t, double rho) {
  Arena& arena = eos.arena();
  const auto size = fluid::at(n);
  const auto taken = [&] {
    eos::CompositionDerivatives<double> d;
    d.first = arena.take<double>(size);
    d.second = {arena.take<double>(size * size), size};
    if (K >= 3) d.third = {arena.take<double>(size * size * size), size};
    return d;
  };
  eos::MixtureState<double> state;
  eos::prepare(eos, state, n, z, 0, t);
  auto x = taken(), d = taken();
  eos::composition_derivatives<K>(state, rho, x);
  d.a = x.a;
  double* work = arena.take<double>(size * (size + 2));
  eos::project_first(size, z, x.first, d.first);
  eos::project_second(z, x.first, x.second, work, d.second);
  if constexpr (K >= 3) eos::project_third(z, x.first, x.second, x.third, work, d.third);
  return d;
}

/// Q_ij = a_ij + 2 (a + a_i + a_j), scaled with t^3 / 1e6.
void form_q(const Eos& eos, int n, const double* z, double t, double rho, double* q) {
  const Arena::Frame frame(eos.arena());
  const auto d = by_amounts<2>(eos, n, z, t, rho);
  const numerics::HostSquare<double> matrix{q, fluid::at(n)};
  const double scale = t * t * t / 1e6;
  for (std::size_t i = 0; i < matrix.n; ++i)
    for (std::size_t j = 0; j < matrix.n; ++j)
      matrix(i, j) = (d.second(i, j) + 2.0 * (d.a + d.first[i] + d.first[j])) * scale;
}

/// Sum of C_ijk dn_i dn_j dn_k with C_ijk = a_ijk + 3 (a_ij + a_ik + a_jk) + 6 (a + a_i + a_j + a_k).
double cubic_form(const Eos& eos, int n, const double* z, double t, double rho, const double* dn) {
  const Arena::Frame frame(eos.arena());
  const auto d = by_amounts<3>(eos, n, z, t, rho);
  const auto size = fluid::at(n);
  double c = 0;
  for (std::size_t i = 0; i < size; ++i)
    for (std::size_t j = 0; j < size; ++j)
      for (std::size_t k = 0; k < size; ++k)
        c += (d.third(i, j, k) + 3.0 * (d.second(i, j) + d.second(i, k) + d.second(j, k)) +
              6.0 * (d.a + d.first[i] + d.first[j] + d.first[k])) *
             dn[i] * dn[j] * dn[k];
  return c;
}

}  // namespace

std::int32_t det_q_newton(const Eos& eos, bool debug, int n, const double* z, double rho, double& t, double* q) {
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
    if (pass > limit) return determinant_not_converged;
  }
}

std::int32_t cubic_newton(const Eos& eos, bool debug, int n, const double* z, double& rho, double& t) {
  constexpr int limit = 200;
  constexpr double tolerance = 1e-12, accepted = 0.001;
  const double drho = 1e-4 * rho;
  Matrix q;
  fluid::Vector dn{};
  double c = 0;
  for (int pass = 1;;) {
    if (const auto ierr = det_q_newton(eos, debug, n, z, rho, t, q.data()); ierr > 0) return ierr;
    solution_vector(n, q.data(), dn.data());
    c = cubic_form(eos, n, z, t, rho, dn.data());
    double shifted_t = t;
    if (const auto ierr = det_q_newton(eos, debug, n, z, rho + drho, shifted_t, q.data()); ierr > 0) return ierr;
    solution_vector(n, q.data(), dn.data());
    const double c2 = cubic_form(eos, n, z, shifted_t, rho + drho, dn.data());
    if (debug) std::printf("cubic form: pass %d, T = %.10g K, rho = %.10g 1/A3, c = %.6g\n", pass, t, rho, c);
    const double next = rho - drho * c / (c2 - c);
    const double eta = eos::calc_eta_rho(eos, n, z, 0, t, next);
    if (eta < 1e-5)
      rho = eos::calc_rho_eta(eos, n, z, 0, t, 2e-5);
    else if (eta > 0.7)
      rho = eos::calc_rho_eta(eos, n, z, 0, t, 0.4);
    else
      rho = next;
    ++pass;
    if (!(std::abs(c) > tolerance)) break;
    if (pass > limit) break;
  }
  return std::abs(c) > accepted || std::isnan(c) ? cubic_not_converged : 0;
}

Message critmixt_newton(const Eos& eos, int n, const double* z, Limits& limits) {
  constexpr double start_eta = 0.4;
  constexpr bool debug = false;
  double rho = eos::calc_rho_eta(eos, n, z, 0, limits.tc, start_eta);
  const auto ierr = cubic_newton(eos, debug, n, z, rho, limits.tc);
  limits.rhoc = rho;
  limits.pc = eos::calc_p_rho(eos, n, z, limits.tc, rho);
  return ierr != 0 ? "Critical point calulation failed..." : no_errors;
}

}  // namespace tessarel::envelope
