// Constants of the polar terms, filled at fluid selection and read-only during evaluation: the correlation
// coefficients of the pair and triplet integrals (Gross 2005; Gross & Vrabec 2006; Vrabec & Gross 2008) at the segment
// numbers of the components, and the products of the moments.
#pragma once

#include <array>

#include "fluid/fluid_module.hpp"

namespace tessarel::eos {

using PolarPowers = std::array<double, 5>;  ///< coefficients of eta^0 to eta^4
using PairConstants = std::array<std::array<PolarPowers, fluid_module::nmax>, fluid_module::nmax>;
using TripletConstants = std::array<PairConstants, fluid_module::nmax>;
template <class T>
using PerType = std::array<T, fluid_module::max_types>;

/// Tables by interaction type: 0 dipole-dipole, 1 quadrupole-quadrupole, 2 dipole-quadrupole.
struct PolarConstants {
  PairConstants dd_a, dd_b, qq_a, qq_b, dq_a, dq_b;                      ///< [i][j][power]
  TripletConstants dd_c, qq_c, dq_c;                                     ///< [i][j][l][power]
  PerType<fluid_module::Matrix> gamma2;                                  ///< [type][j][i]
  PerType<std::array<fluid_module::Matrix, fluid_module::nmax>> gamma3;  ///< [type][k][j][i]
  int s = 1, e = 0;                                                      ///< first and last type in force, from 1
};

extern PolarConstants polar;

void ddconst();      ///< fills dd_a, dd_b, dd_c from n and mseg
void qqconst();      ///< fills qq_a, qq_b, qq_c where all moments differ from 0
void dqconst();      ///< fills dq_a, dq_b, dq_c
void setpolarpar();  ///< fills gamma2, gamma3 and the range s to e of types in force

/// All of the above that the moments of the selected fluid call for; the polar flags are set.
void update_polar_constants();

}  // namespace tessarel::eos
