// Critical point and working range of a selected fluid: what the analysis at selection finds, and the solvers search
// in.
#pragma once

#include "fluid/parameters.hpp"

namespace tessarel::fluid {

struct Limits {
  double tc = 0, pc = 0, rhoc = 0;      ///< critical point [K], [Pa], [mol/m3]; of a mixture the pseudo-critical one
  double tcritherm = 0, pcritherm = 0;  ///< cricondentherm [K], [Pa]
  double tcribar = 0, pcribar = 0;      ///< cricondenbar [K], [Pa]
  double tlowest = 0, thighest = 0;     ///< working range of the temperature [K]
  double plowest = 0, plowest_bub = 0, phighest = 0;  ///< ... and of the pressure [Pa]
  Vector tci{}, pci{};                                ///< critical points of the pure components [K], [Pa]
};

}  // namespace tessarel::fluid
