// Fluid records of the tests, and what they are read into.
#pragma once

#include <gtest/gtest.h>

#include <string>

#include "fluid/readers.hpp"

namespace tessarel::test {

/// What the tests of this program read into.
inline fluid::Parameters record;
inline platform::FluidDatabase connection;
inline fluid::Sources sources{connection, {}, {}};

/// Rows 1 to 17 of a record.
inline std::string head(const std::string& name = "sample") {
  return name + "\n\n200\n600.5 highest\n\n44.1\n0.15\n2.0\n3.6\n208.0\n\n10\n20\n30\n-40\n-1.0D5\n\n";
}

inline const std::string association = "associating\n2\n1\n1\n2500.5\n0.03\n\n";
inline const std::string polar = "dipolar\n1.5\n\nquadrupolar\n4.25\n\npolarizable\n2.5\n\n";

/// Everything a reader can set at place `i`, for comparisons.
inline std::string all_values(std::size_t i) {
  const auto& r = record;
  std::string text(r.compname[i].view());
  for (const double value : {r.tmin[i], r.tmax[i], r.molmas[i], r.omega[i], r.mseg[i], r.sigma[i], r.epsil[i],
                             r.parat[i], r.saftpar[i], r.cp0_a[i], r.cp0_b[i], r.cp0_c[i], r.cp0_d[i], r.delhf0[i],
                             r.dipole[i], r.quapole[i], r.polariz[i], r.kap_hb[i][i]})
    text += testing::PrintToString(value) + '\n';
  const auto types = static_cast<std::size_t>(r.nhb_typ[i]);
  for (std::size_t a = 0; a < types; ++a) {
    text += "sites " + std::to_string(r.nhb_no[i][a]);
    for (std::size_t b = 0; b < types; ++b) text += ' ' + testing::PrintToString(r.eps_hb[i][i][a][b]);
  }
  return text;
}

}  // namespace tessarel::test
