// What the building-block functions of the dispersion term share: the mean segment number of the composition in hand
// and the coefficients of the integrals, with their derivatives by it.
#pragma once

#include "eos/dispersion.hpp"

namespace tessarel::families {

struct Working {
  double mmean = 1.0;  ///< mean segment number
  eos::Powers apar{}, apar_x{}, apar_xx{}, apar_xxx{};
  eos::Powers bpar{}, bpar_x{}, bpar_xx{}, bpar_xxx{};
};

/// As the last call of set_mmean left it.
extern Working working;

/// Mean segment number of the mixture `x`, or of component `ipure` (from 1) alone, and the coefficients at it.
void set_mmean(int n, const double* x, int ipure);

}  // namespace tessarel::families
