// The reference equilibria of mixtures at given temperature and pressure.
#pragma once

#include <algorithm>
#include <memory>

#include "common/test_fluid.hpp"

namespace tessarel::testing {

struct ReferenceFlash {
  double t, p;
  int phases;
  double beta, v, h, s, u, sens;
  Values x;
};

/// Calls `select(mixture, kij)` for each mixture and `check(row)` for each of its rows; `kij` holds all parameters that
/// are not 0.
template <class Select, class Check>
void for_each_reference_row(Select&& select, Check&& check) {
  std::string last;
  int rows = 0;
  for (const auto& cells : read_reference("flashes.csv")) {
    const auto number = [&](std::size_t k) { return k < cells.size() ? std::strtod(cells[k].c_str(), nullptr) : 0.0; };
    if (cells[0] + cells[1] != last) {
      last = cells[0] + cells[1];
      select(Mixture(cells[0]), cells[1]);
    }
    ReferenceFlash r{
        number(2),  number(3), static_cast<int>(number(4)), number(6), number(7), number(8), number(9), number(10),
        number(15), {}};
    if (r.phases == 2)
      for (const std::string& x : split(cells[13], ';')) r.x.push_back(std::strtod(x.c_str(), nullptr));
    SCOPED_TRACE(cells[0] + " T " + cells[2] + " P " + cells[3]);
    check(r);
    ++rows;
  }
  EXPECT_EQ(rows, 640);
}

/// Calls `check(fluid, row)` for each row, with the shipped fluids and the interaction parameters of the row alone.
template <class Check>
void for_each_reference_flash(Check&& check) {
  std::unique_ptr<TestFluid> f;
  for_each_reference_row(
      [&](const Mixture& mixture, const std::string& kij) {
        f = std::make_unique<TestFluid>(mixture.names, mixture.x);
        set_kij(f->session, kij);
        f->session.update();
      },
      [&](const ReferenceFlash& r) { check(*f, r); });
}

}  // namespace tessarel::testing
