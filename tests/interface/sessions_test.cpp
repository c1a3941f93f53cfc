// Sessions: several fluids side by side, and on several threads at once with the same bits as one after another.
#include <gtest/gtest.h>

#include <atomic>
#include <cstring>
#include <functional>
#include <memory>
#include <thread>

#include "interface/host.hpp"
#include "tessarel/blocks.h"
#include "tessarel/routines.h"
#include "tessarel/tessarel.hpp"

namespace {

using Bytes = std::string;
std::array<char, 120> err;  // of the main thread

std::string message() {
  return host::text(err.data(), err.size());
}
std::int64_t fresh() {
  std::int64_t number = 0;
  tessarel_session_new(&number, err.data(), err.size());
  EXPECT_EQ(message(), "No errors");
  return number;
}
std::string use(std::int64_t number) {
  tessarel_session_use(&number, err.data(), err.size());
  return message();
}
std::string free_session(std::int64_t number) {
  tessarel_session_free(&number, err.data(), err.size());
  return message();
}
std::int64_t current() {
  std::int64_t number = -1;
  tessarel_session_current(&number);
  return number;
}

struct Job {
  std::vector<std::string> names;
  std::vector<double> x;
  double t;
};
const std::vector<Job> jobs = {
    {{"methane", "n-butane", "n-decane"}, {0.5, 0.3, 0.2}, 300},
    {{"water", "methanol"}, {0.4, 0.6}, 330},
    {{"carbon dioxide", "acetone", "dimethyl ether"}, {0.3, 0.4, 0.3}, 320},
    {{"methane", "ethane", "propane", "n-butane", "n-pentane", "n-hexane", "n-heptane", "n-octane", "toluene", "argon"},
     std::vector<double>(10, 0.1),
     310},
};

/// Every kind of entry on one fluid: selection, reports, readers, property calls, stacks, fugacities, saturation,
/// spinodal, critical points, root finder, building blocks. All that comes back, as bytes.
Bytes work(const Job& job) {
  Bytes all;
  const auto add = [&all](const auto* data, std::size_t count) {
    all.append(reinterpret_cast<const char*>(data), count * sizeof *data);
  };
  std::array<char, 100> text{};
  const auto n = static_cast<std::int32_t>(job.x.size());
  const auto size = job.x.size();
  const double* x = job.x.data();
  const double t = job.t, rho = 0.004, p = 2e6;
  EXPECT_EQ(host::select(job.names, job.x), "No errors");
  std::vector<double> out(size * size * size);
  for (const auto routine : {tessarel_calc_a, tessarel_calc_d3a_dt3, tessarel_calc_d4a_drho4, tessarel_calc_d2z_dtdrho,
                             tessarel_calc_dp_dt, tessarel_calc_cv}) {
    routine(&n, x, &t, &rho, out.data());
    add(out.data(), 1);
  }
  tessarel_calc_d3a_dxdxdx(&n, x, &t, &rho, out.data());
  add(out.data(), out.size());
  std::vector<double> dt(size), dp(size), dn(size * size);
  for (const std::int32_t phase : {1, 2, -1}) {
    tessarel_calc_lnphi_tpn(&n, x, &t, &p, &phase, out.data(), dt.data(), dp.data(), dn.data());
    add(out.data(), size), add(dt.data(), size), add(dp.data(), size), add(dn.data(), dn.size());
  }
  for (const char* spec : {"TP Lph", "TP Vph", "Tv Vph", "Ph Lph", "hs Vph"}) {
    host::Call call = host::at_tp("TP Vph", t, 1e5);
    call = host::to_inputs(call, host::molar_mass(job.x));
    call.run(spec, 3);
    add(&call.t, 14), add(call.lnphi.data(), size);
    all += call.err;
  }
  double a = 0, b = 0;
  const double cold = 0.7 * host::session().limits.tc;
  tessarel_calc_psat(&cold, &a, text.data(), text.size());
  add(&a, 1);
  tessarel_calc_pspin(&cold, &a, &b, text.data(), text.size());
  add(&a, 1), add(&b, 1);
  tessarel_critpoint(text.data(), text.size());
  add(&host::session().limits.tc, 3);
  double found_t = t, density = 0.003;
  const std::int32_t mixture = 0, quiet = 0;
  std::int32_t status = 0;
  tessarel_cubic_newton(&quiet, &n, x, &density, &found_t, &status);
  add(&found_t, 1), add(&status, 1);
  tessarel_set_mmean(&n, x, &mixture);
  double apar[7], bpar[7];
  tessarel_calc_d2abpar_dxdx(apar, bpar);
  add(apar, 7), add(bpar, 7);
  std::vector<double> d(size), j2(3 * size * size), j3(3 * size * size * size);
  const double eta = 0.3;
  tessarel_calc_d(&n, &mixture, &t, d.data());
  tessarel_calc_j2j3(&n, &t, &eta, d.data(), j2.data(), j3.data());
  add(d.data(), size), add(j2.data(), j2.size()), add(j3.data(), j3.size());
  std::vector<char> list(500 * 64);
  tessarel_searchdirectory("/", "*", list.data(), 1, 1, 64);
  tessarel_readbips(text.data(), text.size());
  const std::string unknown = host::select({"no such fluid"}, {1});
  all += unknown;
  return all;
}

TEST(Sessions, ThreadsGiveTheBitsOfOneAfterAnother) {
  std::vector<Bytes> expected;
  for (const Job& job : jobs) {
    const auto number = fresh();
    ASSERT_EQ(use(number), "No errors");
    expected.push_back(work(job));
    ASSERT_EQ(use(0), "No errors");
    EXPECT_EQ(free_session(number), "No errors");
  }
  std::vector<Bytes> found(jobs.size());
  std::vector<std::thread> threads;
  std::atomic<int> waiting{static_cast<int>(jobs.size())};
  for (std::size_t k = 0; k < jobs.size(); ++k)
    threads.emplace_back([&, k] {
      std::array<char, 40> text{};
      std::int64_t number = 0;
      tessarel_session_new(&number, text.data(), text.size());
      tessarel_session_use(&number, text.data(), text.size());
      for (--waiting; waiting > 0;) std::this_thread::yield();
      for (int round = 0; round < 3; ++round) found[k] = work(jobs[k]);
    });
  for (std::thread& thread : threads) thread.join();
  for (std::size_t k = 0; k < jobs.size(); ++k) EXPECT_EQ(found[k] == expected[k], true) << jobs[k].names[0];
}

TEST(Sessions, AreMadeUsedAndFreedByNumber) {
  const std::string unknown = "TESSAREL error: no such session...";
  const std::string elsewhere = "TESSAREL error: session is in use on another thread...";
  const auto a = fresh(), b = fresh();
  EXPECT_GT(b, a);
  ASSERT_EQ(host::select({"propane"}, {1}), "No errors");
  const double in_first = host::at_tv(300, 1e-4).p;
  ASSERT_EQ(use(a), "No errors");
  EXPECT_EQ(current(), a);
  EXPECT_EQ(host::at_tv(300, 1e-4).err, "TESSAREL error: no fluid selected...");
  ASSERT_EQ(host::select({"ethane"}, {1}), "No errors");
  EXPECT_NE(host::at_tv(300, 1e-4).p, in_first);
  // Refused, with nothing changed.
  for (const std::int64_t wrong : {std::int64_t{-1}, b + 1000, INT64_MIN, INT64_MAX}) {
    EXPECT_EQ(use(wrong), unknown);
    EXPECT_EQ(free_session(wrong), unknown);
  }
  EXPECT_EQ(free_session(a), "TESSAREL error: session is current on a thread and cannot be freed...");
  EXPECT_EQ(free_session(0), "TESSAREL error: session 0 cannot be freed...");
  tessarel_session_use(nullptr, err.data(), err.size());
  EXPECT_EQ(message(), "TESSAREL error: null pointer argument...");
  EXPECT_EQ(current(), a);
  // Elsewhere this one cannot be taken, cloned or freed; a thread that ends gives its own back.
  std::thread([&] {
    std::array<char, 80> text{};
    std::int64_t copy = 0;
    EXPECT_EQ(current(), 0);
    tessarel_session_use(&a, text.data(), text.size());
    EXPECT_EQ(host::text(text.data(), text.size()), elsewhere);
    tessarel_session_clone(&a, &copy, text.data(), text.size());
    EXPECT_EQ(host::text(text.data(), text.size()), elsewhere);
    tessarel_session_free(&a, text.data(), text.size());
    EXPECT_NE(host::text(text.data(), text.size()), "No errors");
    tessarel_session_use(&b, text.data(), text.size());
    EXPECT_EQ(host::text(text.data(), text.size()), "No errors");
  }).join();
  EXPECT_EQ(use(b), "No errors");
  EXPECT_EQ(use(0), "No errors");
  EXPECT_EQ(host::at_tv(300, 1e-4).p, in_first);
  EXPECT_EQ(free_session(a), "No errors");
  EXPECT_EQ(use(a), unknown);
  EXPECT_EQ(free_session(b), "No errors");
}

TEST(Sessions, ACloneHasTheSelectionAndGoesItsOwnWay) {
  const auto original = fresh();
  ASSERT_EQ(use(original), "No errors");
  ASSERT_EQ(host::select({"water", "acetone"}, {111.25, 0.75}), "No errors");
  host::parameters().sigma[1] *= 1.001;  // a parameter of its own
  host::session().update();
  const double before = host::at_tv(400, 1e-3).p;
  std::int64_t copy = 0;
  tessarel_session_clone(&original, &copy, err.data(), err.size());
  ASSERT_EQ(message(), "No errors");
  ASSERT_EQ(use(copy), "No errors");
  EXPECT_EQ(host::at_tv(400, 1e-3).p, before);
  ASSERT_EQ(host::select({"propane"}, {1}), "No errors");
  ASSERT_EQ(use(original), "No errors");
  EXPECT_EQ(host::at_tv(400, 1e-3).p, before);
  // The same names read nothing: the changed parameter is still there.
  ASSERT_EQ(host::select({"water", "acetone"}, {0.25, 0.75}), "No errors");
  EXPECT_EQ(host::at_tv(400, 1e-3).p, before);
  use(0);
  for (const auto number : {original, copy}) EXPECT_EQ(free_session(number), "No errors");
}

// A prepared record is complete in itself.
TEST(Sessions, APreparedRecordSurvivesAnotherSelection) {
  const std::int32_t n = 2;
  const double x[] = {0.4, 0.6}, t = 330, rho = 0.008;
  std::int32_t status = 9;
  double expected = 0, value = 0;
  tessarel_blocks* blocks = tessarel_blocks_new();
  ASSERT_EQ(host::select({"acetone", "carbon dioxide"}, {0.4, 0.6}), "No errors");
  tessarel_calc_a(&n, x, &t, &rho, &expected);
  tessarel_calc_a_prep(&n, x, &t, &rho, blocks, &status);
  EXPECT_EQ(status, 0);
  ASSERT_EQ(host::select({"methane"}, {1}), "No errors");
  tessarel_calc_a_base(&n, x, &rho, blocks, &value);
  EXPECT_EQ(value, expected);
  tessarel_blocks_free(blocks);
}

// A host's forward calculation may change session while the root finder waits for it.
void forward_in_another_session(double* t, double*, double*, double* u, double*, double*, char* text,
                                std::size_t size) {
  const tessarel::Session other({"propane"}, {1});
  *u = *t + 0 * other.state("TP Vph", {.t = 300, .p = 1e5}).v;
  tessarel::assign_padded(text, size, "No errors");
}
TEST(Sessions, CallbacksMayUseOthers) {
  double vars[6] = {0, 0, 0, 5, 0, 0};
  const double low = 1, high = 9;
  const std::int32_t ptr[] = {1, 4};
  EXPECT_NEAR(tessarel_brent_root_1ph(forward_in_another_session, &low, &high, vars, ptr, err.data(), err.size()), 5,
              1e-12);
  EXPECT_EQ(message(), "No errors");
  EXPECT_EQ(current(), 0);
}

TEST(Sessions, TheCppWrapperSpeaksMolarUnits) {
  using tessarel::Session;
  Session a({"propane"}, {1.0}), b({"methane", "ethane"}, {0.9, 0.1});
  const auto first = a.state("TP Vph", {.t = 320, .p = 5e5});
  EXPECT_NEAR(first.t, 320, 1e-12);
  EXPECT_NEAR(first.p, 5e5, 1e-9 * 5e5);
  EXPECT_NEAR(first.h, first.u + first.p * first.v, 1e-9 * std::abs(first.h));
  EXPECT_NEAR(first.dpdt, first.p / first.t, 0.2 * first.dpdt);  // near the ideal gas
  EXPECT_NEAR(first.v, tessarel::fluid::gas_constant * 320 / 5e5, 0.1 * first.v);
  EXPECT_NEAR(first.cv, 73, 8);  // J/(mol K)
  const auto again = a.state("Ph Vph", {.p = first.p, .h = first.h});
  EXPECT_NEAR(again.t, 320, 1e-7);
  EXPECT_EQ(b.state("TP Vph", {.t = 300, .p = 1e6}).lnphi.size(), 2U);
  EXPECT_NEAR(b.info().molar_mass, 0.9 * 0.016043 + 0.1 * 0.03007, 1e-6);
  const auto split = b.flash(180, 20e5);
  EXPECT_TRUE(split.two_phases && split.beta > 0 && split.beta < 1 && split.y[0] > 0.9 && split.x[0] < 0.9);
  EXPECT_FALSE(b.flash(300, 20e5).two_phases);
  EXPECT_NEAR(a.critical_point().tc, a.info().tc, 1e-9 * a.info().tc);
  EXPECT_GT(b.critical_point().pc, b.info().pc);
  EXPECT_THROW((void)b.flash(-1, 1e5), tessarel::Error);
  EXPECT_NEAR(a.derived(320, first.v).cp - first.cv, -320 * first.dpdt * first.dpdt / first.dpdv, 1e-9 * first.cv);
  EXPECT_THROW((void)b.derived({1.0}, 320, first.v), tessarel::Error);
  Session other = b.clone();
  other.set_kij(1, 2, 0.1);
  other.set_parameter("mseg", 2, 1.1 * b.parameter("mseg", 2));
  EXPECT_LT(b.info().tc, 0.999 * other.info().tc);
  EXPECT_EQ(current(), 0);

  Session moved = std::move(a);
  EXPECT_THROW(a.select({"ethane"}, {1}), tessarel::Error);  // NOLINT(bugprone-use-after-move)
  EXPECT_THROW((void)a.clone(), tessarel::Error);
  {
    // Objects that end in an unusual order leave the thread on session 0.
    auto inner = std::make_unique<Session>(), outer = std::make_unique<Session>();
    auto use_outer = std::make_unique<Session::Use>(*outer);
    const Session::Use use_inner(*inner);
    outer.reset();
    inner.reset();
    EXPECT_EQ(current(), 0);
    use_outer.reset();
  }
  EXPECT_EQ(current(), 0);
  EXPECT_EQ(moved.state("TP Vph", {.t = 320, .p = 5e5}).v, first.v);
  {
    const Session::Use use(moved);
    EXPECT_EQ(current(), moved.number());
    EXPECT_EQ(moved.clone().state("TP Vph", {.t = 320, .p = 5e5}).v, first.v);
  }
  try {
    b.select({"unobtainium"}, {1});
    FAIL();
  } catch (const tessarel::Error& error) {
    EXPECT_EQ(std::string(error.what()).substr(0, 32), "Error opening fluid data file of");
  }
  EXPECT_THROW((void)b.state("TP Vph", {.t = 300, .p = 1e6}), tessarel::Error);
  Session simplified({"methane", "ethane"}, {111.9, 0.1});
  EXPECT_NEAR(simplified.info().molar_mass, 0.0174457, 1e-6);
}

TEST(Sessions, AreSmall) {
  const auto number = fresh();
  ASSERT_EQ(use(number), "No errors");
  ASSERT_EQ(host::select({"methane", "n-butane"}, {0.5, 0.5}), "No errors");
  const std::size_t bytes = sizeof(tessarel::interface::Session) + host::session().work.arena.capacity();
  std::printf("a session of two components: %zu bytes, of them %zu working storage\n", bytes,
              host::session().work.arena.capacity());
  EXPECT_LT(bytes, 300000U);
  use(0);
  free_session(number);
}

}  // namespace
