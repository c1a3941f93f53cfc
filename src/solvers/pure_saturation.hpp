// The saturation line of a pure fluid to rounding, with the volumes of both phases.
#pragma once

#include "eos/fluid.hpp"
#include "support/text.hpp"

namespace tessarel::solvers {

struct PureSaturation {
  double t = 0, p = 0;      ///< [K], [Pa]; as calc_psat and calc_tsat leave them after a failure
  double v_l = 0, v_v = 0;  ///< [m3/mol]
};

/// At `t` or at `p` by equal areas (equal_areas.hpp): from corresponding states, or next to the critical point from the
/// cubic about the inflection, then between the spinodals. False where these find nothing; the range is not looked at.
bool solve_saturation_at_t(const eos::Fluid& fluid, double t, PureSaturation& saturation);
bool solve_saturation_at_p(const eos::Fluid& fluid, double p, PureSaturation& saturation);

/// At `t` or at `p`, with the conditions and messages of calc_psat and calc_tsat, which stand behind the quick way.
Message saturation_at_t(const eos::Fluid& fluid, double t, PureSaturation& saturation);
Message saturation_at_p(const eos::Fluid& fluid, double p, PureSaturation& saturation);

}  // namespace tessarel::solvers
