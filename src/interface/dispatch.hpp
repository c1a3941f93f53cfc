// What the property calls have in common: an input pair is solved, with the phases of the result.
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

/// The session of a property call; null, with the text in `err`, where an argument is missing or no fluid is selected.
Session* session_of_call(std::initializer_list<const void*> arguments, TextField err);

bool all_finite(std::initializer_list<double> values);

/// The state of a call: the pair at entry, all of it after success, after a failure as at entry but for what "TP" and
/// the solvers of one phase have reached.
struct Solution {
  solvers::State state;
  solvers::PhaseValues phases;  ///< "TP" of phase code 3 with two phases: vapour [1], liquid [2]; else as at entry
  double *x, *y;                ///< n mole fractions each
};

/// Of a mixture of which one component alone is present: what the solvers of pure fluids leave alone, which is q above
/// the critical temperature and both compositions.
void preset_component_alone(const solvers::Context& context, std::string_view code, solvers::State& state, double* x,
                            double* y);

/// Runs the solver that `spec` names on the session's fluid. Writes the message; false unless it is "No errors".
bool dispatch(Session& session, const Dialect& dialect, const InputSpec& spec, Solution& solution, TextField err);

/// Divides fractions by their sum, unless that is 0 or 1.
void normalise(int n, double* fractions);

/// The composition that a phase code stands for. A phase that is not there has that of the whole, `z`.
const double* composition_of(int phase, int n, const double* z, const double* x, const double* y);

}  // namespace tessarel::interface
