// Residual enthalpy and entropy: those of the fluid less those of the ideal gas at the same temperature and, as no
// volume, at the same pressure. What is left of an equilibrium without ideal-gas heat capacities.
#pragma once

#include "eos/fluid.hpp"
#include "support/text.hpp"

namespace tessarel::solvers {

/// h [J/mol], s [J/(mol K)] of one phase at `t` [K], `p` [Pa], `v` [m3/mol] that belong together.
void calc_hs_res(const eos::Fluid& fluid, double t, double p, double v, double& h, double& s);

/// The stable state at `t` [K], `p` [Pa]: of two phases the mole-weighted mean and their compositions, of one phase
/// what the flash leaves in `x` and `y`. Messages of the flash, but for one phase, and of the density solver.
Message tp_zelmaron(const eos::Fluid& fluid, double t, double p, double& h, double& s, double* x, double* y);

}  // namespace tessarel::solvers
