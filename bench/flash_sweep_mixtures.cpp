#include "flash_sweep_mixtures.hpp"

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string_view>

#include "tessarel/tessarel.h"

namespace tessarel::sweep {

std::vector<double> select(const Mixture& mixture, std::vector<double> amounts) {
  if (amounts.empty()) amounts.assign(mixture.fluids.size(), 1);
  double total = 0;
  for (const double a : amounts) total += a;
  for (double& a : amounts) a /= total;
  std::string names;
  for (std::string name : mixture.fluids) {
    name.resize(32, ' ');
    names += name;
  }
  const auto n = static_cast<std::int32_t>(mixture.fluids.size());
  char err[300];
  tessarel_setfluid(&n, names.data(), amounts.data(), err, 32, sizeof err);
  if (std::string_view(err, 9) != "No errors") {
    std::fprintf(stderr, "%s: %.*s\n", mixture.name.c_str(), static_cast<int>(sizeof err), err);
    std::exit(2);
  }
  return amounts;
}

}  // namespace tessarel::sweep
