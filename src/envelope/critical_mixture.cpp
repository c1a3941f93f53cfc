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
#include "fluid/fluid_module.hpp"
#include "numerics/linear_algebra.hpp"

namespace tessarel::critical_point_module {

using fluid_module::record;
using numerics::determinant;
using numerics::solution_vector;

namespace {

constexpr std::int32_t cubic_not_converged = 320, determinant_not_converged = 321;

using Matrix = std::array<double, fluid_module::nmax * fluid_module::nmax>;

/// a and its derivatives by mole numbers at constant density, orders up to K; arrays from the caller's arena frame.
struct AmountDerivatives {
  double a;
  double *first, *second, *third;
};
template <int K>
AmountDerivatives by_amounts(int n, const double* z, double t, double rho) {
  using eos::arena;
  const auto size = static_cast<std::size_t>(n);
  eos::MixtureState<double> state;
  eos::prepare(state, n, z, 0, t);
  eos::CompositionDerivatives<double> x;
  x.first = arena.take<double>(size);
  x.second = arena.take<double>(size * size);
  if (K >= 3) x.third = arena.take<double>(size * size * size);
  eos::composition_derivatives<K>(state, rho, x);
  AmountDerivatives d{x.a, arena.take<double>(size), arena.take<double>(size * size), nullptr};
  eos::project_first(size, z, x.first, d.first);
  double* work = arena.take<double>(size * (size + 2));
  eos::project_second(size, z, x.first, x.second, work, d.second);
  if constexpr (K >= 3) {
    d.third = arena.take<double>(size * size * size);
    eos::project_third(size, z, x.first, x.second, x.third, work, d.third);
  }
  return d;
}

/// Q_ij = a_ij + 2 (a + a_i + a_j), scaled with t^3 / 1e6.
void form_q(int n, const double* z, double t, double rho, double* q) {
  const Arena::Frame frame(eos::arena);
  const auto d = by_amounts<2>(n, z, t, rho);
  const double scale = t * t * t / 1e6;
  for (int i = 0; i < n; ++i)
    for (int j = 0; j < n; ++j) q[i + n * j] = (d.second[i * n + j] + 2.0 * (d.a + d.first[i] + d.first[j])) * scale;
}

/// Sum of C_ijk dn_i dn_j dn_k with C_ijk = a_ijk + 3 (a_ij + a_ik + a_jk) + 6 (a + a_i + a_j + a_k).
double cubic_form(int n, const double* z, double t, double rho, const double* dn) {
  const Arena::Frame frame(eos::arena);
  const auto d = by_amounts<3>(n, z, t, rho);
  double c = 0;
  for (int i = 0; i < n; ++i)
    for (int j = 0; j < n; ++j)
      for (int k = 0; k < n; ++k)
        c += (d.third[(i * n + j) * n + k] + 3.0 * (d.second[i * n + j] + d.second[i * n + k] + d.second[j * n + k]) +
              6.0 * (d.a + d.first[i] + d.first[j] + d.first[k])) *
             dn[i] * dn[j] * dn[k];
  return c;
}

}  // namespace

std::int32_t det_q_newton(bool debug, int n, const double* z, double rho, double& t, double* q) {
  constexpr int limit = 100;
  constexpr double tolerance = 1e-5, lowest = 120.0;
  std::int32_t ierr = 0;
  const double dt = 1e-4 * t;
  for (int pass = 1;;) {
    Matrix shifted;
    double d0 = 0, d1 = 0;
    form_q(n, z, t + dt, rho, shifted.data());
    ierr = std::max(ierr, determinant(n, shifted.data(), d1));
    form_q(n, z, t, rho, q);
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

std::int32_t cubic_newton(bool debug, int n, const double* z, double& rho, double& t) {
  constexpr int limit = 200;
  constexpr double tolerance = 1e-12, accepted = 0.001;
  using namespace calc_vrho_module;
  const double drho = 1e-4 * rho;
  Matrix q;
  fluid_module::Vector dn{};
  double c = 0;
  for (int pass = 1;;) {
    if (const auto ierr = det_q_newton(debug, n, z, rho, t, q.data()); ierr > 0) return ierr;
    solution_vector(n, q.data(), dn.data());
    c = cubic_form(n, z, t, rho, dn.data());
    double shifted_t = t;
    if (const auto ierr = det_q_newton(debug, n, z, rho + drho, shifted_t, q.data()); ierr > 0) return ierr;
    solution_vector(n, q.data(), dn.data());
    const double c2 = cubic_form(n, z, shifted_t, rho + drho, dn.data());
    if (debug) std::printf("cubic form: pass %d, T = %.10g K, rho = %.10g 1/A3, c = %.6g\n", pass, t, rho, c);
    const double next = rho - drho * c / (c2 - c);
    const double eta = calc_eta_rho(n, z, 0, t, next);
    if (eta < 1e-5)
      rho = calc_rho_eta(n, z, 0, t, 2e-5);
    else if (eta > 0.7)
      rho = calc_rho_eta(n, z, 0, t, 0.4);
    else
      rho = next;
    ++pass;
    if (!(std::abs(c) > tolerance)) break;
    if (pass > limit) break;
  }
  return std::abs(c) > accepted || std::isnan(c) ? cubic_not_converged : 0;
}

Message critmixt_newton() {
  constexpr double start_eta = 0.4;
  constexpr bool debug = false;
  const int n = record.n;
  const double* z = record.z.data();
  double rho = calc_vrho_module::calc_rho_eta(n, z, 0, record.tc, start_eta);
  const auto ierr = cubic_newton(debug, n, z, rho, record.tc);
  record.rhoc = rho;
  record.pc = calc_p_module::calc_p_rho(n, z, record.tc, rho);
  return ierr != 0 ? "Critical point calulation failed..." : no_errors;
}

}  // namespace tessarel::critical_point_module
