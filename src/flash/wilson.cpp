#include "flash/wilson.hpp"

#include <cmath>

namespace tessarel::flash {

using fluid::at;

fluid::Vector wilson_lnk(const eos::Fluid& fluid, double t, double p, double factor) {
  fluid::Vector lnk{};
  for (std::size_t i = 0; i < at(fluid.n); ++i)
    lnk[i] = std::log(fluid.limits.pci[i] / p) +
             factor * (1.0 + fluid.eos.parameters().omega[i]) * (1.0 - fluid.limits.tci[i] / t);
  return lnk;
}

double wilson_heat(const eos::Fluid& fluid, int i) {
  return wilson_factor * (1.0 + fluid.eos.parameters().omega[at(i)]) * fluid.limits.tci[at(i)];
}

}  // namespace tessarel::flash
