// Whether a homogeneous fluid of given density is a stable phase.
#pragma once

#include "eos/fluid.hpp"
#include "support/text.hpp"

namespace tessarel::flash {

/// Gibbs energy / RT by which another phase may lie below a phase that counts as stable: saturated phases meet others
/// at 0, and a volume that is off by 1e-10 raises that of a cold liquid by some 1e-9.
inline constexpr double stability_slack = 1e-8;

/// The fluid at `t` [K], `p` [Pa] and the number density `rho` [1/A3] that belongs to them. "No errors" for a stable
/// phase; the refusal of one that splits or goes over to the other density root; the text of a flash that failed.
Message check_stable(const eos::Fluid& fluid, double t, double p, double rho);

}  // namespace tessarel::flash
