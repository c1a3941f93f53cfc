// The quick routes of mixtures to a state of given vapour fraction q: a state on the line of q by the equations of the
// envelope, then Newton's method along it.
#include <algorithm>
#include <cmath>

#include "envelope/queries.hpp"
#include "flash/adapters.hpp"
#include "flash/wilson.hpp"
#include "solvers/phase_mix.hpp"
#include "solvers/quick_state.hpp"

namespace tessarel::solvers {

using flash::pascal_per_bar;
using fluid::at;
using fluid::gas_constant;

namespace {

/// Two phases on the line of a vapour fraction.
struct OnLine {
  double t = 0, p = 0;
  flash::Split split;
};

/// By the equations of the envelope, with its phases evaluated; false if none is found, or not an equilibrium.
bool split_of_quality(const Context& context, double q, char given, double value, OnLine& found) {
  const eos::Fluid& fluid = context.fluid;
  const bool by_t = given == 'T';
  envelope::SaturationPoint point;
  if (envelope::calc_prop_q(fluid, q, given, by_t ? value : value / pascal_per_bar, point) != 0) return false;
  found.t = by_t ? value : point.result;
  found.p = by_t ? point.result * pascal_per_bar : value;
  const flash::Conditions conditions{fluid.eos, fluid.n, found.t, found.p};
  flash::Split& split = found.split;
  split.liquid.x = point.x;
  split.vapour.x = point.y;
  split.beta = q;
  flash::evaluate(conditions, split.liquid);
  flash::evaluate(conditions, split.vapour);
  split.lnk = flash::log_ratios(fluid.n, fluid.z, split);
  flash::compare_fugacities(fluid.n, fluid.z, split);
  // The feed of q vapour and 1 - q liquid: q would belong to the other phase else.
  return split.vapour.rho <= split.liquid.rho && flash::in_equilibrium(fluid.n, fluid.z, split);
}

/// From one state of the line of q to that with another t, p or v by Newton's method, in smaller steps where it fails.
bool follow(const Context& context, Given given, double q, double from, double to, OnLine& state) {
  const auto [first, second] = flash::properties_of(given);
  double share = 0, step = 1;
  for (int pass = 0; pass < 12 && step > 0.03; ++pass) {
    const double next = std::min(1.0, share + step);
    const double value = next == 1.0 ? to : from * std::pow(to / from, next);
    const double a = first == Property::q ? q : reduced(first, value);
    const double b = second == Property::q ? q : reduced(second, value);
    flash::GeneralState found;
    if (flash::refine_split(given, a, b, context.fluid, state.split, state.t, state.p / pascal_per_bar, found) &&
        found.split.vapour.rho <= found.split.liquid.rho) {
      state = {found.t, found.p * pascal_per_bar, found.split};
      if (next == 1.0) return true;
      share = next;
      step *= 2.0;
    } else {
      step *= 0.5;
    }
  }
  return false;
}

/// Whether the flash at t, p finds the same phases.
bool found_by_flash(const Context& context, double t, double p, const flash::Split& split) {
  const flash::PtResult flash = flash::flmain(context.fluid, t, p, false, nullptr, nullptr);
  if (!flash.two_phases()) return false;
  constexpr double same = 1e-6;
  for (std::size_t i = 0; i < at(context.n()); ++i)
    if (!(std::abs(flash.x[i] - split.liquid.x[i]) < same && std::abs(flash.y[i] - split.vapour.x[i]) < same))
      return false;
  return true;
}

/// Takes a state with the q and the T, P or v of `state`.
bool take_quality(const Context& context, const OnLine& found, State& state, double* x, double* y) {
  const eos::Fluid& fluid = context.fluid;
  State result{found.t, found.p, 0, 0, 0, 0, 0};
  if (!within_limits(context.limits(), result.t, result.p)) return false;
  if (!found_by_flash(context, result.t, result.p, found.split)) return false;
  take_split(context, found.split, result, x, y);
  if (!finite(result)) return false;
  result.q = state.q;
  state = result;
  ++fluid.eos.work.statistics.quick_states;
  return true;
}

/// Temperature at which Wilson's K give the volume v at vapour fraction q, the vapour an ideal gas.
double estimated_t(const Context& context, double q, double v) {
  const eos::Fluid& fluid = context.fluid;
  const auto volume = [&](double t) {
    const fluid::Vector lnk = flash::wilson_lnk(fluid, t, 1.0);
    // The sum of z (K - 1) / (1 + q (K - 1)) falls along ln p.
    double lo = -60.0, hi = 60.0;
    for (int pass = 0; pass < 40; ++pass) {
      const double lnp = 0.5 * (lo + hi);
      double sum = 0;
      for (int i = 0; i < fluid.n; ++i) {
        const double k = std::exp(lnk[at(i)] - lnp);
        sum += fluid.z[i] * (k - 1.0) / (1.0 + q * (k - 1.0));
      }
      (sum > 0 ? lo : hi) = lnp;
    }
    return q * gas_constant * t / std::exp(0.5 * (lo + hi));
  };
  double cold = context.limits().tlowest, hot = std::max(1.2 * cold, 1.3 * mean_critical_t(fluid));
  for (int pass = 0; pass < 12; ++pass) {
    const double t = 0.5 * (cold + hot);
    (volume(t) > v ? cold : hot) = t;
  }
  return 0.5 * (cold + hot);
}

}  // namespace

bool quick_quality(const Context& context, char given, State& state, double* x, double* y) {
  if (!context.quick || context.exhausted()) return false;
  const bool by_t = given == 'T';
  const double value = by_t ? state.t : state.p;
  // Near the critical point the estimate fails, or leads to a state that is not stable: then from a colder one, or one
  // of lower pressure.
  for (const double factor : {1.0, by_t ? 0.95 : 0.8, by_t ? 0.8 : 0.4}) {
    OnLine found;
    if (!split_of_quality(context, state.q, given, factor * value, found)) continue;
    if (factor != 1.0 && !follow(context, by_t ? Given::tq : Given::pq, state.q, factor * value, value, found))
      continue;
    State result = state;
    if (!take_quality(context, found, result, x, y)) continue;
    (by_t ? result.t : result.p) = value;
    state = result;
    return true;
  }
  return false;
}

bool quick_quality_volume(const Context& context, State& state, double* x, double* y) {
  if (!context.quick || context.exhausted()) return false;
  // ln v along the line of given vapour fraction, nearly linear in ln t, until Newton's method takes over.
  constexpr double near = 0.7, hot = 0.07;
  double y_now = std::log(estimated_t(context, state.q, state.v)), last_y = 0, last_error = 0;
  bool any = false;
  for (int pass = 0; pass < 30; ++pass) {
    OnLine found;
    if (!split_of_quality(context, state.q, 'T', std::exp(y_now), found)) {
      // Too near the critical point, or beyond it.
      y_now = any ? 0.5 * (y_now + last_y) : y_now - hot;
      continue;
    }
    const double v =
        fluid::avogadro_factor * ((1.0 - state.q) / found.split.liquid.rho + state.q / found.split.vapour.rho);
    const double error = std::log(v / state.v);
    if (std::abs(error) < near) {
      const double given = state.v;
      if (follow(context, Given::vq, state.q, v, given, found) && take_quality(context, found, state, x, y)) {
        state.v = given;
        return true;
      }
    }
    if (any && y_now == last_y) return false;
    // Cold and dilute v falls like exp(10 tc / t).
    double step = error / 15.0;
    if (any && error != last_error) step = -error * (y_now - last_y) / (error - last_error);
    any = true;
    last_y = y_now;
    last_error = error;
    y_now += std::clamp(step, -0.1, 0.1);
    if (std::abs(y_now - last_y) < 1e-9) return false;
  }
  return false;
}

namespace {

/// States along an isotherm, an isobar or an isochore of a mixture, by the share of the way across the range.
class Line {
 public:
  Line(const Context& context, Given given, const State& state, double* x, double* y)
      : context_(context),
        given_(given),
        state_(state),
        hot_(std::min(context.limits().thighest, 1.7 * mean_critical_t(context.fluid))),
        x_(x),
        y_(y) {}

  struct Point {
    bool known = false, two_phases = false;
    double share = 0, t = 0, p = 0, q = 0;
    flash::Split split{};
  };
  Point at(double share) {
    const eos::Fluid& fluid = context_.fluid;
    const fluid::Limits& limits = context_.limits();
    const bool isotherm = given_ == Given::tq;
    Point point;
    point.share = share;
    point.t = isotherm ? state_.t : limits.tlowest + share * (hot_ - limits.tlowest);
    if (given_ == Given::vq) {
      State on_line{point.t, 0, state_.v, 0, 0, 0, 0};
      point.known = quick_state(context_, Given::tv, on_line, x_, y_);
      point.p = on_line.p;
      point.q = on_line.q;
      point.two_phases = point.known && point.q > 0 && point.q < 1;
      if (point.two_phases) {
        point.split.beta = point.q;
        std::copy_n(x_, fluid.n, point.split.liquid.x.begin());
        std::copy_n(y_, fluid.n, point.split.vapour.x.begin());
        point.split.lnk = flash::log_ratios(fluid.n, fluid.z, point.split);
      }
      return point;
    }
    point.p = isotherm ? limits.plowest * std::pow(limits.phighest / limits.plowest, share) : state_.p;
    const flash::PtResult flash = flash::flmain(fluid, point.t, point.p, false, nullptr, nullptr);
    point.two_phases = flash.two_phases();
    point.known = point.two_phases || flash.code == 3;
    point.split = flash.split;
    const bool vapour = flash::is_vapour_like({fluid.eos, fluid.n, point.t, point.p}, flash.single);
    point.q = point.two_phases ? flash.beta : vapour ? 1.0 : 0.0;
    return point;
  }
  /// Newton's method from a point of two phases.
  bool refined(const Point& from, State& state) {
    if (!from.two_phases || std::abs(from.q - state.q) > 0.25) return false;
    const auto [first, second] = flash::properties_of(given_);
    const double a = entry(state, first), b = entry(state, second);
    flash::GeneralState found;
    if (!flash::refine_split(given_, reduced(first, a), reduced(second, b), context_.fluid, from.split, from.t,
                             from.p / pascal_per_bar, found))
      return false;
    State result{found.t, found.p * pascal_per_bar, 0, 0, 0, 0, 0};
    if (!within_limits(context_.limits(), result.t, result.p) || found.split.vapour.rho > found.split.liquid.rho)
      return false;
    if (!found_by_flash(context_, result.t, result.p, found.split)) return false;
    take_split(context_, found.split, result, x_, y_);
    if (!finite(result) || std::abs(result.q - state.q) > 1e-9) return false;
    entry(result, first) = a;
    entry(result, second) = b;
    state = result;
    ++context_.fluid.eos.work.statistics.scanned_states;
    return true;
  }

 private:
  const Context& context_;
  Given given_;
  const State state_;
  double hot_;
  double *x_, *y_;
};

}  // namespace

bool quality_from_line(const Context& context, Given given, State& state, double* x, double* y) {
  constexpr int points = 48, halvings = 12;
  Line line(context, given, state, x, y);
  Line::Point last;
  for (int k = 0; k <= points && !context.exhausted(); ++k) {
    // Along an isobar from the hot end, where the vapour is: two liquids can have the same q when cold.
    const double share = static_cast<double>(k) / points;
    Line::Point here = line.at(given == Given::pq ? 1.0 - share : share);
    if (line.refined(here, state)) return true;
    // Between two points on either side of q, or of the phase boundary, one comes closer by halves. The label of one
    // phase need not be that of the phase of which it is what is left.
    const bool edge = last.two_phases != here.two_phases;
    if (last.known && here.known && (edge || (last.q > state.q) != (here.q > state.q))) {
      Line::Point a = last, b = here;
      for (int halving = 0; halving < halvings && !context.exhausted(); ++halving) {
        const Line::Point middle = line.at(0.5 * (a.share + b.share));
        if (!middle.known) break;
        if (line.refined(middle, state)) return true;
        const bool same_kind = middle.two_phases == a.two_phases, same_side = (middle.q > state.q) == (a.q > state.q);
        const bool like_a = same_kind && (same_side || (!a.two_phases && b.two_phases));
        (like_a ? a : b) = middle;
      }
    }
    last = here;
  }
  return false;
}

}  // namespace tessarel::solvers
