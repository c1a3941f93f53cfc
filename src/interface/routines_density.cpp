// Exports of the density solver, the caloric properties, and their pieces.
#include "eos/caloric.hpp"
#include "eos/density.hpp"
#include "eos/family_fixed.hpp"
#include "interface/routines_support.hpp"

using namespace tessarel;
using namespace tessarel::routines;
using families::Four;

namespace {

/// The message of a call that cannot be made.
Message refusal(bool null) {
  if (null) return boundary::null_argument;
  return boundary::fluid_selected() ? Message{} : boundary::no_fluid;
}

/// Runs `body`, which returns its message, unless the call has to be refused.
template <class Body>
void with_message(bool null, TextField err, Body&& body) noexcept {
  boundary::guarded(err, [&] {
    const Message message = refusal(null);
    err.assign(message.empty() ? body() : message);
  });
}

using boundary::any_null;

/// Prepares the host's fixed state and calls `body` on it.
template <class Body>
void on_fixed_state(const int32_t* n, const double* x, const double* t, const families::FixedState& f, Body&& body) {
  const Arena::Frame frame(eos::arena);
  eos::MixtureState<double> state;
  families::prepare_fixed(state, *n, x, *t, f);
  body(state);
}

void store(const eos::EtaDerivatives& f, double* value, double* first, double* second) {
  *value = f.value;
  *first = f.first;
  *second = f.second;
}

/// The contact values of all pairs, or of the like ones, with their derivatives.
void contacts(const int32_t* n, const double* d, const double* zeta2, const double* zeta3, bool like_only,
              families::ContactVariable by, const std::array<double*, 4>& out) noexcept {
  const bool refused = !valid_count(n) || any_null({d, zeta2, zeta3, out[0], out[1], out[2], out[3]});
  run(refused, [&] {
    for (int i = 0; i < *n; ++i) {
      for (int j = like_only ? i : 0; j < (like_only ? i + 1 : *n); ++j) {
        const Four g = families::contact_pair(*n, d, *zeta2, *zeta3, i, j, by);
        for (std::size_t k = 0; k < 4; ++k) out[k][like_only ? i : i + *n * j] = g[k];
      }
    }
  });
}

}  // namespace

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

#define FIXED_ARGUMENTS                                                                                  \
  const double *zeta0r, const double *zeta1r, const double *zeta2r, const double *conv, const double *d, \
      const double *dij, const double *m2es3, const double *m2e2s3, const double *delta_t0
#define FIXED_NULL any_null({zeta0r, zeta1r, zeta2r, conv, d, dij, m2es3, m2e2s3, delta_t0})
#define FIXED_STATE \
  { *zeta0r, *zeta1r, *zeta2r, *conv, d, dij, *m2es3, *m2e2s3, delta_t0 }

/// An evaluation of `expression` on `state` and eta, with two derivatives.
#define ETA12(name, expression)                                                                                  \
  void tessarel_##name(const int32_t* n, const double* x, const double* t, const double* eta, FIXED_ARGUMENTS,   \
                       double* value, double* first, double* second) {                                           \
    scalars(!valid_count(n) || any_null({x, t, eta}) || FIXED_NULL, {value, first, second}, [&] {                \
      on_fixed_state(n, x, t, FIXED_STATE, [&](const auto& state) { store(expression, value, first, second); }); \
    });                                                                                                          \
  }
ETA12(calc_p_eta12, eos::p_eta12(state, *eta))
ETA12(calc_z_ass_eta12, state.associates ? eos::z_ass_eta12(state, *eta) : eos::EtaDerivatives{})
ETA12(calc_z_pol_eta12, state.is_polar ? eos::z_pol_eta12(state, *eta) : eos::EtaDerivatives{})

void tessarel_densiter(const int32_t* n, const double* x, const double* t, const double* p, FIXED_ARGUMENTS,
                       double* eta, char* errormsg, size_t errormsg_len) {
  with_message(any_null({n, x, t, p, eta}) || FIXED_NULL, {errormsg, errormsg_len}, [&]() -> Message {
    if (!valid_count(n)) return "TESSAREL error: number of components out of range...";
    Message message;
    on_fixed_state(n, x, t, FIXED_STATE,
                   [&](const auto& state) { message = calc_vrho_module::densiter(state, *p, *eta); });
    return message;
  });
}

void tessarel_calc_g_rho123_simp(const double* eta, double* g, double* g1, double* g2, double* g3) {
  scalars(eta == nullptr, {g, g1, g2, g3}, [&] {
    const Four f = families::contact_rho123(*eta);
    *g = f[0], *g1 = f[1], *g2 = f[2], *g3 = f[3];
  });
}
void tessarel_calc_gii_rho123(const int32_t* n, const double* d, const double* zeta2, const double* zeta3, double* g,
                              double* g1, double* g2, double* g3) {
  contacts(n, d, zeta2, zeta3, true, families::ContactVariable::rho, {g, g1, g2, g3});
}
void tessarel_calc_gij_rho123(const int32_t* n, const double* d, const double* zeta2, const double* zeta3, double* g,
                              double* g1, double* g2, double* g3) {
  contacts(n, d, zeta2, zeta3, false, families::ContactVariable::rho, {g, g1, g2, g3});
}
void tessarel_calc_gij_eta123(const int32_t* n, const double* d, const double* zeta2, const double* zeta3, double* g,
                              double* g1, double* g2, double* g3) {
  contacts(n, d, zeta2, zeta3, false, families::ContactVariable::eta, {g, g1, g2, g3});
}
void tessarel_calc_c_eta123(const double* eta, double* c1, double* dc1, double* d2c1, double* d3c1) {
  scalars(eta == nullptr, {c1, dc1, d2c1, d3c1}, [&] {
    const Four f = families::c1_eta123(*eta);
    *c1 = f[0], *dc1 = f[1], *d2c1 = f[2], *d3c1 = f[3];
  });
}
void tessarel_calc_intgpert_eta123(const double* eta, double* i2, double* di1, double* di2, double* d2i1, double* d2i2,
                                   double* d3i1, double* d3i2) {
  scalars(eta == nullptr, {i2, di1, di2, d2i1, d2i2, d3i1, d3i2}, [&] {
    const Four f1 = families::scaled_integral_eta123(0, *eta), f2 = families::scaled_integral_eta123(1, *eta);
    *i2 = eos::integral(families::working.bpar, *eta);
    *di1 = f1[1], *d2i1 = f1[2], *d3i1 = f1[3];
    *di2 = f2[1], *d2i2 = f2[2], *d3i2 = f2[3];
  });
}

}  // extern "C"
