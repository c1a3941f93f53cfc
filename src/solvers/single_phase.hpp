// State solvers that ignore the phase boundary.
//
// Every member has the arguments t [K], p [Pa], v [m3/mol], u, h [J/mol], s [J/(mol K)], reads the pair that its name
// gives and writes the others. `l` and `v` in the name: the liquid-like and the vapour-like density root.
//
// On failure the outputs keep their values but for the unknown of the search, which becomes 0 or the last iterate.
// The searches span 150 K to 1000 K and 1000 Pa to 1e8 Pa, whatever the range of the fluid. Messages: those of the
// root finder (brent.hpp) and of the density solver.
#pragma once

#include "eos/fluid.hpp"
#include "support/text.hpp"

namespace tessarel::solvers {

/// A state solver of one phase.
using Solver = Message(const eos::Fluid& fluid, double& t, double& p, double& v, double& u, double& h, double& s);

Solver tp_lph, tp_vph, tv_1ph;
Solver pv_1ph, ts_1ph, vu_1ph, vh_1ph, vs_1ph;
Solver pu_lph, pu_vph, ph_lph, ph_vph, ps_lph, ps_vph;
Solver hs_lph, hs_vph;

}  // namespace tessarel::solvers
