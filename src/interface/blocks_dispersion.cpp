// Exports of building blocks: dispersion term. Made by tools/make_blocks.py from its table.
#include "interface/blocks_support.hpp"

using namespace tessarel;
using namespace tessarel::interface;

extern "C" {

void tessarel_calc_c1(const double* eta, double* c1) {
  member<blocks::c1>(scope(), {eta}, {c1});
}
void tessarel_calc_d2c1_deta2(const double* eta, double* d2c1_deta2) {
  member<blocks::c1, 'e', 'e'>(scope(), {eta}, {d2c1_deta2});
}
void tessarel_calc_d3c1_deta3(const double* eta, double* d3c1_deta3) {
  member<blocks::c1, 'e', 'e', 'e'>(scope(), {eta}, {d3c1_deta3});
}
void tessarel_calc_d4c1_deta4(const double* eta, double* d4c1_deta4) {
  member<blocks::c1, 'e', 'e', 'e', 'e'>(scope(), {eta}, {d4c1_deta4});
}
void tessarel_calc_dc1_dt(const double* eta, const double* deta_dt, double* dc1_dt) {
  member<blocks::c1, 't'>(scope(), {eta, deta_dt}, {dc1_dt});
}
void tessarel_calc_d2c1_dt2(const double* eta, const double* deta_dt, const double* d2eta_dt2, double* d2c1_dt2) {
  member<blocks::c1, 't', 't'>(scope(), {eta, deta_dt, d2eta_dt2}, {d2c1_dt2});
}
void tessarel_calc_d3c1_dt3(const double* eta, const double* deta_dt, const double* d2eta_dt2, const double* d3eta_dt3,
                            double* d3c1_dt3) {
  member<blocks::c1, 't', 't', 't'>(scope(), {eta, deta_dt, d2eta_dt2, d3eta_dt3}, {d3c1_dt3});
}
void tessarel_calc_dc1_dx(const int32_t* n, const double* eta, const double* deta_dx, double* dc1_dx) {
  member<blocks::c1, 'x'>(scope(n), {eta, deta_dx}, {dc1_dx});
}
void tessarel_calc_d2c1_dxdx(const int32_t* n, const double* eta, const double* deta_dx, double* d2c1_dxdx) {
  member<blocks::c1, 'x', 'x'>(scope(n), {eta, deta_dx}, {d2c1_dxdx});
}
void tessarel_calc_d3c1_dxdxdx(const int32_t* n, const double* eta, const double* deta_dx, double* d3c1_dxdxdx) {
  member<blocks::c1, 'x', 'x', 'x'>(scope(n), {eta, deta_dx}, {d3c1_dxdxdx});
}
void tessarel_calc_d2c1_detadt(const double* eta, const double* deta_dt, double* d2c1_detadt) {
  member<blocks::c1, 'e', 't'>(scope(), {eta, deta_dt}, {d2c1_detadt});
}
void tessarel_calc_d3c1_detadt2(const double* eta, const double* deta_dt, const double* d2eta_dt2,
                                double* d3c1_detadt2) {
  member<blocks::c1, 'e', 't', 't'>(scope(), {eta, deta_dt, d2eta_dt2}, {d3c1_detadt2});
}
void tessarel_calc_d3c1_deta2dt(const double* eta, const double* deta_dt, double* d3c1_deta2dt) {
  member<blocks::c1, 'e', 'e', 't'>(scope(), {eta, deta_dt}, {d3c1_deta2dt});
}
void tessarel_calc_d2c1_dtdx(const int32_t* n, const double* eta, const double* deta_dt, const double* deta_dx,
                             const double* d2eta_dtdx, double* d2c1_dtdx) {
  member<blocks::c1, 't', 'x'>(scope(n), {eta, deta_dt, deta_dx, d2eta_dtdx}, {d2c1_dtdx});
}
void tessarel_calc_d2c1_detadx(const int32_t* n, const double* eta, const double* deta_dx, double* d2c1_detadx) {
  member<blocks::c1, 'e', 'x'>(scope(n), {eta, deta_dx}, {d2c1_detadx});
}
void tessarel_calc_d3c1_detadxdx(const int32_t* n, const double* eta, const double* deta_dx, double* d3c1_detadxdx) {
  member<blocks::c1, 'e', 'x', 'x'>(scope(n), {eta, deta_dx}, {d3c1_detadxdx});
}
void tessarel_calc_d3c1_deta2dx(const int32_t* n, const double* eta, const double* deta_dx, double* d3c1_deta2dx) {
  member<blocks::c1, 'e', 'e', 'x'>(scope(n), {eta, deta_dx}, {d3c1_deta2dx});
}
void tessarel_calc_intgpert(const double* eta, double* i1, double* i2) {
  member<blocks::intgpert>(scope(), {eta}, {i1, i2});
}
void tessarel_calc_dintgpert_deta(const double* eta, double* di1_deta, double* di2_deta) {
  member<blocks::intgpert, 'e'>(scope(), {eta}, {di1_deta, di2_deta});
}
void tessarel_calc_d2intgpert_deta2(const double* eta, double* d2i1_deta2, double* d2i2_deta2) {
  member<blocks::intgpert, 'e', 'e'>(scope(), {eta}, {d2i1_deta2, d2i2_deta2});
}
void tessarel_calc_d3intgpert_deta3(const double* eta, double* d3i1_deta3, double* d3i2_deta3) {
  member<blocks::intgpert, 'e', 'e', 'e'>(scope(), {eta}, {d3i1_deta3, d3i2_deta3});
}
void tessarel_calc_d4intgpert_deta4(const double* eta, double* d4i1_deta4, double* d4i2_deta4) {
  member<blocks::intgpert, 'e', 'e', 'e', 'e'>(scope(), {eta}, {d4i1_deta4, d4i2_deta4});
}
void tessarel_calc_dintgpert_dt(const double* eta, const double* deta_dt, double* di1_dt, double* di2_dt) {
  member<blocks::intgpert, 't'>(scope(), {eta, deta_dt}, {di1_dt, di2_dt});
}
void tessarel_calc_d2intgpert_dt2(const double* eta, const double* deta_dt, const double* d2eta_dt2, double* d2i1_dt2,
                                  double* d2i2_dt2) {
  member<blocks::intgpert, 't', 't'>(scope(), {eta, deta_dt, d2eta_dt2}, {d2i1_dt2, d2i2_dt2});
}
void tessarel_calc_d3intgpert_dt3(const double* eta, const double* deta_dt, const double* d2eta_dt2,
                                  const double* d3eta_dt3, double* d3i1_dt3, double* d3i2_dt3) {
  member<blocks::intgpert, 't', 't', 't'>(scope(), {eta, deta_dt, d2eta_dt2, d3eta_dt3}, {d3i1_dt3, d3i2_dt3});
}
void tessarel_calc_dintgpert_dx(const int32_t* n, const double* eta, const double* deta_dx, double* di1_dx,
                                double* di2_dx) {
  member<blocks::intgpert, 'x'>(scope(n), {eta, deta_dx}, {di1_dx, di2_dx});
}
void tessarel_calc_d2intgpert_dxdx(const int32_t* n, const double* eta, const double* deta_dx, double* d2i1_dxdx,
                                   double* d2i2_dxdx) {
  member<blocks::intgpert, 'x', 'x'>(scope(n), {eta, deta_dx}, {d2i1_dxdx, d2i2_dxdx});
}
void tessarel_calc_d3intgpert_dxdxdx(const int32_t* n, const double* eta, const double* deta_dx, double* d3i1_dxdxdx,
                                     double* d3i2_dxdxdx) {
  member<blocks::intgpert, 'x', 'x', 'x'>(scope(n), {eta, deta_dx}, {d3i1_dxdxdx, d3i2_dxdxdx});
}
void tessarel_calc_d2intgpert_detadt(const double* eta, const double* deta_dt, double* d2i1_detadt,
                                     double* d2i2_detadt) {
  member<blocks::intgpert, 'e', 't'>(scope(), {eta, deta_dt}, {d2i1_detadt, d2i2_detadt});
}
void tessarel_calc_d3intgpert_detadt2(const double* eta, const double* deta_dt, const double* d2eta_dt2,
                                      double* d3i1_detadt2, double* d3i2_detadt2) {
  member<blocks::intgpert, 'e', 't', 't'>(scope(), {eta, deta_dt, d2eta_dt2}, {d3i1_detadt2, d3i2_detadt2});
}
void tessarel_calc_d3intgpert_deta2dt(const double* eta, const double* deta_dt, double* d3i1_deta2dt,
                                      double* d3i2_deta2dt) {
  member<blocks::intgpert, 'e', 'e', 't'>(scope(), {eta, deta_dt}, {d3i1_deta2dt, d3i2_deta2dt});
}
void tessarel_calc_d2intgpert_detadx(const int32_t* n, const double* eta, const double* deta_dx, double* d2i1_detadx,
                                     double* d2i2_detadx) {
  member<blocks::intgpert, 'e', 'x'>(scope(n), {eta, deta_dx}, {d2i1_detadx, d2i2_detadx});
}
void tessarel_calc_d2intgpert_dtdx(const int32_t* n, const double* eta, const double* deta_dt, const double* deta_dx,
                                   const double* d2eta_dtdx, double* d2i1_dtdx, double* d2i2_dtdx) {
  member<blocks::intgpert, 't', 'x'>(scope(n), {eta, deta_dt, deta_dx, d2eta_dtdx}, {d2i1_dtdx, d2i2_dtdx});
}
void tessarel_calc_d3intgpert_detadxdx(const int32_t* n, const double* eta, const double* deta_dx,
                                       double* d3i1_detadxdx, double* d3i2_detadxdx) {
  member<blocks::intgpert, 'e', 'x', 'x'>(scope(n), {eta, deta_dx}, {d3i1_detadxdx, d3i2_detadxdx});
}
void tessarel_calc_dsigeps_dt(const int32_t* n, const int32_t* ipure, const double* t, double* deps_dt,
                              double* deps_ij_dt) {
  member<blocks::sigeps, 't'>(scope(n, ipure), {t}, {deps_dt, deps_ij_dt});
}
void tessarel_calc_d2sigeps_dt2(const int32_t* n, const int32_t* ipure, const double* t, double* d2eps_dt2,
                                double* d2eps_ij_dt2) {
  member<blocks::sigeps, 't', 't'>(scope(n, ipure), {t}, {d2eps_dt2, d2eps_ij_dt2});
}
void tessarel_calc_d3sigeps_dt3(const int32_t* n, const int32_t* ipure, const double* t, double* d3eps_dt3,
                                double* d3eps_ij_dt3) {
  member<blocks::sigeps, 't', 't', 't'>(scope(n, ipure), {t}, {d3eps_dt3, d3eps_ij_dt3});
}
void tessarel_calc_pertterm(const int32_t* n, const double* x, const int32_t* ipure, const double* t,
                            const double* sig_ij, const double* eps_ij, double* m2es3, double* m2e2s3) {
  member<blocks::pertterm>(scope(n, ipure), {x, t, sig_ij, eps_ij}, {m2es3, m2e2s3});
}
void tessarel_calc_dpertterm_dt(const int32_t* n, const double* x, const int32_t* ipure, const double* t,
                                const double* sig_ij, const double* eps_ij, const double* deps_ij_dt, double* dm2es3_dt,
                                double* dm2e2s3_dt) {
  member<blocks::pertterm, 't'>(scope(n, ipure), {x, t, sig_ij, eps_ij, deps_ij_dt}, {dm2es3_dt, dm2e2s3_dt});
}
void tessarel_calc_d2pertterm_dt2(const int32_t* n, const double* x, const int32_t* ipure, const double* t,
                                  const double* sig_ij, const double* eps_ij, const double* deps_ij_dt,
                                  const double* d2eps_ij_dt2, double* d2m2es3_dt2, double* d2m2e2s3_dt2) {
  member<blocks::pertterm, 't', 't'>(scope(n, ipure), {x, t, sig_ij, eps_ij, deps_ij_dt, d2eps_ij_dt2},
                                     {d2m2es3_dt2, d2m2e2s3_dt2});
}
void tessarel_calc_d3pertterm_dt3(const int32_t* n, const double* x, const int32_t* ipure, const double* t,
                                  const double* sig_ij, const double* eps_ij, const double* deps_ij_dt,
                                  const double* d2eps_ij_dt2, const double* d3eps_ij_dt3, double* d3m2es3_dt3,
                                  double* d3m2e2s3_dt3) {
  member<blocks::pertterm, 't', 't', 't'>(
      scope(n, ipure), {x, t, sig_ij, eps_ij, deps_ij_dt, d2eps_ij_dt2, d3eps_ij_dt3}, {d3m2es3_dt3, d3m2e2s3_dt3});
}
void tessarel_calc_dpertterm_dx(const int32_t* n, const double* x, const int32_t* ipure, const double* t,
                                const double* sig_ij, const double* eps_ij, double* dm2es3_dx, double* dm2e2s3_dx) {
  member<blocks::pertterm, 'x'>(scope(n, ipure), {x, t, sig_ij, eps_ij}, {dm2es3_dx, dm2e2s3_dx});
}
void tessarel_calc_d2pertterm_dxdx(const int32_t* n, const double* x, const int32_t* ipure, const double* t,
                                   const double* sig_ij, const double* eps_ij, double* d2m2es3_dxdx,
                                   double* d2m2e2s3_dxdx) {
  member<blocks::pertterm, 'x', 'x'>(scope(n, ipure), {x, t, sig_ij, eps_ij}, {d2m2es3_dxdx, d2m2e2s3_dxdx});
}
void tessarel_calc_d2pertterm_dtdx(const int32_t* n, const double* x, const int32_t* ipure, const double* t,
                                   const double* sig_ij, const double* eps_ij, const double* deps_ij_dt,
                                   double* d2m2es3_dtdx, double* d2m2e2s3_dtdx) {
  member<blocks::pertterm, 't', 'x'>(scope(n, ipure), {x, t, sig_ij, eps_ij, deps_ij_dt},
                                     {d2m2es3_dtdx, d2m2e2s3_dtdx});
}

}  // extern "C"
