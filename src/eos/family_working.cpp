#include "eos/family_working.hpp"

#include "eos/mixture_state.hpp"

namespace tessarel::families {

using numerics::Taylor;

Working working;

namespace {

using Coefficients = std::array<Taylor<1, 3>, 7>;

void store(const Coefficients& c, std::array<eos::Powers*, 4> orders) {
  for (std::size_t j = 0; j < c.size(); ++j)
    for (int k = 0; k < 4; ++k) (*orders[eos::at(k)])[j] = numerics::derivative(c[j], k);
}

}  // namespace

void set_mmean(int n, const double* x, int ipure) {
  const auto components = eos::select_components(n, x, ipure);
  working.mmean = 0;
  for (int i = 0; i < components.count; ++i)
    working.mmean += components.x[eos::at(i)] * eos::record.mseg[eos::at(components.index[eos::at(i)])];
  const auto weights = eos::mean_segment_weights(numerics::variable<Taylor<1, 3>>(working.mmean));
  store(eos::integral_coefficients(eos::ap, weights),
        {&working.apar, &working.apar_x, &working.apar_xx, &working.apar_xxx});
  store(eos::integral_coefficients(eos::bp, weights),
        {&working.bpar, &working.bpar_x, &working.bpar_xx, &working.bpar_xxx});
}

}  // namespace tessarel::families
