// State solvers that know the phase boundary: a pair of properties in, the stable state of one or two phases out.
//
// Every member reads the pair that its name gives and writes the rest: T [K], P [Pa], v [m3/mol], u, h [J/mol],
// s [J/(mol K)], vapour fraction q, and the mole fractions x of the liquid, y of the vapour. Overall values of two
// phases are the mole-weighted mean of the phases'.
//
// A state exists when T and P lie within the limits of the fluid. The order of the ways to it: a quick route, from the
// general flash or the state of a given vapour fraction; the bracketed search over T, P or v with its retries; a
// general flash or a scan behind it, counted in eos::Statistics; the text of the search.
//
// Messages: those of the members ("Input Ph: h < h(Tmin,P)" and the like), of the root finder (brent.hpp), of the
// saturation routines, the density solver and the flashes.
#pragma once

#include <array>
#include <cstdint>

#include "envelope/queries.hpp"
#include "eos/fluid.hpp"
#include "flash/work.hpp"
#include "support/text.hpp"

namespace tessarel::solvers {

/// The phase boundary of a mixture as its owner keeps it. A query can trace the envelope, which makes the critical
/// point and the cricondentherm and cricondenbar of the limits those of the trace.
class Boundary {
 public:
  Boundary() = default;
  Boundary(const Boundary&) = delete;
  Boundary& operator=(const Boundary&) = delete;
  virtual ~Boundary() = default;

  /// Bubble ('B') or dew ('D') point at given 'T' [K] or 'P' [bar]; the other variable in `point.result`. Traces if
  /// owed.
  virtual Message saturation(char given, char what, double value, envelope::SaturationPoint& point) = 0;
  /// Dew temperature [K] at `p` [Pa], for the label of a phase.
  virtual Message dew_t(double p, double& t) = 0;
  /// The traced line; traces if owed, and leaves the limits alone. It has less than two points after a failure.
  virtual const envelope::Table& table() = 0;
  /// The limits as they stand now.
  [[nodiscard]] virtual const fluid::Limits& limits() const = 0;
  /// Whether the limits are those of a trace.
  [[nodiscard]] virtual bool traced() const = 0;
  /// Makes them those of a trace. False if there is none.
  virtual bool trace() = 0;
  /// Whether `t` lies above the critical temperature by more than can be mistaken. Traces nothing.
  virtual bool above_critical(double t) = 0;
};

/// What a solver works on, for one call. `fluid.limits` is the object that `boundary.limits()` returns.
struct Context {
  eos::Fluid fluid;
  Boundary& boundary;
  bool quick = true;  ///< false leaves the quick routes out, so that the searches behind them can be compared
  long long last_pressure = fluid.eos.work.statistics.pressures + flash::most_pressures(fluid);

  [[nodiscard]] bool exhausted() const { return fluid.eos.work.statistics.pressures > last_pressure; }
  [[nodiscard]] int n() const { return fluid.n; }
  [[nodiscard]] bool pure() const { return fluid.pure(); }
  [[nodiscard]] const fluid::Limits& limits() const { return fluid.limits; }
};

struct State {
  double t, p, v, u, h, s, q;
};

/// `x`, `y` have n entries. On failure the state holds what was reached, but for the pair.
using TwoPhaseSolver = Message(const Context& context, State& state, double* x, double* y);

/// Forward calculations. `tp` leaves q of a pure fluid at tc and above; `tp_l`, `tp_v` take the liquid-like and the
/// vapour-like density root, `tv_1` one phase, whatever the boundary says.
TwoPhaseSolver tp, tp_new, tp_l, tp_v, tv_1;
TwoPhaseSolver tv, tv_old, vp, ts;
TwoPhaseSolver vu, vu_new, vh, vs;
TwoPhaseSolver pu, ph, ps, pu_simple, ph_simple, ps_simple, ph_new, ps_new;
TwoPhaseSolver hs, hs_simple;
/// q given, 0 to 1. At q = 0 of a mixture x is not written, at q = 1 y is not.
TwoPhaseSolver pq, tq, vq;
/// The limit of the metastable states of a pure fluid: q is 0 for the liquid, 1 for the vapour. x, y are not written.
TwoPhaseSolver pm, tm;

/// v, u, h, s of the whole [0], the vapour [1] and the liquid [2]; entries that a result has not are left alone.
struct PhaseValues {
  std::array<double, 3> v, u, h, s;
};

/// `tp` by phases: `phase` 0 the whole into [0], 1 the liquid of two phases, 2 their vapour, 3 all three. After a
/// failed flash the state is one phase or two by the q that it left, and the message is that of the flash.
Message tp_ph(const Context& context, double t, double p, int phase, PhaseValues& values, double& q, double* x,
              double* y);

/// The extreme of a function of X between `a` and `b` by Brent's minimiser: `mode` 0 q of the flash at T = fixed, P =
/// X; 1 q at P = fixed, T = X; other v of `tq` at T = X, q = fixed. `sign` 1 looks for a maximum, 0 for a minimum.
/// `best` is the value of the function that was minimised. Message "3285" after 100 passes.
Message brent_extreme(const Context& context, std::int32_t mode, std::int32_t sign, double fixed, double a, double b,
                      double& xbest, double& best);

}  // namespace tessarel::solvers
