#include "eos/helmholtz.hpp"

#include "eos/composition.hpp"
#include "eos/mole_numbers.hpp"

namespace tessarel::eos {

using numerics::derivative;
using numerics::variable;

namespace {

/// a with its derivatives by t up to order K.
template <int K>
Taylor<1, K> a_by_t(const Eos& eos, int n, const double* x, double t, double rho) {
  using N = Taylor<1, K>;
  const Arena::Frame frame(eos.arena());
  MixtureState<N> state;
  prepare(eos, state, n, x, 0, variable<N>(t));
  return residual_a(state, rho);
}

/// The derivative of order K by rho.
template <int K>
double a_by_rho(const Eos& eos, int n, const double* x, double t, double rho) {
  const Arena::Frame frame(eos.arena());
  MixtureState<double> state;
  prepare(eos, state, n, x, 0, t);
  return derivative(residual_a(state, variable<Taylor<1, K>>(rho)), K);
}

/// Composition derivatives at (t, rho), either of which may be a number with derivatives.
template <int K, class T, class R>
void by_composition(const Eos& eos, int n, const double* x, const T& t, const R& rho,
                    CompositionDerivatives<Wider<T, R>>& out) {
  MixtureState<T> state;
  prepare(eos, state, n, x, 0, t);
  composition_derivatives<K>(state, rho, out);
}

/// First-order composition derivatives of the first derivative by the variable that t or rho carries.
template <class T, class R>
void mixed_first(const Eos& eos, int n, const double* x, const T& t, const R& rho, double* out) {
  using S = Wider<T, R>;
  const Arena::Frame frame(eos.arena());
  CompositionDerivatives<S> d;
  d.first = eos.arena().take<S>(at(n));
  by_composition<1>(eos, n, x, t, rho, d);
  for (int i = 0; i < n; ++i) out[i] = derivative(d.first[i], 1);
}

}  // namespace

double calc_a(const Eos& eos, int n, const double* x, double t, double rho) {
  const Arena::Frame frame(eos.arena());
  MixtureState<double> state;
  prepare(eos, state, n, x, 0, t);
  return residual_a(state, rho);
}

double calc_da_dt(const Eos& eos, int n, const double* x, double t, double rho) {
  return derivative(a_by_t<1>(eos, n, x, t, rho), 1);
}
double calc_d2a_dt2(const Eos& eos, int n, const double* x, double t, double rho) {
  return derivative(a_by_t<2>(eos, n, x, t, rho), 2);
}
double calc_d3a_dt3(const Eos& eos, int n, const double* x, double t, double rho) {
  return derivative(a_by_t<3>(eos, n, x, t, rho), 3);
}
void calc_a_da_dt(const Eos& eos, int n, const double* x, double t, double rho, double& a, double& a_t) {
  const auto value = a_by_t<1>(eos, n, x, t, rho);
  a = derivative(value, 0);
  a_t = d_dt(value);
}
void calc_a_dt12(const Eos& eos, int n, const double* x, double t, double rho, double& a, double& a1, double& a2) {
  const auto value = a_by_t<2>(eos, n, x, t, rho);
  a = derivative(value, 0);
  a1 = d_dt(value);
  a2 = d2_dt2(value);
}
void calc_da_dt123(const Eos& eos, int n, const double* x, double t, double rho, double& a1, double& a2, double& a3) {
  const auto a = a_by_t<3>(eos, n, x, t, rho);
  a1 = derivative(a, 1);
  a2 = derivative(a, 2);
  a3 = derivative(a, 3);
}

double calc_da_drho(const Eos& eos, int n, const double* x, double t, double rho) {
  return a_by_rho<1>(eos, n, x, t, rho);
}
double calc_d2a_drho2(const Eos& eos, int n, const double* x, double t, double rho) {
  return a_by_rho<2>(eos, n, x, t, rho);
}
double calc_d3a_drho3(const Eos& eos, int n, const double* x, double t, double rho) {
  return a_by_rho<3>(eos, n, x, t, rho);
}
double calc_d4a_drho4(const Eos& eos, int n, const double* x, double t, double rho) {
  return a_by_rho<4>(eos, n, x, t, rho);
}

void calc_da_dx(const Eos& eos, int n, const double* x, double t, double rho, double* a_x) {
  const Arena::Frame frame(eos.arena());
  CompositionDerivatives<double> d;
  d.first = a_x;
  by_composition<1>(eos, n, x, t, rho, d);
}

void calc_d2a_dxdx(const Eos& eos, int n, const double* x, double t, double rho, double* a_xx) {
  const Arena::Frame frame(eos.arena());
  CompositionDerivatives<double> d;
  d.first = eos.arena().take<double>(at(n));
  d.second = {a_xx, at(n)};
  by_composition<2>(eos, n, x, t, rho, d);
}

void calc_d3a_dxdxdx(const Eos& eos, int n, const double* x, double t, double rho, double* a_xxx) {
  const Arena::Frame frame(eos.arena());
  CompositionDerivatives<double> d;
  d.first = eos.arena().take<double>(at(n));
  d.second = {eos.arena().take<double>(at(n * n)), at(n)};
  d.third = {a_xxx, at(n)};
  by_composition<3>(eos, n, x, t, rho, d);
}

void calc_d2a_dtdx(const Eos& eos, int n, const double* x, double t, double rho, double* a_tx) {
  mixed_first(eos, n, x, variable<Taylor<1, 1>>(t), rho, a_tx);
}

void calc_d2a_drhodx(const Eos& eos, int n, const double* x, double t, double rho, double* a_rhox) {
  mixed_first(eos, n, x, t, variable<Taylor<1, 1>>(rho), a_rhox);
}

void calc_da_dn(const Eos& eos, int n, const double* x, double t, double rho, double* a_n) {
  calc_da_dx(eos, n, x, t, rho, a_n);
  project_first(at(n), x, a_n, a_n);
}

void calc_d2a_dndn(const Eos& eos, int n, const double* x, double t, double rho, double* a_nn) {
  const Arena::Frame frame(eos.arena());
  CompositionDerivatives<double> d;
  d.first = eos.arena().take<double>(at(n));
  d.second = {eos.arena().take<double>(at(n * n)), at(n)};
  by_composition<2>(eos, n, x, t, rho, d);
  project_second(x, d.first, d.second, eos.arena().take<double>(at(n)), {a_nn, at(n)});
}

void calc_d3a_dndndn(const Eos& eos, int n, const double* x, double t, double rho, double* a_nnn) {
  const Arena::Frame frame(eos.arena());
  CompositionDerivatives<double> d;
  d.first = eos.arena().take<double>(at(n));
  d.second = {eos.arena().take<double>(at(n * n)), at(n)};
  d.third = {eos.arena().take<double>(at(n * n * n)), at(n)};
  by_composition<3>(eos, n, x, t, rho, d);
  project_third(x, d.first, d.second, d.third, eos.arena().take<double>(at(n * (n + 2))), {a_nnn, at(n)});
}

}  // namespace tessarel::eos
