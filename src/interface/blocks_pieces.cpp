// Exports of the building blocks that are not members of a family: diameters, coefficients of the dispersion integrals,
// terms of a component alone, constants of the polar terms.
#include "blocks/fixed.hpp"
#include "eos/polar_tables.hpp"
#include "interface/blocks_support.hpp"

using namespace tessarel;
using namespace tessarel::routines;
using boundary::any_null;

namespace {

/// One derivative of the diameters, from another of order `known`.
void diameters(const int32_t* n, const double* t, const double* given, int known, int order, double* out) noexcept {
  run(!valid_count(n) || any_null({t, given, out}),
      [&] { blocks::diameter_derivative(blocks::selected(), *n, *t, given, known, order, out); });
}

void coefficients(const eos::Powers& a, const eos::Powers& b, double* apar, double* bpar) noexcept {
  run(any_null({apar, bpar}), [&] {
    std::copy(a.begin(), a.end(), apar);
    std::copy(b.begin(), b.end(), bpar);
  });
}

/// Fills polar constants and packs them for the evaluations.
void polar_constants(void (*fill)()) noexcept {
  run(false, [fill] {
    fill();
    eos::update_tables();
  });
}

}  // namespace

extern "C" {

void tessarel_calc_d(const int32_t* n, const int32_t* ipure, const double* t, double* d) {
  run(!valid_count(n) || !valid_pure(n, ipure) || any_null({t, d}), [&] {
    const int first = *ipure > 0 ? *ipure - 1 : 0, last = *ipure > 0 ? *ipure : *n;
    for (int i = first; i < last; ++i) d[i] = eos::segment_diameter(eos::at(i), 1.0 / *t);
  });
}
void tessarel_calc_dd_dt(const int32_t* n, const double* t, const double* d, double* dd) {
  diameters(n, t, d, 0, 1, dd);
}
void tessarel_calc_d2d_dt2(const int32_t* n, const double* t, const double* dd, double* d2d) {
  diameters(n, t, dd, 1, 2, d2d);
}
void tessarel_calc_d3d_dt3(const int32_t* n, const double* t, const double* dd, const double* d2d, double* d3d) {
  diameters(n, t, d2d == nullptr ? nullptr : dd, 1, 3, d3d);
}
void tessarel_calc_d_dt123(const int32_t* n, const double* t, const double* d, double* dd, double* d2d, double* d3d) {
  int order = 0;
  for (double* out : {dd, d2d, d3d}) diameters(n, t, d, 0, ++order, out);
}

void tessarel_set_mmean(const int32_t* n, const double* x, const int32_t* ipure) {
  run(!valid_count(n) || !valid_pure(n, ipure) || x == nullptr,
      [&] { blocks::set_mmean(blocks::selected(), *n, x, *ipure); });
}
void tessarel_calc_abpar(double* apar, double* bpar) {
  coefficients(blocks::selected().working.apar, blocks::selected().working.bpar, apar, bpar);
}
void tessarel_calc_dabpar_dx(double* apar_x, double* bpar_x) {
  coefficients(blocks::selected().working.apar_x, blocks::selected().working.bpar_x, apar_x, bpar_x);
}
void tessarel_calc_d2abpar_dxdx(double* apar_xx, double* bpar_xx) {
  coefficients(blocks::selected().working.apar_xx, blocks::selected().working.bpar_xx, apar_xx, bpar_xx);
}
void tessarel_calc_d3abpar_dxdxdx(double* apar_xxx, double* bpar_xxx) {
  coefficients(blocks::selected().working.apar_xxx, blocks::selected().working.bpar_xxx, apar_xxx, bpar_xxx);
}

void tessarel_calc_sigeps(const int32_t* n, const int32_t* ipure, const double* t, double* eps, double* sig_ij,
                          double* eps_ij) {
  const auto checked = scope(n, ipure);
  if (!checked.valid || any_null({t, eps, sig_ij, eps_ij})) return;
  member<blocks::sigeps>(checked, {t}, {eps, eps_ij});
  const auto& sigma = checked.scope.context.parameters.sigma;
  const int first = *ipure > 0 ? *ipure - 1 : 0, last = *ipure > 0 ? *ipure : *n;
  for (int i = first; i < last; ++i)
    for (int j = first; j < last; ++j)
      sig_ij[i + *n * j] = i == j ? sigma[eos::at(i)] : (sigma[eos::at(i)] + sigma[eos::at(j)]) / 2.0;
}

/// From the derivative of 1 / c1 and the value handed in.
void tessarel_calc_dc1_deta(const double* eta, const double* c1, double* dc1_deta) {
  scalar(any_null({eta, c1}), dc1_deta, [&] {
    double slope = 0;
    member<blocks::inverse_c1, 'e'>(scope(), {eta}, {&slope});
    return -*c1 * *c1 * slope;
  });
}

void tessarel_calc_a_ass(const double* rho, const double* eta, const double* delta_t, double* a) {
  scalar(!boundary::fluid_selected() || any_null({rho, eta, delta_t}), a,
         [&] { return blocks::association_of_pure(blocks::selected(), *rho, *eta, delta_t); });
}
void tessarel_calc_a_pol(const double* t, const double* rho, const double* eta, const double* u, double* a) {
  scalar(!boundary::fluid_selected() || any_null({t, rho, eta, u}), a,
         [&] { return blocks::polar_of_pure(blocks::selected(), *t, *rho, *eta, *u); });
}

void tessarel_ddconst(void) {
  polar_constants(eos::ddconst);
}
void tessarel_qqconst(void) {
  polar_constants(eos::qqconst);
}
void tessarel_dqconst(void) {
  polar_constants(eos::dqconst);
}
void tessarel_setpolarpar(void) {
  polar_constants(eos::setpolarpar);
}

}  // extern "C"
