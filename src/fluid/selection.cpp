#include "fluid/selection.hpp"

#include <algorithm>
#include <cmath>
#include <cstddef>

#include "fluid/fluid_module.hpp"

namespace tessarel::fluid_module {
namespace {

std::size_t used_components() {
  return static_cast<std::size_t>(std::clamp(record.n, 0, nmax));
}

std::size_t site_types(std::size_t i) {
  return i < used_components() ? static_cast<std::size_t>(std::clamp(record.nhb_typ[i], 0, max_sites)) : 0;
}

/// Energy between the site types `a` and `b` of one component; 0 where it has no such type, since what an earlier
/// selection left there must not count.
double self_energy(std::size_t i, std::size_t a, std::size_t b) {
  return a < site_types(i) && b < site_types(i) ? record.eps_hb[i][i][a][b] : 0.0;
}

double cube(double x) {
  return x * x * x;
}

void combine_pair(std::size_t j, std::size_t i) {
  const double sj = record.sigma[j], si = record.sigma[i];
  record.kap_hb[j][i] =
      std::sqrt(record.kap_hb[j][j] * record.kap_hb[i][i]) * std::sqrt(cube(si) * cube(sj)) / cube((si + sj) / 2);
  for (std::size_t k = 0; k < site_types(j); ++k)
    for (std::size_t l = 0; l < site_types(i); ++l)
      if (k != l) record.eps_hb[j][i][k][l] = (self_energy(j, k, l) + self_energy(i, l, k)) / 2;
}

/// Three site types on component `j`, one of the first two of a mixture: its third type, with two kinds of partners
/// of its own, meets the first type of the other component `i` with that component's energy between types 1 and 2.
void combine_three_types(std::size_t j, std::size_t i) {
  if (site_types(j) != 3) return;
  const double energy = (self_energy(j, 2, 0) + self_energy(i, 0, 1)) / 2;
  record.eps_hb[j][i][2][0] = energy;
  record.eps_hb[i][j][0][2] = energy;
}

}  // namespace

void setassocpar() {
  const std::size_t n = used_components();
  record.is_assoc = false;
  for (std::size_t i = 0; i < n; ++i) {
    record.is_assoc_cmp[i] = record.nhb_typ[i] != 0;
    record.is_assoc = record.is_assoc || record.is_assoc_cmp[i];
  }
  if (!record.is_assoc) return;
  for (std::size_t i = 0; i < n; ++i)
    for (std::size_t j = 0; j < n; ++j)
      if (i != j && record.is_assoc_cmp[i] && record.is_assoc_cmp[j]) combine_pair(j, i);
  combine_three_types(0, 1);
  combine_three_types(1, 0);
}

void set_polar_flags() {
  record.is_quapole = record.is_dipole = false;
  for (std::size_t i = 0; i < used_components(); ++i) {
    record.is_quapole = record.is_quapole || record.quapole[i] != 0;
    record.is_dipole = record.is_dipole || record.dipole[i] != 0;
    record.is_polar_cmp[i] = record.dipole[i] + record.quapole[i] != 0;
  }
  record.is_quadip = record.is_quapole && record.is_dipole;
  record.is_polar = record.is_quapole || record.is_dipole;
}

void set_kronecker_delta() {
  record.del = {};
  for (std::size_t i = 0; i < used_components(); ++i) record.del[i][i] = 1;
}

}  // namespace tessarel::fluid_module
