// The property calls that return both phases: each phase against a selection of its composition.
#include "common/test_fluid.hpp"
#include "interface/host.hpp"

namespace {

using tessarel::testing::Values;
using Triple = std::array<double, 3>;
constexpr double mark = -8888.8;

/// One call of tessarel_tmdprop_allphase; places: 0 the whole, 1 vapour, 2 liquid.
struct AllPhases {
  double t = 0, p = 0, q = 0;
  Triple v{}, u{}, h{}, s{}, cv{}, dpdt{}, dpdv{}, d2pdt2{}, d2pdv2{}, d2pdtdv{}, dcvdt{};
  Values x = Values(20), y = x, lnphi = Values(60, 0.25);
  std::string err;

  AllPhases& run(std::string_view spec, std::int32_t order) {
    std::array<char, 120> field{};
    tessarel_tmdprop_allphase(spec.data(), &order, &t, &p, v.data(), u.data(), h.data(), s.data(), &q, cv.data(),
                              dpdt.data(), dpdv.data(), d2pdt2.data(), d2pdv2.data(), d2pdtdv.data(), dcvdt.data(),
                              x.data(), y.data(), lnphi.data(), field.data(), spec.size(), field.size());
    err = host::text(field.data(), field.size());
    return *this;
  }
};
AllPhases all_at(std::string_view spec, double t, double p, std::int32_t order) {
  AllPhases call;
  call.t = t;
  call.p = p;
  return call.run(spec, order);
}

struct Saturated {
  double t = 0, p = 0, v = 0, h = 0, s = 0, u = 0, q = 0;
  double v_l = 1, v_v = 2, h_l = 3, h_v = 4, s_l = 5, s_v = 6, u_l = 7, u_v = 8;
  Values x = Values(20), y = x;
  std::string err;

  Saturated& run(std::string_view spec) {
    std::array<char, 120> field{};
    tessarel_tmdpropsat(spec.data(), &t, &p, &v, &h, &s, &u, &q, x.data(), y.data(), &v_l, &v_v, &h_l, &h_v, &s_l, &s_v,
                        &u_l, &u_v, field.data(), spec.size(), field.size());
    err = host::text(field.data(), field.size());
    return *this;
  }
};
Saturated saturated_at(std::string_view spec, double t, double p) {
  Saturated call;
  call.t = t;
  call.p = p;
  return call.run(spec);
}

void near(double value, double expected, const char* what) {
  EXPECT_NEAR(value, expected, 1e-10 * std::abs(expected)) << what;
}

const struct {
  std::vector<std::string> names;
  Values z;
  double t, p;
} two_phase_states[] = {{{"methane", "n-butane"}, {0.5, 0.5}, 300, 40e5},
                        {{"methane", "ethane", "propane", "n-butane"}, {0.4, 0.3, 0.2, 0.1}, 250, 30e5},
                        {{"methanol", "acetone", "carbon dioxide"}, {0.3, 0.3, 0.4}, 320, 10e5}};

TEST(AllPhases, AreThoseOfTheirCompositions) {
  for (const auto& c : two_phase_states) {
    SCOPED_TRACE(c.names.back());
    const std::size_t n = c.z.size();
    ASSERT_EQ(host::select(c.names, c.z), "No errors");
    const AllPhases all = all_at("TP all", c.t, c.p, 3), vapour = all_at("TP vap", c.t, c.p, 3),
                    liquid = all_at("TP liq", c.t, c.p, 3), whole = all_at("TP", c.t, c.p, 3);
    const Saturated saturated = saturated_at("TP", c.t, c.p);
    ASSERT_EQ(all.err + vapour.err + liquid.err + whole.err + saturated.err,
              "No errorsNo errorsNo errorsNo errorsNo errors");
    ASSERT_TRUE(all.q > 0.01 && all.q < 0.99);
    EXPECT_EQ(all.cv[0], mark);
    EXPECT_EQ(all.lnphi[0], 0.25);
    const double mass = host::molar_mass(c.z);
    Values phase_mass(3), sum(4);
    for (const std::size_t k : {1U, 2U}) {
      Values composition(k == 1 ? all.y : all.x);
      composition.resize(n);
      ASSERT_EQ(host::select(c.names, composition), "No errors");
      const host::Call phase = host::at_tp(k == 1 ? "TP Vph" : "TP Lph", c.t, c.p, 3);
      near(all.v[k], phase.v, "v");
      near(all.h[k], phase.h, "h");
      near(all.s[k], phase.s, "s");
      near(all.u[k], phase.u, "u");
      near(all.cv[k], phase.cv / (k == 2 ? 1000 : 1), "cv");
      near(all.dpdt[k], phase.dpdt, "dpdt");
      near(all.dpdv[k], phase.dpdv, "dpdv");
      near(all.d2pdt2[k], phase.d2pdt2, "d2pdt2");
      near(all.d2pdv2[k], phase.d2pdv2, "d2pdv2");
      near(all.d2pdtdv[k], phase.d2pdtdv, "d2pdtdv");
      near(all.dcvdt[k], phase.dcvdt / 1000, "dcvdt");
      const double m = phase_mass[k] = host::molar_mass(composition), amount = k == 1 ? all.q : 1 - all.q;
      sum[0] += amount * m * all.v[k], sum[1] += amount * m * all.h[k];
      sum[2] += amount * m * all.s[k], sum[3] += amount * m * all.u[k];
      // One phase alone: its second-order properties at the first place, molar.
      const AllPhases& alone = k == 1 ? vapour : liquid;
      near(alone.v[0], all.v[k], "v of one phase");
      near(alone.h[0], all.h[k], "h of one phase");
      near(alone.cv[0], phase.cv * m * 1000, "molar cv");
      near(alone.dpdv[0], phase.dpdv / m, "molar dpdv");
      near(alone.dcvdt[0], phase.dcvdt * m, "molar dcvdt");
      EXPECT_EQ(alone.v[k], mark);
      for (std::size_t i = 0; i < n; ++i) {
        EXPECT_NEAR(all.lnphi[i + n * k], phase.lnphi[i], 1e-10);
        EXPECT_NEAR(alone.lnphi[i], phase.lnphi[i], 1e-10);
      }
    }
    near(mass * all.v[0], sum[0], "overall v");
    near(mass * all.h[0], sum[1], "overall h");
    near(mass * all.s[0], sum[2], "overall s");
    near(mass * all.u[0], sum[3], "overall u");
    for (std::size_t i = 0; i < n; ++i)
      EXPECT_NEAR(std::log(all.x[i]) + all.lnphi[i + 2 * n], std::log(all.y[i]) + all.lnphi[i + n], 1e-10);
    near(whole.v[0], all.v[0], "v of the whole");
    EXPECT_GT(std::abs(whole.cv[0]), 10);  // of a homogeneous fluid that does not exist, molar
    const double found[] = {saturated.v,   saturated.h,   saturated.s,   saturated.u,   saturated.v_l, saturated.h_l,
                            saturated.s_l, saturated.u_l, saturated.v_v, saturated.h_v, saturated.s_v, saturated.u_v},
                 expected[] = {all.v[0], all.h[0], all.s[0], all.u[0], all.v[2], all.h[2],
                               all.s[2], all.u[2], all.v[1], all.h[1], all.s[1], all.u[1]};
    for (std::size_t k = 0; k < std::size(found); ++k) near(found[k], expected[k], "saturated");
  }
}

/// Other pairs find the same state and leave the phases alone.
TEST(AllPhases, OtherPairs) {
  const auto& c = two_phase_states[0];
  ASSERT_EQ(host::select(c.names, c.z), "No errors");
  const double mass = host::molar_mass(c.z);
  const AllPhases first = all_at("TP all", c.t, c.p, 0);
  for (const char* spec : {"Ph all", "Ps all", "Pu all", "Tv all", "vu all", "hs all", "Pq all", "Tq all"}) {
    SCOPED_TRACE(spec);
    AllPhases again;
    again.t = c.t, again.p = c.p, again.q = first.q;
    again.v[0] = first.v[0] * mass;
    again.u[0] = first.u[0] * mass * 1000, again.h[0] = first.h[0] * mass * 1000, again.s[0] = first.s[0] * mass * 1000;
    Saturated saturated;
    saturated.t = c.t, saturated.p = c.p, saturated.q = first.q, saturated.v = again.v[0];
    saturated.u = again.u[0], saturated.h = again.h[0], saturated.s = again.s[0];
    again.run(spec, 3);
    EXPECT_EQ(again.err, "No errors");
    EXPECT_EQ(saturated.run(std::string(spec).substr(0, 2)).err, "No errors");
    for (std::size_t i = 0; i < 2; ++i) {
      EXPECT_NEAR(again.x[i], first.x[i], 1e-8);
      EXPECT_NEAR(saturated.y[i], first.y[i], 1e-8);
    }
    EXPECT_NEAR(again.q, first.q, 1e-8);
    EXPECT_NEAR(saturated.q, first.q, 1e-8);
    EXPECT_NEAR(again.h[0], first.h[0], 1e-7 * std::abs(first.h[0]));
    EXPECT_TRUE(again.v[1] == mark && again.h[2] == mark && again.cv[1] == mark);
    EXPECT_EQ(again.lnphi[2], 0.25);
    // The host's own values of the phases, per kilogram.
    EXPECT_NEAR(saturated.v_l * host::molar_mass({saturated.x[0], saturated.x[1]}), 1, 1e-12);
    EXPECT_NEAR(saturated.u_v * host::molar_mass({saturated.y[0], saturated.y[1]}), 8e-3, 1e-12);
  }
}

TEST(AllPhases, OnePhaseAndTexts) {
  ASSERT_EQ(host::select({"propane"}, {1}), "No errors");
  const host::Call single = host::at_tp("TP Vph", 350, 10e5, 3);
  const AllPhases all = all_at("TP all", 350, 10e5, 3);
  EXPECT_EQ(all.err, "No errors");
  EXPECT_EQ(all.q, 1);
  near(all.v[0], single.v, "v");
  near(all.cv[0], single.cv, "cv");
  near(all.d2pdv2[0], single.d2pdv2, "d2pdv2");
  near(all.dcvdt[0], single.dcvdt / 1000, "dcvdt");
  near(all.lnphi[0], single.lnphi[0], "lnphi");
  EXPECT_TRUE(all.v[1] == mark && all.s[2] == mark && all.cv[1] == mark && all.lnphi[1] == 0.25);
  EXPECT_TRUE(all.x[0] == 1 && all.y[0] == 1);

  // One phase repeats the phases of the session's last split, of which there is none in a fresh session.
  std::int64_t fresh = 0, before = 0;
  char err[80];
  tessarel_session_current(&before);
  tessarel_session_new(&fresh, err, sizeof err);
  tessarel_session_use(&fresh, err, sizeof err);
  ASSERT_EQ(host::select({"methane", "n-butane"}, {0.5, 0.5}), "No errors");
  EXPECT_EQ(saturated_at("TP", 400, 1e5).v_l, 0);
  const double v_l = saturated_at("TP", 300, 40e5).v_l;
  EXPECT_GT(v_l, 0);
  EXPECT_GT(saturated_at("TP", 400, 1e5).v_l, 0);
  tessarel_session_use(&before, err, sizeof err);
  tessarel_session_free(&fresh, err, sizeof err);

  const struct {
    const char *spec, *text;
  } refused[] = {{"Pm", "TESSAREL error: calculation as function of Pm not available."},
                 {"Tm Lph", "TESSAREL error: calculation as function of Tm Lph not available."},
                 {"tp", "TESSAREL error: calculation as function of tp not available."},
                 {"Pq Lph", "Function \"Pq\" not available for single phase calculations..."},
                 {"vq Vph", "Function \"vq\" not available for single phase calculations..."}};
  for (const auto& c : refused) {
    const AllPhases a = all_at(c.spec, 300, 2e5, 1);
    const Saturated b = saturated_at(c.spec, 300, 2e5);
    EXPECT_EQ(a.err, c.text);
    EXPECT_EQ(b.err, c.text);
    for (const double t : {a.t, b.t}) EXPECT_EQ(t, 300 - 273.15);
    for (const double p : {a.p, b.p}) EXPECT_EQ(p, 2);
  }
  for (const double odd : {0.0, -1.0, HUGE_VAL, std::nan("")}) {
    EXPECT_NE(all_at("TP all", odd, 1e5, 3).err, "No errors");
    EXPECT_NE(saturated_at("TP", odd, 1e5).err, "No errors");
    EXPECT_NE(saturated_at("TP Lph", 300, odd == 0 ? std::nan("") : odd * HUGE_VAL).err, "No errors");
  }
}

}  // namespace
