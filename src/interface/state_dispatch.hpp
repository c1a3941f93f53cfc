// Which solver a host's input pair runs: the one table of the property calls, and the checks before it.
#pragma once

#include <string_view>

#include "interface/input_spec.hpp"
#include "interface/session.hpp"
#include "solvers/single_phase.hpp"
#include "solvers/two_phase.hpp"

namespace tessarel::interface {

struct StateRow {
  std::string_view code;
  /// With the phase boundary. Null for "TP", which has a form of its own (tp_ph).
  solvers::TwoPhaseSolver *pure, *mixture;
  std::string_view variant_text;     ///< exact text of the whole field that selects another solver
  solvers::TwoPhaseSolver* variant;  ///< ... of a mixture; null for none
  bool variant_for_pure;
  solvers::Solver *liquid, *vapour;  ///< single-phase mode, "L" and any other branch; null where there is none
};

/// The value that a letter of an input pair names; a letter that names none, as the marker 'm', stands for q.
double& value_named(char property, solvers::State& state);

/// The row of the pair that `spec` names; null for none.
const StateRow* find_state_row(const InputSpec& spec);
const StateRow* find_state_row(std::string_view code);

/// The solver of a row outside single-phase mode; null for tp_ph.
solvers::TwoPhaseSolver* solver_of(const StateRow& row, const InputSpec& spec, bool pure);

/// What the property calls refuse: values of the pair that are not finite, temperatures, volumes and, without a volume,
/// pressures not above zero, volumes below closest packing; outside single-phase mode also what the phase split
/// refuses.
Message check_pair(Session& session, const StateRow& row, bool single_phase, const solvers::State& state);

/// What a solver of the row has found is a state: "Tm" leaves u, h and s alone where the pressure is negative.
bool is_complete(const StateRow& row, const solvers::State& state);

}  // namespace tessarel::interface
