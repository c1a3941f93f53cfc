// From the text of an input pair to the solver that runs: one table for the property calls.
#pragma once

#include "interface/input_spec.hpp"
#include "interface/session.hpp"
#include "solvers/two_phase.hpp"

namespace tessarel::interface {

/// In what the property calls differ.
struct Dialect {
  bool metastable;              ///< knows "Pm" and "Tm"
  std::string_view quote;       ///< around the code in a message
  solvers::TwoPhaseSolver* hs;  ///< runs for "hs"
};
inline constexpr Dialect of_tmdprop{true, "'", solvers::hs_simple};
inline constexpr Dialect of_allphase{false, "\"", solvers::hs};
inline constexpr Dialect of_saturated{false, "\"", solvers::hs_simple};

inline constexpr Message no_state = "TESSAREL error: no finite state found for the input values...";

bool all_finite(std::initializer_list<double> values);

/// The state of a call: the pair at entry, all of it after success, what was reached after a failure.
struct Solution {
  solvers::State state;
  solvers::PhaseValues phases;  ///< "TP" of phase code 3: vapour [1] and liquid [2]; else as at entry
  double *x, *y;                ///< n mole fractions each
};

/// Runs the solver that `spec` names on the session's fluid. Writes the message; false unless it is "No errors".
bool dispatch(Session& session, const Dialect& dialect, const InputSpec& spec, Solution& solution, TextField err);

/// Divides fractions by their sum, unless that is 0 or 1.
void normalise(int n, double* fractions);

}  // namespace tessarel::interface
