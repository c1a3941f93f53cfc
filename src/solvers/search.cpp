#include "solvers/search.hpp"

#include <algorithm>
#include <array>
#include <cmath>

#include "fluid/parameters.hpp"

namespace tessarel::solvers {
namespace {

using Vars = std::array<double, 7>;

Vars vars_of(const State& s) {
  return {s.t, s.p, s.v, s.u, s.h, s.s, s.q};
}
State state_of(const Vars& v) {
  return {v[0], v[1], v[2], v[3], v[4], v[5], v[6]};
}

/// The forward calculation with a bound on its work.
class Forward {
 public:
  Forward(const Context& context, TwoPhaseSolver& solver) : context_(context), solver_(solver) {}

  Message operator()(double& t, double& p, double& v, double& u, double& h, double& s, double& q, double* x,
                     double* y) {
    if (exhausted()) return brent::no_convergence;
    State state{t, p, v, u, h, s, q};
    const Message message = solver_(context_, state, x, y);
    t = state.t, p = state.p, v = state.v, u = state.u, h = state.h, s = state.s, q = state.q;
    return message;
  }
  [[nodiscard]] bool exhausted() const {
    return context_.fluid.eos.work.statistics.pressures - before_ > most_pressures;
  }

 private:
  const Context& context_;
  TwoPhaseSolver& solver_;
  const long long before_ = context_.fluid.eos.work.statistics.pressures;
};

/// Scale in which a property is known: energies may be near zero by chance.
double scale_of(StateIndex index, Vars v) {
  constexpr double r = fluid::gas_constant;
  const double size = std::abs(entry(v.data(), index));
  switch (index) {
    case kU:
    case kH:
      return size + r * v[0];
    case kS:
      return size + r;
    case kQ:
      return 1.0;
    default:
      return size;
  }
}

Message search(const Bracket& bracket, Forward& forward, State& state, double* x, double* y) {
  Vars vars = vars_of(state);
  const std::array<std::int32_t, 2> ptr = {bracket.unknown, bracket.target};
  const double target = entry(vars.data(), bracket.target);
  Message err = no_errors;
  const double root = brent_root(forward, bracket.a, bracket.b, vars.data(), x, y, ptr.data(), err);
  if (!ok(err)) return err;
  // The last evaluation can have been on the other side of the root.
  entry(vars.data(), bracket.unknown) = root;
  err = forward(vars[0], vars[1], vars[2], vars[3], vars[4], vars[5], vars[6], x, y);
  if (!ok(err)) return err;
  // The root is known to rounding, which is more of a steep property than of a flat one; a jump is more than both.
  constexpr double jump = 1e-7;
  double& reached = entry(vars.data(), bracket.target);
  if (!(std::abs(reached - target) <= jump * scale_of(bracket.target, vars))) return brent::no_convergence;
  reached = target;
  state = state_of(vars);
  return no_errors;
}

/// Points across the bracket; where the residual changes its sign between neighbours that can be calculated, a search.
bool scan(const Context& context, const Bracket& bracket, State& state, double* x, double* y) {
  constexpr int points = 40;
  const bool logarithmic = bracket.unknown == kP && bracket.a > 0 && bracket.b > 0;
  Forward forward(context, *bracket.forward);
  Vars given = vars_of(state);
  const double target = entry(given.data(), bracket.target);
  double last_x = 0, last_residual = 0;
  bool has_last = false;
  for (int k = 0; k <= points && !forward.exhausted(); ++k) {
    const double share = static_cast<double>(k) / points;
    const double unknown = k == 0        ? bracket.a
                           : k == points ? bracket.b
                           : logarithmic ? bracket.a * std::pow(bracket.b / bracket.a, share)
                                         : bracket.a + share * (bracket.b - bracket.a);
    Vars vars = given;
    entry(vars.data(), bracket.unknown) = unknown;
    const Message message = forward(vars[0], vars[1], vars[2], vars[3], vars[4], vars[5], vars[6], x, y);
    const double residual = entry(vars.data(), bracket.target) - target;
    if (!ok(message) || !std::isfinite(residual)) {
      has_last = false;
      continue;
    }
    if (has_last && !(last_residual > 0 && residual > 0) && !(last_residual < 0 && residual < 0)) {
      Bracket stretch = bracket;
      stretch.a = last_x;
      stretch.b = unknown;
      if (ok(search(stretch, forward, state, x, y))) {
        ++context.fluid.eos.work.statistics.scanned_states;
        return true;
      }
    }
    has_last = true;
    last_x = unknown;
    last_residual = residual;
  }
  return false;
}

}  // namespace

Message find_state(const Context& context, const Bracket& bracket, State& state, double* x, double* y, Behind behind) {
  ++context.fluid.eos.work.statistics.searched_states;
  Forward forward(context, *bracket.forward);
  const Message message = search(bracket, forward, state, x, y);
  if (ok(message) || behind == Behind::nothing) return message;
  return scan(context, bracket, state, x, y) ? no_errors : message;
}

Message find_state_retrying(const Context& context, Bracket bracket, int retries, State& state, double* x, double* y) {
  ++context.fluid.eos.work.statistics.searched_states;
  const Bracket whole = bracket;
  double &upper = bracket.a > bracket.b ? bracket.a : bracket.b, &lower = bracket.a > bracket.b ? bracket.b : bracket.a;
  Forward forward(context, *bracket.forward);
  Message message = no_errors;
  for (int attempt = 0; attempt <= retries; ++attempt) {
    message = search(bracket, forward, state, x, y);
    if (ok(message) || forward.exhausted()) return message;
    lower *= 1.05;
    upper *= 0.95;
  }
  return scan(context, whole, state, x, y) ? no_errors : message;
}

}  // namespace tessarel::solvers
