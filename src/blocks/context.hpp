// What the building blocks read besides their arguments: the selected fluid with its tables, the working storage, and
// the mean segment number that the host has set. All of it comes from here.
#pragma once

#include "eos/association.hpp"
#include "eos/dispersion.hpp"
#include "eos/polar_tables.hpp"
#include "eos/tables.hpp"

namespace tessarel::blocks {

/// The mean segment number of the last set_mmean, and the coefficients of the integrals with their derivatives by it.
struct Working {
  double mmean = 1.0;
  eos::Powers apar{}, apar_x{}, apar_xx{}, apar_xxx{};
  eos::Powers bpar{}, bpar_x{}, bpar_xx{}, bpar_xxx{};
};

struct Context {
  const fluid_module::Record& parameters;
  const eos::Tables& tables;
  const eos::PolarConstants& polar;
  Arena& arena;
  Working& working;
};

/// That of the selected fluid.
Context selected();

/// The arguments of a block that are not arrays: component count, component alone (0: mixture), power of a moment.
struct Scope {
  Context context;
  int n = 1, ipure = 0, power = 0;
};

/// Sets the mean segment number of the mixture `x`, or of component `ipure` (from 1) alone, and the coefficients at it.
void set_mmean(const Context& context, int n, const double* x, int ipure);

}  // namespace tessarel::blocks
