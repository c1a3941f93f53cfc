// Along an isotherm the pressure rises, at first concave, then convex; between the two lies, below the critical
// temperature, the unstable stretch where it falls. So from the left of the vapour-like root, or from the right of the
// liquid-like one, Newton's method runs into the root without passing it; and where it meets the unstable stretch, or
// leaves the half where its root can lie, before the root, the root does not exist. Halley's method, the same with the
// curvature, gets there in half the steps.
#include "eos/phase_root.hpp"

#include <algorithm>
#include <cmath>

#include "eos/density.hpp"

namespace tessarel::eos {
namespace {

enum class Side { vapour, liquid };
enum class Outcome { found, none, failed };

/// `eta`: the root, or the last point before the one that shows that there is none.
struct Search {
  Outcome outcome;
  double eta = 0;
};

constexpr int max_passes = 50;

/// True when the error that a step of Halley's method leaves behind is below rounding. Its third-order constant is
/// estimated from the curvature, and from the third derivative of a dense fluid.
bool step_is_last(const EtaDerivatives& p, double step, double eta, double ideal) {
  const double relative = std::abs(step) / eta;
  const double bend = step * p.second / p.first;
  return relative * (relative * relative * 1e3 * (1.0 + ideal / (eta * p.first)) + bend * bend) < 1e-17;
}

/// Looks for the root on one side from `eta`.
Search search(const MixtureState<double>& state, double p, Side side, double eta) {
  const double outward = side == Side::vapour ? -1.0 : 1.0;  // sign of the residual on the outer side of the root
  const double ideal = pressure_factor * state.t * state.rho_eta;
  double from = eta, newton = 0, last_residual = 0;
  bool stretched = false, convex_throughout = false;
  for (int pass = 0; pass < max_passes; ++pass) {
    const EtaDerivatives at_eta = p_eta12(state, eta);
    const double residual = at_eta.value - p;
    if (!std::isfinite(at_eta.first)) return {Outcome::failed};
    const bool unstable = !(at_eta.first > 0), convex = at_eta.second > 0;
    // A gas above its Boyle temperature has no concave half.
    if (pass == 0) convex_throughout = convex && side == Side::vapour && !unstable;
    if (unstable || (convex == (side == Side::vapour) && !convex_throughout)) {
      if (side == Side::liquid && last_residual < 0 && eta > from) {
        // Newton's step from below the root went over the root and the summit behind it.
        eta = 0.5 * (from + eta);
        stretched = false;
        continue;
      }
      if (!stretched) return {pass > 0 || residual * outward > 0 ? Outcome::none : Outcome::failed, from};
      // Newton's step is the safe one: only what it shows counts.
      eta = from - newton;
      stretched = false;
      continue;
    }
    newton = residual / at_eta.first;
    const double bend = 1.0 - 0.5 * newton * at_eta.second / at_eta.first;
    const double step = newton / std::max(bend, 0.5);
    from = eta;
    last_residual = residual;
    eta -= step;
    if (std::abs(step) <= 2e-16 * from || step_is_last(at_eta, step, from, ideal * from)) return {Outcome::found, eta};
    stretched = bend < 1.0;
    if (eta >= closest_packing) eta = 0.5 * (from + closest_packing);
    if (eta <= 0) {
      if (side == Side::liquid) return {Outcome::none, from};
      eta = 0.1 * from;
      stretched = false;
    }
  }
  return {Outcome::failed};
}

Search find_vapour(const MixtureState<double>& state, double p, double remembered) {
  if (remembered > 0) {
    const Search near = search(state, p, Side::vapour, remembered);
    if (near.outcome != Outcome::failed) return near;
  }
  // The pressure of an attracting gas is below the ideal one, so its packing fraction is above this.
  const double ideal = p / (pressure_factor * state.t * state.rho_eta);
  return search(state, p, Side::vapour, std::clamp(ideal, 1e-290, 0.05));
}

Search find_liquid(const MixtureState<double>& state, double p, double remembered) {
  for (const double start : {remembered, cold_liquid_start})
    if (start > 0) {
      const Search near = search(state, p, Side::liquid, start);
      if (near.outcome != Outcome::failed) return near;
    }
  return search(state, p, Side::liquid, liquid_start);
}

/// The density iteration from its usual start, where the search has not ended.
double iterated_root(const MixtureState<double>& state, double p, Side side) {
  double eta = side == Side::liquid ? liquid_start : vapour_start;
  densiter(state, p, eta);
  return eta;
}

double gibbs(const MixtureState<double>& state, double p, double eta) {
  const double rho = eta * state.rho_eta;
  const double z = p / (pressure_factor * state.t * rho);
  return residual_a(state, rho) + z - std::log(z);
}

}  // namespace

double find_root(const MixtureState<double>& state, double p, Root root, RootMemory& memory) {
  const Search vapour = find_vapour(state, p, memory.vapour);
  const Search liquid = find_liquid(state, p, memory.liquid);
  memory = {liquid.eta, vapour.eta};
  const bool has_vapour = vapour.outcome == Outcome::found, has_liquid = liquid.outcome == Outcome::found;
  double dilute = vapour.eta, dense = liquid.eta;
  if (vapour.outcome == Outcome::failed || liquid.outcome == Outcome::failed || !(has_vapour || has_liquid)) {
    memory = {};
    dilute = iterated_root(state, p, Side::vapour);
    dense = iterated_root(state, p, Side::liquid);
  } else if (!has_vapour) {
    return dense;
  } else if (!has_liquid) {
    return dilute;
  }
  if (root == Root::liquid) return dense;
  if (root == Root::vapour || std::abs(dense - dilute) < 1e-9 * dense) return dilute;
  return gibbs(state, p, dilute) > gibbs(state, p, dense) ? dense : dilute;
}

}  // namespace tessarel::eos
