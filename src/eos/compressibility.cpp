#include "eos/compressibility.hpp"

#include "eos/composition.hpp"
#include "eos/density.hpp"
#include "eos/mole_numbers.hpp"
#include "eos/pressure.hpp"

namespace tessarel::calc_z_module {

using namespace eos;
using numerics::derivative;
using numerics::variable;

namespace {

/// z with derivatives by rho up to order K.
template <int K>
Taylor<1, K> z_by_rho(int n, const double* x, int ipure, double t, double rho) {
  const Arena::Frame frame(arena);
  MixtureState<double> state;
  prepare(state, n, x, ipure, t);
  return residual_z(state, variable<Taylor<1, K>>(rho));
}

/// z_x, as rho times the density slope of a_x; returns a with derivatives by rho up to order K.
template <int K>
Taylor<1, K> a_rho_x(int n, const double* x, double t, double rho, double* z_x) {
  using S = Taylor<1, K>;
  const Arena::Frame frame(arena);
  MixtureState<double> state;
  prepare(state, n, x, 0, t);
  CompositionDerivatives<S> d;
  d.first = arena.take<S>(at(n));
  composition_derivatives<1>(state, variable<S>(rho), d);
  for (int i = 0; i < n; ++i) z_x[i] = rho * d.first[i].c[1];
  return d.a;
}

/// z with derivatives by t up to order K.
template <int K>
Taylor<1, K> z_by_t(int n, const double* x, double t, double rho) {
  using N = Taylor<1, K>;
  const Arena::Frame frame(arena);
  MixtureState<N> state;
  prepare(state, n, x, 0, variable<N>(t));
  return residual_z(state, rho);
}

}  // namespace

double calc_z(int n, const double* x, int ipure, double t, double rho) {
  const Arena::Frame frame(arena);
  MixtureState<double> state;
  prepare(state, n, x, ipure, t);
  return residual_z(state, rho);
}

double calc_dz_drho(int n, const double* x, int ipure, double t, double rho) {
  return derivative(z_by_rho<1>(n, x, ipure, t, rho), 1);
}
double calc_d2z_drho2(int n, const double* x, int ipure, double t, double rho) {
  return derivative(z_by_rho<2>(n, x, ipure, t, rho), 2);
}
double calc_d3z_drho3(int n, const double* x, int ipure, double t, double rho) {
  return derivative(z_by_rho<3>(n, x, ipure, t, rho), 3);
}
double calc_dz_dt(int n, const double* x, double t, double rho) {
  return derivative(z_by_t<1>(n, x, t, rho), 1);
}
double calc_d2z_dt2(int n, const double* x, double t, double rho) {
  return derivative(z_by_t<2>(n, x, t, rho), 2);
}

ValueAndSlope calc_z_first_t(int n, const double* x, double t, double rho) {
  const auto z = z_by_t<1>(n, x, t, rho);
  return {z.c[0], z.c[1]};
}
ValueAndSlope calc_z_first_rho(int n, const double* x, double t, double rho) {
  const auto z = z_by_rho<1>(n, x, 0, t, rho);
  return {z.c[0], z.c[1]};
}

ValueAndSlope calc_z_rho_x(int n, const double* x, double t, double rho, double* z_x) {
  const auto a = a_rho_x<2>(n, x, t, rho, z_x);
  return {1.0 + rho * a.c[1], a.c[1] + 2.0 * rho * a.c[2]};
}

DensityDerivatives calc_z_rho123(int n, const double* x, int ipure, double t, double rho) {
  const auto z = z_by_rho<3>(n, x, ipure, t, rho);
  return {derivative(z, 0), derivative(z, 1), derivative(z, 2), derivative(z, 3)};
}

namespace {

/// z over t and rho together, up to second order; by t alone up to order K.
template <int K>
Taylor<2, 2> z_by_t_and_rho(int n, const double* x, double t, double rho) {
  using T = Taylor<1, K>;
  using N = Taylor<2, 2>;
  const Arena::Frame frame(arena);
  MixtureState<T> state;
  prepare(state, n, x, 0, variable<T>(t));
  return residual_z(lifted_state<N>(state), variable<N>(rho, 1));
}

}  // namespace

ZDerivatives calc_z_second(int n, const double* x, double t, double rho) {
  const auto z = z_by_t_and_rho<2>(n, x, t, rho);
  return {derivative(z, 0, 0), derivative(z, 1, 0), derivative(z, 2, 0),
          derivative(z, 0, 1), derivative(z, 0, 2), derivative(z, 1, 1)};
}

double calc_d2z_dtdrho(int n, const double* x, double t, double rho) {
  return derivative(z_by_t_and_rho<1>(n, x, t, rho), 1, 1);
}

void calc_dz_dx(int n, const double* x, double t, double rho, double* z_x) {
  a_rho_x<1>(n, x, t, rho, z_x);
}

namespace {

/// z_x and z_xx, as rho times the density slopes of a_x and a_xx.
void z_by_composition(int n, const double* x, double t, double rho, double* z_x, double* z_xx) {
  using S = Taylor<1, 1>;
  MixtureState<double> state;
  prepare(state, n, x, 0, t);
  CompositionDerivatives<S> d;
  d.first = arena.take<S>(at(n));
  d.second = arena.take<S>(at(n * n));
  composition_derivatives<2>(state, variable<S>(rho), d);
  for (int i = 0; i < n; ++i) z_x[i] = rho * d.first[i].c[1];
  for (int i = 0; i < n * n; ++i) z_xx[i] = rho * d.second[i].c[1];
}

}  // namespace

void calc_d2z_dxdx(int n, const double* x, double t, double rho, double* z_xx) {
  const Arena::Frame frame(arena);
  z_by_composition(n, x, t, rho, arena.take<double>(at(n)), z_xx);
}

void calc_d2z_dndn(int n, const double* x, double t, double rho, double* z_nn) {
  const Arena::Frame frame(arena);
  double* z_x = arena.take<double>(at(n));
  double* z_xx = arena.take<double>(at(n * n));
  z_by_composition(n, x, t, rho, z_x, z_xx);
  project_second(at(n), x, z_x, z_xx, arena.take<double>(at(n)), z_nn);
}

void step_amount(int n, const double* x, int i, double factor, double* stepped) {
  const double step = factor > 1.0 ? AmountStep::size : -AmountStep::size;
  for (int k = 0; k < n; ++k) stepped[k] = (k == i ? x[k] + step : x[k]) / factor;
}

void calc_dz_dn(int n, const double* x, double t, double rho, double* z_n) {
  fluid_module::Vector stepped;
  const auto z_at = [&](int i, double factor) {
    step_amount(n, x, i, factor, stepped.data());
    return calc_z(n, stepped.data(), 0, t, factor * rho);
  };
  for (int i = 0; i < n; ++i) z_n[i] = (z_at(i, AmountStep::up) - z_at(i, AmountStep::down)) / (2.0 * AmountStep::size);
}

double calc_dz_dp(int n, const double* x, double t, double p) {
  double rho = 0;
  calc_vrho_module::calc_rho(n, x, t, p, 2, rho);
  const auto z = z_by_rho<1>(n, x, 0, t, rho);
  return derivative(z, 1) / (fluid_module::pressure_factor * t * (rho * derivative(z, 1) + z.c[0]));
}

}  // namespace tessarel::calc_z_module
