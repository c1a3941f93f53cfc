// Exports of saturation, critical points, spinodal, flash adapters and the linear algebra they rest on.
#include <algorithm>

#include "envelope/critical_point.hpp"
#include "flash/adapters.hpp"
#include "interface/routines_support.hpp"
#include "numerics/linear_algebra.hpp"
#include "solvers/psat_tsat.hpp"
#include "solvers/spinodal.hpp"

using namespace tessarel;
using namespace tessarel::routines;
using boundary::any_null;
using fluid_module::nmax;

namespace {

/// Runs `body`, which returns a message, for a selected fluid and arguments that are there.
template <class Body>
void report(std::initializer_list<const void*> arguments, TextField err, Body&& body) noexcept {
  boundary::guarded(err, [&] {
    if (any_null(arguments))
      err.assign(boundary::null_argument);
    else if (!boundary::fluid_selected())
      err.assign(boundary::no_fluid);
    else
      err.assign(body());
  });
}

bool valid_size(const int32_t* n) {
  return n != nullptr && *n >= 1 && *n <= nmax;
}

constexpr int32_t refused_code = -1;

bool from_host(const int32_t* logical) {
  return logical != nullptr && boundary::from_logical(*logical);
}

}  // namespace

extern "C" {

void tessarel_calc_psat(const double* t, double* psat, char* err, size_t err_len) {
  report({t, psat}, {err, err_len}, [&] { return calc_psat_tsat::calc_psat(*t, *psat); });
}
void tessarel_calc_tsat(const double* p, double* tsat, char* err, size_t err_len) {
  report({p, tsat}, {err, err_len}, [&] { return calc_psat_tsat::calc_tsat(*p, *tsat); });
}

void tessarel_calc_vspin(const double* t, double* vliq, double* vvap, char* err, size_t err_len) {
  report({t, vliq, vvap}, {err, err_len}, [&] { return spinodal::calc_vspin(*t, *vliq, *vvap); });
}
void tessarel_calc_vspin_phase(const double* eta, const double* t, double* v, char* err, size_t err_len) {
  report({eta, t, v}, {err, err_len}, [&] { return spinodal::calc_vspin_phase(*eta, *t, *v); });
}
void tessarel_calc_pspin(const double* t, double* pliq, double* pvap, char* err, size_t err_len) {
  report({t, pliq, pvap}, {err, err_len}, [&] { return spinodal::calc_pspin(*t, *pliq, *pvap); });
}
void tessarel_calc_tspin(const double* p, double* tliq, double* tvap, char* err, size_t err_len) {
  report({p, tliq, tvap}, {err, err_len}, [&] { return spinodal::calc_tspin(*p, *tliq, *tvap); });
}
void tessarel_brent_spin(const int32_t* iphase, const double* p, const double* a, const double* b, double* t, char* err,
                         size_t err_len) {
  report({iphase, p, a, b, t}, {err, err_len}, [&] { return spinodal::brent_spin(*iphase, *p, *a, *b, *t); });
}
void tessarel_bisec_spin(const int32_t* iphase, const double* p, const double* a, const double* b, double* t, char* err,
                         size_t err_len) {
  report({iphase, p, a, b, t}, {err, err_len}, [&] { return spinodal::bisec_spin(*iphase, *p, *a, *b, *t); });
}

void tessarel_critpoint(char* errormsg, size_t errormsg_len) {
  report({}, {errormsg, errormsg_len}, [] { return critical_point_module::critpoint(); });
}
void tessarel_critpure(const int32_t* i, char* errormsg, size_t errormsg_len) {
  report({i}, {errormsg, errormsg_len}, [&]() -> Message {
    if (!valid_place(i)) return "TESSAREL error: no such component...";
    return critical_point_module::critpure(*i);
  });
}
void tessarel_critmixt_pseudo(char* errormsg, size_t errormsg_len) {
  report({}, {errormsg, errormsg_len}, [] { return critical_point_module::critmixt_pseudo(); });
}
void tessarel_critmixt_brent(char* errormsg, size_t errormsg_len) {
  report({}, {errormsg, errormsg_len}, [] { return critical_point_module::critmixt_brent(); });
}
void tessarel_critmixt_newton(char* errormsg, size_t errormsg_len) {
  report({}, {errormsg, errormsg_len}, [] { return critical_point_module::critmixt_newton(); });
}
void tessarel_cubic_newton(const int32_t* debug, const int32_t* n, const double* z, double* rho, double* t,
                           int32_t* ierr) {
  if (ierr == nullptr) return;
  *ierr = refused_code;
  run(!valid_count(n) || any_null({z, rho, t}),
      [&] { *ierr = critical_point_module::cubic_newton(from_host(debug), *n, z, *rho, *t); });
}
void tessarel_det_q_newton(const int32_t* debug, const int32_t* n, const double* z, const double* rho, double* t,
                           double* q, int32_t* ierr) {
  if (ierr == nullptr) return;
  *ierr = refused_code;
  run(!valid_count(n) || any_null({z, rho, t, q}),
      [&] { *ierr = critical_point_module::det_q_newton(from_host(debug), *n, z, *rho, *t, q); });
}

void tessarel_lu_dcmp(const int32_t* n, double* a, int32_t* indx, double* d, int32_t* ierr) {
  if (ierr == nullptr) return;
  *ierr = refused_code;
  run(!valid_size(n) || any_null({a, indx, d}), [&] { *ierr = numerics::lu_dcmp(*n, a, indx, *d); });
}
void tessarel_lu_bksb(const int32_t* n, const double* a, const int32_t* indx, double* b) {
  const auto in_range = [&] { return std::all_of(indx, indx + *n, [&](int32_t i) { return i >= 1 && i <= *n; }); };
  run(!valid_size(n) || any_null({a, indx, b}) || !in_range(), [&] { numerics::lu_bksb(*n, a, indx, b); });
}
void tessarel_solution_vector(const int32_t* n, double* a, double* x) {
  run(!valid_size(n) || any_null({a, x}), [&] { numerics::solution_vector(*n, a, x); });
}
double tessarel_normalize_vec(const int32_t* n, double* x) {
  double length = not_a_number;
  run(!valid_size(n) || x == nullptr, [&] { length = numerics::normalize_vec(*n, x); });
  return length;
}
void tessarel_determinant(const int32_t* n, const double* a, double* det, int32_t* ierr) {
  if (ierr == nullptr) return;
  *ierr = refused_code;
  run(!valid_size(n) || any_null({a, det}), [&] { *ierr = numerics::determinant(*n, a, *det); });
}

void tessarel_fugacoeff(const int32_t* icon, const int32_t* mt, const int32_t* n, const double* z, const double* t,
                        const double* p, double* lnphi, double* dlnphi_dt, double* dlnphi_dp, double* dlnphi_dn,
                        int32_t* ic, int32_t* ierr) {
  if (icon == nullptr) return;
  const bool by_tp = *icon == 2 || *icon == 6, by_n = *icon == 3 || *icon == 6;
  const bool refused = !valid_count(n) || any_null({mt, z, t, p, lnphi, ic, ierr}) ||
                       (by_tp && any_null({dlnphi_dt, dlnphi_dp})) || (by_n && dlnphi_dn == nullptr);
  run(refused,
      [&] { flash::fugacoeff(*icon, *mt, *n, z, *t, *p, lnphi, dlnphi_dt, dlnphi_dp, dlnphi_dn, *ic, *ierr); });
}
void tessarel_fluiddata(const int32_t* i, double* tc, double* pc, double* omega) {
  scalars(!valid_place(i), {tc, pc, omega}, [&] { flash::fluiddata(*i, *tc, *pc, *omega); });
}
void tessarel_auxprop(const int32_t* n, const double* x, const double* t, double* p, const int32_t* mt, double* z,
                      double* aux) {
  run(!valid_count(n) || any_null({x, t, p, mt, z, aux}), [&] { flash::auxprop(*n, x, *t, *p, *mt, *z, aux); });
}
void tessarel_auxprop_v(const int32_t* n, const double* x, const double* t, double* p, const double* v, double* aux) {
  run(!valid_count(n) || any_null({x, t, p, v, aux}), [&] { flash::auxprop_v(*n, x, *t, *p, *v, aux); });
}

}  // extern "C"
