// The root finder on functions with known roots, and its ends.
#include "solvers/brent.hpp"

#include <gtest/gtest.h>

#include <cmath>
#include <functional>

namespace {

using namespace tessarel;
using namespace tessarel::solvers;

/// A search of a forward calculation u = f(T), in the single-phase form, that counts its calls.
struct Search {
  std::function<double(double)> f;
  double fails_at = NAN;
  int calls = 0;
  double vars[6]{};
  Message err{};

  Message operator()(double& t, double&, double&, double& u, double&, double&) {
    ++calls;
    if (t == fails_at) return "forward failure";
    u = f(t);
    return no_errors;
  }
  double run(double a, double b, double target) {
    const std::int32_t ptr[2] = {kT, kU};
    vars[3] = target;
    const double root = brent_root_1ph(*this, a, b, vars, ptr, err);
    EXPECT_EQ(vars[3], target);
    return root;
  }
};

double same(double x) {
  return x;
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
      {[](double x) { return std::cos(x) - x; }, 1, 0, 0, 0.73908513321516064, 12},
      {[](double x) { return std::log(x); }, 1e-10, 1e10, 0, 1, 60},
      {[](double x) { return x < 3 ? -1.0 : 1.0; }, 10, 0, 0, 3, 60},  // a jump is found by bisection
      {same, 2, 5, 2, 2, 1},
      {same, 2, 5, 5, 5, 2},  // a root at an end costs no further call
  };
  for (auto& c : cases) {
    Search search{c.f};
    const double root = search.run(c.a, c.b, c.target);
    EXPECT_EQ(search.err, "No errors");
    EXPECT_NEAR(root, c.root, 2e-15 * std::max(1.0, std::abs(c.root)));
    EXPECT_LE(search.calls, c.most_calls);
    EXPECT_NEAR(search.vars[0], root, 4e-15 * std::abs(root) + 1e-300);
  }
}

TEST(Brent, Failures) {
  Search outside{same};
  EXPECT_EQ(outside.run(2, 5, 7), 0);
  EXPECT_EQ(outside.err, "Brent_Root: root not bracketed...");
  EXPECT_EQ(outside.calls, 2);

  // A failed evaluation ends the search at once, with its own message: at either end, and in between.
  for (const auto& [fails_at, calls] : {std::pair{2.0, 1}, {5.0, 2}, {3.0, 3}}) {
    Search failing{same, fails_at};
    EXPECT_EQ(failing.run(2, 5, 3), 0);
    EXPECT_EQ(failing.err, "forward failure");
    EXPECT_EQ(failing.calls, calls);
  }

  // The tolerance is relative, so a jump at zero is never met: 100 iterations, and the last estimate comes back.
  Search endless{[](double x) { return x > 0 ? 1.0 : -1.0; }};
  EXPECT_LT(std::abs(endless.run(-1, 2, 0)), 1e-25);
  EXPECT_EQ(endless.err, "Brent_Root: no convergence...");
  EXPECT_EQ(endless.calls, 102);
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
