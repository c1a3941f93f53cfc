#include "eos/compressibility.hpp"

#include "eos/composition.hpp"
#include "eos/density.hpp"
#include "eos/mole_numbers.hpp"
#include "eos/pressure.hpp"

namespace tessarel::eos {

using numerics::derivative;
using numerics::variable;

namespace {

/// z with derivatives by rho up to order K.
template <int K>
Taylor<1, K> z_by_rho(const Eos& eos, int n, const double* x, int ipure, double t, double rho) {
  const Arena::Frame frame(eos.arena());
  MixtureState<double> state;
  prepare(eos, state, n, x, ipure, t);
  return residual_z(state, variable<Taylor<1, K>>(rho));
}

/// z_x, as rho times the density slope of a_x; returns a with derivatives by rho up to order K.
template <int K>
Taylor<1, K> a_rho_x(const Eos& eos, int n, const double* x, double t, double rho, double* z_x) {
  using S = Taylor<1, K>;
  const Arena::Frame frame(eos.arena());
  MixtureState<double> state;
  prepare(eos, state, n, x, 0, t);
  CompositionDerivatives<S> d;
  d.first = eos.arena().take<S>(at(n));
  composition_derivatives<1>(state, variable<S>(rho), d);
  for (int i = 0; i < n; ++i) z_x[i] = rho * d_drho(d.first[i]);
  return d.a;
}

/// z with derivatives by t up to order K.
template <int K>
Taylor<1, K> z_by_t(const Eos& eos, int n, const double* x, double t, double rho) {
  using N = Taylor<1, K>;
  const Arena::Frame frame(eos.arena());
  MixtureState<N> state;
  prepare(eos, state, n, x, 0, variable<N>(t));
  return residual_z(state, rho);
}

}  // namespace

double calc_z(const Eos& eos, int n, const double* x, int ipure, double t, double rho) {
  const Arena::Frame frame(eos.arena());
  MixtureState<double> state;
  prepare(eos, state, n, x, ipure, t);
  return residual_z(state, rho);
}

double calc_dz_drho(const Eos& eos, int n, const double* x, int ipure, double t, double rho) {
  return derivative(z_by_rho<1>(eos, n, x, ipure, t, rho), 1);
}
double calc_d2z_drho2(const Eos& eos, int n, const double* x, int ipure, double t, double rho) {
  return derivative(z_by_rho<2>(eos, n, x, ipure, t, rho), 2);
}
double calc_d3z_drho3(const Eos& eos, int n, const double* x, int ipure, double t, double rho) {
  return derivative(z_by_rho<3>(eos, n, x, ipure, t, rho), 3);
}
double calc_dz_dt(const Eos& eos, int n, const double* x, double t, double rho) {
  return derivative(z_by_t<1>(eos, n, x, t, rho), 1);
}
double calc_d2z_dt2(const Eos& eos, int n, const double* x, double t, double rho) {
  return derivative(z_by_t<2>(eos, n, x, t, rho), 2);
}

ValueAndSlope calc_z_first_t(const Eos& eos, int n, const double* x, double t, double rho) {
  const auto z = z_by_t<1>(eos, n, x, t, rho);
  return {value(z), d_dt(z)};
}
ValueAndSlope calc_z_first_rho(const Eos& eos, int n, const double* x, double t, double rho) {
  const auto z = z_by_rho<1>(eos, n, x, 0, t, rho);
  return {value(z), d_drho(z)};
}

ValueAndSlope calc_z_rho_x(const Eos& eos, int n, const double* x, double t, double rho, double* z_x) {
  const auto a = a_rho_x<2>(eos, n, x, t, rho, z_x);
  return {1.0 + rho * d_drho(a), d_drho(a) + rho * d2_drho2(a)};
}

DensityDerivatives calc_z_rho123(const Eos& eos, int n, const double* x, int ipure, double t, double rho) {
  const Arena::Frame frame(eos.arena());
  MixtureState<double> state;
  prepare(eos, state, n, x, ipure, t);
  return z_rho123(state, rho);
}

DensityDerivatives z_rho123(const MixtureState<double>& state, double rho) {
  const auto z = residual_z(state, variable<Taylor<1, 3>>(rho));
  return {derivative(z, 0), derivative(z, 1), derivative(z, 2), derivative(z, 3)};
}

namespace {

/// z over t and rho together, up to second order; by t alone up to order K.
template <int K>
Taylor<2, 2> z_by_t_and_rho(const Eos& eos, int n, const double* x, double t, double rho) {
  using T = Taylor<1, K>;
  using N = Taylor<2, 2>;
  const Arena::Frame frame(eos.arena());
  MixtureState<T> state;
  prepare(eos, state, n, x, 0, variable<T>(t));
  return residual_z(lifted_state<N>(state), variable<N>(rho, 1));
}

}  // namespace

ZDerivatives calc_z_second(const Eos& eos, int n, const double* x, double t, double rho) {
  const auto z = z_by_t_and_rho<2>(eos, n, x, t, rho);
  return {value(z), d_dt(z), d2_dt2(z), d_drho(z), d2_drho2(z), d2_dtdrho(z)};
}

double calc_d2z_dtdrho(const Eos& eos, int n, const double* x, double t, double rho) {
  return d2_dtdrho(z_by_t_and_rho<1>(eos, n, x, t, rho));
}

void calc_dz_dx(const Eos& eos, int n, const double* x, double t, double rho, double* z_x) {
  a_rho_x<1>(eos, n, x, t, rho, z_x);
}

namespace {

/// z_x and z_xx, as rho times the density slopes of a_x and a_xx.
void z_by_composition(const Eos& eos, int n, const double* x, double t, double rho, double* z_x, double* z_xx) {
  using S = Taylor<1, 1>;
  MixtureState<double> state;
  prepare(eos, state, n, x, 0, t);
  CompositionDerivatives<S> d;
  d.first = eos.arena().take<S>(at(n));
  d.second = {eos.arena().take<S>(at(n * n)), at(n)};
  composition_derivatives<2>(state, variable<S>(rho), d);
  for (int i = 0; i < n; ++i) z_x[i] = rho * d_drho(d.first[i]);
  for (int i = 0; i < n * n; ++i) z_xx[i] = rho * d_drho(d.second.data[i]);
}

}  // namespace

void calc_d2z_dxdx(const Eos& eos, int n, const double* x, double t, double rho, double* z_xx) {
  const Arena::Frame frame(eos.arena());
  z_by_composition(eos, n, x, t, rho, eos.arena().take<double>(at(n)), z_xx);
}

void calc_d2z_dndn(const Eos& eos, int n, const double* x, double t, double rho, double* z_nn) {
  const Arena::Frame frame(eos.arena());
  double* z_x = eos.arena().take<double>(at(n));
  double* z_xx = eos.arena().take<double>(at(n * n));
  z_by_composition(eos, n, x, t, rho, z_x, z_xx);
  project_second(x, z_x, {z_xx, at(n)}, eos.arena().take<double>(at(n)), {z_nn, at(n)});
}

void step_amount(int n, const double* x, int i, double factor, double* stepped) {
  const double step = factor > 1.0 ? AmountStep::size : -AmountStep::size;
  for (int k = 0; k < n; ++k) stepped[k] = (k == i ? x[k] + step : x[k]) / factor;
}

void calc_dz_dn(const Eos& eos, int n, const double* x, double t, double rho, double* z_n) {
  Vector stepped;
  const auto z_at = [&](int i, double factor) {
    step_amount(n, x, i, factor, stepped.data());
    return calc_z(eos, n, stepped.data(), 0, t, factor * rho);
  };
  for (int i = 0; i < n; ++i) z_n[i] = (z_at(i, AmountStep::up) - z_at(i, AmountStep::down)) / (2.0 * AmountStep::size);
}

double calc_dz_dp(const Eos& eos, int n, const double* x, double t, double p) {
  double rho = 0;
  calc_rho(eos, n, x, t, p, 2, rho);
  const auto z = z_by_rho<1>(eos, n, x, 0, t, rho);
  return d_drho(z) / (pressure_factor * t * (rho * d_drho(z) + value(z)));
}

}  // namespace tessarel::eos
