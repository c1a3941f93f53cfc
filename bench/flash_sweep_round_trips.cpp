// Round trips through the general flash: v, u, h and s of states known from temperature and pressure are handed back
// in each of its modes, and the state must return.
#include <algorithm>
#include <array>
#include <cstdio>
#include <map>
#include <mutex>

#include "flash_sweep.hpp"
#include "tessarel/routines.h"

namespace tessarel::sweep {
namespace {

constexpr double tolerance = 1e-8, gas_constant = 8.31441, avogadro_factor = 6.022045e-7;

/// t, p, v, u, h, s of a state as a whole. q has a meaning with two phases only.
struct Full {
  std::array<double, 6> value{};
  double q = NAN;
  double rho_slope = 0;  ///< rho dp/drho of a single phase [Pa]
};
enum Property { temperature, pressure, volume, energy, enthalpy, entropy };

struct Mode {
  const char* name;
  Property a, b;
};
constexpr Mode modes[] = {{"(P,T)", pressure, temperature},
                          {"(P,h)", pressure, enthalpy},
                          {"(P,s)", pressure, entropy},
                          {"(T,v)", temperature, volume},
                          {"(v,u)", volume, energy}};

/// Adds a phase in an amount. It selects the composition of the phase.
void add(Full& sum, const State& state, double amount, const Vec& x, double rho) {
  select(mixtures[state.mixture], x);
  const double v = avogadro_factor / rho;
  double h = NAN, s = NAN, u = NAN;
  char err[300];
  tessarel_calc_hsu(&state.t, &state.p, &v, &h, &s, &u, err, sizeof err);
  sum.value[volume] += amount * v;
  sum.value[energy] += amount * u;
  sum.value[enthalpy] += amount * h;
  sum.value[entropy] += amount * s;
}

/// The state at temperature and pressure by the flash and single-phase routines; false when there is none to be had.
/// `judged`: also false where the judge does not agree that all phases are stable.
bool full_state(const State& state, bool judged, int effort, Full& out) {
  out = {};
  out.value[temperature] = state.t, out.value[pressure] = state.p;
  const Flash answer = flash(state);
  if (answer.kind == Flash::Kind::failure) return false;
  const Judge judge(*state.z, state.t, state.p, effort);
  if (answer.kind == Flash::Kind::one_phase) {
    const double rho = judge.feed().rho;
    if (judged && judge.search_feed(-tolerance).front().tpd < -tolerance) return false;
    const auto n = static_cast<std::int32_t>(state.z->size());
    tessarel_calc_dp_drho(&n, state.z->data(), &state.t, &rho, &out.rho_slope);
    out.rho_slope *= rho;
    add(out, state, 1, *state.z, rho);
  } else {
    const Phase x = judge.lower(judge.compress(answer.x.data())), y = judge.lower(judge.compress(answer.y.data()));
    const auto& larger = answer.beta > 0.5 ? y : x;
    if (judged && judge.search(judge.plane(larger), {x, y}, -1e-7).front().tpd < -1e-7) return false;
    out.q = answer.beta;
    add(out, state, 1 - answer.beta, answer.x, x.rho);
    add(out, state, answer.beta, answer.y, y.rho);
  }
  select(mixtures[state.mixture], *state.z);
  return true;
}

/// Whether a property has the value, by the scale in which it is known: h and u may be near zero by chance.
bool same(Property property, double value, double wanted) {
  const double least = property == entropy                          ? gas_constant
                       : property == enthalpy || property == energy ? gas_constant * 300
                                                                    : 0;
  return std::abs(value - wanted) <= tolerance * std::max(std::abs(wanted), least);
}

struct Counts {
  long ok = 0, text = 0, other = 0, wrong = 0;
};

}  // namespace

long round_trips(const Options& options) {
  std::mutex lock_counts;
  std::array<std::array<Counts, 2>, 5> counts{};
  std::map<std::string, long> texts;
  long skipped = 0, in_doubt = 0;
  for_each_state(options, [&](const State& state) {
    Full known;
    if (state.t < 100 || state.t > 1000 || !full_state(state, true, options.effort, known)) {
      const std::lock_guard lock(lock_counts);
      ++skipped;
      return;
    }
    const bool two = known.q == known.q;
    for (std::int32_t mode = 1; mode <= 5; ++mode) {
      const Mode& m = modes[mode - 1];
      const double a = known.value[m.a], b = known.value[m.b];
      Full got;
      auto& [t, p, v, u, h, s] = got.value;
      Vec x(20), y(20);
      char err[300];
      tessarel_calc_ab_flash(&mode, &a, &b, &t, &p, &v, &u, &h, &s, &got.q, x.data(), y.data(), err, sizeof err);
      const std::string text = trimmed(err, sizeof err);
      const double slack = m.a == volume || m.b == volume ? 1e-14 * std::abs(known.rho_slope) : 0;
      const bool right = same(temperature, t, state.t) && std::abs(p - state.p) <= tolerance * state.p + slack &&
                         (!two || std::abs(got.q - known.q) <= tolerance);
      // At low temperatures the single-phase routines can miss the liquid root that the flash has.
      if (mode == 1 && text == "No errors") {
        bool agree = true;
        for (const Property property : {volume, energy, enthalpy, entropy})
          agree = agree && same(property, got.value[property], known.value[property]);
        if (!agree) {
          report(state, "densities in doubt");
          const std::lock_guard lock(lock_counts);
          ++in_doubt;
          return;
        }
        known.value = got.value;  // the properties of a trace phase are in doubt by their amount
      }
      Counts one;
      char line[300];
      if (text != "No errors") {
        one.text = 1;
        std::snprintf(line, sizeof line, "%s: %.200s", m.name, text.c_str());
      } else if (right) {
        one.ok = 1;
      } else {
        // Another state may belong to the same pair: the flash at the temperature and pressure returned tells.
        Full there;
        const bool satisfies = t > 0 && p > 0 && full_state({state.mixture, state.z, t, p}, false, 1, there) &&
                               same(m.a, there.value[m.a], a) && same(m.b, there.value[m.b], b);
        ++(satisfies ? one.other : one.wrong);
        std::snprintf(line, sizeof line, "%s: %s, T = %.17g P = %.17g q = %.10g for q = %.10g", m.name,
                      satisfies ? "another state of this pair" : "wrong state", t, p, got.q, known.q);
      }
      if (one.ok == 0) report(state, line);
      const std::lock_guard lock(lock_counts);
      Counts& sum = counts[static_cast<std::size_t>(mode - 1)][two ? 1 : 0];
      for (const auto count : {&Counts::ok, &Counts::text, &Counts::other, &Counts::wrong}) sum.*count += one.*count;
      if (one.text > 0) ++texts[std::string(m.name) + " " + text];
    }
  });
  std::printf("| mode | phases | right | text | another state | wrong state |\n|---|---:|---:|---:|---:|---:|\n");
  long failed = 0;
  for (std::size_t mode = 0; mode < counts.size(); ++mode)
    for (std::size_t two = 0; two < 2; ++two) {
      const Counts& c = counts[mode][two];
      failed += c.text + c.wrong;
      std::printf("| %s | %zu | %ld | %ld | %ld | %ld |\n", modes[mode].name, two + 1, c.ok, c.text, c.other, c.wrong);
    }
  std::printf(
      "\n%ld states skipped: outside the range of the general flash, or without a stable answer; %ld with densities in "
      "doubt.\n",
      skipped, in_doubt);
  for (const auto& [text, number] : texts) std::printf("%ld times %s\n", number, text.c_str());
  return failed;
}

}  // namespace tessarel::sweep
