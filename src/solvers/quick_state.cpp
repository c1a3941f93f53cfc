#include "solvers/quick_state.hpp"

#include <algorithm>
#include <cmath>

#include "envelope/queries.hpp"
#include "flash/adapters.hpp"
#include "flash/wilson.hpp"
#include "solvers/phase_mix.hpp"
#include "solvers/search.hpp"

namespace tessarel::solvers {

using flash::pascal_per_bar;
using fluid::at;
using fluid::gas_constant;

double& entry(State& state, Property property) {
  switch (property) {
    case Property::t:
      return state.t;
    case Property::p:
      return state.p;
    case Property::v:
      return state.v;
    case Property::u:
      return state.u;
    case Property::h:
      return state.h;
    case Property::q:
      return state.q;
    case Property::s:
      break;
  }
  return state.s;
}

bool within_limits(const fluid::Limits& limits, double t, double p) {
  constexpr double slack = 1e-11;
  return t >= limits.tlowest * (1.0 - slack) && t <= limits.thighest * (1.0 + slack) &&
         p >= limits.plowest * (1.0 - slack) && p <= limits.phighest * (1.0 + slack);
}

namespace {

/// Units of the general flash.
double reduced(Property property, double value) {
  switch (property) {
    case Property::t:
    case Property::q:
      return value;
    case Property::p:
      return value / pascal_per_bar;
    case Property::v:
      return value / gas_constant * pascal_per_bar;
    default:
      return value / gas_constant;
  }
}

/// Two phases at t, p of `state`: q and the overall values, x and y.
void take_split(const Context& context, const flash::Split& split, State& state, double* x, double* y) {
  const eos::Eos& eos = context.fluid.eos;
  const auto of = [&](const flash::Phase& phase) {
    return values_at(eos, context.n(), phase.x.data(), state.t, state.p, fluid::avogadro_factor / phase.rho);
  };
  state.q = split.beta;
  assign(state, mix(of(split.liquid), of(split.vapour), split.beta));
  std::copy_n(split.liquid.x.begin(), context.n(), x);
  std::copy_n(split.vapour.x.begin(), context.n(), y);
}

bool finite(const State& s) {
  return std::isfinite(s.t) && std::isfinite(s.p) && std::isfinite(s.v) && std::isfinite(s.u) && std::isfinite(s.h) &&
         std::isfinite(s.s) && std::isfinite(s.q);
}

}  // namespace

bool quick_state(const Context& context, Given given, State& state, double* x, double* y) {
  if (!context.quick) return false;
  if (context.pure()) return quick_pure_state(context, given, state);
  const fluid::Limits& limits = context.limits();
  const auto [first, second] = flash::properties_of(given);
  const double a = entry(state, first), b = entry(state, second);
  if (second == Property::p && !within_limits(limits, limits.tlowest, b)) return false;
  if (first == Property::t && !within_limits(limits, a, limits.plowest)) return false;
  const flash::Range range{
      limits.tlowest, limits.thighest, limits.plowest / pascal_per_bar, limits.phighest / pascal_per_bar, false, 12000};
  flash::GeneralState found;
  if (flash::genflash(given, reduced(first, a), reduced(second, b), context.fluid, found, range) != 0) return false;
  State result{found.t, found.p * pascal_per_bar, 0, 0, 0, 0, 0};
  if (!within_limits(limits, result.t, result.p)) return false;
  if (found.two_phases) {
    if (!(found.bv > 0 && found.bv < 1)) return false;
    take_split(context, found.split, result, x, y);
  } else {
    assign(result, values_at(context.fluid.eos, context.n(), context.fluid.z, result.t, result.p,
                             fluid::avogadro_factor / found.single.rho));
    result.q = label_of(context, result.t, result.p, found.single);
    std::fill_n(x, context.n(), 0.0);
    std::fill_n(y, context.n(), 0.0);
    std::copy_n(context.fluid.z, context.n(), result.q > 0 ? y : x);
  }
  if (!finite(result)) return false;
  entry(result, first) = a;
  entry(result, second) = b;
  state = result;
  ++context.fluid.eos.work.statistics.quick_states;
  return true;
}

namespace {

/// A state of given vapour fraction with its phases evaluated; false if none is found, or not a stable one.
bool split_of_quality(const Context& context, double q, char given, double value, double& t, double& p,
                      flash::Split& split) {
  const eos::Fluid& fluid = context.fluid;
  const bool by_t = given == 'T';
  envelope::SaturationPoint point;
  if (envelope::calc_prop_q(fluid, q, given, by_t ? value : value / pascal_per_bar, point) != 0) return false;
  t = by_t ? value : point.result;
  p = by_t ? point.result * pascal_per_bar : value;
  const flash::Conditions conditions{fluid.eos, fluid.n, t, p};
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

bool take_quality(const Context& context, const flash::Split& split, State& state, double* x, double* y) {
  const eos::Fluid& fluid = context.fluid;
  State result = state;
  if (!within_limits(context.limits(), result.t, result.p)) return false;
  if (!found_by_flash(context, result.t, result.p, split)) return false;
  take_split(context, split, result, x, y);
  if (!finite(result)) return false;
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
  double cold = context.limits().tlowest, hot = std::max(1.2 * cold, 1.3 * context.limits().tc);
  for (int pass = 0; pass < 12; ++pass) {
    const double t = 0.5 * (cold + hot);
    (volume(t) > v ? cold : hot) = t;
  }
  return 0.5 * (cold + hot);
}

}  // namespace

bool quick_quality(const Context& context, char given, State& state, double* x, double* y) {
  if (!context.quick) return false;
  flash::Split split;
  State result = state;
  return split_of_quality(context, state.q, given, given == 'T' ? state.t : state.p, result.t, result.p, split) &&
         take_quality(context, split, result, x, y) && ((state = result), true);
}

bool quick_quality_volume(const Context& context, State& state, double* x, double* y) {
  // ln v along the line of given vapour fraction, nearly linear in ln t.
  State result = state;
  flash::Split split;
  double y_now = std::log(estimated_t(context, state.q, state.v)), last_y = 0, last_error = 0, smallest = HUGE_VAL;
  for (int pass = 0; pass < 30; ++pass) {
    const double t = std::exp(y_now);
    if (!split_of_quality(context, state.q, 'T', t, result.t, result.p, split)) {
      if (pass == 0) return false;
      y_now = 0.5 * (y_now + last_y);  // the line may end here
      continue;
    }
    const double v = fluid::avogadro_factor * ((1.0 - state.q) / split.liquid.rho + state.q / split.vapour.rho);
    const double error = std::log(v / state.v);
    if (std::abs(error) < 1e-14 || (std::abs(error) < 1e-11 && std::abs(error) >= 0.5 * smallest)) {
      if (!take_quality(context, split, result, x, y)) return false;
      result.v = state.v;
      state = result;
      return true;
    }
    smallest = std::min(smallest, std::abs(error));
    // Cold and dilute v falls like exp(10 tc / t).
    double step = error / 15.0;
    if (pass > 0 && error != last_error) step = -error * (y_now - last_y) / (error - last_error);
    last_y = y_now;
    last_error = error;
    y_now += std::clamp(step, -0.1, 0.1);
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
        hot_(std::min(context.limits().thighest, 1.5 * std::max(context.limits().tc, context.limits().tcritherm))),
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
  const long long before = context.fluid.eos.work.statistics.pressures;
  const auto exhausted = [&] { return context.fluid.eos.work.statistics.pressures - before > 2 * most_pressures; };
  for (int k = 0; k <= points && !exhausted(); ++k) {
    Line::Point here = line.at(static_cast<double>(k) / points);
    if (line.refined(here, state)) return true;
    // Between two points on either side of q one comes closer by halves.
    if (last.known && here.known && (last.q > state.q) != (here.q > state.q)) {
      Line::Point a = last, b = here;
      for (int halving = 0; halving < halvings && !exhausted(); ++halving) {
        const Line::Point middle = line.at(0.5 * (a.share + b.share));
        if (!middle.known) break;
        if (line.refined(middle, state)) return true;
        ((middle.q > state.q) == (a.q > state.q) ? a : b) = middle;
      }
    }
    last = here;
  }
  return false;
}

}  // namespace tessarel::solvers
