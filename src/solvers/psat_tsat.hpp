// Working range of the selected fluid, module calc_psat_tsat.
#pragma once

#include "support/text.hpp"

namespace tessarel::calc_psat_tsat {

/// Sets the range of temperature [K] and pressure [Pa] in which the two-phase-aware solvers search: the range that
/// the parameters of all components share. Always "No errors".
Message calc_ptrange();

}  // namespace tessarel::calc_psat_tsat
