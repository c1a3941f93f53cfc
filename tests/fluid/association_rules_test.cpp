// Combining rules of association and the flags that follow from the parameters.
#include <gtest/gtest.h>

#include <vector>

#include "fluid/combining_rules.hpp"

namespace {

using namespace tessarel::fluid;

// Site types by hand: energy 1000 (i + 1) + 10 (a + 1) + (b + 1) between types a <= b of component i, -1 if unlike.
TEST(AssociationRules, ThreeSiteTypes) {
  struct Entry {
    std::size_t i, j, a, b;
    double value;
  };
  const struct {
    int types2;
    std::vector<Entry> entries;
  } cases[] = {// Equal types are not written, and a partner without a third type counts as zero.
               {2, {{0, 1, 1, 1, -1}, {0, 1, 2, 1, 1023 / 2.0}}},
               // The second component has the last word.
               {3,
                {{0, 1, 2, 0, (1013 + 2012) / 2.0},
                 {1, 0, 0, 2, (1013 + 2012) / 2.0},
                 {1, 0, 2, 0, (2013 + 1012) / 2.0},
                 {0, 1, 0, 2, (2013 + 1012) / 2.0}}}};
  for (const auto& c : cases) {
    Parameters record;
    record.n = 2;
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
  for (const auto& [dipole, quapole] : {std::pair{0.0, 0.0}, {1.5, 0.0}, {0.0, 4.0}, {1.5, 4.0}}) {
    Parameters record;
    record.n = 2;
    record.quapole[0] = quapole, record.dipole[1] = dipole;
    set_polar_flags(record);
    EXPECT_EQ(record.is_dipole, dipole != 0);
    EXPECT_EQ(record.is_quapole, quapole != 0);
    EXPECT_EQ(record.is_quadip, dipole * quapole != 0);
    EXPECT_EQ(record.is_polar_cmp[0], quapole != 0);
    EXPECT_EQ(record.is_polar_cmp[1], dipole != 0);
  }
}

}  // namespace
