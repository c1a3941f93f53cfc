// What depends on the parameters of the selected fluid alone, computed once when they change: the combining rules
// of the dispersion energy, the association site classes and the symmetrised polar coefficients. An evaluation
// then takes no square root, and its sums run over what is really there.
#pragma once

#include <array>
#include <vector>

#include "fluid/fluid_module.hpp"

namespace tessarel::eos {

using fluid_module::Matrix;
using fluid_module::nmax;
using fluid_module::Vector;

/// Sites that are alike: same component, same number, same partners. Their unbonded fractions are equal in every
/// pass of the iteration, so one unknown serves for all of them.
struct SiteClass {
  int component;
  double types;  ///< number of site types merged, the weight in the error sum of the iteration
  double sites;  ///< number of sites on a molecule, over all merged types
  std::array<bool, fluid_module::max_sites> member{};
};

/// A bond between class `k` and class `l`: contributes volume * (exp(energy / t) - 1) to the strength of the pair.
struct Bond {
  int k, l;
  double volume;  ///< sigma_ij^3 kap_hb_ij times the number of partner sites [A3]
  double energy;  ///< eps_hb [K]
};

/// Polar coefficients of a pair or a triplet of components, for one interaction type; unordered, so each stands for
/// all permutations of its components, and the moment factors are included. p[k] belongs to power k of eta.
struct PolarPair {
  int i, j;
  std::array<double, 5> a, b;  ///< a + b / t
};
struct PolarTriplet {
  int i, j, k;
  std::array<double, 5> c;
};

struct Tables {
  Matrix sigma3;                  ///< sig_ij^3 [A3]
  Matrix energy;                  ///< sqrt(epsil_i epsil_j) [K], before the correction by k_ij
  Matrix first;                   ///< m_i m_j sig_ij^3 eps_ij, with constant k_ij
  Matrix second;                  ///< m_i m_j sig_ij^3 eps_ij^2, with constant k_ij
  bool constant_energies = true;  ///< no k_ij is a temperature code and every saftpar is 0

  std::vector<SiteClass> classes;
  std::vector<Bond> bonds;
  int site_types = 0;  ///< sum of nhb_typ over the components

  int first_type = 0, last_type = -1;  ///< polar interaction types in force, from 0
  std::array<std::vector<PolarPair>, fluid_module::max_types> pairs;
  std::array<std::vector<PolarTriplet>, fluid_module::max_types> triplets;
  std::array<std::vector<int>, fluid_module::max_types> common;  ///< factors of every pair and triplet
};

/// The tables of the selected fluid.
extern Tables tables;

/// Rebuilds `tables` from the record and sizes the working storage. To be called after any parameter has changed.
void update_tables();

}  // namespace tessarel::eos
