#include "fluid/combining_rules.hpp"

#include <algorithm>
#include <cmath>
#include <cstddef>

namespace tessarel::fluid {
namespace {

std::size_t used_components(const Parameters& p) {
  return at(std::clamp(p.n, 0, nmax));
}

std::size_t site_types(const Parameters& p, std::size_t i) {
  return i < used_components(p) ? at(std::clamp(p.nhb_typ[i], 0, max_sites)) : 0;
}

/// Energy between the site types `a` and `b` of one component; 0 where it has no such type, since what an earlier
/// selection left there must not count.
double self_energy(const Parameters& p, std::size_t i, std::size_t a, std::size_t b) {
  return a < site_types(p, i) && b < site_types(p, i) ? p.eps_hb[i][i][a][b] : 0.0;
}

double cube(double x) {
  return x * x * x;
}

void combine_pair(Parameters& p, std::size_t j, std::size_t i) {
  const double sj = p.sigma[j], si = p.sigma[i];
  p.kap_hb[j][i] = std::sqrt(p.kap_hb[j][j] * p.kap_hb[i][i]) * std::sqrt(cube(si) * cube(sj)) / cube((si + sj) / 2);
  for (std::size_t k = 0; k < site_types(p, j); ++k)
    for (std::size_t l = 0; l < site_types(p, i); ++l)
      if (k != l) p.eps_hb[j][i][k][l] = (self_energy(p, j, k, l) + self_energy(p, i, l, k)) / 2;
}

/// Three site types on component `j`, one of the first two of a mixture: its third type, with two kinds of partners
/// of its own, meets the first type of the other component `i` with that component's energy between types 1 and 2.
void combine_three_types(Parameters& p, std::size_t j, std::size_t i) {
  if (site_types(p, j) != 3) return;
  const double energy = (self_energy(p, j, 2, 0) + self_energy(p, i, 0, 1)) / 2;
  p.eps_hb[j][i][2][0] = energy;
  p.eps_hb[i][j][0][2] = energy;
}

}  // namespace

void setassocpar(Parameters& p) {
  const std::size_t n = used_components(p);
  p.is_assoc = false;
  for (std::size_t i = 0; i < n; ++i) {
    p.is_assoc_cmp[i] = p.nhb_typ[i] != 0;
    p.is_assoc = p.is_assoc || p.is_assoc_cmp[i];
  }
  if (!p.is_assoc) return;
  for (std::size_t i = 0; i < n; ++i)
    for (std::size_t j = 0; j < n; ++j)
      if (i != j && p.is_assoc_cmp[i] && p.is_assoc_cmp[j]) combine_pair(p, j, i);
  combine_three_types(p, 0, 1);
  combine_three_types(p, 1, 0);
}

void set_polar_flags(Parameters& p) {
  p.is_quapole = p.is_dipole = false;
  for (std::size_t i = 0; i < used_components(p); ++i) {
    p.is_quapole = p.is_quapole || p.quapole[i] != 0;
    p.is_dipole = p.is_dipole || p.dipole[i] != 0;
    p.is_polar_cmp[i] = p.dipole[i] + p.quapole[i] != 0;
  }
  p.is_quadip = p.is_quapole && p.is_dipole;
  p.is_polar = p.is_quapole || p.is_dipole;
}

Moment moment_of(const Parameters& p) {
  return p.is_dipole ? Moment::dipole : p.is_quapole ? Moment::quadrupole : Moment::none;
}

}  // namespace tessarel::fluid
