// Exports of the density solver and the caloric properties.
#include "eos/caloric.hpp"
#include "eos/density.hpp"
#include "interface/routines_support.hpp"

using namespace tessarel;
using namespace tessarel::routines;

using boundary::any_null;

extern "C" {

void tessarel_calc_v(const double* t, const double* p, const int32_t* phase, double* v, char* errormsg,
                     size_t errormsg_len) {
  with_message(any_null({t, p, phase, v}), {errormsg, errormsg_len},
               [&] { return calc_vrho_module::calc_v(*t, *p, *phase, *v); });
}

void tessarel_calc_hsu(const double* t, const double* p, const double* v, double* h, double* s, double* u,
                       char* errormsg, size_t errormsg_len) {
  with_message(any_null({t, p, v, h, s, u}), {errormsg, errormsg_len},
               [&] { return calc_hsu_module::calc_hsu(*t, *p, *v, *h, *s, *u); });
}

void tessarel_calc_rho(const int32_t* n, const double* x, const double* t, const double* p, const int32_t* phase,
                       double* rho) {
  scalar(!valid_count(n) || any_null({x, t, p, phase}), rho, [&] {
    double result = 0;
    calc_vrho_module::calc_rho(*n, x, *t, *p, *phase, result);
    return result;
  });
}

void tessarel_calc_eta_rho(const int32_t* n, const double* x, const int32_t* ipure, const double* t, const double* rho,
                           double* eta) {
  scalar(!valid_count(n) || !valid_pure(n, ipure) || any_null({x, t, rho}), eta,
         [&] { return calc_vrho_module::calc_eta_rho(*n, x, *ipure, *t, *rho); });
}

void tessarel_calc_rho_eta(const int32_t* n, const double* x, const int32_t* ipure, const double* t, const double* eta,
                           double* rho) {
  scalar(!valid_count(n) || !valid_pure(n, ipure) || any_null({x, t, eta}), rho,
         [&] { return calc_vrho_module::calc_rho_eta(*n, x, *ipure, *t, *eta); });
}

}  // extern "C"
