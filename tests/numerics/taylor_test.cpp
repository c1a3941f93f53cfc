// Taylor numbers against derivatives known in closed form and against each other.
#include "numerics/taylor.hpp"

#include <gtest/gtest.h>

namespace tessarel::numerics {
namespace {

TEST(Taylor, FunctionsOfOneVariable) {
  using N = Taylor<1, 4>;
  const double x = 0.7;
  const N v = variable<N>(x);
  const double e = std::exp(2 * x), s = std::sqrt(x), c = std::cbrt(x);
  const struct {
    const char* name;
    N value;
    std::array<double, 5> expected;
  } rows[] = {
      {"exp(2x)", exp(v * 2.0), {e, 2 * e, 4 * e, 8 * e, 16 * e}},
      {"log", log(v), {std::log(x), 1 / x, -1 / (x * x), 2 / (x * x * x), -6 / (x * x * x * x)}},
      {"1/x", inverse(v), {1 / x, -1 / (x * x), 2 / (x * x * x), -6 / std::pow(x, 4), 24 / std::pow(x, 5)}},
      {"x/x^3",
       v / cube(v),
       {1 / (x * x), -2 / std::pow(x, 3), 6 / std::pow(x, 4), -24 / std::pow(x, 5), 120 / std::pow(x, 6)}},
      {"sqrt", sqrt(v), {s, 0.5 / s, -0.25 / (s * x), 0.375 / (s * x * x), -0.9375 / (s * x * x * x)}},
      {"cbrt",
       cbrt(v),
       {c, c / (3 * x), -2 * c / (9 * x * x), 10 * c / (27 * x * x * x), -80 * c / (81 * std::pow(x, 4))}},
  };
  for (const auto& row : rows)
    for (int k = 0; k <= 4; ++k)
      EXPECT_NEAR(derivative(row.value, k), row.expected[static_cast<std::size_t>(k)],
                  1e-13 * std::abs(row.expected[static_cast<std::size_t>(k)]))
          << row.name << " order " << k;
}

TEST(Taylor, SmallArgumentsOfTheLogarithmKeepTheirDigits) {
  EXPECT_EQ(log_1p(1e-18), 1e-18);
  EXPECT_NEAR(log_1p(0.5), std::log(1.5), 1e-16);
}

}  // namespace
}  // namespace tessarel::numerics
