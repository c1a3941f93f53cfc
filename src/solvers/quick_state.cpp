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

double mean_critical_t(const eos::Fluid& fluid) {
  double mean = 0;
  for (int i = 0; i < fluid.n; ++i) mean += fluid.z[i] * fluid.limits.tci[fluid::at(i)];
  return mean > 0 ? mean : fluid.limits.tc;
}

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

bool quick_state(const Context& context, Given given, State& state, double* x, double* y) {
  if (!context.quick || context.exhausted()) return false;
  if (context.pure()) return quick_pure_state(context, given, state);
  const fluid::Limits& limits = context.limits();
  const auto [first, second] = flash::properties_of(given);
  const double a = entry(state, first), b = entry(state, second);
  if (second == Property::p && !within_limits(limits, limits.tlowest, b)) return false;
  if (first == Property::t && !within_limits(limits, a, limits.plowest)) return false;
  const flash::Range range{
      limits.tlowest, limits.thighest,      limits.plowest / pascal_per_bar, limits.phighest / pascal_per_bar, false,
      12000,          context.last_pressure};
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
  return accept(context, given, a, b, result, state);
}

bool accept(const Context& context, Given given, double a, double b, State result, State& state) {
  if (!finite(result)) return false;
  const auto [first, second] = flash::properties_of(given);
  entry(result, first) = a;
  entry(result, second) = b;
  state = result;
  ++context.fluid.eos.work.statistics.quick_states;
  return true;
}

}  // namespace tessarel::solvers
