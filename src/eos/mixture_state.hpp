// The part of the equation of state that is fixed while the density varies: what temperature and composition alone
// decide. Every evaluation is made of a MixtureState and a function of the density on it; the density iteration
// prepares once and evaluates many times.
//
// T is the number type of the temperature: double, or a Taylor number that carries derivatives by t.
#pragma once

#include <array>
#include <cassert>
#include <cmath>

#include "eos/model.hpp"

namespace tessarel::eos {

/// The components an evaluation sums over: all of a mixture, or one alone at weight 1.
struct Components {
  int count = 0;
  std::array<int, nmax> index;  ///< places in the model
  std::array<double, nmax> x;   ///< fractions; for a component alone 1
  bool single = false;          ///< one diameter: the closed forms apply

  /// The place of component `i` of the model, -1 when the component is not among these.
  [[nodiscard]] int place(int i) const {
    if (single) return index[0] == i ? 0 : -1;
    return i < count ? i : -1;
  }
};

/// `ipure` = 0: the mixture `x` of `n` components (x is not read for n = 1); i of 1 or more: component i alone.
inline void select_components(Components& c, int n, const double* x, int ipure) {
  c.single = ipure > 0 || n == 1;
  if (c.single) {
    c.count = 1;
    c.index[0] = ipure > 0 ? ipure - 1 : 0;
    c.x[0] = 1.0;
    return;
  }
  c.count = n;
  for (int i = 0; i < n; ++i) {
    c.index[at(i)] = i;
    c.x[at(i)] = x[i];
  }
}
inline Components select_components(int n, const double* x, int ipure) {
  Components c;
  select_components(c, n, x, ipure);
  return c;
}

/// The components and their diameters, and the prepared state of each term.
template <class T>
struct MixtureState {
  const Eos* eos;  ///< the model and the workspace of the evaluations on this state
  int n, ipure;    ///< as handed to `prepare`

  Components comp;
  T t, inverse_t;
  bool closed = false;  ///< closed forms of one diameter: a component alone, or the simplified model

  double mbar = 0;            ///< mean segment number
  std::array<T, nmax> d;      ///< segment diameters
  T sum_d, sum_d2;            ///< sum of x_i m_i d_i and of x_i m_i d_i^2
  std::array<T, 4> zeta_rho;  ///< [k] zeta_k / rho for k of 1 to 3; zeta_rho[3] converts a number density to eta
  T rho_eta;                  ///< 1 / zeta_rho[3]: rho per eta

  Terms::States<T> terms;

  [[nodiscard]] const fluid::Parameters& parameters() const { return eos->model.parameters; }
  [[nodiscard]] Arena& arena() const { return eos->work.arena; }
  template <class Term>
  [[nodiscard]] const typename Term::Tables& tables() const {
    return eos->model.of<Term>();
  }
  template <class Term>
  [[nodiscard]] const typename Term::template State<T>& term() const {
    return std::get<typename Term::template State<T>>(terms);
  }
  template <class Term>
  [[nodiscard]] typename Term::template State<T>& term() {
    return std::get<typename Term::template State<T>>(terms);
  }

  /// k_ij of the contact value of two components, by their places.
  [[nodiscard]] T contact_k(int i, int j) const {
    if (closed) return T(0.5);
    if (i == j) return term<HardChain>().k[at(i)];
    return zeta_rho[2] * rho_eta * (d[at(i)] * d[at(j)] / (d[at(i)] + d[at(j)]));
  }
};

/// The diameters and their moments, for the state's temperature and components.
template <class T>
void prepare_diameters(MixtureState<T>& s) {
  const Components& c = s.comp;
  const fluid::Parameters& p = s.parameters();
  s.closed = c.single || s.eos->simplified;
  double mbar = 0;
  T z1(0.0), z2(0.0), z3(0.0);
  for (int i = 0; i < c.count; ++i) {
    const auto k = at(c.index[at(i)]);
    const double xm = c.x[at(i)] * p.mseg[k];
    const T d = segment_diameter(p, k, s.inverse_t);
    s.d[at(i)] = d;
    const T d1 = d * xm;
    const T d2 = d1 * d;
    z1 += d1;
    z2 += d2;
    z3 += d2 * d;
    mbar += xm;
  }
  s.mbar = mbar;
  s.sum_d = z1, s.sum_d2 = z2;
  s.zeta_rho[1] = z1 * pi_6, s.zeta_rho[2] = z2 * pi_6, s.zeta_rho[3] = z3 * pi_6;
  s.rho_eta = inverse(s.zeta_rho[3]);
}

/// Prepares temperature `t` and the composition of the first `n` components. Arrays of the terms belong to the caller's
/// arena frame; `eos` has to outlive the state.
template <class T>
void prepare(const Eos& eos, MixtureState<T>& s, int n, const double* x, int ipure, const T& t) {
  assert(n >= 1 && n <= nmax && ipure >= 0 && ipure <= nmax);
  s.eos = &eos;
  s.n = n, s.ipure = ipure;
  // In place: a copy would read in large words what has just been written in small ones, and wait for it.
  select_components(s.comp, n, x, ipure);
  s.t = t;
  s.inverse_t = inverse(t);
  prepare_diameters(s);
  std::apply([&s](auto&... term) { (term.prepare(s), ...); }, s.terms);
}

/// A state prepared over numbers T of the temperature alone, as one over numbers N whose variable 0 is the temperature:
/// cheaper than preparing over N. Arrays of the terms belong to the caller's arena frame.
template <class N, class T>
MixtureState<N> lifted_state(const MixtureState<T>& s) {
  using numerics::lifted;
  MixtureState<N> r;
  r.eos = s.eos;
  r.n = s.n, r.ipure = s.ipure;
  r.comp = s.comp;
  r.t = lifted<N>(s.t);
  r.inverse_t = lifted<N>(s.inverse_t);
  r.closed = s.closed;
  r.mbar = s.mbar;
  for (int i = 0; i < s.comp.count; ++i) r.d[at(i)] = lifted<N>(s.d[at(i)]);
  for (std::size_t k = 1; k < 4; ++k) r.zeta_rho[k] = lifted<N>(s.zeta_rho[k]);
  r.rho_eta = lifted<N>(s.rho_eta);
  [&]<std::size_t... I>(std::index_sequence<I...>) {
    (std::get<I>(r.terms).lift(std::get<I>(s.terms), s.arena()), ...);
  }
  (std::make_index_sequence<Terms::count>{});
  return r;
}

}  // namespace tessarel::eos
