#include <algorithm>

#include "fluid/fluid_module.hpp"
#include "solvers/psat_tsat.hpp"

namespace tessarel::calc_psat_tsat {

Message calc_ptrange() {
  using fluid_module::record;
  const int used = std::max(record.n, 1);
  record.tlowest = *std::max_element(record.tmin.begin(), record.tmin.begin() + used);
  record.thighest = *std::min_element(record.tmax.begin(), record.tmax.begin() + used);
  record.plowest = record.plowest_bub = record.n == 1 ? 1.0 : 1000.0;
  record.phighest = 5e7;
  return no_errors;
}

}  // namespace tessarel::calc_psat_tsat
