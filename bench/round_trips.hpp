// Fluids, states and their judgement, for the round trips of the property call and the comparison of its two ways.
#pragma once

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <random>
#include <string>
#include <vector>

#include "tessarel/routines.h"
#include "tessarel/tessarel.h"

namespace round_trips {

inline constexpr double gas_constant = 8.31441, avogadro_factor = 6.022045e-7;

struct Selection {
  std::vector<std::string> names;
  std::vector<double> z;
};

inline const std::vector<Selection> selections = {
    {{"methane"}, {1}},
    {{"propane"}, {1}},
    {{"n-decane"}, {1}},
    {{"carbon dioxide"}, {1}},
    {{"nitrogen"}, {1}},
    {{"water"}, {1}},
    {{"methanol"}, {1}},
    {{"acetone"}, {1}},
    {{"ammonia"}, {1}},
    {{"hydrogen sulfide"}, {1}},
    {{"benzene"}, {1}},
    {{"ethylene"}, {1}},
    {{"methane", "n-butane"}, {0.5, 0.5}},
    {{"methane", "ethane", "propane", "n-butane", "nitrogen"}, {0.85, 0.07, 0.04, 0.02, 0.02}},
    {{"carbon dioxide", "propane"}, {0.6, 0.4}},
    {{"carbon dioxide", "methane", "ethane", "propane", "n-butane", "n-pentane", "n-heptane", "n-decane"},
     {0.03, 0.71, 0.09, 0.05, 0.04, 0.02, 0.035, 0.025}},
    {{"hydrogen sulfide", "carbon dioxide", "methane", "ethane", "n-hexane", "toluene"},
     {0.15, 0.1, 0.5, 0.1, 0.1, 0.05}},
    {{"nitrogen", "methane", "ethane"}, {0.3, 0.5, 0.2}},
    {{"nitrogen", "oxygen", "argon"}, {0.7812, 0.2096, 0.0092}},
    {{"carbon dioxide", "n-decane", "methane"}, {0.6, 0.25, 0.15}},
    {{"propane", "propylene"}, {0.5, 0.5}},
    {{"r32", "r125", "r134a"}, {0.38, 0.18, 0.44}},
    {{"ethanol", "water"}, {0.3, 0.7}},
    {{"methanol", "ethanol", "water"}, {0.3, 0.3, 0.4}},
    {{"acetone", "chloroform", "methanol"}, {0.4, 0.3, 0.3}},
    {{"acetonitrile", "acetone", "ethyl acetate", "toluene"}, {0.3, 0.2, 0.25, 0.25}},
    {{"acetone", "n-hexane"}, {0.64, 0.36}},
    {{"benzene", "cyclohexane"}, {0.54, 0.46}},
    {{"water", "methane"}, {0.3, 0.7}},
    {{"ammonia", "water"}, {0.5, 0.5}},
    {{"methanol", "n-hexane"}, {0.5, 0.5}},
    {{"methane", "ethane", "propane", "n-butane", "n-pentane", "n-hexane", "n-heptane", "n-octane", "n-nonane",
      "n-decane"},
     {0.1, 0.1, 0.1, 0.1, 0.1, 0.1, 0.1, 0.1, 0.1, 0.1}},
};

/// A state in molar SI units.
struct State {
  std::array<double, 7> value{};  ///< T, P, v, u, h, s, q
  std::array<double, 20> x{}, y{};
  std::string err;
};
inline constexpr char letters[] = "TPvuhsq";
inline std::size_t index_of(char letter) {
  return static_cast<std::size_t>(std::strchr(letters, letter) - letters);
}

class Fluid {
 public:
  explicit Fluid(const Selection& selection) : z_(selection.z), n_(static_cast<std::int32_t>(z_.size())) {
    std::string fields;
    for (std::string name : selection.names) {
      title_ += (title_.empty() ? "" : "/") + name;
      name.resize(32, ' ');
      fields += name;
    }
    std::string err(100, ' ');
    tessarel_setfluid(&n_, fields.data(), z_.data(), err.data(), 32, err.size());
    if (err.compare(0, 9, "No errors") != 0) {
      std::fprintf(stderr, "%s: %s\n", title_.c_str(), err.c_str());
      std::exit(2);
    }
    tessarel_fluidinfo(z_.data(), &mass_, &tc_, &pc_, &tmin_, &tmax_, nullptr, nullptr, nullptr, nullptr, nullptr);
    if (n_ > 1) {
      double rho = 0;
      tessarel_criticalpoint(&tc_, &pc_, &rho, err.data(), err.size());
      if (err.compare(0, 9, "No errors") != 0)
        tessarel_fluidinfo(z_.data(), &mass_, &tc_, &pc_, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr,
                           nullptr);
    }
  }

  /// The property call on two values.
  State call(const std::string& pair, double a, double b) const {
    State s;
    s.value.fill(1.0);
    s.value[index_of(pair[0])] = a;
    s.value[index_of(pair[1])] = b;
    const std::int32_t order = 0;
    double cv = 0, dpdt = 0, dpdv = 0, d2pdt2 = 0, d2pdv2 = 0, d2pdtdv = 0, dcvdt = 0;
    std::array<double, 20> lnphi{};
    std::array<char, 120> err{};
    auto& [t, p, v, u, h, sm, q] = s.value;
    tessarel_tmdprop(pair.data(), &order, &t, &p, &v, &u, &h, &sm, &q, &cv, &dpdt, &dpdv, &d2pdt2, &d2pdv2, &d2pdtdv,
                     &dcvdt, s.x.data(), s.y.data(), lnphi.data(), err.data(), pair.size(), err.size());
    s.err.assign(err.data(), err.size());
    s.err.erase(s.err.find_last_not_of(' ') + 1);
    t += 273.15;
    p *= 1e5;
    v *= mass_;
    for (double* energy : {&u, &h, &sm}) *energy *= mass_ * 1000.0;
    // What is handed in is known exactly.
    if (s.err == "No errors") {
      s.value[index_of(pair[0])] = a;
      s.value[index_of(pair[1])] = b;
    }
    return s;
  }

  [[nodiscard]] bool pure() const { return n_ == 1; }
  [[nodiscard]] const std::string& title() const { return title_; }

  /// rho dP/drho of one phase [Pa].
  [[nodiscard]] double stiffness(const State& s) const {
    const double rho = avogadro_factor / s.value[2];
    double slope = 0;
    tessarel_calc_dp_drho(&n_, z_.data(), &s.value[0], &rho, &slope);
    return std::abs(slope * rho);
  }

  /// A state of one of the kinds, by turns; false if there is none for these numbers.
  bool sample(std::mt19937& random, int turn, State& state) const {
    std::uniform_real_distribution<double> unit(0.0, 1.0);
    const auto between = [&](double a, double b) { return a + (b - a) * unit(random); };
    const auto log_between = [&](double a, double b) { return a * std::pow(b / a, unit(random)); };
    const double cold = tmin_ + 0.01, hot = std::min(tmax_ - 0.01, 1.6 * tc_), lowest = pure() ? 2.0 : 1100.0;
    double t = between(cold, hot), p = log_between(lowest, 4.9e7);
    switch (turn % 5) {
      case 0:  // anywhere
        break;
      case 1:
      case 2: {  // two phases; of a mixture also retrograde
        const double q = unit(random);
        t = between(std::max(cold, 0.5 * tc_), std::min(hot, pure() ? tc_ * 0.9999 : 1.1 * tc_));
        State at = call("Tq", t, q);
        if (at.err != "No errors") return false;
        if (pure()) {
          state = at;
          return at.value[1] >= 1.0;
        }
        p = at.value[1];
        break;
      }
      case 3:  // near the critical point
        t = tc_ * between(0.98, 1.02);
        p = std::min(4.9e7, pc_ * between(0.9, 1.1));
        break;
      default:  // beside the phase boundary
        t = between(cold, tc_);
        if (const State at = call("Tq", t, unit(random) < 0.5 ? 0.0 : 1.0); at.err == "No errors")
          p = at.value[1] * between(0.9, 1.1);
    }
    if (!(t >= cold && t <= hot && p >= lowest && p <= 4.9e7) || std::abs(t / tc_ - 1.0) < 1e-4) return false;
    state = call("TP", t, p);
    return state.err == "No errors";
  }

  static double scale(std::size_t property, double value) {
    const double least = property == 5 ? gas_constant : property == 3 || property == 4 ? gas_constant * 300.0 : 0.0;
    return std::max(std::abs(value), least);
  }
  static bool two_phases(const State& s) { return s.value[6] > 0 && s.value[6] < 1; }

  /// The largest deviation in units of the tolerance. `p_by_v`: P is then known no better than v makes it.
  double deviation(const State& found, const State& known, bool p_by_v, double tolerance) const {
    double largest = 0;
    const auto keep = [&](double d) { largest = d <= largest ? largest : std::isfinite(d) ? d : HUGE_VAL; };
    for (std::size_t k = 0; k < 6; ++k) {
      double allowed = tolerance * scale(k, known.value[k]);
      if (k == 1 && p_by_v && !two_phases(known)) allowed += 1e-14 * stiffness(known);
      keep(std::abs(found.value[k] - known.value[k]) / allowed);
    }
    if (!two_phases(known)) return largest;
    keep(std::abs(found.value[6] - known.value[6]) / tolerance);
    if (pure()) return largest;
    for (std::size_t i = 0; i < static_cast<std::size_t>(n_); ++i) {
      keep(std::abs(found.x[i] - known.x[i]) / tolerance);
      keep(std::abs(found.y[i] - known.y[i]) / tolerance);
    }
    return largest;
  }

  /// Whether what was found is a stable state with the two properties.
  bool is_another(const State& found, const std::string& pair, double a, double b, double tolerance) const {
    const State again = pure() && two_phases(found) ? call("Tq", found.value[0], found.value[6])
                                                    : call("TP", found.value[0], found.value[1]);
    if (again.err != "No errors") return false;
    const auto same = [&](char letter, double wanted) {
      const std::size_t k = index_of(letter);
      // T and P go in as they came out; the rest has their rounding.
      return std::abs(again.value[k] - wanted) <= tolerance * (k == 6 ? 1.0 : scale(k, wanted));
    };
    return same(pair[0], a) && same(pair[1], b);
  }

 private:
  std::vector<double> z_;
  std::int32_t n_;
  std::string title_;
  double mass_ = 0, tc_ = 0, pc_ = 0, tmin_ = 0, tmax_ = 0;
};

inline constexpr const char* pairs[] = {"Tv", "vP", "Ts", "vu", "vh", "vs", "Pu", "Ph", "Ps", "hs", "Pq", "Tq", "vq"};
inline constexpr std::size_t pair_count = std::size(pairs);

struct Options {
  int states = 300;
  bool verbose = false;
  long long slow = 1LL << 60;  ///< pressures from which on a call is listed
  std::string only;

  Options(int argc, char** argv) {
    for (int k = 1; k < argc; ++k) {
      const std::string word = argv[k];
      if (word == "--verbose")
        verbose = true;
      else if (word == "--states" && k + 1 < argc)
        states = std::atoi(argv[++k]);
      else if (word == "--slow" && k + 1 < argc)
        slow = std::atoll(argv[++k]);
      else if (word == "--only" && k + 1 < argc)
        only = argv[++k];
    }
  }
};

/// Calls `visit(state)` for states of all kinds; returns their number.
template <class Visit>
int for_each_state(const Fluid& fluid, int count, Visit&& visit) {
  std::mt19937 random(20240607);
  int made = 0;
  for (int turn = 0; made < count && turn < 20 * count; ++turn) {
    State known;
    if (!fluid.sample(random, turn, known)) continue;
    ++made;
    visit(known);
  }
  return made;
}

/// Whether a pair describes a state: P and T of a pure fluid with two phases tell nothing of its amounts, but with q
/// they do.
inline bool describes(const std::string& pair, const State& state) {
  return pair[1] != 'q' || Fluid::two_phases(state);
}

}  // namespace round_trips
