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

/// One function of two variables over three kinds of numbers: all mixed derivatives agree.
TEST(Taylor, MixedDerivativesAgreeBetweenKinds) {
  const auto f = [](const auto& a, const auto& b) { return log(1.0 + a * b) * exp(a - b) / sqrt(b + a * a); };
  const double x = 0.4, y = 1.3;
  using Two = Taylor<2, 3>;
  const Two both = f(variable<Two>(x, 0), variable<Two>(y, 1));
  using Inner = Taylor<1, 2>;
  using Nested = Taylor<1, 1, Inner>;
  Nested a(x);
  a.c[1] = Inner(1.0);
  const Nested nested = f(a, Nested(variable<Inner>(y)));
  for (int k = 0; k <= 2; ++k) EXPECT_NEAR(derivative(both, 1, k), derivative(derivative(nested, 1), k), 1e-12) << k;
  // Closed form along one variable: x = 0 makes the logarithm vanish and its slope by x be y.
  const Two at_zero = f(variable<Two>(0.0, 0), variable<Two>(y, 1));
  EXPECT_EQ(derivative(at_zero, 0, 0), 0.0);
  EXPECT_NEAR(derivative(at_zero, 1, 0), y * std::exp(-y) / std::sqrt(y), 1e-14);
}

TEST(Taylor, SmallArgumentsOfTheLogarithmKeepTheirDigits) {
  EXPECT_EQ(log_1p(1e-18), 1e-18);
  EXPECT_NEAR(log_1p(0.5), std::log(1.5), 1e-16);
}

}  // namespace
}  // namespace tessarel::numerics
