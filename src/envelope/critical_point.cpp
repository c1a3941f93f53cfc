#include "envelope/critical_point.hpp"

#include <algorithm>
#include <cassert>
#include <cmath>

#include "eos/density.hpp"
#include "eos/pressure.hpp"

namespace tessarel::envelope {

using eos::Eos;
using fluid::at, fluid::avogadro_factor, fluid::Limits, fluid::not_computed;

namespace {

constexpr double curvature_tolerance = 0.2, slope_tolerance = 0.01;  // [Pa] by the packing fraction

constexpr Message not_converged = "Critical point: : temperature-iteration not converged";

struct Estimate {
  double t, p;
};

Estimate start_estimate(const fluid::Parameters& p, int i) {
  const auto k = at(i - 1);
  if (same_text(p.compname[k].view(), "hydrogen")) return {50.0, 4000000.0};
  return {std::min(700.0 * p.omega[k] + 150.0, 800.0), 5000000.0};
}

/// Newton's method for the inflection point of the isotherm: d2p/deta2 = 0. `eta` moves one step past the last
/// evaluated point; `slopes` are those of that point. False after 60 evaluations.
bool find_inflection(const Eos& eos, int n, int i, double t, double& eta, eos::EtaSlopes& slopes) {
  constexpr int limit = 60;
  fluid::Vector ones;
  ones.fill(1.0);
  const Arena::Frame frame(eos.arena());
  eos::MixtureState<double> state;
  prepare(eos, state, n, ones.data(), i, t);
  for (int count = 1;; ++count) {
    slopes = eos::p_deta(state, eta);
    eta -= slopes.d2p_deta2 / slopes.d3p_deta3;
    if (count >= limit) return false;
    if (!(std::abs(slopes.d2p_deta2) > curvature_tolerance)) return true;
  }
}

/// Whether a search has ended at a temperature and pressure of a fluid.
bool is_sound(const CriticalMemory::Point& point, double epsil) {
  return point.t > 0.5 * epsil && point.t < 20.0 * epsil && point.p > 0 && point.p < 1e9 && point.eta > 0;
}

/// Newton's method for both conditions at once, dp/deta = d2p/deta2 = 0, from the temperature `start`. It ends at
/// slopes within the tolerances of the search, which stands behind it.
bool newton_search(const Eos& eos, int n, int i, double start, CriticalMemory::Point& found) {
  constexpr int limit = 15;
  constexpr double difference = 1e-5, longest_step = 0.25;  // relative
  fluid::Vector ones;
  ones.fill(1.0);
  const double epsil = eos.parameters().epsil[at(i - 1)];
  double t = start, eta = 0.13;
  for (int pass = 0; pass < limit; ++pass) {
    const Arena::Frame frame(eos.arena());
    eos::MixtureState<double> state, warmer;
    prepare(eos, state, n, ones.data(), i, t);
    const eos::EtaSlopes here = eos::p_deta(state, eta);
    prepare(eos, warmer, n, ones.data(), i, t * (1.0 + difference));
    const eos::EtaSlopes there = eos::p_deta(warmer, eta);
    const double slope_t = (there.dp_deta - here.dp_deta) / (t * difference);
    const double curvature_t = (there.d2p_deta2 - here.d2p_deta2) / (t * difference);
    const double determinant = slope_t * here.d3p_deta3 - curvature_t * here.d2p_deta2;
    const double dt = (here.d2p_deta2 * here.d2p_deta2 - here.dp_deta * here.d3p_deta3) / determinant;
    const double deta = (curvature_t * here.dp_deta - slope_t * here.d2p_deta2) / determinant;
    const double share = longest_step / std::max({longest_step, std::abs(dt / t), std::abs(deta / eta)});
    if (!std::isfinite(share)) return false;
    t += share * dt;
    eta += share * deta;
    if (std::abs(here.dp_deta) <= slope_tolerance && std::abs(here.d2p_deta2) <= curvature_tolerance) {
      prepare(eos, state, n, ones.data(), i, t);
      found = {t, eos::p_deta(state, eta).p, eta};
      return is_sound(found, epsil);
    }
  }
  return false;
}

/// The secant iteration on the slope of the isotherm at its inflection, from `t`. `found` is written after success.
Message search_from(const Eos& eos, int n, int i, double t, CriticalMemory::Point& found) {
  constexpr int limit = 60;
  constexpr double temperature_step = 0.1;
  double eta = 0.2;
  eos::EtaSlopes slopes{};
  bool converged = false;
  for (int pass = 0; pass < limit && !converged; ++pass) {
    t -= temperature_step;
    if (!find_inflection(eos, n, i, t, eta, slopes)) return "Critical point: density iteration 1 not converged...";
    const double f0 = slopes.dp_deta;
    t += temperature_step;
    if (!find_inflection(eos, n, i, t, eta, slopes)) return "Critical point: density iteration 2 not converged...";
    const double f1 = slopes.dp_deta;
    t -= f1 / ((f1 - f0) / temperature_step);
    converged = std::abs(f1) <= slope_tolerance;
  }
  if (!converged) return not_converged;
  found = {t, slopes.p, eta};
  return no_errors;
}

Message search(const Eos& eos, int n, int i, double start, CriticalMemory::Point& found) {
  // What the dispersion energy and the number of segments tell of non-associating chains (within 3 % for n-alkanes);
  // association and strong dipoles raise it. The acentric factor tells nothing of xenon and chlorine.
  const fluid::Parameters& p = eos.parameters();
  const double estimate = 1.28 * p.epsil[at(i - 1)] * std::pow(p.mseg[at(i - 1)], 0.47);
  for (const double ratio : {1.0, 1.5, 2.5, 4.0}) {
    if (newton_search(eos, n, i, ratio * estimate, found)) return no_errors;
  }
  ++eos.work.statistics.critical_searches;
  const Message message = search_from(eos, n, i, start, found);
  return ok(message) && !is_sound(found, p.epsil[at(i - 1)]) ? not_converged : message;
}

}  // namespace

const CriticalMemory::Point* CriticalMemory::find(const fluid::Component& component, bool simplified) const noexcept {
  for (const Entry& entry : entries_)
    if (entry.used && entry.simplified == simplified && entry.component == component) return &entry.point;
  return nullptr;
}

void CriticalMemory::keep(const fluid::Component& component, bool simplified, const Point& point) noexcept {
  entries_[next_] = {true, simplified, component, point};
  next_ = (next_ + 1) % entries_.size();
}

Message critpure(const Eos& eos, int n, const double* z, int i, Limits& limits, CriticalMemory* memory) {
  assert(i >= 1 && i <= n);
  const fluid::Component component(eos.parameters(), at(i - 1));
  const CriticalMemory::Point* known = memory != nullptr ? memory->find(component, eos.simplified) : nullptr;
  CriticalMemory::Point point;
  if (known != nullptr) {
    point = *known;
  } else {
    const Estimate start = start_estimate(eos.parameters(), i);
    limits.tc = start.t;
    limits.pc = start.p;
    if (const Message message = search(eos, n, i, start.t, point); !ok(message)) return message;
    if (memory != nullptr) memory->keep(component, eos.simplified, point);
  }
  limits.tc = point.t;
  limits.pc = point.p;
  limits.rhoc = eos::calc_rho_eta(eos, n, z, i, point.t, point.eta) / avogadro_factor;
  return no_errors;
}

Message critmixt_pseudo(const Eos& eos, int n, const double* z, Limits& limits, CriticalMemory* memory) {
  limits.tci.fill(not_computed);
  limits.pci.fill(not_computed);
  limits.tc = limits.pc = limits.rhoc = not_computed;
  for (int i = 1; i <= n; ++i) {
    const Message message = critpure(eos, n, z, i, limits, memory);
    limits.tci[at(i - 1)] = limits.tc;
    limits.pci[at(i - 1)] = limits.pc;
    if (!ok(message)) return message;
  }
  return average_critical_points(eos, n, z, limits);
}

Message average_critical_points(const Eos& eos, int n, const double* z, Limits& limits) {
  double tc = 0, pc = 0;
  for (std::size_t i = 0; i < at(n); ++i) {
    tc += z[i] * limits.tci[i];
    pc += z[i] * limits.pci[i];
  }
  limits.tc = tc;
  limits.pc = pc;
  double v = 0;
  const Message message = eos::calc_v(eos, n, z, tc, pc, 2, v);
  limits.rhoc = 1.0 / v;
  return message;
}

Message critpoint(const Eos& eos, int n, const double* z, Limits& limits, CriticalMemory* memory) {
  return n == 1 ? critpure(eos, n, z, 1, limits, memory) : critmixt_pseudo(eos, n, z, limits, memory);
}

Message critmixt_brent() {
  return no_errors;
}

}  // namespace tessarel::envelope
