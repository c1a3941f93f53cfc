// Tracer of the phase envelope: a continuation along the line of zero amount of one phase, through the critical point
// and down the other branch (Michelsen 1980, doi:10.1016/0378-3812(80)80001-X).
#pragma once

#include <cstdint>

#include "envelope/saturation.hpp"
#include "eos/fluid.hpp"

namespace tessarel::envelope {

// How a run or a trace ends, besides 0.
inline constexpr int step_too_small = 450, bad_start = 451, table_full = 452, no_critical_point = 453,
                     pressure_too_high = 472;

/// Traces the envelope of `fluid` into `table`. Returns 0, bad_start, or no_critical_point with the line itself in
/// place. With `debug` above 0 the steps go to the standard output.
int calc_phaseenv(const eos::Fluid& fluid, Table& table, int debug = 0);

/// First estimate: ln K by Wilson, and the temperature (spec n + 1, `value` in bar known: n + 2) at which the ideal
/// solution is at its bubble (beta 0) or dew point (beta 1). spec counts from 1.
void idealsolution(const eos::Fluid& fluid, double beta, int spec, double value, Point& x);

/// At most `passes` substitutions of ln K, the free one of ln T and ln P corrected by the sum of y - x.
void successsubst(const eos::Fluid& fluid, double beta, int spec, Point& x, int passes = 10);

/// A cubic in the distance s from the newest point for each variable.
struct Cubic {
  std::array<Point, 4> c{};
  [[nodiscard]] double value(std::size_t i, double s) const {
    return c[0][i] + s * (c[1][i] + s * (c[2][i] + s * c[3][i]));
  }
  [[nodiscard]] double slope(std::size_t i, double s) const { return c[1][i] + s * (2 * c[2][i] + s * 3 * c[3][i]); }
};

/// Cuts away where the line crosses itself with the same feed phase: behind such a point, where two incipient phases
/// are in equilibrium with the feed, the line is metastable, returns at limits of stability and passes it again. The
/// point comes into the table twice, once for each phase. True if anything was cut.
bool cut_loops(const eos::Fluid& fluid, Table& table);
/// The stretch of the first run that the second one crosses so, 0 if there is none.
int meeting_of_runs(const eos::Fluid& fluid, const Table& table);

/// The clean-up of two runs that both stopped early (clean_up.cpp).
void drop_first_run(Table& table);
/// Turns the dew run round, so that its low end is the last point.
void turn_second_run(Table& table);
void postprocphaseenv(int n, int beta, Table& table, int& ierr);
/// Joins two runs by all variables instead of the pressure alone; the clean-up takes the other form.
void removeoverlap2(int n, Table& table);
/// Extrema of T and P: of the points and of the turning points that are left, and the ends of the line.
void resetextrema(int n, Table& table);
/// Inserts the critical point `tc` [K], `pc` [bar]; no_critical_point where it fits nowhere.
int insertcritpnt(int n, double tc, double pc, Table& table);

}  // namespace tessarel::envelope
