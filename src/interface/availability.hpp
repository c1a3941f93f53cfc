// What this version does not calculate yet. A request that needs it is answered with a text and never with a number;
// this file is the only place that knows.
#pragma once

#include "support/text.hpp"

namespace tessarel::interface {

inline constexpr Message only_single_phase =
    " not available yet: only single-phase states, with \"Lph\" or \"Vph\" in positions 4 to 6...";
inline constexpr Message no_solver = " not available yet: its solver is not part of this version...";

}  // namespace tessarel::interface
