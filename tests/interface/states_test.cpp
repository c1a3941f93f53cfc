// Many states in one call against the same states one by one.
#include <algorithm>
#include <array>
#include <cmath>

#include "interface/host.hpp"

namespace {

constexpr double mark = -8888.8;

struct Batch {
  std::vector<double> states, liquids, vapours, derived, x, y;
  std::vector<std::int32_t> codes;
  std::vector<std::string> texts;
  std::string err;
};

Batch run(const std::string& pair, const std::vector<double>& a, const std::vector<double>& b, std::size_t n,
          std::int32_t places = 5) {
  const auto rows = static_cast<std::int64_t>(a.size());
  const std::size_t count = a.size(), length = 100;
  Batch r;
  r.states.resize(7 * count), r.derived.resize(7 * count), r.liquids.resize(4 * count), r.vapours.resize(4 * count);
  r.x.resize(n * count), r.y.resize(n * count), r.codes.resize(count);
  std::vector<char> texts(length * static_cast<std::size_t>(places));
  std::array<char, 100> err{};
  tessarel_states(pair.data(), &rows, a.data(), b.data(), r.states.data(), r.liquids.data(), r.vapours.data(),
                  r.derived.data(), r.x.data(), r.y.data(), r.codes.data(), &places, texts.data(), err.data(),
                  pair.size(), length, err.size());
  for (std::int32_t k = 0; k < places; ++k)
    r.texts.push_back(host::text(texts.data() + static_cast<std::size_t>(k) * length, length));
  r.err = host::text(err.data(), err.size());
  return r;
}

/// One call gives what single calls give, with the phases and derived properties that belong to it.
TEST(States, AreThoseOfSingleCalls) {
  const std::vector<std::string> names = {"methane", "n-butane"};
  ASSERT_EQ(host::select(names, {0.5, 0.5}), "No errors");
  const double mass = host::molar_mass({0.5, 0.5});
  const std::vector<double> t = {300, 260, 360, -5, 300, std::nan(""), 330}, p = {40e5, 150e5, 5e5, 1e5, 0, 1e5, 40e5};
  const Batch batch = run("TP", t, p, 2);
  EXPECT_EQ(batch.err, "No errors");
  const std::size_t count = t.size();
  for (std::size_t k = 0; k < count; ++k) {
    host::Call call;
    call.t = t[k], call.p = p[k], call.q = 1;
    call.run("TP");
    ASSERT_EQ(batch.codes[k] == 0, call.err == "No errors") << k;
    if (batch.codes[k] != 0) {
      EXPECT_EQ(batch.texts.at(static_cast<std::size_t>(batch.codes[k] - 1)), call.err);
      EXPECT_EQ(batch.states[k], mark);
      continue;
    }
    const host::Call single = host::to_inputs(call, mass);
    const double expected[] = {single.t, single.p, single.v, single.u, single.h, single.s, single.q};
    for (std::size_t j = 0; j < 7; ++j)
      EXPECT_NEAR(batch.states[j * count + k], expected[j], 1e-14 * std::abs(expected[j]));
    const bool two = single.q > 0 && single.q < 1;
    EXPECT_EQ(batch.derived[k] == mark, two);
    EXPECT_EQ(batch.liquids[k] != mark, two);
    // The whole is the mean of its phases, and cp exceeds cv by T v alpha^2 / kappa.
    for (std::size_t j = 0; two && j < 4; ++j) {
      const double whole = batch.states[(2 + j) * count + k], q = single.q;
      EXPECT_NEAR((1 - q) * batch.liquids[j * count + k] + q * batch.vapours[j * count + k], whole,
                  1e-9 * std::abs(whole));
    }
    const auto derived = [&](std::size_t j) { return batch.derived[j * count + k]; };
    if (!two) {
      EXPECT_NEAR(derived(1) - derived(0), single.t * single.v * derived(5) * derived(5) / derived(4),
                  1e-10 * derived(1));
    }
    for (std::size_t i = 0; two && i < 2; ++i) {
      EXPECT_EQ(batch.x[2 * k + i], single.x[i]);
      EXPECT_EQ(batch.y[2 * k + i], single.y[i]);
    }
  }
  // -5 K and NaN share a text, 0 Pa has another; without room for texts the codes still tell.
  EXPECT_EQ(batch.texts.size(), 2U);
  const Batch bare = run("TP", t, p, 2, 0);
  EXPECT_EQ(bare.codes[3], -1);
  EXPECT_EQ(bare.codes[0], 0);
  EXPECT_EQ(run("XY", t, p, 2).codes[0], 1);
  // The enthalpies found lead back.
  const Batch back = run("Ph", {p[0]}, {batch.states[4 * count]}, 2);
  EXPECT_NEAR(back.states[0], t[0], 1e-9 * t[0]);
}

}  // namespace
