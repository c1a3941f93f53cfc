#include "solvers/phase_mix.hpp"

#include <algorithm>
#include <cmath>

#include "eos/caloric.hpp"
#include "eos/density.hpp"
#include "eos/pressure.hpp"
#include "flash/general_flash.hpp"
#include "solvers/pure_saturation.hpp"

namespace tessarel::solvers {

using flash::PtResult;

Values values_at(const eos::Eos& eos, int n, const double* x, double t, double p, double v) {
  Values r{v, 0, 0, 0};
  eos::calc_hsu(eos, n, x, t, p, v, r.h, r.s, r.u);
  return r;
}

double root_volume(const eos::Eos& eos, int n, const double* x, double t, double p, Root root) {
  const Arena::Frame frame(eos.arena());
  eos::MixtureState<double> state;
  prepare(eos, state, n, x, 0, t);
  eos::RootMemory memory;
  return fluid::avogadro_factor / (eos::find_root(state, p, root, memory) * state.rho_eta);
}

Message phase_at(const eos::Eos& eos, int n, const double* x, double t, double p, int phase, Values& values) {
  double v = 0;
  const Message message = eos::calc_v(eos, n, x, t, p, phase, v);
  if (ok(message)) values = values_at(eos, n, x, t, p, v);
  return message;
}

void fill_with_feed(const Context& context, double* x, double* y) {
  std::copy_n(context.fluid.z, context.n(), x);
  std::copy_n(context.fluid.z, context.n(), y);
}

namespace {

constexpr double dew_slack = 0.0001;

}  // namespace

double label_of(const Context& context, double t, double p, const flash::Phase& phase) {
  const fluid::Limits& limits = context.limits();
  double dew = 0;
  // No mixture has its critical temperature so far below the mean of those of its components. Where the traced one can
  // change the label it is asked for, so that a label does not depend on the calls before; gases mostly do without.
  constexpr double below_any_critical = 0.8;
  if (!context.boundary.traced() && t >= below_any_critical * limits.tc) {
    if (context.boundary.above_critical(t)) return 1.0;
    if (p < limits.pc && ok(context.boundary.dew_t(p, dew)) && dew - dew_slack <= t) return 1.0;
    context.boundary.trace();
  }
  if (t < limits.tc && p < limits.pc) {
    if (ok(context.boundary.dew_t(p, dew))) return dew - dew_slack <= t ? 1.0 : 0.0;
    // That there is no dew point says nothing about the state.
    return flash::is_vapour_like({context.fluid.eos, context.n(), t, p}, phase) ? 1.0 : 0.0;
  }
  return t < limits.tc ? 0.0 : 1.0;
}

namespace {

/// Counts a phase whose root is not the one that the density solver gives for its name.
void count_other_root(const Context& context, double t, double p, const flash::Phase& phase, bool liquid) {
  const eos::Eos& eos = context.fluid.eos;
  const double* x = phase.x.data();
  const double eta = eos::calc_eta_rho(eos, context.n(), x, 0, t, phase.rho);
  const double remembered = liquid ? phase.roots.liquid : phase.roots.vapour;
  if (std::abs(eta - remembered) < 1e-9 * eta) return;
  double v = 0;
  if (ok(eos::calc_v(eos, context.n(), x, t, p, liquid ? 1 : 2, v)) &&
      std::abs(v * phase.rho / fluid::avogadro_factor - 1.0) > 1e-6)
    ++eos.work.statistics.other_roots;
}

Values stable_phase(const Context& context, double t, double p, const flash::Phase& phase, bool liquid) {
  count_other_root(context, t, p, phase, liquid);
  return values_at(context.fluid.eos, context.n(), phase.x.data(), t, p, fluid::avogadro_factor / phase.rho);
}

}  // namespace

Message flashed_state(const Context& context, const PtResult& flash, int phase, State& state, PhaseValues* values,
                      double* x, double* y) {
  const int n = context.n();
  const eos::Eos& eos = context.fluid.eos;
  const auto [t, p] = std::pair(state.t, state.p);
  std::copy_n(flash.x.begin(), n, x);
  std::copy_n(flash.y.begin(), n, y);
  state.q = flash.beta;
  Message message = flash::message_of(n, flash);
  if (flash.code == 3 && !std::isnan(flash.beta)) {
    message = no_errors;
    state.q = label_of(context, t, p, flash.single);
  }
  if (state.q >= 1.0 || state.q <= 0.0) {
    const bool liquid = state.q <= 0.0;
    state.q = liquid ? 0.0 : 1.0;
    // What the flash has tried for the other phase is no composition of anything.
    std::copy_n(context.fluid.z, n, liquid ? x : y);
    std::fill_n(liquid ? y : x, n, 0.0);
    assign(state, stable_phase(context, t, p, flash.single, liquid));
    return message;
  }
  Values liquid{}, vapour{};
  if (flash.two_phases()) {
    liquid = stable_phase(context, t, p, flash.split.liquid, true);
    vapour = stable_phase(context, t, p, flash.split.vapour, false);
  } else {
    // What the failed flash has reached. Its message stays.
    phase_at(eos, n, x, t, p, 1, liquid);
    phase_at(eos, n, y, t, p, 2, vapour);
  }
  const Values whole = mix(liquid, vapour, state.q);
  assign(state, phase == 1 ? liquid : phase == 2 ? vapour : whole);
  if (phase == 3 && values != nullptr)
    for (const auto& [entry, of] : {std::pair{std::size_t{1}, &vapour}, {std::size_t{2}, &liquid}}) {
      values->v[entry] = of->v;
      values->u[entry] = of->u;
      values->h[entry] = of->h;
      values->s[entry] = of->s;
    }
  return message;
}

namespace {

/// A pure fluid at t, p. Above tc q keeps its value.
Message pure_tp(const Context& context, State& state) {
  const eos::Eos& eos = context.fluid.eos;
  const double* z = context.fluid.z;
  const int n = context.n();
  Root root = Root::vapour;
  if (state.t < context.limits().tc) {
    PureSaturation saturation;
    const bool known = ok(saturation_at_t(context.fluid, state.t, saturation)) ||
                       solve_saturation_at_t(context.fluid, state.t, saturation);
    const bool liquid = state.p > saturation.p;
    root = !known ? Root::lower_gibbs : liquid ? Root::liquid : Root::vapour;
    state.q = known && liquid ? 0.0 : 1.0;
  }
  assign(state, values_at(eos, n, z, state.t, state.p, root_volume(eos, n, z, state.t, state.p, root)));
  return no_errors;
}

}  // namespace

Message tp(const Context& context, State& state, double* x, double* y) {
  if (context.pure()) return pure_tp(context, state);
  const PtResult flash = flash::flmain(context.fluid, state.t, state.p, false, nullptr, nullptr);
  if (flash.code != 0 && flash.code != 3) {
    state.q = flash.beta;
    std::copy_n(flash.x.begin(), context.n(), x);
    std::copy_n(flash.y.begin(), context.n(), y);
    return flash::message_of(context.n(), flash);
  }
  return flashed_state(context, flash, 0, state, nullptr, x, y);
}

Message tp_ph(const Context& context, double t, double p, int phase, PhaseValues& values, double& q, double* x,
              double* y) {
  State state{t, p, 0, 0, 0, 0, 1.0};
  const Message message = context.pure()
                              ? pure_tp(context, state)
                              : flashed_state(context, flash::flmain(context.fluid, t, p, false, nullptr, nullptr),
                                              phase, state, &values, x, y);
  values.v[0] = state.v;
  values.u[0] = state.u;
  values.h[0] = state.h;
  values.s[0] = state.s;
  q = state.q;
  return message;
}

Message tp_new(const Context& context, State& state, double* x, double* y) {
  if (context.pure()) {
    state.q = 1.0;
    return pure_tp(context, state);
  }
  flash::AbResult r;
  const Message message = flash::calc_ab_flash(context.fluid, 1, state.p, state.t, r);
  assign(state, {r.v, r.u, r.h, r.s});
  state.q = r.q;
  std::copy_n(r.x.begin(), context.n(), x);
  std::copy_n(r.y.begin(), context.n(), y);
  return message;
}

namespace {

Message branch_at_tp(const Context& context, State& state, int phase, double* x, double* y) {
  Values values{};
  const Message message = phase_at(context.fluid.eos, context.n(), context.fluid.z, state.t, state.p, phase, values);
  if (!ok(message)) return message;
  assign(state, values);
  state.q = phase == 1 ? 0.0 : 1.0;
  fill_with_feed(context, x, y);
  return no_errors;
}

}  // namespace

Message tp_l(const Context& context, State& state, double* x, double* y) {
  return branch_at_tp(context, state, 1, x, y);
}
Message tp_v(const Context& context, State& state, double* x, double* y) {
  return branch_at_tp(context, state, 2, x, y);
}
Message tv_1(const Context& context, State& state, double* x, double* y) {
  const eos::Fluid& fluid = context.fluid;
  state.p = eos::calc_p(fluid.eos, fluid.n, fluid.z, state.t, state.v);
  assign(state, values_at(fluid.eos, fluid.n, fluid.z, state.t, state.p, state.v));
  state.q = 0;
  fill_with_feed(context, x, y);
  return no_errors;
}

}  // namespace tessarel::solvers
