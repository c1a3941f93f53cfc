// Dispersion energies of components and pairs at a temperature.
#pragma once

#include <cmath>

#include "fluid/kij.hpp"
#include "fluid/parameters.hpp"
#include "numerics/taylor.hpp"

namespace tessarel::eos {

/// eps(i) / epsil(i) = 1 + saftpar(i) / t.
template <class T>
T energy_ratio(const fluid::Parameters& p, std::size_t i, const T& inverse_t) {
  return inverse_t * p.saftpar[i] + 1.0;
}

/// sqrt of the product of two such ratios, the correction of a geometric mean.
template <class T>
T energy_ratio(const fluid::Parameters& p, std::size_t i, std::size_t j, const T& inverse_t) {
  using std::sqrt;
  if (p.saftpar[i] == 0 && p.saftpar[j] == 0) return T(1.0);
  return sqrt(energy_ratio(p, i, inverse_t) * energy_ratio(p, j, inverse_t));
}

/// sqrt(epsil_i epsil_j) [K], before the correction by k_ij.
inline double geometric_energy(const fluid::Parameters& p, std::size_t i, std::size_t j) {
  return i == j ? p.epsil[i] : std::sqrt(p.epsil[i] * p.epsil[j]);
}

/// sigma_ij [A].
inline double mean_diameter(const fluid::Parameters& p, std::size_t i, std::size_t j) {
  return i == j ? p.sigma[i] : (p.sigma[i] + p.sigma[j]) / 2.0;
}

/// eps_ij of two components at temperature t, from their geometric mean `geometric`, with k_ij.
template <class T>
T pair_energy(const fluid::Parameters& p, double geometric, std::size_t i, std::size_t j, const T& t,
              const T& inverse_t) {
  const T energy = energy_ratio(p, i, j, inverse_t) * geometric;
  return i == j ? energy : (1.0 - fluid::kij(p.k_ij[i][j], t)) * energy;
}

}  // namespace tessarel::eos
