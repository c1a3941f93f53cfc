#include "solvers/search.hpp"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>

#include "fluid/parameters.hpp"
#include "solvers/quick_state.hpp"

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
  Forward(const Context& context, TwoPhaseSolver& solver, long long most = std::numeric_limits<long long>::max())
      : context_(context), solver_(solver), most_(most) {}

  Message operator()(double& t, double& p, double& v, double& u, double& h, double& s, double& q, double* x,
                     double* y) {
    if (exhausted()) return brent::no_convergence;
    State state{t, p, v, u, h, s, q};
    const Message message = solver_(context_, state, x, y);
    t = state.t, p = state.p, v = state.v, u = state.u, h = state.h, s = state.s, q = state.q;
    return message;
  }
  [[nodiscard]] bool exhausted() const {
    return context_.exhausted() || context_.fluid.eos.work.statistics.pressures - before_ > most_;
  }

 private:
  const Context& context_;
  TwoPhaseSolver& solver_;
  const long long most_, before_ = context_.fluid.eos.work.statistics.pressures;
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

/// The residual at points across a bracket.
class Scan {
 public:
  Scan(const Context& context, const Bracket& bracket, const State& given, double* x, double* y)
      : context_(context),
        bracket_(bracket),
        forward_(context, *bracket.forward),
        given_(vars_of(given)),
        target_(entry(given_.data(), bracket.target)),
        x_(x),
        y_(y) {}

  /// Searches where the residual changes its sign between neighbours that can be calculated, or comes near 0 and turns.
  /// A few points settle most brackets, at a fraction of the work that is allowed.
  bool run(State& state) { return run(12, state) || run(60, state); }

 private:
  bool run(int points, State& state) {
    const bool logarithmic = bracket_.unknown == kP && bracket_.a > 0 && bracket_.b > 0;
    std::array<Point, 3> last{};  // the newest is the last
    for (int k = 0; k <= points && !forward_.exhausted(); ++k) {
      const double share = static_cast<double>(k) / points;
      const double unknown = k == 0        ? bracket_.a
                             : k == points ? bracket_.b
                             : logarithmic ? bracket_.a * std::pow(bracket_.b / bracket_.a, share)
                                           : bracket_.a + share * (bracket_.b - bracket_.a);
      last = {last[1], last[2], at(unknown)};
      if (last[1].valid && last[2].valid && changes(last[1], last[2]) && searched(last[1], last[2], state)) return true;
      if (last[0].valid && last[1].valid && last[2].valid && turns(last) && searched_at_turn(last, state)) return true;
    }
    return false;
  }

  struct Point {
    bool valid = false;
    double unknown = 0, residual = 0;
  };

  Point at(double unknown) {
    Vars vars = given_;
    entry(vars.data(), bracket_.unknown) = unknown;
    const Message message = forward_(vars[0], vars[1], vars[2], vars[3], vars[4], vars[5], vars[6], x_, y_);
    const double residual = entry(vars.data(), bracket_.target) - target_;
    return {ok(message) && std::isfinite(residual), unknown, residual};
  }
  static bool changes(const Point& a, const Point& b) { return (a.residual > 0) != (b.residual > 0); }
  static bool turns(const std::array<Point, 3>& p) {
    const double middle = std::abs(p[1].residual);
    return !changes(p[0], p[1]) && !changes(p[1], p[2]) && middle < std::abs(p[0].residual) &&
           middle <= std::abs(p[2].residual);
  }
  bool searched(const Point& a, const Point& b, State& state) {
    Bracket stretch = bracket_;
    stretch.a = a.unknown;
    stretch.b = b.unknown;
    State found = state;
    if (!ok(search(stretch, forward_, found, x_, y_)) || !within_limits(context_.limits(), found.t, found.p))
      return false;
    state = found;
    ++context_.fluid.eos.work.statistics.scanned_states;
    return true;
  }
  /// Golden sections towards the turn until the residual has the other sign.
  bool searched_at_turn(std::array<Point, 3> p, State& state) {
    constexpr double golden = 0.381966;
    for (int pass = 0; pass < 40 && !forward_.exhausted(); ++pass) {
      const bool right = std::abs(p[2].unknown - p[1].unknown) > std::abs(p[1].unknown - p[0].unknown);
      const Point next = at(p[1].unknown + golden * ((right ? p[2] : p[0]).unknown - p[1].unknown));
      if (!next.valid) return false;
      if (changes(next, p[1])) return searched(p[0], next, state) || searched(next, p[2], state);
      const bool better = std::abs(next.residual) < std::abs(p[1].residual);
      if (better)
        p = right ? std::array<Point, 3>{p[1], next, p[2]} : std::array<Point, 3>{p[0], next, p[1]};
      else
        p[right ? 2 : 0] = next;
      if (std::abs(p[2].unknown - p[0].unknown) < 1e-9 * std::abs(p[1].unknown)) return false;
    }
    return false;
  }

  const Context& context_;
  const Bracket& bracket_;
  Forward forward_;
  Vars given_;
  double target_;
  double *x_, *y_;
};

}  // namespace

bool scan_for_state(const Context& context, const Bracket& bracket, State& state, double* x, double* y) {
  return Scan(context, bracket, state, x, y).run(state);
}

Message find_state(const Context& context, const Bracket& bracket, State& state, double* x, double* y, Behind behind) {
  ++context.fluid.eos.work.statistics.searched_states;
  Forward forward(context, *bracket.forward);
  const Message message = search(bracket, forward, state, x, y);
  if (ok(message) || behind == Behind::nothing) return message;
  return Scan(context, bracket, state, x, y).run(state) ? no_errors : message;
}

Message find_state_retrying(const Context& context, Bracket bracket, int retries, State& state, double* x, double* y) {
  ++context.fluid.eos.work.statistics.searched_states;
  const Bracket whole = bracket;
  double &upper = bracket.a > bracket.b ? bracket.a : bracket.b, &lower = bracket.a > bracket.b ? bracket.b : bracket.a;
  Forward forward(context, *bracket.forward, most_pressures_of_retries);
  Message message = no_errors;
  for (int attempt = 0; attempt <= retries; ++attempt) {
    message = search(bracket, forward, state, x, y);
    if (ok(message)) return message;
    if (forward.exhausted()) break;
    lower *= 1.05;
    upper *= 0.95;
  }
  return Scan(context, whole, state, x, y).run(state) ? no_errors : message;
}

}  // namespace tessarel::solvers
