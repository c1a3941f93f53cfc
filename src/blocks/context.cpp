#include "blocks/context.hpp"

#include "eos/mixture_state.hpp"

namespace tessarel::blocks {

using numerics::Taylor;

namespace {

using Coefficients = std::array<Taylor<1, 3>, 7>;

void store(const Coefficients& c, std::array<eos::Powers*, 4> orders) {
  for (std::size_t j = 0; j < c.size(); ++j)
    for (int k = 0; k < 4; ++k) (*orders[eos::at(k)])[j] = numerics::derivative(c[j], k);
}

}  // namespace

Context selected() {
  static Working working;
  return {fluid_module::record, eos::tables, eos::polar, eos::arena, working};
}

void set_mmean(const Context& context, int n, const double* x, int ipure) {
  const auto components = eos::select_components(n, x, ipure);
  Working& w = context.working;
  w.mmean = 0;
  for (int i = 0; i < components.count; ++i)
    w.mmean += components.x[eos::at(i)] * context.parameters.mseg[eos::at(components.index[eos::at(i)])];
  const auto weights = eos::mean_segment_weights(numerics::variable<Taylor<1, 3>>(w.mmean));
  store(eos::integral_coefficients(eos::ap, weights), {&w.apar, &w.apar_x, &w.apar_xx, &w.apar_xxx});
  store(eos::integral_coefficients(eos::bp, weights), {&w.bpar, &w.bpar_x, &w.bpar_xx, &w.bpar_xxx});
}

}  // namespace tessarel::blocks
