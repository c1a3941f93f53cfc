#include <algorithm>

#include "solvers/psat_tsat.hpp"

namespace tessarel::solvers {

Message calc_ptrange(const fluid::Parameters& p, fluid::Limits& limits) {
  const int used = std::max(p.n, 1);
  limits.tlowest = *std::max_element(p.tmin.begin(), p.tmin.begin() + used);
  limits.thighest = *std::min_element(p.tmax.begin(), p.tmax.begin() + used);
  limits.plowest = limits.plowest_bub = p.n == 1 ? 1.0 : 1000.0;
  limits.phighest = 5e7;
  return no_errors;
}

}  // namespace tessarel::solvers
