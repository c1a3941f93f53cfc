// Exports of the building blocks that are not members of a family: diameters, coefficients of the dispersion integrals,
// terms of a component alone, constants of the polar terms.
#include "blocks/fixed.hpp"
#include "interface/blocks_support.hpp"

using namespace tessarel;
using namespace tessarel::interface;

namespace {

/// One derivative of the diameters, from another of order `known`.
void diameters(const int32_t* n, const double* t, const double* given, int known, int order, double* out) noexcept {
  Session& session = current_session();
  run(!valid_count(session, n) || any_null({t, given, out}),
      [&] { blocks::diameter_derivative(session.model.parameters, *n, *t, given, known, order, out); });
}

void coefficients(const eos::Powers& a, const eos::Powers& b, double* apar, double* bpar) noexcept {
  run(any_null({apar, bpar}), [&] {
    std::copy(a.begin(), a.end(), apar);
    std::copy(b.begin(), b.end(), bpar);
  });
}

/// Makes what follows from the parameters anew, the constants of all polar terms at once.
void polar_constants() noexcept {
  Session& session = current_session();
  run(false, [&] { session.update(); });
}

}  // namespace

extern "C" {

void tessarel_calc_d(const int32_t* n, const int32_t* ipure, const double* t, double* d) {
  Session& session = current_session();
  run(!valid_count(session, n) || !valid_pure(n, ipure) || any_null({t, d}), [&] {
    const int first = *ipure > 0 ? *ipure - 1 : 0, last = *ipure > 0 ? *ipure : *n;
    for (int i = first; i < last; ++i) d[i] = eos::segment_diameter(session.model.parameters, fluid::at(i), 1.0 / *t);
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
  Session& session = current_session();
  run(!valid_count(session, n) || !valid_pure(n, ipure) || x == nullptr,
      [&] { blocks::set_mmean(session.eos(), *n, x, *ipure); });
}
void tessarel_calc_abpar(double* apar, double* bpar) {
  Session& session = current_session();
  coefficients(session.work.means.apar, session.work.means.bpar, apar, bpar);
}
void tessarel_calc_dabpar_dx(double* apar_x, double* bpar_x) {
  Session& session = current_session();
  coefficients(session.work.means.apar_x, session.work.means.bpar_x, apar_x, bpar_x);
}
void tessarel_calc_d2abpar_dxdx(double* apar_xx, double* bpar_xx) {
  Session& session = current_session();
  coefficients(session.work.means.apar_xx, session.work.means.bpar_xx, apar_xx, bpar_xx);
}
void tessarel_calc_d3abpar_dxdxdx(double* apar_xxx, double* bpar_xxx) {
  Session& session = current_session();
  coefficients(session.work.means.apar_xxx, session.work.means.bpar_xxx, apar_xxx, bpar_xxx);
}

void tessarel_calc_sigeps(const int32_t* n, const int32_t* ipure, const double* t, double* eps, double* sig_ij,
                          double* eps_ij) {
  const auto checked = scope(n, ipure);
  if (!checked.valid || any_null({t, eps, sig_ij, eps_ij})) return;
  member<blocks::sigeps>(checked, {t}, {eps, eps_ij});
  const auto& sigma = checked.scope.eos.parameters().sigma;
  const int first = *ipure > 0 ? *ipure - 1 : 0, last = *ipure > 0 ? *ipure : *n;
  for (int i = first; i < last; ++i)
    for (int j = first; j < last; ++j)
      sig_ij[i + *n * j] = i == j ? sigma[fluid::at(i)] : (sigma[fluid::at(i)] + sigma[fluid::at(j)]) / 2.0;
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
  Session& session = current_session();
  scalar(!session.selected() || any_null({rho, eta, delta_t}), a,
         [&] { return blocks::association_of_pure(session.eos(), *rho, *eta, delta_t); });
}
void tessarel_calc_a_pol(const double* t, const double* rho, const double* eta, const double* u, double* a) {
  Session& session = current_session();
  scalar(!session.selected() || any_null({t, rho, eta, u}), a,
         [&] { return blocks::polar_of_pure(session.eos(), *t, *rho, *eta, *u); });
}

void tessarel_ddconst(void) {
  polar_constants();
}
void tessarel_qqconst(void) {
  polar_constants();
}
void tessarel_dqconst(void) {
  polar_constants();
}
void tessarel_setpolarpar(void) {
  polar_constants();
}

}  // extern "C"
