// Properties that combine first and second derivatives of the Helmholtz energy of a homogeneous phase.
#pragma once

#include "eos/model.hpp"

namespace tessarel::eos {

/// Molar values, SI units.
struct Derived {
  double cp;     ///< isobaric heat capacity [J/(mol K)]
  double w;      ///< speed of sound [m/s]
  double jt;     ///< Joule-Thomson coefficient, dT/dp at constant h [K/Pa]
  double kappa;  ///< isothermal compressibility, -1/v dv/dp [1/Pa]
  double alpha;  ///< thermal expansion, 1/v dv/dT at constant p [1/K]
  double g;      ///< Gibbs energy h - T s [J/mol]
};

/// At `t` [K], `v` [m3/mol], composition `x`. Without meaning where dp/dv is not negative.
Derived calc_derived(const Eos& eos, int n, const double* x, double t, double v);

}  // namespace tessarel::eos
