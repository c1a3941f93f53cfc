// Brent's minimiser (1973, "Algorithms for Minimization without Derivatives", ch. 5): parabolas through the three best
// points, golden sections where those do not settle.
#include <cmath>

#include "flash/pt_flash.hpp"
#include "solvers/two_phase.hpp"

namespace tessarel::solvers {

Message brent_extreme(const Context& context, std::int32_t mode, std::int32_t sign, double fixed, double a, double b,
                      double& xbest, double& best) {
  constexpr int passes = 100;
  constexpr double golden = 0.381966;
  const bool of_volume = mode != 0 && mode != 1;
  const double direction = sign == 1 ? -1.0 : 1.0;
  Message failure = no_errors;
  const auto function = [&](double at) {
    fluid::Vector x{}, y{};
    if (of_volume) {
      State state{at, 0, 0, 0, 0, 0, fixed};
      if (const Message m = tq(context, state, x.data(), y.data()); !ok(m)) failure = m;
      return direction * state.v;
    }
    const double t = mode == 0 ? fixed : at, p = mode == 0 ? at : fixed;
    const flash::PtResult flash = flash::flmain(context.fluid, t, p, false, nullptr, nullptr);
    if (flash.two_phases()) return direction * flash.beta;
    // The vapour fraction of one phase is that of its density; beta is read only of two.
    const bool vapour = flash::is_vapour_like({context.fluid.eos, context.n(), t, p}, flash.single);
    return direction * (vapour ? 1.0 : 0.0);
  };
  double lower = std::fmin(0.9999 * a, 1.0001 * b), upper = std::fmax(0.9999 * a, 1.0001 * b);
  double x = 0.5 * (a + b), second = x, third = x, older = 0, step = 0;
  double fx = function(x), f_second = fx, f_third = fx, fu = 0;
  for (int pass = 0; pass < passes; ++pass) {
    // Each volume is a search of its own: their number is bounded by the work that they take.
    if (context.exhausted()) break;
    if (of_volume && !ok(failure)) {
      xbest = x;
      best = fx;
      return failure;
    }
    const double tol1 = std::abs(x) * 1e-6 + 1e-10, tol2 = 2.0 * tol1, xm = 0.5 * (lower + upper);
    if (std::abs(x - xm) <= tol2 - 0.5 * (upper - lower)) {
      xbest = x;
      best = fx;
      return no_errors;
    }
    bool parabolic = false;
    if (std::abs(older) > tol1) {
      const double r = (x - second) * (fx - f_third);
      double q = (x - third) * (fx - f_second), p = (x - third) * q - (x - second) * r;
      q = 2.0 * (q - r);
      if (q > 0)
        p = -p;
      else
        q = -q;
      const double before = older;
      older = step;
      if (std::abs(p) < std::abs(0.5 * q * before) && p > q * (lower - x) && p < q * (upper - x)) {
        step = p / q;
        const double at = x + step;
        if (at - lower < tol2 || upper - at < tol2) step = std::copysign(tol1, xm - x);
        parabolic = true;
      }
    }
    if (!parabolic) {
      older = x >= xm ? lower - x : upper - x;
      step = golden * older;
    }
    const double u = x + (std::abs(step) >= tol1 ? step : std::copysign(tol1, step));
    // The volume is evaluated at the best point and not at the trial one, which keeps its last value.
    if (of_volume)
      fx = function(x);
    else
      fu = function(u);
    if (fu <= fx) {
      (u >= x ? lower : upper) = x;
      third = second;
      f_third = f_second;
      second = x;
      f_second = fx;
      x = u;
      fx = fu;
    } else {
      (u < x ? lower : upper) = u;
      if (fu <= f_second || second == x) {
        third = second;
        f_third = f_second;
        second = u;
        f_second = fu;
      } else if (fu <= f_third || third == x || third == second) {
        third = u;
        f_third = fu;
      }
    }
  }
  xbest = x;
  best = fx;
  return "3285";
}

}  // namespace tessarel::solvers
