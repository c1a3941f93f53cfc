#include "solvers/spinodal.hpp"

#include <algorithm>
#include <cmath>

#include "eos/density.hpp"
#include "eos/pressure.hpp"
#include "solvers/brent.hpp"
#include "solvers/psat_tsat.hpp"

namespace tessarel::solvers {

using eos::Fluid;

namespace {

constexpr Message beyond_limit = "T > Tc or T > Tcricondentherm, while saturation state expected...";
constexpr double at_critical = 1e-8;
constexpr std::int32_t liquid = 1;

bool above_critical_temperature(const Fluid& fluid, double t) {
  return t > (fluid.pure() ? fluid.limits.tc : fluid.limits.tcritherm);
}

/// Whether the pressure of the isotherm has a minimum at v, as it has where a liquid ends.
bool is_minimum(const Fluid& fluid, double t, double v) {
  const Arena::Frame frame(fluid.eos.arena());
  eos::MixtureState<double> state;
  eos::prepare(fluid.eos, state, fluid.n, fluid.z, 0, t);
  return eos::p_eta12(state, fluid::avogadro_factor / (v * state.rho_eta)).second > 0;
}

/// The spinodal volume of one branch. From the start of the liquid Newton's method can step over the whole loop of a
/// cold fluid and end at the limit of the vapour; from a packing fraction nearer to the liquid it does not.
Message branch_volume(const Fluid& fluid, std::int32_t iphase, double t, double& v) {
  if (iphase != liquid) return calc_vspin_phase(fluid, eos::vapour_start, t, v);
  const Message message = calc_vspin_phase(fluid, eos::liquid_start, t, v);
  if (ok(message) && is_minimum(fluid, t, v)) return message;
  double nearer = 0;
  if (ok(calc_vspin_phase(fluid, eos::cold_liquid_start, t, nearer)) && is_minimum(fluid, t, nearer)) {
    v = nearer;
    return no_errors;
  }
  return message;
}

/// Spinodal pressure of one branch, with the range check.
Message branch_pressure(const Fluid& fluid, std::int32_t iphase, double t, double& p) {
  p = fluid.limits.pc;
  if (std::abs(t - fluid.limits.tc) < at_critical) return no_errors;
  if (above_critical_temperature(fluid, t)) return beyond_limit;
  double v = 0;
  const Message message = branch_volume(fluid, iphase, t, v);
  if (ok(message)) p = eos::calc_p(fluid.eos, fluid.n, fluid.z, t, v);
  return message;
}

}  // namespace

Message calc_vspin_phase(const Fluid& fluid, double eta, double t, double& v) {
  constexpr int limit = 100;
  const Arena::Frame frame(fluid.eos.arena());
  eos::MixtureState<double> state;
  eos::prepare(fluid.eos, state, fluid.n, fluid.z, 0, t);
  Message message = no_errors;
  for (int pass = 1;; ++pass) {
    if (pass > limit) {
      message = "No convergence calculating specific volume for spinodal...";
      break;
    }
    const auto p = eos::p_eta12(state, eta);
    const double step = p.first / p.second;
    eta = eos::bounded_eta(eta - step);
    if (std::abs(step) < 1e-12 || std::abs(p.first) < 1e-9) break;
  }
  v = fluid::avogadro_factor / (eta * state.rho_eta);
  return message;
}

Message calc_vspin(const Fluid& fluid, double t, double& vliq, double& vvap) {
  const Message of_liquid = branch_volume(fluid, 1, t, vliq);
  const Message of_vapour = branch_volume(fluid, 2, t, vvap);
  return ok(of_liquid) ? of_vapour : of_liquid;
}

Message calc_pspin(const Fluid& fluid, double t, double& pliq, double& pvap) {
  pliq = pvap = fluid::not_computed;
  if (above_critical_temperature(fluid, t) && !(std::abs(t - fluid.limits.tc) < at_critical)) return beyond_limit;
  const Message of_liquid = branch_pressure(fluid, 1, t, pliq);
  const Message of_vapour = branch_pressure(fluid, 2, t, pvap);
  return ok(of_liquid) ? of_vapour : of_liquid;
}

Message brent_spin(const Fluid& fluid, std::int32_t iphase, double p, double a, double b, double& t) {
  Message err = no_errors;
  t = brent::find_root(
      [&](double temperature, Message& message) {
        double spinodal = 0;
        message = branch_pressure(fluid, iphase, temperature, spinodal);
        return spinodal - p;
      },
      a, b, err);
  if (err == brent::not_bracketed) return "Brent method for spinodal: root not bracketed";
  if (err == brent::no_convergence) return "Brent method for spinodal: no convergence";
  return err;
}

Message bisec_spin(const Fluid& fluid, std::int32_t iphase, double p, double a, double b, double& t) {
  constexpr double width = 1e-8;
  constexpr int limit = 200;
  double low = std::fmin(a, b), high = std::fmax(a, b);
  for (int pass = 0; pass < limit && high - low > width; ++pass) {
    t = 0.5 * (low + high);
    double spinodal = 0;
    if (const Message message = branch_pressure(fluid, iphase, t, spinodal); !ok(message)) return message;
    (spinodal > p ? high : low) = t;
  }
  t = 0.5 * (low + high);
  return no_errors;
}

Message calc_tspin(const Fluid& fluid, double p, double& tliq, double& tvap) {
  tliq = tvap = fluid::not_computed;
  if (p > (fluid.pure() ? fluid.limits.pc : fluid.limits.pcribar)) return beyond_limit;
  double tsat = 0;
  if (const Message message = calc_tsat(fluid, p, tsat); !ok(message)) return message;
  // The bracket ends at 0.9 of the saturation temperature. At low pressure a vapour can be cooled further, down to the
  // end of the range; and a liquid is so cold there that the search for its spinodal can end on a loop beyond it, so
  // the end is looked for from the critical temperature downwards.
  const double limit = fluid.limits.tc;
  const auto branch = [&](std::int32_t iphase, double& t) {
    Message message = brent_spin(fluid, iphase, p, limit, 0.9 * tsat, t);
    if (iphase == liquid)
      for (double low = 0.95 * limit; !ok(message) && low > 0.9 * tsat; low *= 0.95)
        message = brent_spin(fluid, iphase, p, limit, low, t);
    else
      for (double low = 0.9 * tsat; !ok(message) && low > fluid.limits.tlowest;)
        message = brent_spin(fluid, iphase, p, limit, low = std::max(0.8 * low, fluid.limits.tlowest), t);
    return message;
  };
  if (const Message message = branch(1, tliq); !ok(message)) return message;
  return branch(2, tvap);
}

}  // namespace tessarel::solvers
