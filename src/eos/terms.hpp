// The terms of the equation of state.
#pragma once

#include <tuple>
#include <type_traits>

#include "eos/association.hpp"
#include "eos/dispersion.hpp"
#include "eos/hard_chain.hpp"
#include "eos/polar.hpp"

namespace tessarel::eos {

template <class... Term>
struct TermList {
  static constexpr std::size_t count = sizeof...(Term);
  using Tables = std::tuple<typename Term::Tables...>;
  template <class T>
  using States = std::tuple<typename Term::template State<T>...>;
  /// The objects of the terms for the composition derivatives of a state.
  template <int K, class T, class S>
  static auto compositions(const MixtureState<T>& s) {
    // Each is made in place from the state: they are too large to be copied.
    const auto from_state = [&s](auto) -> const MixtureState<T>& { return s; };
    return std::tuple<typename Term::template Composition<K, T, S>...>(from_state(std::type_identity<Term>{})...);
  }
};

/// The list, in the order of the sum. The first two are always present. A further term: its file, and its name here.
using Terms = TermList<HardChain, Dispersion, Association, Polar>;

}  // namespace tessarel::eos
