#include "fluid/kij.hpp"

namespace tessarel::fluid {
namespace {

/// Fills an n x n array with f of the entry of each pair.
template <class F>
void for_pairs(const Parameters& p, int n, double* out, F f) {
  if (n < 1 || n > nmax || out == nullptr) return;
  const auto count = at(n);
  for (std::size_t j = 0; j < count; ++j)
    for (std::size_t i = 0; i < count; ++i) out[i + count * j] = f(p.k_ij[i][j]);
}

}  // namespace

void ps_calc_kij(const Parameters& p, int n, double t, double* out) {
  for_pairs(p, n, out, [t](double entry) { return kij(entry, t); });
}

void calc_dkij_dt(const Parameters& p, int n, double t, double* dkij) {
  for_pairs(p, n, dkij, [t](double entry) {
    const Correlation* c = find_correlation(entry);
    return c == nullptr ? 0.0 : c->c1 + 2.0 * c->c2 * t;
  });
}

void calc_d2kij_dt2(const Parameters& p, int n, [[maybe_unused]] double t, double* d2kij) {
  for_pairs(p, n, d2kij, [](double entry) {
    const Correlation* c = find_correlation(entry);
    return c == nullptr ? 0.0 : 2.0 * c->c2;
  });
}

void calc_d3kij_dt3(const Parameters& p, int n, [[maybe_unused]] double t, double* d3kij) {
  for_pairs(p, n, d3kij, [](double) { return 0.0; });
}

}  // namespace tessarel::fluid
