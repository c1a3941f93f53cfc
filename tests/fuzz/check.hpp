// What must hold of the record whatever was read into it.
#pragma once

#include <cmath>
#include <cstdlib>

#include "fluid/fluid_record.hpp"

namespace tessarel::fuzz {

inline void require(bool condition) {
  if (!condition) std::abort();
}

/// Counts within their limits, numbers finite, nothing in the neighbouring component.
inline void check_component(const fluid::Parameters& r, std::size_t i, bool success) {
  require(r.nhb_typ[i] >= 0 && r.nhb_typ[i] <= fluid::max_sites);
  for (std::size_t a = 0; a < static_cast<std::size_t>(r.nhb_typ[i]); ++a) {
    require(r.nhb_no[i][a] >= 0 && r.nhb_no[i][a] <= fluid::max_sites_of_type);
    for (std::size_t b = 0; b < static_cast<std::size_t>(r.nhb_typ[i]); ++b)
      require(std::isfinite(r.eps_hb[i][i][a][b]) && r.eps_hb[i][i][a][b] == r.eps_hb[i][i][b][a]);
  }
  for (const double value :
       {r.tmin[i], r.tmax[i], r.molmas[i], r.omega[i], r.mseg[i], r.sigma[i], r.epsil[i], r.cp0_a[i], r.cp0_b[i],
        r.cp0_c[i], r.cp0_d[i], r.delhf0[i], r.dipole[i], r.quapole[i], r.polariz[i], r.kap_hb[i][i]})
    require(std::isfinite(value));
  if (success) require(r.parat[i] == 0.12 && r.saftpar[i] == 0.0);
  for (const std::size_t other : {i - 1, i + 1})
    require(r.compname[other].trimmed().empty() && r.tmin[other] == 0.0 && r.nhb_typ[other] == 0);
}

}  // namespace tessarel::fuzz
