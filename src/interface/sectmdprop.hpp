// Second-order properties of a homogeneous state.
#pragma once

#include "eos/model.hpp"

namespace tessarel::interface {

/// Molar values, in J, mol, K, Pa, m3; pressure derivatives by T at constant v and by v at constant T.
struct SecondOrder {
  double cv, dpdt, dpdv, d2pdt2, d2pdv2, d2pdtdv, dcvdt;
};

/// At temperature `t` [K], number density `rho` [1/A3], composition `x`.
SecondOrder calc_sectmdprop(const eos::Eos& eos, int n, const double* x, double t, double rho);

}  // namespace tessarel::interface
