// The reduced residual Helmholtz energy a and the compressibility factor z of a prepared state: the sums over the
// terms. The number type decides what comes out: with a density of type Taylor<1, 2>, say, the result carries z, z_rho
// and z_rhorho.
//
// Each evaluation has two steps, which hosts can call apart: the values of the terms, and their sum.
#pragma once

#include "eos/mixture_state.hpp"

namespace tessarel::eos {

/// The result type of a temperature-dependent T and a density-dependent R: the one that carries derivatives.
template <class T, class R>
using Wider = std::conditional_t<numerics::is_taylor<R>, R, T>;

// Derivatives by temperature and density of a number that carries them: one variable, or t and rho as two.
template <class N>
auto d_dt(const N& f) {
  return f.c[1];
}
template <class N>
auto d2_dt2(const N& f) {
  if constexpr (N::variables == 2)
    return numerics::derivative(f, 2, 0);
  else
    return numerics::derivative(f, 2);
}
template <class N>
auto d_drho(const N& f) {
  return f.c[N::variables];
}
template <class N>
auto d2_drho2(const N& f) {
  if constexpr (N::variables == 2)
    return numerics::derivative(f, 0, 2);
  else
    return numerics::derivative(f, 2);
}
template <class N>
auto d2_dtdrho(const N& f) {
  return numerics::derivative(f, 1, 1);
}

/// The parts of a, or of z - 1, by terms; 0 where a term is not present.
template <class N>
struct TermValues {
  std::array<N, Terms::count> part;
  int status;  ///< of the site iteration
};

template <class T, class R>
Point<Wider<T, R>> point_at(const MixtureState<T>& s, const R& density, double tolerance) {
  using N = Wider<T, R>;
  // Each part is made in its place: copies of numbers just written would hold the processor up (taylor.hpp,
  // `variable`).
  return {N(density), density * s.zeta_rho[3], inverse(1.0 - density * s.zeta_rho[3]), tolerance};
}

/// Calls f(term) for each term that is present.
template <class T, class F>
void each_term(const MixtureState<T>& s, F&& f) {
  std::apply([&f](const auto&... term) { ((term.present ? f(term) : void()), ...); }, s.terms);
}

/// The sum of f(term).
template <class N, class T, class F>
N sum_of_terms(const MixtureState<T>& s, F&& f) {
  return std::apply(
      [&f](const auto& first, const auto& second, const auto&... further) {
        N sum = f(first) + f(second);
        ((further.present ? void(sum += f(further)) : void()), ...);
        return sum;
      },
      s.terms);
}

/// The values f(term, point) of all terms.
template <class T, class R, class F>
TermValues<Wider<T, R>> term_values(const MixtureState<T>& s, const R& rho, double tolerance, F&& f) {
  using N = Wider<T, R>;
  auto q = point_at(s, rho, tolerance);
  TermValues<N> values;
  std::apply([&](const auto&... term) { values.part = {(term.present ? N(f(term, q)) : N(0.0))...}; }, s.terms);
  values.status = q.status;
  return values;
}
template <class T, class R>
auto term_values_of_a(const MixtureState<T>& s, const R& rho) {
  return term_values(s, rho, site_tolerance(value(rho)), [&s](const auto& term, auto& q) { return term.a(s, q); });
}
template <class T, class R>
auto term_values_of_z(const MixtureState<T>& s, const R& rho) {
  return term_values(s, rho, site_tolerance(value(rho)), [&s](const auto& term, auto& q) { return term.z(s, q); });
}

/// a, or z - 1, from the values of the terms.
template <class N>
N assemble(const TermValues<N>& values) {
  N sum(0.0);
  for (const N& part : values.part) sum += part;
  return sum;
}

/// a at a prepared state and density. The tolerance of the site iteration depends on the number density; the pure paths
/// hand in that of the packing fraction instead.
template <class T, class R>
Wider<T, R> residual_a(const MixtureState<T>& s, const R& rho, double tolerance) {
  auto q = point_at(s, rho, tolerance);
  return sum_of_terms<Wider<T, R>>(s, [&](const auto& term) { return term.a(s, q); });
}
template <class T, class R>
Wider<T, R> residual_a(const MixtureState<T>& s, const R& rho) {
  return residual_a(s, rho, site_tolerance(value(rho)));
}

/// z at a prepared state and density.
template <class T, class R>
Wider<T, R> residual_z(const MixtureState<T>& s, const R& rho) {
  auto q = point_at(s, rho, site_tolerance(value(rho)));
  return sum_of_terms<Wider<T, R>>(s, [&](const auto& term) { return term.z(s, q); }) + 1.0;
}

}  // namespace tessarel::eos
