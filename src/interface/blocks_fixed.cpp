// Exports of functions with several derivatives in one pass, and of the density iteration on a state that the host has
// prepared.
#include "blocks/fixed.hpp"
#include "eos/density.hpp"
#include "interface/blocks_support.hpp"

using namespace tessarel;
using namespace tessarel::interface;
using blocks::Four;

namespace {

/// A fixed state as the host hands it in.
struct FixedArguments {
  const double *zeta0r, *zeta1r, *zeta2r, *conv, *d, *dij, *m2es3, *m2e2s3, *delta_t0;

  [[nodiscard]] bool incomplete() const {
    return any_null({zeta0r, zeta1r, zeta2r, conv, d, dij, m2es3, m2e2s3, delta_t0});
  }
};

/// Prepares a fixed state and calls `body` on it.
template <class Body>
void on_fixed_state(const eos::Eos& eos, const int32_t* n, const double* x, const double* t, const FixedArguments& f,
                    Body&& body) {
  const Arena::Frame frame(eos.arena());
  eos::MixtureState<double> state;
  blocks::prepare_fixed(eos, state, *n, x, *t,
                        {*f.zeta0r, *f.zeta1r, *f.zeta2r, *f.conv, f.d, f.dij, *f.m2es3, *f.m2e2s3, f.delta_t0});
  body(state);
}

/// A function of a fixed state and eta, with two derivatives by eta.
template <class Function>
void by_eta(const int32_t* n, const double* x, const double* t, const double* eta, const FixedArguments& f,
            double* value, double* first, double* second, Function&& function) noexcept {
  Session& session = current_session();
  scalars(!valid_count(session, n) || any_null({x, t, eta}) || f.incomplete(), {value, first, second}, [&] {
    on_fixed_state(session.eos(), n, x, t, f, [&](const auto& state) {
      const eos::EtaDerivatives result = function(state, *eta);
      *value = result.value;
      *first = result.first;
      *second = result.second;
    });
  });
}

/// The contact values of all pairs, or of the like ones, with their derivatives.
void contacts(const int32_t* n, const double* d, const double* zeta2, const double* zeta3, bool like_only,
              blocks::ContactVariable by, const std::array<double*, 4>& out) noexcept {
  Session& session = current_session();
  const bool refused = !valid_count(session, n) || any_null({d, zeta2, zeta3, out[0], out[1], out[2], out[3]});
  run(refused, [&] {
    for (int i = 0; i < *n; ++i) {
      for (int j = like_only ? i : 0; j < (like_only ? i + 1 : *n); ++j) {
        const Four g = blocks::contact_pair(*n, d, *zeta2, *zeta3, i, j, by);
        for (std::size_t k = 0; k < 4; ++k) out[k][like_only ? i : i + *n * j] = g[k];
      }
    }
  });
}

}  // namespace

extern "C" {

void tessarel_calc_p_eta12(const int32_t* n, const double* x, const double* t, const double* eta, const double* zeta0r,
                           const double* zeta1r, const double* zeta2r, const double* conv, const double* d,
                           const double* dij, const double* m2es3, const double* m2e2s3, const double* delta_t0,
                           double* p, double* dp_deta, double* d2p_deta2) {
  by_eta(n, x, t, eta, {zeta0r, zeta1r, zeta2r, conv, d, dij, m2es3, m2e2s3, delta_t0}, p, dp_deta, d2p_deta2,
         [](const auto& state, double e) { return eos::p_eta12(state, e); });
}

void tessarel_calc_z_ass_eta12(const int32_t* n, const double* x, const double* t, const double* eta,
                               const double* zeta0r, const double* zeta1r, const double* zeta2r, const double* conv,
                               const double* d, const double* dij, const double* m2es3, const double* m2e2s3,
                               const double* delta_t0, double* z, double* dz_deta, double* d2z_deta2) {
  by_eta(n, x, t, eta, {zeta0r, zeta1r, zeta2r, conv, d, dij, m2es3, m2e2s3, delta_t0}, z, dz_deta, d2z_deta2,
         [](const auto& state, double e) { return eos::z_term_eta12<eos::Association>(state, e); });
}

void tessarel_calc_z_pol_eta12(const int32_t* n, const double* x, const double* t, const double* eta,
                               const double* zeta0r, const double* zeta1r, const double* zeta2r, const double* conv,
                               const double* d, const double* dij, const double* m2es3, const double* m2e2s3,
                               const double* delta_t0, double* z, double* dz_deta, double* d2z_deta2) {
  by_eta(n, x, t, eta, {zeta0r, zeta1r, zeta2r, conv, d, dij, m2es3, m2e2s3, delta_t0}, z, dz_deta, d2z_deta2,
         [](const auto& state, double e) { return eos::z_term_eta12<eos::Polar>(state, e); });
}

void tessarel_densiter(const int32_t* n, const double* x, const double* t, const double* p, const double* zeta0r,
                       const double* zeta1r, const double* zeta2r, const double* conv, const double* d,
                       const double* dij, const double* m2es3, const double* m2e2s3, const double* delta_t0,
                       double* eta, char* errormsg, size_t errormsg_len) {
  Session& session = current_session();
  const FixedArguments fixed{zeta0r, zeta1r, zeta2r, conv, d, dij, m2es3, m2e2s3, delta_t0};
  const auto* complete = fixed.incomplete() ? nullptr : n;
  report(session, {complete, x, t, p, eta}, {errormsg, errormsg_len}, [&]() -> Message {
    if (!valid_count(session, n)) return "TESSAREL error: number of components out of range...";
    Message message;
    on_fixed_state(session.eos(), n, x, t, fixed, [&](const auto& state) { message = eos::densiter(state, *p, *eta); });
    return message;
  });
}

void tessarel_calc_g_rho123_simp(const double* eta, double* g, double* g1, double* g2, double* g3) {
  scalars(eta == nullptr, {g, g1, g2, g3}, [&] {
    const Four f = blocks::contact_rho123(*eta);
    *g = f[0], *g1 = f[1], *g2 = f[2], *g3 = f[3];
  });
}
void tessarel_calc_gii_rho123(const int32_t* n, const double* d, const double* zeta2, const double* zeta3, double* g,
                              double* g1, double* g2, double* g3) {
  contacts(n, d, zeta2, zeta3, true, blocks::ContactVariable::rho, {g, g1, g2, g3});
}
void tessarel_calc_gij_rho123(const int32_t* n, const double* d, const double* zeta2, const double* zeta3, double* g,
                              double* g1, double* g2, double* g3) {
  contacts(n, d, zeta2, zeta3, false, blocks::ContactVariable::rho, {g, g1, g2, g3});
}
void tessarel_calc_gij_eta123(const int32_t* n, const double* d, const double* zeta2, const double* zeta3, double* g,
                              double* g1, double* g2, double* g3) {
  contacts(n, d, zeta2, zeta3, false, blocks::ContactVariable::eta, {g, g1, g2, g3});
}
void tessarel_calc_c_eta123(const double* eta, double* c1, double* dc1, double* d2c1, double* d3c1) {
  Session& session = current_session();
  scalars(eta == nullptr, {c1, dc1, d2c1, d3c1}, [&] {
    const Four f = blocks::c1_eta123(session.eos(), *eta);
    *c1 = f[0], *dc1 = f[1], *d2c1 = f[2], *d3c1 = f[3];
  });
}
void tessarel_calc_intgpert_eta123(const double* eta, double* i2, double* di1, double* di2, double* d2i1, double* d2i2,
                                   double* d3i1, double* d3i2) {
  Session& session = current_session();
  scalars(eta == nullptr, {i2, di1, di2, d2i1, d2i2, d3i1, d3i2}, [&] {
    const Four f1 = blocks::scaled_integral_eta123(session.eos(), 0, *eta);
    const Four f2 = blocks::scaled_integral_eta123(session.eos(), 1, *eta);
    *i2 = eos::integral(session.work.means.bpar, *eta);
    *di1 = f1[1], *d2i1 = f1[2], *d3i1 = f1[3];
    *di2 = f2[1], *d2i2 = f2[2], *d3i2 = f2[3];
  });
}

}  // extern "C"
