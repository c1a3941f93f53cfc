// What the building blocks read besides their arguments.
#pragma once

#include "eos/mixture_state.hpp"

namespace tessarel::blocks {

using eos::Eos;
using fluid::at;
using fluid::nmax;
using numerics::Taylor;

/// The arguments of a block that are not arrays: the equation of state, component count, component alone (0: mixture),
/// power of a moment.
struct Scope {
  Eos eos;
  int n = 1, ipure = 0, power = 0;
};

/// Sets the mean segment number of the mixture `x`, or of component `ipure` (from 1) alone, and the coefficients at it.
void set_mmean(const Eos& eos, int n, const double* x, int ipure);

}  // namespace tessarel::blocks
