// A fluid as the flash, the envelope and the solvers see it: the equation of state, a composition, the limits.
#pragma once

#include <algorithm>

#include "eos/model.hpp"
#include "fluid/limits.hpp"

namespace tessarel::eos {

/// The composition is an argument: a phase of the same fluid is the same Fluid with another `z`.
struct Fluid {
  Eos eos;
  int n;            ///< number of components
  const double* z;  ///< mole fractions
  const fluid::Limits& limits;

  /// One component, or a mixture of which one alone is present.
  [[nodiscard]] bool pure() const {
    return n == 1 || std::count_if(z, z + n, [](double share) { return share != 0.0; }) == 1;
  }
};

}  // namespace tessarel::eos
