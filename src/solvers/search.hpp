// The bracketed searches of the state solvers: Brent's method over a forward calculation, its retries, and the scan of
// the bracket behind it.
#pragma once

#include "solvers/brent.hpp"
#include "solvers/two_phase.hpp"

namespace tessarel::solvers {

/// What is searched for and where. `a` is the first end.
struct Bracket {
  TwoPhaseSolver* forward;
  StateIndex unknown, target;
  double a, b;
};

/// Whether a scan of the bracket follows a failed search.
enum class Behind { nothing, scan };

/// The root in the bracket. `state` holds the other property that the forward calculation reads and the target; it
/// becomes the state found, and stays on failure. A search that ends where the residual jumps has failed.
Message find_state(const Context& context, const Bracket& bracket, State& state, double* x, double* y,
                   Behind behind = Behind::scan);

/// The same with up to `retries` further attempts after a failure, each with the upper end 0.95 and the lower end 1.05
/// times the last.
Message find_state_retrying(const Context& context, Bracket bracket, int retries, State& state, double* x, double* y);

/// The scan alone.
bool scan_for_state(const Context& context, const Bracket& bracket, State& state, double* x, double* y);

/// Bound on the work of one search with all its retries, in pressures evaluated: what it does not find in them a scan
/// finds sooner. Other searches end with the work that the call may do.
inline constexpr long long most_pressures_of_retries = 40000;

}  // namespace tessarel::solvers
