// The machinery of the derivative families: building-block functions whose members are told apart only by the
// variables they are differentiated by.
//
// A member is a list of slots, one for each order of differentiation: 't' temperature, 'r' density, 'e' packing
// fraction, 'x' a mole fraction (last). <'t', 'x'> is the mixed second derivative by t and x(p). A formula is evaluated
// over numbers with one first-order part for each slot, so that the coefficient of all parts together is the member:
// Taylor numbers of first order, nested. What a family takes are quantities with their derivatives; the arguments of a
// member follow from its slots, in one order everywhere: for each combination of slots, by rising order and with t
// before rho before x, the derivatives of the inputs that depend on it.
#pragma once

#include <array>

#include "blocks/context.hpp"
#include "numerics/taylor.hpp"

namespace tessarel::blocks {

namespace detail {
template <int L>
struct NestedDual {
  using type = Taylor<1, 1, typename NestedDual<L - 1>::type>;
};
template <>
struct NestedDual<0> {
  using type = double;
};
}  // namespace detail

/// A number with first-order parts in L slots; part `mask` belongs to the product of the slots whose bits are set.
template <int L>
using Dual = typename detail::NestedDual<L>::type;

/// The number whose parts are `part(mask)`.
template <int L, class F>
Dual<L> make_dual(F&& part, unsigned mask = 0) {
  if constexpr (L == 0) {
    return part(mask);
  } else {
    Dual<L> r;
    r.c[0] = make_dual<L - 1>(part, mask);
    r.c[1] = make_dual<L - 1>(part, mask | 1U << (L - 1));
    return r;
  }
}

/// The part that belongs to all slots together.
inline double top(double a) {
  return a;
}
template <class S>
double top(const Taylor<1, 1, S>& a) {
  return top(a.c[1]);
}

/// Orders of differentiation by t, by rho or eta, and by x.
struct Orders {
  int t = 0, r = 0, x = 0;
  constexpr bool operator==(const Orders&) const = default;
  [[nodiscard]] constexpr bool within(const Orders& o) const { return t <= o.t && r <= o.r && x <= o.x; }
};

template <char... V>
struct Slots {
  static constexpr int count = sizeof...(V);
  static constexpr std::array<char, sizeof...(V) + 1> kind{V..., '\0'};
  static constexpr Orders orders{(0 + ... + (V == 't')), (0 + ... + (V == 'r' || V == 'e')), (0 + ... + (V == 'x'))};
  static constexpr int plain = count - orders.x;  ///< slots other than x, which stand in front
  static constexpr bool has(char kind_of_slot) { return (false || ... || (V == kind_of_slot)); }
};

/// A quantity that a family takes: `factor` n^`rank` values. The host passes derivatives up to `highest`; with `lower`,
/// only orders below the member's own.
struct Input {
  int rank = 0, factor = 1;
  Orders highest{};
  bool lower = false;

  [[nodiscard]] constexpr std::size_t size(int n) const {
    std::size_t s = at(factor);
    for (int i = 0; i < rank; ++i) s *= at(n);
    return s;
  }
  [[nodiscard]] constexpr bool has(const Orders& orders, const Orders& member) const {
    return orders.within(highest) && !(lower && orders == member);
  }
};

/// All combinations of orders, in the order of the arguments.
inline constexpr auto& combinations = numerics::detail::Monomials<3, 4>::exponents;
constexpr Orders combination(std::size_t c) {
  return {combinations[c][0], combinations[c][1], combinations[c][2]};
}

/// Calls f(input, combination) for each array argument of a member, in turn.
template <std::size_t Inputs, class F>
constexpr void for_arguments(const std::array<Input, Inputs>& inputs, const Orders& member, F&& f) {
  for (std::size_t c = 0; c < combinations.size(); ++c)
    if (combination(c).within(member))
      for (std::size_t i = 0; i < Inputs; ++i)
        if (inputs[i].has(combination(c), member)) f(i, c);
}

template <std::size_t Inputs>
constexpr std::size_t argument_count(const std::array<Input, Inputs>& inputs, const Orders& member) {
  std::size_t count = 0;
  for_arguments(inputs, member, [&count](std::size_t, std::size_t) { ++count; });
  return count;
}

/// The arguments of one evaluation, as numbers over the slots.
template <class Family, char... V>
class Arguments {
 public:
  using S = Slots<V...>;
  using Plain = Dual<S::plain>;  ///< numbers over the slots other than x
  using Full = Dual<S::count>;   ///< numbers over all slots

  Arguments(const Scope& s, const double* const* arrays) : scope(s) {
    // As many arrays as argument_count, which the analyzer cannot follow.
    for_arguments(Family::inputs, S::orders, [&](std::size_t i, std::size_t c) {
      table_[i][c] = *arrays++;  // NOLINT(clang-analyzer-core.uninitialized.Assign)
    });
  }

  const Scope scope;
  [[nodiscard]] const fluid::Parameters& parameters() const { return scope.eos.parameters(); }
  [[nodiscard]] Arena& arena() const { return scope.eos.arena(); }
  [[nodiscard]] const eos::MeanSegments& means() const { return scope.eos.work.means; }

  std::array<int, S::count + 1> p{};  ///< by slot: the component of an x slot

  /// Entry `k` of input `i` with its derivatives, all or without those by x; the latter by one fraction if `extra` >=
  /// 0.
  [[nodiscard]] Full full(std::size_t i, std::size_t k) const {
    return make_dual<S::count>([&](unsigned mask) { return part(i, k, mask, -1); });
  }
  [[nodiscard]] Plain plain(std::size_t i, std::size_t k, int extra = -1) const {
    return make_dual<S::plain>([&](unsigned mask) { return part(i, k, mask, extra); });
  }
  /// A variable itself: `value`, and first order in its slots.
  [[nodiscard]] Full variable(double value, char kind, int component = 0) const {
    return make_dual<S::count>([&](unsigned mask) { return mask == 0 ? value : unit(mask, kind, component); });
  }
  /// First-order parts in the slots of `kind` alone.
  [[nodiscard]] Plain shift(char kind) const {
    return make_dual<S::plain>([&](unsigned mask) { return unit(mask, kind, 0); });
  }
  [[nodiscard]] double value(std::size_t i, std::size_t k = 0) const { return table_[i][0][k]; }

  /// A component alone: by ipure, or because there is no other.
  [[nodiscard]] bool single() const { return scope.ipure > 0 || scope.n == 1; }
  /// The components that a sum runs over.
  [[nodiscard]] int first() const { return scope.ipure > 0 ? scope.ipure - 1 : 0; }
  [[nodiscard]] int last() const { return scope.ipure > 0 ? scope.ipure : scope.n; }

 private:
  /// 1 for a single slot of that kind and component.
  [[nodiscard]] double unit(unsigned mask, char kind, int component) const {
    if (mask == 0 || (mask & (mask - 1)) != 0) return 0.0;
    std::size_t slot = 0;
    while ((mask >> slot) != 1U) ++slot;
    return S::kind[slot] == kind && (kind != 'x' || p[slot] == component) ? 1.0 : 0.0;
  }
  [[nodiscard]] double part(std::size_t i, std::size_t k, unsigned mask, int extra) const {
    Orders o;
    std::size_t offset = 0, stride = Family::inputs[i].size(scope.n);
    const auto by_component = [&](int component) {
      ++o.x;
      offset += stride * at(component);
      stride *= at(scope.n);
    };
    for (std::size_t slot = 0; slot < at(S::count); ++slot) {
      if ((mask >> slot & 1U) == 0) continue;
      if (S::kind[slot] == 't')
        ++o.t;
      else if (S::kind[slot] == 'x')
        by_component(p[slot]);
      else
        ++o.r;
    }
    if (extra >= 0) by_component(extra);
    const double* array = table_[i][numerics::detail::Monomials<3, 4>::index({o.t, o.r, o.x})];
    return array == nullptr ? 0.0 : array[k + offset];
  }

  std::array<std::array<const double*, combinations.size()>, Family::inputs.size()> table_{};
};

/// n^order, the combinations of components of an x derivative.
constexpr std::size_t power_of(int n, int order) {
  std::size_t s = 1;
  for (int i = 0; i < order; ++i) s *= at(n);
  return s;
}

}  // namespace tessarel::blocks
