// Combining rules of association and the flags that follow from the parameters.
#include <gtest/gtest.h>

#include <cmath>

#include "fluid/combining_rules.hpp"
#include "interface/host.hpp"

namespace {

using namespace tessarel::fluid;

TEST(AssociationRules, CrossValuesOfTwoAlcohols) {
  ASSERT_EQ(host::select({"methanol", "propane", "water"}, {0.3, 0.3, 0.4}), "No errors");
  const Parameters& record = host::parameters();
  EXPECT_TRUE(record.is_assoc);
  EXPECT_TRUE(record.is_assoc_cmp[0] && !record.is_assoc_cmp[1] && record.is_assoc_cmp[2]);
  // Gross & Sadowski 2002: methanol sigma 3.23 A, kappa 0.035176, 2899.5 K; water 3.0007 A, 0.034868, 2500.7 K.
  const double ratio = std::sqrt(3.23 * 3.0007) / (0.5 * (3.23 + 3.0007));
  const double kappa = std::sqrt(0.035176 * 0.034868) * std::pow(ratio, 3);
  for (const auto& [i, j] : {std::pair{0u, 2u}, {2u, 0u}}) {
    EXPECT_NEAR(record.kap_hb[i][j], kappa, 1e-15);
    EXPECT_DOUBLE_EQ(record.eps_hb[i][j][0][1], 0.5 * (2899.5 + 2500.7));
    EXPECT_DOUBLE_EQ(record.eps_hb[i][j][1][0], 0.5 * (2899.5 + 2500.7));
  }
}

// Site types by hand: energy 1000 (i + 1) + 10 (a + 1) + (b + 1) between types a <= b of component i, -1 if unlike.
TEST(AssociationRules, ThreeSiteTypes) {
  struct Entry {
    std::size_t i, j, a, b;
    double value;
  };
  struct {
    int n, types2;
    std::vector<Entry> entries;
  } cases[] = {
      // Equal types are not written, and a partner without a third type counts as zero.
      {2,
       2,
       {{0, 1, 0, 1, (1012 + 2012) / 2.0},
        {0, 1, 2, 0, (1013 + 2012) / 2.0},
        {1, 0, 0, 2, (1013 + 2012) / 2.0},
        {0, 1, 1, 1, -1},
        {0, 1, 2, 1, 1023 / 2.0}}},
      // The second component has the last word.
      {2,
       3,
       {{0, 1, 2, 0, (1013 + 2012) / 2.0},
        {1, 0, 0, 2, (1013 + 2012) / 2.0},
        {1, 0, 2, 0, (2013 + 1012) / 2.0},
        {0, 1, 0, 2, (2013 + 1012) / 2.0}}},
      {1, 3, {{0, 0, 2, 0, 1013}}},
  };
  for (const auto& c : cases) {
    Parameters record;
    record.n = c.n;
    for (std::size_t i = 0; i < 2; ++i) {
      record.nhb_typ[i] = i == 0 ? 3 : c.types2;
      record.sigma[i] = 3;
      record.kap_hb[i][i] = 0.01;
      for (std::size_t a = 0; a < max_sites; ++a)
        for (std::size_t b = 0; b < max_sites; ++b) {
          record.eps_hb[i][i][a][b] =
              static_cast<double>(1000 * (i + 1) + 10 * (std::min(a, b) + 1) + std::max(a, b) + 1);
          record.eps_hb[i][1 - i][a][b] = -1;
        }
    }
    setassocpar(record);
    EXPECT_TRUE(record.is_assoc);
    for (const auto& [i, j, a, b, value] : c.entries)
      EXPECT_DOUBLE_EQ(record.eps_hb[i][j][a][b], value) << i << j << a << b;
  }
}

TEST(PolarFlags, FollowTheMoments) {
  struct {
    std::vector<std::string> names;
    bool dipole, quapole;
  } cases[] = {{{"propane"}, false, false},
               {{"propane", "acetone"}, true, false},
               {{"nitrogen", "propane"}, false, true},
               {{"nitrogen", "acetone"}, true, true}};
  for (const auto& c : cases) {
    ASSERT_EQ(host::select(c.names, std::vector<double>(c.names.size(), 0.5)), "No errors");
    const Parameters& record = host::parameters();
    EXPECT_EQ(record.is_dipole, c.dipole);
    EXPECT_EQ(record.is_quapole, c.quapole);
    EXPECT_EQ(record.is_polar, c.dipole || c.quapole);
    EXPECT_EQ(record.is_quadip, c.dipole && c.quapole);
    EXPECT_EQ(record.is_polar_cmp[0], c.names[0] == "nitrogen");
  }
}

}  // namespace
