#include "blocks/context.hpp"

namespace tessarel::blocks {

namespace {

using Coefficients = std::array<Taylor<1, 3>, 7>;

void store(const Coefficients& c, std::array<eos::Powers*, 4> orders) {
  for (std::size_t j = 0; j < c.size(); ++j)
    for (int k = 0; k < 4; ++k) (*orders[at(k)])[j] = numerics::derivative(c[j], k);
}

}  // namespace

void set_mmean(const Eos& eos, int n, const double* x, int ipure) {
  const auto components = eos::select_components(n, x, ipure);
  eos::MeanSegments& w = eos.work.means;
  w.mmean = 0;
  for (int i = 0; i < components.count; ++i)
    w.mmean += components.x[at(i)] * eos.parameters().mseg[at(components.index[at(i)])];
  const auto weights = eos::mean_segment_weights(numerics::variable<Taylor<1, 3>>(w.mmean));
  store(eos::integral_coefficients(eos::ap, weights), {&w.apar, &w.apar_x, &w.apar_xx, &w.apar_xxx});
  store(eos::integral_coefficients(eos::bp, weights), {&w.bpar, &w.bpar_x, &w.bpar_xx, &w.bpar_xxx});
}

}  // namespace tessarel::blocks
