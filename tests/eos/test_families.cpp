// Every member of the derivative families against a difference of the member one order below.
//
// The inputs of a family are invented smooth functions of t, rho and x whose derivatives are known: products of
// exponentials, or linear where the quantity is linear (packing fraction and moments in rho and x). So a member is
// called as a host calls it, with consistent arguments, and the table of members is the one that the exports are
// made from.
#include <gtest/gtest.h>

#include <cmath>
#include <functional>
#include <map>
#include <set>
#include <string>
#include <vector>

#include "common/reference_fluids.hpp"
#include "eos/family_arrays.hpp"
#include "tessarel/routines.h"

namespace tessarel {
namespace {

using families::Orders, families::Scope;
using fluid_module::record;
using Values = std::vector<double>;

struct Point {
  double t, rho;
  Values x;
};

/// A quantity: entry k is size (1 + 0.1 sin k) f(t) g(rho) h(x).
struct Quantity {
  enum Kind { constant, linear, exponential };
  double size;
  Kind by_t, by_rho, by_x;

  [[nodiscard]] double at(std::size_t k, const Point& p, const Orders& o, const std::vector<int>& components) const {
    const double kk = static_cast<double>(k);
    double value = size * (1.0 + 0.1 * std::sin(kk));
    const double alpha = (0.6 + 0.2 * std::cos(kk)) / 300.0, beta = 40.0 + 5.0 * std::cos(2.0 * kk);
    value *= one(by_t, p.t - 300.0, alpha, o.t) * one(by_rho, p.rho, beta, o.r);
    if (by_x == exponential) {
      for (std::size_t i = 0; i < p.x.size(); ++i) value *= std::exp(slope(k, i) * p.x[i]);
      for (const int i : components) value *= slope(k, static_cast<std::size_t>(i));
    } else if (by_x == linear) {
      double sum = 0;
      for (std::size_t i = 0; i < p.x.size(); ++i) sum += (1.0 + 0.3 * slope(k, i)) * p.x[i];
      if (components.size() == 1) sum = 1.0 + 0.3 * slope(k, static_cast<std::size_t>(components[0]));
      value *= components.size() > 1 ? 0.0 : sum;
    } else if (!components.empty()) {
      value = 0;
    }
    return value;
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
    sigma{3.6, C, C, C}, contact{2.0, X, X, X}, strength{60.0, X, X, X}, integral{0.7, X, X, X};
const Quantity fractions{}, temperature{}, density{}, lower{};  // taken from the point, or from the member itself

template <class Family>
const std::vector<const Quantity*> inputs_of;
const std::vector<const Quantity*> eta_only{&eta};
template <>
const std::vector<const Quantity*> inputs_of<families::chi> = eta_only;
template <>
const std::vector<const Quantity*> inputs_of<families::a_hs> = eta_only;
template <>
const std::vector<const Quantity*> inputs_of<families::z_hs> = eta_only;
template <>
const std::vector<const Quantity*> inputs_of<families::g> = eta_only;
template <>
const std::vector<const Quantity*> inputs_of<families::c1> = eta_only;
template <>
const std::vector<const Quantity*> inputs_of<families::intgpert> = eta_only;
template <>
const std::vector<const Quantity*> inputs_of<families::gij> = {&diameter, &zeta2, &eta};
template <>
const std::vector<const Quantity*> inputs_of<families::dij> = {&diameter};
template <>
const std::vector<const Quantity*> inputs_of<families::zeta> = {&fractions, &density, &diameter};
const Quantity mean_diameter{3.5, X, C, X};
template <>
const std::vector<const Quantity*> inputs_of<families::d_avg> = {&fractions, &diameter};
template <>
const std::vector<const Quantity*> inputs_of<families::eta_simp> = {&fractions, &density, &mean_diameter};
template <>
const std::vector<const Quantity*> inputs_of<families::sigeps> = {&temperature};
template <>
const std::vector<const Quantity*> inputs_of<families::pertterm> = {&fractions, &temperature, &sigma, &energy};
template <>
const std::vector<const Quantity*> inputs_of<families::deltaab> = {&temperature, &sigma, &contact};
template <>
const std::vector<const Quantity*> inputs_of<families::xnhb> = {&fractions, &density, &strength, &lower};
template <>
const std::vector<const Quantity*> inputs_of<families::j2j3> = {&temperature, &eta, &energy};
template <>
const std::vector<const Quantity*> inputs_of<families::a2a3> = {&fractions, &temperature, &density, &integral,
                                                                &integral};

enum class Shape { plain, plain2, n, n2, pure, pure2, mixture2, sites, zeta };

/// All outputs of a member at a point, one behind the other.
using Evaluate = std::function<Values(const Point&, const Scope&)>;

struct Member {
  std::string name, slots;
  Evaluate evaluate;
};
struct FamilyTable {
  std::string name;
  bool scaled = false;     ///< derivatives by rho carry rho
  bool times_eta = false;  ///< derivatives by eta are those of eta times the value
  std::vector<Member> members;

  [[nodiscard]] const Member* find(std::string slots) const {
    std::sort(slots.begin(), slots.end());
    for (const Member& m : members)
      if (m.slots == slots) return &m;
    return nullptr;
  }
};

std::map<std::string, FamilyTable>& table() {
  static std::map<std::string, FamilyTable> all;
  return all;
}

template <class... P, std::size_t... I>
void invoke(void (*f)(P...), const std::vector<void*>& args, std::index_sequence<I...>) {
  ASSERT_EQ(sizeof...(P), args.size());
  f(static_cast<P>(args[I])...);
}

/// The array arguments of a member at a point; derivatives of lower order of the family itself come from its members.
template <class Family, char... V>
std::vector<Values> make_inputs(const std::string& family, const Point& p, const Scope& s) {
  std::vector<Values> arrays;
  families::for_arguments(Family::inputs, families::Slots<V...>::orders, [&](std::size_t i, std::size_t c) {
    const Orders o = families::combination(c);
    const Quantity* q = inputs_of<Family>.at(i);
    const std::size_t size = Family::inputs[i].size(s.n);
    if (q == &fractions) {
      arrays.push_back(p.x);
    } else if (q == &temperature || q == &density) {
      arrays.push_back({q == &density ? p.rho : p.t});
    } else if (q == &lower) {
      const std::string slots = std::string(static_cast<std::size_t>(o.r), 'r') +
                                std::string(static_cast<std::size_t>(o.t), 't') +
                                std::string(static_cast<std::size_t>(o.x), 'x');
      arrays.push_back(table().at(family).find(slots)->evaluate(p, s));
    } else {
      Values values;
      for (std::size_t flat = 0; flat < families::power_of(s.n, o.x); ++flat) {
        std::vector<int> components;
        for (int k = 0, rest = static_cast<int>(flat); k < o.x; ++k, rest /= s.n) components.push_back(rest % s.n);
        for (std::size_t k = 0; k < size; ++k) values.push_back(q->at(k, p, o, components));
      }
      arrays.push_back(values);
    }
  });
  return arrays;
}

template <class Family, char... V, class... P>
void add(const std::string& family, const char* name, Shape shape, void (*routine)(P...)) {
  std::string slots{V...};
  std::sort(slots.begin(), slots.end());
  FamilyTable& f = table()[family];
  f.name = family;
  f.scaled = requires {
    Family::moments;
  };
  f.times_eta = std::is_same_v<Family, families::intgpert>;
  f.members.push_back({name, slots, [=](const Point& p, const Scope& scope) {
                         Scope s = scope;
                         std::vector<Values> arrays = make_inputs<Family, V...>(family, p, s);
                         std::vector<Values> outs;
                         for (std::size_t k = 0; k < Family::outputs; ++k)
                           outs.emplace_back(families::output_size<Family>(k, s.n) *
                                             families::power_of(s.n, families::Slots<V...>::orders.x));
                         std::int32_t status = 7;
                         families::set_mmean(s.n, p.x.data(), s.ipure);
                         std::vector<void*> args;
                         std::size_t next = 0;
                         const auto integer = [&](int& value) { args.push_back(&value); };
                         const auto array = [&] { args.push_back(arrays[next++].data()); };
                         if (shape != Shape::plain && shape != Shape::plain2) integer(s.n);
                         if (shape == Shape::mixture2 || shape == Shape::sites || shape == Shape::zeta) array();
                         if (shape != Shape::plain && shape != Shape::plain2 && shape != Shape::n && shape != Shape::n2)
                           integer(s.ipure);
                         if (shape == Shape::zeta) {
                           array();
                           array();
                           integer(s.power);
                         }
                         while (next < arrays.size()) array();
                         for (Values& out : outs) args.push_back(out.data());
                         if (shape == Shape::sites) args.push_back(&status);
                         invoke(routine, args, std::index_sequence_for<P...>{});
                         EXPECT_EQ(status, shape == Shape::sites ? 0 : 7) << name;
                         Values all;
                         for (const Values& out : outs) all.insert(all.end(), out.begin(), out.end());
                         return all;
                       }});
}

void fill_table() {
  if (!table().empty()) return;
#define MEMBER(shape, name, family, count, ...) \
  add<families::family __VA_OPT__(, ) __VA_ARGS__>(#family, #name, Shape::shape, tessarel_##name);
#include "eos/family_association.def"
#include "eos/family_dispersion.def"
#include "eos/family_hard_chain.def"
#include "eos/family_polar.def"
#undef MEMBER
  // The two members whose arguments differ from those of their family.
  table()["sigeps"].members.push_back(
      {"calc_sigeps", "", [](const Point& p, const Scope& s) {
         Values eps(static_cast<std::size_t>(s.n)), sig(eps.size() * eps.size()), eps_ij(sig.size());
         tessarel_calc_sigeps(&s.n, &s.ipure, &p.t, eps.data(), sig.data(), eps_ij.data());
         eps.insert(eps.end(), eps_ij.begin(), eps_ij.end());
         return eps;
       }});
  table()["c1"].members.push_back({"calc_dc1_deta", "e", [](const Point& p, const Scope& s) {
                                     const double value = eta.at(0, p, {}, {});
                                     const double c1 = table()["c1"].find("")->evaluate(p, s)[0];
                                     double slope = 0;
                                     tessarel_calc_dc1_deta(&value, &c1, &slope);
                                     return Values{slope};
                                   }});
}

/// Step of the differences, relative to t and rho, absolute in the fractions.
constexpr double relative_step = 5e-4;

double largest(const Values& values) {
  double size = 0;
  for (const double v : values) size = std::max(size, std::abs(v));
  return size;
}

/// The fourth-order central difference of `f` by a step parameter, with the steps -2, -1, 1, 2.
Values difference(const std::function<Values(double)>& f, double h) {
  const Values a = f(-2 * h), b = f(-h), c = f(h), d = f(2 * h);
  Values slope(a.size());
  for (std::size_t k = 0; k < a.size(); ++k) slope[k] = (a[k] - 8 * b[k] + 8 * c[k] - d[k]) / (12 * h);
  return slope;
}

/// The member from the one below it, by the variable `kind`.
Values from_below(const FamilyTable& f, const Member& below, char kind, const Point& p, const Scope& s) {
  const auto move = [&](double dt, double drho, int component, double dx) {
    Point q = p;
    q.t += dt;
    q.rho += drho;
    if (dx != 0) q.x[static_cast<std::size_t>(component)] += dx;
    return q;
  };
  const auto order = static_cast<double>(std::count(below.slots.begin(), below.slots.end(), 'r'));
  if (kind == 't')
    return difference([&](double h) { return below.evaluate(move(h, 0, 0, 0), s); }, relative_step * p.t);
  if (kind == 'x') {
    // The new index is the last; the outputs of a member with several follow one another.
    std::vector<Values> columns;
    for (int i = 0; i < s.n; ++i)
      columns.push_back(difference([&](double h) { return below.evaluate(move(0, 0, i, h), s); }, relative_step));
    return [&] {
      Values all;
      for (const Values& column : columns) all.insert(all.end(), column.begin(), column.end());
      return all;
    }();
  }
  const double eta_slope = kind == 'e' ? eta.at(0, p, {0, 1, 0}, {}) : 1.0;
  const bool times_eta = f.times_eta && kind == 'e' && below.slots.empty();
  Values slope = difference(
      [&](double h) {
        const Point q = move(0, h, 0, 0);
        Values v = below.evaluate(q, s);
        for (double& value : v) {
          if (f.scaled) value /= std::pow(q.rho, order);
          if (times_eta) value *= eta.at(f.name == "gij" ? 2 : 0, q, {}, {});
        }
        return v;
      },
      relative_step * p.rho);
  for (double& value : slope) value *= f.scaled && kind == 'r' ? std::pow(p.rho, order + 1) : 1.0 / eta_slope;
  return slope;
}

/// The outputs of a member regrouped so that the x index runs slowest over all of them.
Values by_component(const Values& all, std::size_t outputs, const std::vector<std::size_t>& sizes, int n) {
  Values regrouped;
  for (int i = 0; i < n; ++i) {
    std::size_t start = 0;
    for (std::size_t k = 0; k < outputs; ++k) {
      const std::size_t part = sizes[k] / static_cast<std::size_t>(n);
      for (std::size_t j = 0; j < part; ++j) regrouped.push_back(all[start + static_cast<std::size_t>(i) * part + j]);
      start += sizes[k];
    }
  }
  return regrouped;
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
    {"methanol:0.6|carbon dioxide:0.4", "1;2:1112", false, {410, 0.002, {0.6, 0.4}}, 0, 2},
    {"acetone:0.5|three sites:0.5", "", true, {350, 0.012, {0.5, 0.5}}, 0, 1},
    {"water:0.3|acetone:0.45|carbon dioxide:0.25", "", false, {330, 0.01, {0.3, 0.45, 0.25}}, 1, 3},
    {"water:0.3|acetone:0.45|carbon dioxide:0.25", "", false, {330, 0.01, {0.3, 0.45, 0.25}}, 3, 0},
    {"three sites:1", "", false, {300, 0.008, {1.0}}, 0, 2},
};

TEST(Families, MembersAreDerivativesOfTheMembersBelow) {
  fill_table();
  std::set<std::string> checked;
  double worst = 0;
  std::string worst_name;
  for (const State& state : states) {
    testing::select_reference(testing::parse_components(state.components), state.kij, state.simplified);
    const Scope s{record.n, state.ipure, state.power};
    const bool single = s.n == 1 || s.ipure > 0;
    for (const auto& [name, family] : table()) {
      for (const Member& m : family.members) {
        const bool by_density_only = m.slots.find_first_of("tx") == std::string::npos;
        for (const char kind : std::set<char>(m.slots.begin(), m.slots.end())) {
          if ((kind == 'r' || kind == 'e') && !by_density_only) continue;
          if (m.slots.find('x') != std::string::npos && single) continue;
          std::string slots = m.slots;
          slots.erase(slots.find(kind), 1);
          const Member* below = family.find(slots);
          if (below == nullptr) continue;
          const Values below_here = below->evaluate(state.point, s);
          Values expected = from_below(family, *below, kind, state.point, s), actual = m.evaluate(state.point, s);
          ASSERT_EQ(expected.size(), actual.size()) << m.name;
          if (kind == 'x' && (name == "j2j3" || name == "a2a3" || name == "intgpert" || name == "pertterm")) {
            // Two outputs; those of the last family but one differ in size.
            const std::size_t first =
                name == "j2j3" ? actual.size() / static_cast<std::size_t>(1 + s.n) : actual.size() / 2;
            actual = by_component(actual, 2, {first, actual.size() - first}, s.n);
          }
          const double step = kind == 't'   ? relative_step * state.point.t
                              : kind == 'x' ? relative_step
                                            : relative_step * state.point.rho;
          // Truncation is h^4/30 of the fifth derivative: with 5e-4 of t and exponentials of up to 10 epsil/t about
          // 2e-10 of the member. Rounding is some 1e-16 of the member below over the step, times the cancellation in
          // the member below itself.
          const double unit = family.scaled && kind == 'r' ? state.point.rho
                              : kind == 'e'                ? state.point.rho / 0.3
                                                           : 1.0;
          const double scale = std::max(largest(actual), 1e-300);
          const double tolerance = 3e-10 * scale + 3e-14 * largest(below_here) * unit / step;
          for (std::size_t k = 0; k < actual.size(); ++k) {
            const double error = std::abs(actual[k] - expected[k]);
            EXPECT_LE(error, tolerance) << m.name << " by " << kind << " entry " << k << " of " << state.components
                                        << ": " << actual[k] << " against " << expected[k];
            if (error / tolerance > worst) worst = error / tolerance, worst_name = m.name;
          }
          checked.insert(m.name);
        }
      }
    }
  }
  std::size_t derivatives = 0;
  for (const auto& [name, family] : table())
    for (const Member& m : family.members) {
      derivatives += m.slots.empty() ? 0 : 1;
      EXPECT_TRUE(m.slots.empty() || checked.contains(m.name)) << m.name << " was not checked";
    }
  EXPECT_EQ(checked.size(), derivatives);
  RecordProperty("members", static_cast<int>(derivatives));
  std::printf("%zu members, worst %s at %.3g of its tolerance\n", derivatives, worst_name.c_str(), worst);
}

}  // namespace
}  // namespace tessarel
