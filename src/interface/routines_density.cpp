// Exports of the density solver and the caloric properties.
#include "eos/caloric.hpp"
#include "eos/density.hpp"
#include "interface/flash_checks.hpp"
#include "interface/routines_support.hpp"

using namespace tessarel;
using namespace tessarel::interface;

extern "C" {

void tessarel_calc_v(const double* t, const double* p, const int32_t* phase, double* v, char* errormsg,
                     size_t errormsg_len) {
  Session& session = current_session();
  report(session, {t, p, phase, v}, {v}, {errormsg, errormsg_len}, [&]() -> Message {
    if (!positive(*t) || !std::isfinite(*p)) return bad_input;
    return eos::calc_v(session.eos(), session.n(), session.z.data(), *t, *p, *phase, *v);
  });
}

void tessarel_calc_hsu(const double* t, const double* p, const double* v, double* h, double* s, double* u,
                       char* errormsg, size_t errormsg_len) {
  Session& session = current_session();
  report(session, {t, p, v, h, s, u}, {h, s, u}, {errormsg, errormsg_len}, [&]() -> Message {
    if (const Message refused = check_phase_at(session, *t, *v, *p); !ok(refused)) return refused;
    return eos::calc_hsu(session.eos(), session.n(), session.z.data(), *t, *p, *v, *h, *s, *u);
  });
}

void tessarel_calc_rho(const int32_t* n, const double* x, const double* t, const double* p, const int32_t* phase,
                       double* rho) {
  Session& session = current_session();
  scalar(!valid_count(session, n) || any_null({x, t, p, phase}), rho, [&] {
    double result = 0;
    eos::calc_rho(session.eos(), *n, x, *t, *p, *phase, result);
    return result;
  });
}

void tessarel_calc_eta_rho(const int32_t* n, const double* x, const int32_t* ipure, const double* t, const double* rho,
                           double* eta) {
  Session& session = current_session();
  scalar(!valid_count(session, n) || !valid_pure(n, ipure) || any_null({x, t, rho}), eta,
         [&] { return eos::calc_eta_rho(session.eos(), *n, x, *ipure, *t, *rho); });
}

void tessarel_calc_rho_eta(const int32_t* n, const double* x, const int32_t* ipure, const double* t, const double* eta,
                           double* rho) {
  Session& session = current_session();
  scalar(!valid_count(session, n) || !valid_pure(n, ipure) || any_null({x, t, eta}), rho,
         [&] { return eos::calc_rho_eta(session.eos(), *n, x, *ipure, *t, *eta); });
}

}  // extern "C"
