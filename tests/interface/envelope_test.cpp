// The phase envelope as a host reads it: in any order, with its texts.
#include "interface/host.hpp"
#include "tessarel/routines.h"

namespace {

using Query = void (*)(const double*, double*, double*, char*, std::size_t);

double ask(Query query, double value, const std::string& expected = "No errors") {
  std::array<char, 100> err{};
  std::array<double, 20> phase{};
  double result = 0;
  query(&value, phase.data(), &result, err.data(), err.size());
  EXPECT_EQ(host::text(err.data(), err.size()), expected) << value;
  return result;
}

std::array<double, 2> log_fugacities(const std::array<double, 2>& x, double t, double p, std::int32_t phase) {
  const std::int32_t n = 2;
  std::array<double, 2> f{};
  tessarel_calc_lnphi(&n, x.data(), &t, &p, &phase, f.data());
  for (std::size_t i = 0; i < 2; ++i) f[i] += std::log(x[i]);
  return f;
}

std::array<double, 4> maxima() {
  std::array<double, 4> m{};
  tessarel_getmaxima(&m[0], &m[1], &m[2], &m[3]);
  return m;
}

std::string bubdew(const char* given, const char* what, double value, std::int32_t n = 2, double first = 0.5) {
  std::array<char, 100> err{};
  std::array<double, 20> x{}, y{};
  const double z[] = {first, 0.5};
  double result = 0;
  tessarel_calc_bubdew(&n, z, given, what, &value, x.data(), y.data(), &result, err.data(), 1, 1, err.size());
  return host::text(err.data(), err.size());
}

TEST(EnvelopeReading, DoesNotDependOnTheOrder) {
  std::array<double, 4> first[2];
  double dew[2];
  for (const int order : {0, 1}) {
    ASSERT_EQ(host::select({"methane", "n-butane"}, {0.5, 0.5}), "No errors");
    const auto limits = host::session().limits;
    EXPECT_EQ(limits.tcritherm, limits.tc);  // the averages, until a query
    if (order == 0) {
      first[order] = maxima();
      EXPECT_EQ(host::session().limits.tcritherm, limits.tc);
    }
    dew[order] = ask(tessarel_calc_dew_p, 350);
    if (order == 1) first[order] = maxima();
    EXPECT_EQ(host::session().limits.tcritherm, first[order][0]);
    EXPECT_EQ(host::session().limits.pcribar, first[order][2] * 1e5);
  }
  EXPECT_EQ(first[0], first[1]);
  EXPECT_EQ(dew[0], dew[1]);
  // A new composition is not answered from the old line, and the old one comes back.
  ASSERT_EQ(host::select({"methane", "n-butane"}, {0.4, 0.6}), "No errors");
  EXPECT_GT(std::abs(ask(tessarel_calc_dew_p, 350) / dew[0] - 1), 0.01);
  ASSERT_EQ(host::select({"methane", "n-butane"}, {0.5, 0.5}), "No errors");
  EXPECT_EQ(ask(tessarel_calc_dew_p, 350), dew[0]);
}

/// Every entry that reads the envelope gives the same before and after every other one.
TEST(EnvelopeReading, AnyTwoEntriesInAnyOrder) {
  using Values = std::vector<double>;
  static double t[5000], p[5000], x[100000], y[100000];
  const std::vector<Values (*)()> readers = {[] { return Values{ask(tessarel_calc_dew_p, 350)}; },
                                             [] { return Values{ask(tessarel_calc_bubble_t, 3e6)}; },
                                             [] {
                                               const auto m = maxima();
                                               return Values(m.begin(), m.end());
                                             },
                                             [] {
                                               Values m(4);
                                               tessarel_getminima(&m[0], &m[1], &m[2], &m[3]);
                                               return m;
                                             },
                                             [] {
                                               std::int32_t n = 0;
                                               tessarel_phaseenvelope(&n, t, p, x, y);
                                               Values all(t, t + n);
                                               all.insert(all.end(), p, p + n);
                                               all.insert(all.end(), y, y + 20 * n);
                                               return all;
                                             },
                                             [] {
                                               Values c(3);
                                               char err[80];
                                               tessarel_criticalpoint(&c[0], &c[1], &c[2], err, sizeof err);
                                               return c;
                                             },
                                             [] {
                                               std::int32_t code = 0;
                                               const std::int32_t n = 2;
                                               const double z[] = {0.5, 0.5};
                                               tessarel_calc_phaseenv(&n, z, &code);
                                               return Values{static_cast<double>(code)};
                                             }};
  const auto fresh = [] { ASSERT_EQ(host::select({"methane", "n-butane"}, {0.5, 0.5}), "No errors"); };
  for (const auto& first : readers) {
    fresh();
    const Values alone = first();
    for (const auto& second : readers) {
      fresh();
      second();
      EXPECT_EQ(first(), alone) << &first - readers.data() << " after " << &second - readers.data();
    }
  }
}

/// After a selection that has failed there is no mixture to trace, and nothing to crash on.
TEST(EnvelopeReading, AfterAFailedSelection) {
  std::int64_t fresh = 0, before = 0;
  char err[100];
  tessarel_session_current(&before);
  tessarel_session_new(&fresh, err, sizeof err);
  tessarel_session_use(&fresh, err, sizeof err);
  for (const bool after_a_pure_fluid : {false, true}) {
    if (after_a_pure_fluid) {
      ASSERT_EQ(host::select({"methane"}, {1.0}), "No errors");
    }
    EXPECT_NE(host::select({"methane", "no such fluid"}, {0.5, 0.5}), "No errors");
    EXPECT_NE(bubdew("T", "B", 250), "No errors");
    maxima();
  }
  tessarel_session_use(&before, err, sizeof err);
  tessarel_session_free(&fresh, err, sizeof err);
}

/// A question about another composition leaves the limits of the selected one.
TEST(EnvelopeReading, AnotherCompositionChangesNothing) {
  ASSERT_EQ(host::select({"methane", "n-butane"}, {0.5, 0.5}), "No errors");
  const double tc = host::session().limits.tc, alone = ask(tessarel_calc_dew_p, 350);
  ASSERT_EQ(host::select({"methane", "n-butane"}, {0.5, 0.5}), "No errors");
  EXPECT_EQ(bubdew("T", "D", 200, 2, 0.5), "No errors");
  ASSERT_EQ(host::select({"methane", "n-butane"}, {0.5, 0.5}), "No errors");
  std::array<double, 20> x{}, y{};
  std::array<char, 100> err{};
  const std::int32_t n = 2;
  const double z[] = {0.9, 0.1}, t = 250;
  double p = 0;
  tessarel_calc_bubdew(&n, z, "T", "D", &t, x.data(), y.data(), &p, err.data(), 1, 1, err.size());
  EXPECT_EQ(host::text(err.data(), err.size()), "No errors");
  EXPECT_EQ(host::session().limits.tc, tc);
  EXPECT_EQ(ask(tessarel_calc_dew_p, 350), alone);
}

TEST(EnvelopeReading, RoundTripsAndTexts) {
  ASSERT_EQ(host::select({"methane", "n-butane"}, {0.5, 0.5}), "No errors");
  for (const double t : {200.0, 250.0, 300.0}) {
    EXPECT_NEAR(ask(tessarel_calc_bubble_t, ask(tessarel_calc_bubble_p, t)), t, 1e-8);
    EXPECT_NEAR(ask(tessarel_calc_dew_t, ask(tessarel_calc_dew_p, t)), t, 1e-8);
    for (const bool bubble : {true, false}) {
      std::array<double, 2> z{0.5, 0.5}, incipient{};
      std::array<char, 100> err{};
      double p = 0;
      (bubble ? tessarel_calc_bubble_p : tessarel_calc_dew_p)(&t, incipient.data(), &p, err.data(), err.size());
      const auto in_feed = log_fugacities(z, t, p, bubble ? 1 : 2),
                 beside = log_fugacities(incipient, t, p, bubble ? 2 : 1);
      for (std::size_t i = 0; i < 2; ++i) EXPECT_NEAR(in_feed[i], beside[i], 1e-8) << t << bubble;
    }
  }
  const auto m = maxima();
  // At the turning points themselves, and next to them on the outer side.
  EXPECT_NEAR(ask(tessarel_calc_dew_p, m[0]), m[1] * 1e5, 1e-6 * m[1] * 1e5);
  EXPECT_EQ(ask(tessarel_calc_dew_p, m[0] + 0.01, "Dew point calculation: input temperature out of range."), -8888.8);
  EXPECT_EQ(ask(tessarel_calc_bubble_t, m[2] * 1.0001e5, "Bubble point calculation: input pressure out of range."),
            -8888.8);
  EXPECT_EQ(ask(tessarel_calc_bubble_p, 20, "Bubble point calculation: input temperature out of range."), -8888.8);
  EXPECT_EQ(bubdew("T", "B", 250), "No errors");
  EXPECT_EQ(bubdew("T", "b", 250), "Bubble/dew point calc.: enter 'B' for bubble or 'D' for dew point.");
  EXPECT_EQ(bubdew("t", "x", 250), "Bubble/dew point calc.: enter 'P' for pressure or 'T' for temperature.");
  EXPECT_TRUE(bubdew("T", "B", 250, 1).starts_with("TESSAREL error: the envelope is that of all"));
  EXPECT_TRUE(bubdew("T", "B", 250, 2, 0.6).starts_with("TESSAREL error: mole fractions"));
  EXPECT_EQ(bubdew("T", "D", std::nan("")), "Dew point calculation: input temperature out of range.");
  for (const auto& [code, expected] : std::initializer_list<std::pair<std::int32_t, const char*>>{
           {0, "No errors"},
           {461, "Bubble/dew point calc.: crash safety error..."},
           {462, "Bubble point calc.: input condition is dew point condition."},
           {463, "Dew point calc.: input condition is bubble point condition."},
           {464, "Bubble/dew point calc.: error in polynomial interpolation..."},
           {470, "Bubble/dew point calc.: too slow or no convergence."},
           {471, "Bubble/dew point calc.: gap in calculated saturation line."},
           {472, "Phase envelop calc.: max. pressure exceeded...."},
           {1234, "Bubble/dew point unknown error. Code =1234"}}) {
    std::array<char, 100> err{};
    tessarel_errorstring(&code, err.data(), err.size());
    EXPECT_EQ(host::text(err.data(), err.size()), expected);
  }
  std::int32_t count = 0;
  static double t[5000], p[5000], x[100000], y[100000];
  tessarel_getphaseenv(&count, t, p, x, y);
  ASSERT_GT(count, 20);
  EXPECT_NEAR(*std::max_element(p, p + count), m[2], 0.02 * m[2]);
  // A dew line to 1000 bar is no answer to the question for a bubble point.
  ASSERT_EQ(host::select({"methane", "water"}, {0.7, 0.3}), "No errors");
  EXPECT_GT(ask(tessarel_calc_dew_p, 300), 10000);
  for (const auto& query : {tessarel_calc_bubble_p, tessarel_calc_bubble_t})
    EXPECT_EQ(ask(query, query == tessarel_calc_bubble_p ? 300 : 1e5,
                  "Bubble point calc.: input condition is dew point condition."),
              -8888.8);
  ASSERT_EQ(host::select({"propane"}, {1.0}), "No errors");
  ask(tessarel_calc_dew_p, 300, "TESSAREL error: a phase envelope needs a mixture...");
}

}  // namespace
