// Preparing and assembling apart: the blocks of a state in an opaque record, and values made from it.
#pragma once

#include <variant>
#include <vector>

#include "eos/composition.hpp"
#include "interface/blocks_support.hpp"

namespace tessarel::interface {

using eos::TermValues;
using numerics::Taylor;
using T1 = Taylor<1, 1>;
using T2 = Taylor<1, 2>;
using T3 = Taylor<1, 3>;
using TaylorTRho = Taylor<2, 2>;

/// Composition derivatives up to `order`, their numbers with first derivatives by t or rho where the member has them.
template <class S>
struct CompositionBlocks {
  int order = 0;
  S a;
  std::array<std::vector<S>, 3> arrays;
};

/// The variable of the Taylor numbers in a record.
enum class By { nothing, t, rho, t_rho };
/// What a record is for. By composition z is made from the blocks of a.
enum class Value { a, z };

using Content = std::variant<std::monostate, TermValues<double>, TermValues<T1>, TermValues<T2>, TermValues<T3>,
                             TermValues<TaylorTRho>, CompositionBlocks<double>, CompositionBlocks<T1>>;

}  // namespace tessarel::interface

struct tessarel_blocks {
  int n = 0;
  tessarel::interface::By by = tessarel::interface::By::nothing;
  tessarel::interface::Value of = tessarel::interface::Value::a;
  tessarel::interface::Content content;
};

namespace tessarel::interface {

/// The number for t or rho: with derivatives up to K when `carries`.
template <class N, bool carries>
auto seed(double value, int v = 0) {
  if constexpr (carries)
    return numerics::variable<N>(value, v);
  else
    return value;
}

/// Prepares the blocks of a or z at t and rho, with derivatives of type N by what `by` says.
template <Value of, class N, By by>
int prepare_scalar(const eos::Eos& eos, int n, const double* x, int ipure, double t, double rho, tessarel_blocks& to) {
  constexpr bool by_t = by == By::t || by == By::t_rho, by_rho = by == By::rho || by == By::t_rho;
  const Arena::Frame frame(eos.arena());
  const auto temperature = seed<N, by_t>(t);
  const auto density = seed<N, by_rho>(rho, by_t ? 1 : 0);
  eos::MixtureState<std::remove_const_t<decltype(temperature)>> state;
  eos::prepare(eos, state, n, x, ipure, temperature);
  to.n = n, to.by = by, to.of = of;
  if constexpr (of == Value::z)
    to.content = eos::term_values_of_z(state, density);
  else
    to.content = eos::term_values_of_a(state, density);
  return std::get<TermValues<N>>(to.content).status;
}

/// Prepares the composition derivatives of a up to order K.
template <Value of, class S, By by, int K>
int prepare_composition(const eos::Eos& eos, int n, const double* x, int, double t, double rho, tessarel_blocks& to) {
  const Arena::Frame frame(eos.arena());
  const auto temperature = seed<S, by == By::t>(t);
  const auto density = seed<S, by == By::rho>(rho);
  eos::MixtureState<std::remove_const_t<decltype(temperature)>> state;
  eos::prepare(eos, state, n, x, 0, temperature);
  CompositionBlocks<S> c;
  c.order = K;
  for (int k = 0; k < K; ++k) c.arrays[fluid::at(k)].resize(blocks::power_of(n, k + 1));
  const auto size = fluid::at(n);
  eos::CompositionDerivatives<S> d{S(0.0), c.arrays[0].data(), {c.arrays[1].data(), size}, {c.arrays[2].data(), size}};
  eos::composition_derivatives<K>(state, density, d);
  c.a = d.a;
  to.n = n, to.by = by, to.of = of;
  to.content = std::move(c);
  if (!state.template term<eos::Association>().present) return 0;
  tessarel_blocks plain;  // for the status of the site iteration
  return prepare_scalar<Value::a, double, By::nothing>(eos, n, x, 0, t, rho, plain);
}

/// Fills a record by `fill`; a refused call leaves it empty.
template <class Fill>
void prepare(const int32_t* n, const double* x, const int32_t* ipure, const double* t, const double* rho,
             tessarel_blocks* blocks, int32_t* status, Fill fill) noexcept {
  int result = 1;
  Session& session = current_session();
  const bool refused = !valid_count(session, n) || !valid_pure(n, ipure) || any_null({x, t, rho, blocks});
  if (!run(refused, [&] { result = fill(session.eos(), *n, x, *ipure, *t, *rho, *blocks); }) && blocks != nullptr)
    blocks->n = 0;
  if (status != nullptr) *status = result;
}

/// Derivative of order (kt, kr) by t and rho of an assembled number; NaN when the record does not carry it.
template <class N>
double coefficient(const N& value, By by, int kt, int kr) {
  if constexpr (std::is_same_v<N, double>) {
    return kt == 0 && kr == 0 ? value : not_a_number;
  } else if constexpr (N::variables == 2) {
    return kt + kr <= N::order ? numerics::derivative(value, kt, kr) : not_a_number;
  } else {
    if ((by == By::t && kr > 0) || (by == By::rho && kt > 0) || kt + kr > N::order) return not_a_number;
    return numerics::derivative(value, kt + kr);
  }
}

/// A record is complete in itself: reading it needs no session.
inline bool suited(const int32_t* n, const double* x, const double* rho, const tessarel_blocks* blocks, Value of) {
  return !any_null({n, x, rho, blocks}) && *n >= 1 && blocks->n == *n && blocks->of == of;
}

/// A number made from a record.
inline void assemble(const int32_t* n, const double* x, const double* rho, const tessarel_blocks* blocks, Value of,
                     int kt, int kr, double* out) noexcept {
  scalar(!suited(n, x, rho, blocks, of), out, [&] {
    return std::visit(
        [&](const auto& b) {
          if constexpr (requires { eos::assemble(b); }) {
            const auto sum = eos::assemble(b);  // z - 1 of a record for z
            return coefficient(of == Value::z ? sum + 1.0 : sum, blocks->by, kt, kr);
          } else if constexpr (requires { b.arrays; }) {
            return of == Value::z ? (kt + kr == 0 ? 1.0 + *rho * coefficient(b.a, blocks->by, 0, 1) : not_a_number)
                                  : coefficient(b.a, blocks->by, kt, kr);
          } else {
            return not_a_number;
          }
        },
        blocks->content);
  });
}

/// An array of composition derivatives of order k made from a record. z_x is rho a_rhox.
inline void assemble_array(const int32_t* n, const double* x, const double* rho, const tessarel_blocks* blocks,
                           Value of, int kt, int order, double* out) noexcept {
  run(!suited(n, x, rho, blocks, of) || out == nullptr, [&] {
    std::visit(
        [&](const auto& b) {
          if constexpr (requires { b.arrays; }) {
            using S = typename std::decay_t<decltype(b.arrays[0])>::value_type;
            if (b.order < order || std::isnan(coefficient(S(0.0), blocks->by, kt, of == Value::z ? 1 : 0))) return;
            const auto& array = b.arrays[fluid::at(order - 1)];
            for (std::size_t i = 0; i < array.size(); ++i)
              out[i] = coefficient(array[i], blocks->by, kt, of == Value::z ? 1 : 0) * (of == Value::z ? *rho : 1.0);
          }
        },
        blocks->content);
  });
}

/// ipure of the routines that do not take it.
inline constexpr int32_t mixture = 0;

}  // namespace tessarel::interface
