// The root finder on functions with known roots, and its ends.
#include "solvers/brent.hpp"

#include <gtest/gtest.h>

#include <cmath>
#include <functional>

namespace {

using namespace tessarel;
using namespace tessarel::solvers;

/// A forward calculation u = f(T), in the single-phase form, that counts its calls.
struct Forward {
  std::function<double(double)> f;
  int calls = 0;
  double fails_at = NAN;

  Message operator()(double& t, double&, double&, double& u, double&, double&) {
    ++calls;
    if (t == fails_at) return "forward failure";
    u = f(t);
    return no_errors;
  }
};

struct Outcome {
  double root;
  Message err;
  double target_left, unknown_left;
};

Outcome search(Forward& forward, double a, double b, double target) {
  double vars[6] = {0, 0, 0, target, 0, 0};
  const std::int32_t ptr[2] = {kT, kU};
  Message err;
  const double root = brent_root_1ph(forward, a, b, vars, ptr, err);
  return {root, err, vars[3], vars[0]};
}

TEST(Brent, KnownRoots) {
  struct {
    std::function<double(double)> f;
    double a, b, target, root;
    int most_calls;
  } cases[] = {
      {[](double x) { return 3 * x + 1; }, -10, 10, 7, 2, 5},
      {[](double x) { return x * x; }, 0, 2, 2, std::sqrt(2.0), 12},
      {[](double x) { return std::exp(x); }, -10, 10, 5, std::log(5.0), 20},
      {[](double x) { return std::cos(x) - x; }, 0, 1, 0, 0.73908513321516064, 12},
      {[](double x) { return std::log(x); }, 1e-10, 1e10, 0, 1, 60},
      {[](double x) { return x < 3 ? -1.0 : 1.0; }, 0, 10, 0, 3, 60},  // a jump is found by bisection
  };
  for (auto& c : cases)
    for (const bool swapped : {false, true}) {
      Forward forward{c.f};
      const Outcome result = search(forward, swapped ? c.b : c.a, swapped ? c.a : c.b, c.target);
      EXPECT_EQ(result.err, "No errors");
      EXPECT_NEAR(result.root, c.root, 2e-15 * std::max(1.0, std::abs(c.root)));
      EXPECT_LE(forward.calls, c.most_calls);
      EXPECT_EQ(result.target_left, c.target);
      EXPECT_NEAR(result.unknown_left, result.root, 4e-15 * std::abs(result.root) + 1e-300);
    }
}

TEST(Brent, RootAtAnEndCostsNoFurtherCall) {
  const auto f = [](double x) { return x; };
  Forward first{f}, second{f};
  const Outcome at_a = search(first, 2, 5, 2), at_b = search(second, 2, 5, 5);
  EXPECT_EQ(at_a.root, 2);
  EXPECT_EQ(first.calls, 1);
  EXPECT_EQ(at_b.root, 5);
  EXPECT_EQ(at_b.unknown_left, 5);
  EXPECT_EQ(second.calls, 2);
}

TEST(Brent, Failures) {
  const auto f = [](double x) { return x; };
  Forward outside{f};
  Outcome result = search(outside, 2, 5, 7);
  EXPECT_EQ(result.err, "Brent_Root: root not bracketed...");
  EXPECT_EQ(result.root, 0);
  EXPECT_EQ(result.target_left, 7);
  EXPECT_EQ(outside.calls, 2);

  // A failed evaluation ends the search at once, with its own message: at either end, and in between.
  struct {
    double fails_at;
    int calls;
  } cases[] = {{2, 1}, {5, 2}, {3, 3}};
  for (const auto& c : cases) {
    Forward failing{f, 0, c.fails_at};
    result = search(failing, 2, 5, 3);
    EXPECT_EQ(result.err, "forward failure");
    EXPECT_EQ(result.root, 0);
    EXPECT_EQ(result.target_left, 3);
    EXPECT_EQ(failing.calls, c.calls);
  }

  // The tolerance is relative, so a jump at zero is never met: 100 iterations, and the last estimate comes back.
  Forward endless{[](double x) { return x > 0 ? 1.0 : -1.0; }};
  result = search(endless, -1, 2, 0);
  EXPECT_EQ(result.err, "Brent_Root: no convergence...");
  EXPECT_EQ(endless.calls, 102);
  EXPECT_LT(std::abs(result.root), 1e-25);
}

TEST(Brent, TwoPhaseFormHandsCompositionsThrough) {
  const auto forward = [](double& t, double&, double&, double&, double& h, double&, double& q, double* x, double* y) {
    q = 0.25;
    x[0] = t;
    y[0] = 2 * t;
    h = x[0] + y[0];
    return no_errors;
  };
  double vars[7] = {0, 0, 0, 0, 12, 0, 0}, x[1] = {}, y[1] = {};
  const std::int32_t ptr[2] = {kT, kH};
  Message err;
  EXPECT_DOUBLE_EQ(brent_root(forward, 0, 10, vars, x, y, ptr, err), 4);
  EXPECT_EQ(err, "No errors");
  EXPECT_DOUBLE_EQ(x[0], 4);
  EXPECT_DOUBLE_EQ(y[0], 8);
  EXPECT_EQ(vars[6], 0.25);
}

}  // namespace
