#include "flash/sensitivity.hpp"

#include "flash/adapters.hpp"
#include "flash/equilibrium.hpp"
#include "fluid/ideal_gas.hpp"

namespace tessarel::flash {

using fluid::gas_constant;

namespace {

/// Partial molar properties of a phase, reduced by R (v in K/bar).
struct Partial {
  Vector h{}, s{}, v{};
};

Partial partial_molar(const eos::Fluid& fluid, const Phase& phase, double t, double p, const Vector& lnphi_t,
                      const Vector& lnphi_p) {
  const fluid::Parameters& parameters = fluid.eos.parameters();
  Partial r;
  for (int i = 0; i < fluid.n; ++i) {
    const auto k = at(i);
    r.h[k] = fluid::ideal_enthalpy(parameters, i, t) / gas_constant - t * t * lnphi_t[k];
    r.v[k] = t * (lnphi_p[k] + 1.0 / p);
    r.s[k] = phase.x[k] > 0 ? fluid::calc_icp0_t_dt(parameters, i, t) / gas_constant - std::log(phase.x[k] * p) -
                                  phase.lnphi[k] - t * lnphi_t[k]
                            : 0.0;
  }
  return r;
}

/// Columns by t and p of the whole, in SI units.
void by_temperature_and_pressure(const Properties& whole, double t, Sensitivity& r) {
  constexpr double volume = gas_constant / pascal_per_bar;
  r.h = whole.h * gas_constant;
  r.s = whole.s * gas_constant;
  r.v = whole.v * volume;
  r.dh[0] = whole.h_t * gas_constant;
  r.ds[0] = whole.s_t(t) * gas_constant;
  r.dv[0] = whole.v_t * volume;
  r.dh[1] = whole.h_p * volume;
  r.ds[1] = whole.s_p() * volume;
  r.dv[1] = whole.v_p * volume / pascal_per_bar;
}

/// Column of component j from the amounts that go to the phases, `to_vapour` of one mole of it.
void by_amount(const eos::Fluid& fluid, const Properties& whole, const Partial& liquid, const Partial& vapour,
               const Vector& to_vapour, std::size_t j, Sensitivity& r) {
  double h = -whole.h, s = -whole.s, v = -whole.v;
  for (std::size_t i = 0; i < at(fluid.n); ++i) {
    const double gained = to_vapour[i], lost = (i == j ? 1.0 : 0.0) - gained;
    h += gained * vapour.h[i] + lost * liquid.h[i];
    s += gained * vapour.s[i] + lost * liquid.s[i];
    v += gained * vapour.v[i] + lost * liquid.v[i];
  }
  r.dh[2 + j] = h * gas_constant;
  r.ds[2 + j] = fluid.z[j] > 0 ? s * gas_constant : fluid::not_computed;
  r.dv[2 + j] = v * gas_constant / pascal_per_bar;
}

/// Changes of the compositions and of beta with the amounts.
void compositions(const eos::Fluid& fluid, const Split& split, const Vector& to_vapour, int j, std::size_t column,
                  Sensitivity& r) {
  double vapour = 0;
  const double feed = j >= 0 ? 1.0 : 0.0;
  for (std::size_t i = 0; i < at(fluid.n); ++i) vapour += to_vapour[i];
  r.dbeta[column] = vapour - split.beta * feed;
  for (int i = 0; i < fluid.n; ++i) {
    const auto k = at(i);
    const double to_liquid = (i == j ? 1.0 : 0.0) - to_vapour[k];
    r.dy[k][column] = (to_vapour[k] - split.vapour.x[k] * vapour) / split.beta;
    r.dx[k][column] = (to_liquid - split.liquid.x[k] * (feed - vapour)) / (1.0 - split.beta);
  }
}

void of_two_phases(const eos::Fluid& fluid, const Equilibrium& e, Sensitivity& r) {
  const auto n = at(fluid.n);
  const double beta = e.split.beta, factor = beta * (1.0 - beta);
  r.beta = beta;
  by_temperature_and_pressure(e.overall, e.t, r);
  const Partial liquid = partial_molar(fluid, e.split.liquid, e.t, e.p, e.liquid_t, e.liquid_p);
  const Partial vapour = partial_molar(fluid, e.split.vapour, e.t, e.p, e.vapour_t, e.vapour_p);
  Vector amounts{}, scaled{};
  for (std::size_t i = 0; i < n; ++i) amounts[i] = factor * e.scale()[i] * e.scaled_t[i];
  compositions(fluid, e.split, amounts, -1, 0, r);
  for (std::size_t i = 0; i < n; ++i) amounts[i] = factor * e.scale()[i] * e.scaled_p[i] / pascal_per_bar;
  compositions(fluid, e.split, amounts, -1, 1, r);
  for (std::size_t j = 0; j < n; ++j) {
    // One mole of j shared out as the present ones are leaves its own fugacities equal but for the activities; the
    // rest follows from the matrix.
    const double k = bounded_exp(e.split.lnk[j]), in_liquid = 1.0 / (1.0 - beta + beta * k), in_vapour = k * in_liquid;
    Vector gradient{};
    for (std::size_t i = 0; i < n; ++i)
      gradient[i] = (e.vapour_dn()[i + n * j] - 1.0) * in_vapour - (e.liquid_dn()[i + n * j] - 1.0) * in_liquid;
    e.respond(gradient, scaled);
    for (std::size_t i = 0; i < n; ++i)
      amounts[i] = factor * e.scale()[i] * scaled[i] + (i == j ? beta * in_vapour : 0.0);
    compositions(fluid, e.split, amounts, static_cast<int>(j), 2 + j, r);
    by_amount(fluid, e.overall, liquid, vapour, amounts, j, r);
  }
}

void of_one_phase(const eos::Fluid& fluid, double t, double p, Phase phase, Sensitivity& r) {
  const Conditions c{fluid.eos, fluid.n, t, p * pascal_per_bar};
  Vector lnphi_t{}, lnphi_p{};
  evaluate(c, phase, {.dt = lnphi_t.data(), .dp = lnphi_p.data()});
  for (double& slope : lnphi_p) slope *= pascal_per_bar;
  const bool vapour = is_vapour_like(c, phase);
  r.beta = vapour ? 1.0 : 0.0;
  const Properties whole = phase_properties(fluid.eos, fluid.n, phase, t, p);
  by_temperature_and_pressure(whole, t, r);
  const Partial partial = partial_molar(fluid, phase, t, p, lnphi_t, lnphi_p);
  for (std::size_t j = 0; j < at(fluid.n); ++j) {
    by_amount(fluid, whole, partial, partial, {}, j, r);
    for (std::size_t i = 0; i < at(fluid.n); ++i) (vapour ? r.dy : r.dx)[i][2 + j] = (i == j ? 1.0 : 0.0) - phase.x[i];
  }
}

}  // namespace

Message flash_sensitivity(const eos::Fluid& fluid, double t, double p, Sensitivity& r) {
  const PtResult flash = flmain(fluid, t, p, false, nullptr, nullptr);
  r = {};
  if (!flash.two_phases()) {
    if (flash.code != 3) return message_of(fluid.n, flash);
    of_one_phase(fluid, t, p / pascal_per_bar, flash.single, r);
    return no_errors;
  }
  const Arena::Frame frame(fluid.eos.arena());
  Equilibrium e(fluid.eos, fluid.n, fluid.z);
  if (!e.linearise(t, p / pascal_per_bar, flash.split))
    return "Flash sensitivity: the state is at the limit of stability...";
  of_two_phases(fluid, e, r);
  return no_errors;
}

}  // namespace tessarel::flash
