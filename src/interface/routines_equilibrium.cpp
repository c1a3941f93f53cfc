// Exports of saturation, critical points, spinodal and the linear algebra they rest on.
#include <algorithm>
#include <cmath>

#include "envelope/critical_point.hpp"
#include "interface/flash_checks.hpp"
#include "interface/routines_support.hpp"
#include "numerics/linear_algebra.hpp"
#include "solvers/psat_tsat.hpp"
#include "solvers/spinodal.hpp"

using namespace tessarel;
using namespace tessarel::interface;
using fluid::nmax;

namespace {

bool valid_size(const int32_t* n) {
  return n != nullptr && *n >= 1 && *n <= nmax;
}

bool from_host(const int32_t* logical) {
  return logical != nullptr && from_logical(*logical);
}

using SpinodalSearch = Message (*)(const eos::Fluid&, std::int32_t, double, double, double, double&);

void spinodal_between(SpinodalSearch search, const int32_t* iphase, const double* p, const double* a, const double* b,
                      double* t, TextField err) {
  Session& session = current_session();
  report(session, {iphase, p, a, b, t}, {t}, err, [&]() -> Message {
    // Negative pressures are those of liquids under tension.
    if (!std::isfinite(*p) || !positive(*a) || !positive(*b)) return bad_input;
    return search(session.fluid(), *iphase, *p, *a, *b, *t);
  });
}

}  // namespace

extern "C" {

void tessarel_calc_psat(const double* t, double* psat, char* err, size_t err_len) {
  Session& session = current_session();
  report(session, {t, psat}, {psat}, {err, err_len}, [&]() -> Message {
    if (!std::isfinite(*t)) return bad_input;
    return solvers::calc_psat(session.fluid(), *t, *psat);
  });
}
void tessarel_calc_tsat(const double* p, double* tsat, char* err, size_t err_len) {
  Session& session = current_session();
  report(session, {p, tsat}, {tsat}, {err, err_len}, [&]() -> Message {
    if (!std::isfinite(*p)) return bad_input;
    return solvers::calc_tsat(session.fluid(), *p, *tsat);
  });
}

void tessarel_calc_vspin(const double* t, double* vliq, double* vvap, char* err, size_t err_len) {
  Session& session = current_session();
  report(session, {t, vliq, vvap}, {vliq, vvap}, {err, err_len}, [&]() -> Message {
    if (!positive(*t)) return bad_input;
    return solvers::calc_vspin(session.fluid(), *t, *vliq, *vvap);
  });
}
void tessarel_calc_vspin_phase(const double* eta, const double* t, double* v, char* err, size_t err_len) {
  Session& session = current_session();
  report(session, {eta, t, v}, {v}, {err, err_len}, [&]() -> Message {
    if (!positive(*eta) || !positive(*t)) return bad_input;
    return solvers::calc_vspin_phase(session.fluid(), *eta, *t, *v);
  });
}
void tessarel_calc_pspin(const double* t, double* pliq, double* pvap, char* err, size_t err_len) {
  Session& session = current_session();
  report(session, {t, pliq, pvap}, {pliq, pvap}, {err, err_len}, [&]() -> Message {
    if (!positive(*t)) return bad_input;
    return solvers::calc_pspin(session.fluid(), *t, *pliq, *pvap);
  });
}
void tessarel_calc_tspin(const double* p, double* tliq, double* tvap, char* err, size_t err_len) {
  Session& session = current_session();
  report(session, {p, tliq, tvap}, {tliq, tvap}, {err, err_len}, [&]() -> Message {
    if (!std::isfinite(*p)) return bad_input;
    return solvers::calc_tspin(session.fluid(), *p, *tliq, *tvap);
  });
}
void tessarel_brent_spin(const int32_t* iphase, const double* p, const double* a, const double* b, double* t, char* err,
                         size_t err_len) {
  spinodal_between(solvers::brent_spin, iphase, p, a, b, t, {err, err_len});
}
void tessarel_bisec_spin(const int32_t* iphase, const double* p, const double* a, const double* b, double* t, char* err,
                         size_t err_len) {
  spinodal_between(solvers::bisec_spin, iphase, p, a, b, t, {err, err_len});
}

void tessarel_critpoint(char* errormsg, size_t errormsg_len) {
  Session& session = current_session();
  report(session, {}, {errormsg, errormsg_len},
         [&] { return envelope::critpoint(session.eos(), session.n(), session.z.data(), session.limits); });
}
void tessarel_critpure(const int32_t* i, char* errormsg, size_t errormsg_len) {
  Session& session = current_session();
  report(session, {i}, {errormsg, errormsg_len}, [&]() -> Message {
    if (!valid_place(session, i)) return "TESSAREL error: no such component...";
    return envelope::critpure(session.eos(), session.n(), session.z.data(), *i, session.limits);
  });
}
void tessarel_critmixt_pseudo(char* errormsg, size_t errormsg_len) {
  Session& session = current_session();
  report(session, {}, {errormsg, errormsg_len},
         [&] { return envelope::critmixt_pseudo(session.eos(), session.n(), session.z.data(), session.limits); });
}
void tessarel_critmixt_brent(char* errormsg, size_t errormsg_len) {
  report(current_session(), {}, {errormsg, errormsg_len}, [] { return envelope::critmixt_brent(); });
}
void tessarel_critmixt_newton(char* errormsg, size_t errormsg_len) {
  Session& session = current_session();
  report(session, {}, {errormsg, errormsg_len},
         [&] { return envelope::critmixt_newton(session.eos(), session.n(), session.z.data(), session.limits); });
}
void tessarel_cubic_newton(const int32_t* debug, const int32_t* n, const double* z, double* rho, double* t,
                           int32_t* ierr) {
  Session& session = current_session();
  if (ierr == nullptr) return;
  *ierr = refused_code;
  run(!valid_count(session, n) || any_null({z, rho, t}),
      [&] { *ierr = envelope::cubic_newton(session.eos(), from_host(debug), *n, z, *rho, *t); });
}
void tessarel_det_q_newton(const int32_t* debug, const int32_t* n, const double* z, const double* rho, double* t,
                           double* q, int32_t* ierr) {
  Session& session = current_session();
  if (ierr == nullptr) return;
  *ierr = refused_code;
  run(!valid_count(session, n) || any_null({z, rho, t, q}),
      [&] { *ierr = envelope::det_q_newton(session.eos(), from_host(debug), *n, z, *rho, *t, q); });
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

}  // extern "C"
