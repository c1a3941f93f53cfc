// The steps of the general flash. Newton's method and the one-phase solution are in general_flash.cpp, the searches
// behind them in state_searches.cpp.
#pragma once

#include "flash/adapters.hpp"
#include "flash/general_flash.hpp"
#include "flash/specification.hpp"

namespace tessarel::flash {

/// Ends of the two-phase iteration; a phase that vanished is one of the first two.
enum class End { converged, liquid_vanished, vapour_vanished, stuck };

class GeneralFlash {
 public:
  GeneralFlash(Given given, double first, double second, const eos::Fluid& fluid, const Range& range,
               GeneralState& state)
      : spec_{given, first, second}, fluid_(fluid), range_(range), state_(state) {}

  /// Finds the state; 0, left_range or too_many_passes.
  int run();
  /// The two-phase state next to a split at t and p.
  bool run_from(const Split& start, double t, double p);

 private:
  bool from_split(const Split& split, int substitutions);
  End iterate(Equilibrium& equilibrium, Mixing mixing, int passes);
  bool finish_one_phase();
  bool single_phase();
  bool single_by_newton();
  bool single_is_stable();
  bool polish_state();
  int search();
  bool search_in_bracket();
  /// How a search for t or p ended: where the property passes its value at once, three phases meet.
  enum class Bracket { found, jump, below, above, failed };
  Bracket solve_pressure(double t, Property property, double target);
  Bracket solve_temperature(double p, Property property, double target);
  bool search_over_t();
  bool search_over_p(Property inner, double inner_target, Property outer, double outer_target);
  void one_phase_at(double t, double p);
  Properties whole_at_state();
  [[nodiscard]] double value_of(Property property) const {
    return response(property, whole_, state_.t, state_.p, {}).value;
  }

  [[nodiscard]] const eos::Eos& eos() const { return fluid_.eos; }

  Specification spec_;
  const eos::Fluid& fluid_;
  const Range& range_;
  GeneralState& state_;
  PtResult flash_{};        ///< the last inner flash
  Properties whole_{};      ///< of it
  bool exhausted_ = false;  ///< the bound on the cost of a call is reached
  long long fugacities_before_ = fluid_.eos.work.statistics.fugacities;
  double energy_ = 0;  ///< the first property at the volume asked for
};

}  // namespace tessarel::flash
