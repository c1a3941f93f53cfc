// Every member of the families of building blocks: a value against its published form, a derivative against a
// difference of the member one order below.
//
// The inputs of a family are invented smooth functions of t, rho and x whose derivatives are known: products of
// exponentials, or linear where the quantity is linear (packing fraction and moments in rho and x). So a member is
// called as a host calls it, with consistent arguments. The list of the members is that of the exports.
#include <gtest/gtest.h>

#include <cmath>
#include <functional>
#include <map>
#include <set>

#include "blocks/arrays.hpp"
#include "common/test_fluid.hpp"
#include "tessarel/blocks.h"

namespace tessarel {
namespace {

using blocks::Orders, fluid::at, testing::current, testing::parameters;
using Values = std::vector<double>;

struct Point {
  double t, rho;
  Values x;
};
/// n, component alone, power of a moment.
struct Scope {
  int n, ipure, power;
};

/// A quantity: entry k is size (1 + 0.1 sin k) f(t) g(rho) h(x).
struct Quantity {
  enum Kind { constant, linear, exponential };
  double size;
  Kind by_t, by_rho, by_x;

  [[nodiscard]] double value(std::size_t k, const Point& p, const Orders& o, const std::vector<int>& components) const {
    const double kk = static_cast<double>(k);
    double value = size * (1.0 + 0.1 * std::sin(kk));
    const double alpha = (0.6 + 0.2 * std::cos(kk)) / 300.0, beta = 40.0 + 5.0 * std::cos(2.0 * kk);
    value *= one(by_t, p.t - 300.0, alpha, o.t) * one(by_rho, p.rho, beta, o.r);
    double exponent = 0, sum = 0, slopes = 1;
    for (std::size_t i = 0; i < p.x.size(); ++i) {
      exponent += slope(k, i) * p.x[i];
      sum += (1.0 + 0.3 * slope(k, i)) * p.x[i];
    }
    for (const int i : components) slopes *= slope(k, at(i));
    if (by_x == exponential) return value * std::exp(exponent) * slopes;
    if (components.empty()) return by_x == linear ? value * sum : value;
    return by_x == linear && components.size() == 1 ? value * (1.0 + 0.3 * slopes) : 0.0;
  }

 private:
  static double slope(std::size_t k, std::size_t i) { return std::sin(1.0 + static_cast<double>(k + 3 * i)); }
  static double one(Kind kind, double v, double rate, int order) {
    if (kind == exponential) return std::exp(rate * v) * std::pow(rate, order);
    if (kind == linear) return order == 0 ? v : order == 1 ? 1.0 : 0.0;
    return order == 0 ? 1.0 : 0.0;
  }
};

constexpr auto C = Quantity::constant, L = Quantity::linear, X = Quantity::exponential;
const Quantity eta{30.0, X, L, L}, zeta2{10.0, X, L, L}, diameter{3.5, X, C, C}, energy{250.0, X, C, C},
    sigma{3.6, C, C, C}, contact{2.0, X, X, X}, strength{60.0, X, X, X}, integral{0.7, X, X, X},
    mean_diameter{3.5, X, C, X};
const Quantity fractions{}, temperature{}, density{}, lower{};  // taken from the point, or from the member itself

const std::map<std::string, std::vector<const Quantity*>> inputs = {
    {"chi", {&eta}},
    {"a_hs", {&eta}},
    {"z_hs", {&eta}},
    {"g", {&eta}},
    {"c1", {&eta}},
    {"intgpert", {&eta}},
    {"gij", {&diameter, &zeta2, &eta}},
    {"dij", {&diameter}},
    {"zeta", {&fractions, &density, &diameter}},
    {"d_avg", {&fractions, &diameter}},
    {"eta_simp", {&fractions, &density, &mean_diameter}},
    {"sigeps", {&temperature}},
    {"pertterm", {&fractions, &temperature, &sigma, &energy}},
    {"deltaab", {&temperature, &sigma, &contact}},
    {"xnhb", {&fractions, &density, &strength, &lower}},
    {"j2j3", {&temperature, &eta, &energy}},
    {"a2a3", {&fractions, &temperature, &density, &integral, &integral}},
};

struct Member {
  std::string name, slots;
  std::function<std::vector<Values>(const Point&, const Scope&)> arguments;  ///< the arrays
  std::function<Values(const Point&, const Scope&)> evaluate;                ///< all outputs, one behind the other
  std::function<std::vector<std::size_t>(int)> sizes;                        ///< of the outputs
};
struct Family {
  bool scaled = false;  ///< derivatives by rho carry rho
  std::vector<Member> members;

  [[nodiscard]] const Member* find(std::string slots) const {
    std::sort(slots.begin(), slots.end());
    const auto it = std::find_if(members.begin(), members.end(), [&](const Member& m) { return m.slots == slots; });
    return it == members.end() ? nullptr : &*it;
  }
};
using Table = std::map<std::string, Family>;
const Table& table();

/// The arrays of a member at a point; derivatives of lower order of the family itself come from its members.
template <class F, char... V>
std::vector<Values> arrays_of(const std::string& family, const Point& p, const Scope& s) {
  std::vector<Values> arrays;
  blocks::for_arguments(F::inputs, blocks::Slots<V...>::orders, [&](std::size_t i, std::size_t c) {
    const Orders o = blocks::combination(c);
    const Quantity* q = inputs.at(family).at(i);
    Values& values = arrays.emplace_back();
    if (q == &fractions) {
      values = p.x;
    } else if (q == &temperature || q == &density) {
      values = {q == &density ? p.rho : p.t};
    } else if (q == &lower) {
      const std::string slots = std::string(at(o.r), 'r') + std::string(at(o.t), 't') + std::string(at(o.x), 'x');
      values = table().at(family).find(slots)->evaluate(p, s);
    } else {
      for (std::size_t flat = 0; flat < blocks::power_of(s.n, o.x); ++flat) {
        std::vector<int> components;
        for (int k = 0, rest = static_cast<int>(flat); k < o.x; ++k, rest /= s.n) components.push_back(rest % s.n);
        for (std::size_t k = 0; k < F::inputs[i].size(s.n); ++k) values.push_back(q->value(k, p, o, components));
      }
    }
  });
  return arrays;
}

/// The arguments of a call in order, by their types: counts, arrays, outputs, the status.
struct Call {
  std::vector<Values> arrays, outs;
  std::array<std::int32_t, 3> integers;
  std::int32_t status = 0;
  std::size_t integer = 0, array = 0, out = 0;

  template <class P>
  P next() {
    if constexpr (std::is_same_v<P, const std::int32_t*>)
      return &integers.at(integer++);
    else if constexpr (std::is_same_v<P, std::int32_t*>)
      return &status;
    else if constexpr (std::is_same_v<P, const double*>)
      return arrays.at(array++).data();
    else
      return outs.at(out++).data();
  }
};

template <class F, char... V, class... P>
void add(Table& all, const std::string& family, const std::string& name, void (*routine)(P...)) {
  Member m{name, {V...}, {}, {}, {}};
  std::sort(m.slots.begin(), m.slots.end());
  m.sizes = [](int n) {
    std::vector<std::size_t> sizes;
    for (std::size_t k = 0; k < F::outputs; ++k)
      sizes.push_back(blocks::output_size<F>(k, n) * blocks::power_of(n, blocks::Slots<V...>::orders.x));
    return sizes;
  };
  m.arguments = [family](const Point& p, const Scope& s) { return arrays_of<F, V...>(family, p, s); };
  m.evaluate = [=, arguments = m.arguments, sizes = m.sizes](const Point& p, const Scope& s) {
    Call call{arguments(p, s), {}, {s.n, s.ipure, s.power}};
    for (const std::size_t size : sizes(s.n)) call.outs.emplace_back(size);
    tessarel_set_mmean(&s.n, p.x.data(), &s.ipure);
    std::tuple<P...> in_order{call.next<P>()...};
    std::apply(routine, in_order);
    EXPECT_TRUE(call.array == call.arrays.size() && call.out == call.outs.size() && call.status == 0) << name;
    Values values;
    for (const Values& out : call.outs) values.insert(values.end(), out.begin(), out.end());
    return values;
  };
  all[family].scaled = requires {
    F::moments;
  };
  all[family].members.push_back(m);
}

const Table& table() {
  static const Table filled = [] {
    Table all;
#define MEMBER(name, family, ...) add<blocks::family __VA_OPT__(, ) __VA_ARGS__>(all, #family, #name, tessarel_##name);
#include "members.inc"
#undef MEMBER
    // The two members whose arguments differ from those of their family.
    all["sigeps"].members.push_back({"calc_sigeps",
                                     "",
                                     all["sigeps"].members[0].arguments,
                                     [](const Point& p, const Scope& s) {
                                       Values eps(at(s.n)), sig(eps.size() * eps.size()), eps_ij(sig.size());
                                       tessarel_calc_sigeps(&s.n, &s.ipure, &p.t, eps.data(), sig.data(),
                                                            eps_ij.data());
                                       eps.insert(eps.end(), eps_ij.begin(), eps_ij.end());
                                       return eps;
                                     },
                                     {}});
    all["c1"].members.push_back({"calc_dc1_deta",
                                 "e",
                                 {},
                                 [](const Point& p, const Scope& s) {
                                   const double value = eta.value(0, p, {}, {});
                                   const double c1 = table().at("c1").find("")->evaluate(p, s)[0];
                                   Values slope(1);
                                   tessarel_calc_dc1_deta(&value, &c1, slope.data());
                                   return slope;
                                 },
                                 {}});
    return all;
  }();
  return filled;
}

double largest(const Values& values) {
  double size = 0;
  for (const double v : values) size = std::max(size, std::abs(v));
  return size;
}

constexpr double relative_step = 5e-4;  ///< of the differences: relative to t and rho, absolute in the fractions

/// The fourth-order central difference of `f` by a step parameter, with the steps -2, -1, 1, 2.
Values difference(const std::function<Values(double)>& f, double h) {
  const Values a = f(-2 * h), b = f(-h), c = f(h), d = f(2 * h);
  Values slope(a.size());
  for (std::size_t k = 0; k < a.size(); ++k) slope[k] = (a[k] - 8 * b[k] + 8 * c[k] - d[k]) / (12 * h);
  return slope;
}

/// The member from the one below it, by the variable `kind`.
Values from_below(const std::string& name, bool scaled, const Member& m, const Member& below, char kind, const Point& p,
                  const Scope& s) {
  const auto moved = [&](double dt, double drho) { return below.evaluate({p.t + dt, p.rho + drho, p.x}, s); };
  if (kind == 't') return difference([&](double h) { return moved(h, 0); }, relative_step * p.t);
  if (kind == 'x') {
    // The new index is the last of each output.
    Values all;
    std::size_t start = 0;
    for (const std::size_t size : m.sizes(s.n)) {
      for (int i = 0; i < s.n; ++i) {
        const Values column = difference(
            [&](double h) {
              Point q = p;
              q.x[at(i)] += h;
              return below.evaluate(q, s);
            },
            relative_step);
        const auto from = column.begin() + static_cast<std::ptrdiff_t>(start);
        all.insert(all.end(), from, from + static_cast<std::ptrdiff_t>(size / at(s.n)));
      }
      start += size / at(s.n);
    }
    return all;
  }
  // By rho: a scaled member below carries its factors, and so does this one. By eta: the density is the cause; the
  // integrals are multiplied by eta first.
  const auto order = static_cast<double>(std::count(below.slots.begin(), below.slots.end(), 'r'));
  const bool times_eta = name == "intgpert" && kind == 'e' && below.slots.empty();
  Values slope = difference(
      [&](double h) {
        Values v = moved(0, h);
        for (double& value : v) {
          if (scaled) value /= std::pow(p.rho + h, order);
          if (times_eta) value *= eta.value(0, {p.t, p.rho + h, p.x}, {}, {});
        }
        return v;
      },
      relative_step * p.rho);
  const std::size_t packing = name == "gij" ? 2 : 0;
  const double eta_slope = kind == 'e' ? inputs.at(name)[packing]->value(0, p, {0, 1, 0}, {}) : 1.0;
  for (double& value : slope) value *= scaled && kind == 'r' ? std::pow(p.rho, order + 1) : 1.0 / eta_slope;
  return slope;
}

struct State {
  const char* components;
  const char* kij;
  bool simplified;
  Point point;
  int ipure, power;
};
const std::vector<State> states = {
    {"water:0.3|acetone:0.45|carbon dioxide:0.25", "1;2:1111|2;3:0.05", false, {290, 0.009, {0.3, 0.45, 0.25}}, 0, 3},
    {"methanol:0.6|water:0.4", "1;2:1112", false, {410, 0.002, {0.6, 0.4}}, 0, 2},
    {"acetone:0.5|three sites:0.5", "", true, {350, 0.012, {0.5, 0.5}}, 0, 1},
    {"water:0.3|acetone:0.45|carbon dioxide:0.25", "", false, {330, 0.01, {0.3, 0.45, 0.25}}, 1, 3},
    {"water:0.3|acetone:0.45|carbon dioxide:0.25", "", false, {330, 0.01, {0.3, 0.45, 0.25}}, 3, 0},
    {"three sites:1", "", false, {300, 0.008, {1.0}}, 0, 2},
};
Scope select(const State& s) {
  testing::select_reference(current(), testing::Mixture(s.components), s.kij, s.simplified);
  return {parameters().n, s.ipure, s.power};
}

TEST(Members, AreDerivativesOfTheMembersBelow) {
  std::set<std::string> unchecked;
  for (const auto& [name, family] : table())
    for (const Member& m : family.members)
      if (!m.slots.empty()) unchecked.insert(m.name);
  EXPECT_GT(unchecked.size(), 200U);
  for (const State& state : states) {
    const Scope s = select(state);
    const bool single = s.n == 1 || s.ipure > 0;
    for (const auto& [name, family] : table()) {
      for (const Member& m : family.members) {
        const bool by_density_only = m.slots.find_first_of("tx") == std::string::npos;
        if (single && m.slots.find('x') != std::string::npos) continue;
        for (const char kind : std::set<char>(m.slots.begin(), m.slots.end())) {
          if ((kind == 'r' || kind == 'e') && !by_density_only) continue;
          std::string slots = m.slots;
          slots.erase(slots.find(kind), 1);
          const Member* below = family.find(slots);
          if (below == nullptr) continue;
          const Values expected = from_below(name, family.scaled, m, *below, kind, state.point, s);
          const Values actual = m.evaluate(state.point, s);
          ASSERT_EQ(expected.size(), actual.size()) << m.name;
          // Truncation is h^4/30 of the fifth derivative: with 5e-4 of t and exponentials of up to 10 epsil/t about
          // 2e-10 of the member. Rounding is some 1e-16 of the member below over the step, times the cancellation in
          // the member below itself.
          const double step = relative_step * (kind == 't' ? state.point.t : kind == 'x' ? 1.0 : state.point.rho);
          const double unit = family.scaled && kind == 'r' ? state.point.rho
                              : kind == 'e'                ? state.point.rho / 0.3
                                                           : 1.0;
          const double tolerance = 3e-10 * std::max(largest(actual), 1e-300) +
                                   3e-14 * largest(below->evaluate(state.point, s)) * unit / step;
          for (std::size_t k = 0; k < actual.size(); ++k)
            EXPECT_NEAR(actual[k], expected[k], tolerance)
                << m.name << " by " << kind << " entry " << k << " of " << state.components;
          unchecked.erase(m.name);
        }
      }
    }
  }
  EXPECT_TRUE(unchecked.empty()) << *unchecked.begin() << " was not checked";
}

/// The values that are no part of a, where assembled_test.cpp would prove them: Gross & Sadowski 2001 (doi
/// 10.1021/ie0003887).
TEST(Members, ValuesAreThePublishedForms) {
  for (const State& state : states) {
    const Scope s = select(state);
    if (s.ipure > 0) continue;
    const auto moment = [&](const Values& d, int k) {
      double sum = 0;
      for (std::size_t i = 0; i < d.size(); ++i) sum += state.point.x[i] * parameters().mseg[i] * std::pow(d[i], k);
      return sum;
    };
    const auto check = [&](const char* name, auto form) {
      const Member& m = *table().at(name).find("");
      const double expected = form(m.arguments(state.point, s));
      EXPECT_NEAR(m.evaluate(state.point, s).at(0), expected, 1e-13 * expected) << name << " of " << state.components;
    };
    using In = const std::vector<Values>&;
    const Values ones(state.point.x.size(), 1.0);
    check("chi", [](In in) { return in[0][0] / (1 - in[0][0]); });
    check("z_hs", [](In in) { return in[0][0] * (4 - 2 * in[0][0]) / std::pow(1 - in[0][0], 3); });
    check("d_avg", [&](In in) { return std::cbrt(moment(in[1], 3) / moment(ones, 0)); });
    check("eta_simp", [&](In in) { return fluid::pi_6 * in[1][0] * moment(ones, 0) * std::pow(in[2][0], 3); });
  }
}

// With n below the number of selected components the results are those of the first n alone.
TEST(Members, ReadTheFirstComponentsAlone) {
  for (const auto& [first, more] :
       {std::pair{"methanol:0.4|acetone:0.6", "carbon dioxide:0.2"}, std::pair{"methane:0.4|n-butane:0.6", "water:1"},
        std::pair{"carbon dioxide:0.4|methane:0.6", "acetone:1"}}) {
    const Point point{320, 0.008, {0.4, 0.6}};
    std::map<std::string, Values> alone;
    for (const std::string& all : {std::string(first), first + std::string("|") + more}) {
      testing::select_reference(current(), testing::Mixture(all));
      for (const auto& [name, family] : table())
        for (const Member& m : family.members) {
          const auto [known, added] = alone.try_emplace(m.name, m.evaluate(point, {2, 0, 2}));
          EXPECT_TRUE(added || known->second == m.evaluate(point, {2, 0, 2})) << m.name << " of " << all;
        }
    }
  }
}

}  // namespace
}  // namespace tessarel
