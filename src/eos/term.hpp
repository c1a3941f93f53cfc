// What the terms of the equation of state share. A term is a struct, in a file of its own, with
//
//   Tables       what follows from the parameters alone: update(parameters)
//   State<T>     what temperature and composition decide: prepare(s), present; a(s, q) and z(s, q) are the term's parts
//                of a and z at a density. T is double or carries derivatives by t; lift(from, arena) copies a state
//                over numbers of the temperature alone into numbers that carry the density as well
//   Composition  the derivatives of its part of a by the mole fractions (moments.hpp)
//
// and its name in the list of terms.hpp. A term knows the others only through the state of the mixture.
#pragma once

#include "fluid/parameters.hpp"
#include "numerics/taylor.hpp"
#include "support/arena.hpp"

namespace tessarel::eos {

using fluid::at;
using fluid::nmax;
using fluid::pi;
using fluid::pi_6;
using fluid::pressure_factor;
using fluid::Vector;
using numerics::inverse;
using numerics::log;
using numerics::log_1p;
using numerics::square;
using numerics::Taylor;
using numerics::value;

template <class T>
struct MixtureState;

/// A density at a prepared state, with what several terms need of it.
template <class N>
struct Point {
  N rho, eta;
  N u;               ///< 1 / (1 - eta)
  double tolerance;  ///< of the site iteration
  int status = 0;    ///< 1 after a site iteration that has not converged
};

/// Tables of a term that needs none.
struct NoTables {
  void update(const fluid::Parameters&) {}
};

}  // namespace tessarel::eos
