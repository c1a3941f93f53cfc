// Exports of building blocks: polar terms. Made by tools/make_blocks.py from its table.
#include "interface/blocks_support.hpp"

using namespace tessarel;
using namespace tessarel::interface;

extern "C" {

void tessarel_calc_j2j3(const int32_t* n, const double* t, const double* eta, const double* eps, double* j2,
                        double* j3) {
  member<blocks::j2j3>(scope(n), {t, eta, eps}, {j2, j3});
}
void tessarel_calc_dj2j3_dt(const int32_t* n, const double* t, const double* eta, const double* eps,
                            const double* deta_dt, const double* deps_dt, double* dj2_dt, double* dj3_dt) {
  member<blocks::j2j3, 't'>(scope(n), {t, eta, eps, deta_dt, deps_dt}, {dj2_dt, dj3_dt});
}
void tessarel_calc_d2j2j3_dt2(const int32_t* n, const double* t, const double* eta, const double* eps,
                              const double* deta_dt, const double* deps_dt, const double* d2eta_dt2,
                              const double* d2eps_dt2, double* d2j2_dt2, double* d2j3_dt2) {
  member<blocks::j2j3, 't', 't'>(scope(n), {t, eta, eps, deta_dt, deps_dt, d2eta_dt2, d2eps_dt2}, {d2j2_dt2, d2j3_dt2});
}
void tessarel_calc_d3j2j3_dt3(const int32_t* n, const double* t, const double* eta, const double* eps,
                              const double* deta_dt, const double* deps_dt, const double* d2eta_dt2,
                              const double* d2eps_dt2, const double* d3eta_dt3, const double* d3eps_dt3,
                              double* d3j2_dt3, double* d3j3_dt3) {
  member<blocks::j2j3, 't', 't', 't'>(
      scope(n), {t, eta, eps, deta_dt, deps_dt, d2eta_dt2, d2eps_dt2, d3eta_dt3, d3eps_dt3}, {d3j2_dt3, d3j3_dt3});
}
void tessarel_calc_dj2j3_drho(const int32_t* n, const double* t, const double* eta, const double* eps,
                              const double* deta_drho, double* dj2_drho, double* dj3_drho) {
  member<blocks::j2j3, 'r'>(scope(n), {t, eta, eps, deta_drho}, {dj2_drho, dj3_drho});
}
void tessarel_calc_d2j2j3_drho2(const int32_t* n, const double* t, const double* eta, const double* eps,
                                const double* deta_drho, double* d2j2_drho2, double* d2j3_drho2) {
  member<blocks::j2j3, 'r', 'r'>(scope(n), {t, eta, eps, deta_drho}, {d2j2_drho2, d2j3_drho2});
}
void tessarel_calc_d3j2j3_drho3(const int32_t* n, const double* t, const double* eta, const double* eps,
                                const double* deta_drho, double* d3j2_drho3, double* d3j3_drho3) {
  member<blocks::j2j3, 'r', 'r', 'r'>(scope(n), {t, eta, eps, deta_drho}, {d3j2_drho3, d3j3_drho3});
}
void tessarel_calc_d4j2j3_drho4(const int32_t* n, const double* t, const double* eta, const double* eps,
                                const double* deta_drho, double* d4j2_drho4, double* d4j3_drho4) {
  member<blocks::j2j3, 'r', 'r', 'r', 'r'>(scope(n), {t, eta, eps, deta_drho}, {d4j2_drho4, d4j3_drho4});
}
void tessarel_calc_dj2j3_dx(const int32_t* n, const double* t, const double* eta, const double* eps,
                            const double* deta_dx, double* dj2_dx, double* dj3_dx) {
  member<blocks::j2j3, 'x'>(scope(n), {t, eta, eps, deta_dx}, {dj2_dx, dj3_dx});
}
void tessarel_calc_d2j2j3_dxdx(const int32_t* n, const double* t, const double* eta, const double* eps,
                               const double* deta_dx, double* d2j2_dxdx, double* d2j3_dxdx) {
  member<blocks::j2j3, 'x', 'x'>(scope(n), {t, eta, eps, deta_dx}, {d2j2_dxdx, d2j3_dxdx});
}
void tessarel_calc_d3j2j3_dxdxdx(const int32_t* n, const double* t, const double* eta, const double* eps,
                                 const double* deta_dx, double* d3j2_dxdxdx, double* d3j3_dxdxdx) {
  member<blocks::j2j3, 'x', 'x', 'x'>(scope(n), {t, eta, eps, deta_dx}, {d3j2_dxdxdx, d3j3_dxdxdx});
}
void tessarel_calc_d2j2j3_dtdrho(const int32_t* n, const double* t, const double* eta, const double* eps,
                                 const double* deta_dt, const double* deps_dt, const double* deta_drho,
                                 const double* d2eta_dtdrho, double* d2j2_dtdrho, double* d2j3_dtdrho) {
  member<blocks::j2j3, 'r', 't'>(scope(n), {t, eta, eps, deta_dt, deps_dt, deta_drho, d2eta_dtdrho},
                                 {d2j2_dtdrho, d2j3_dtdrho});
}
void tessarel_calc_d3j2j3_dtdrho2(const int32_t* n, const double* t, const double* eta, const double* eps,
                                  const double* deta_dt, const double* deps_dt, const double* deta_drho,
                                  const double* d2eta_dtdrho, double* d3j2_dtdrho2, double* d3j3_dtdrho2) {
  member<blocks::j2j3, 'r', 'r', 't'>(scope(n), {t, eta, eps, deta_dt, deps_dt, deta_drho, d2eta_dtdrho},
                                      {d3j2_dtdrho2, d3j3_dtdrho2});
}
void tessarel_calc_d3j2j3_dt2drho(const int32_t* n, const double* t, const double* eta, const double* eps,
                                  const double* deta_dt, const double* deps_dt, const double* deta_drho,
                                  const double* d2eta_dt2, const double* d2eps_dt2, const double* d2eta_dtdrho,
                                  const double* d3eta_dt2drho, double* d3j2_dt2drho, double* d3j3_dt2drho) {
  member<blocks::j2j3, 'r', 't', 't'>(
      scope(n), {t, eta, eps, deta_dt, deps_dt, deta_drho, d2eta_dt2, d2eps_dt2, d2eta_dtdrho, d3eta_dt2drho},
      {d3j2_dt2drho, d3j3_dt2drho});
}
void tessarel_calc_d2j2j3_drhodx(const int32_t* n, const double* t, const double* eta, const double* eps,
                                 const double* deta_drho, const double* deta_dx, const double* d2eta_drhodx,
                                 double* d2j2_drhodx, double* d2j3_drhodx) {
  member<blocks::j2j3, 'r', 'x'>(scope(n), {t, eta, eps, deta_drho, deta_dx, d2eta_drhodx}, {d2j2_drhodx, d2j3_drhodx});
}
void tessarel_calc_d3j2j3_drhodxdx(const int32_t* n, const double* t, const double* eta, const double* eps,
                                   const double* deta_drho, const double* deta_dx, const double* d2eta_drhodx,
                                   double* d3j2_drhodxdx, double* d3j3_drhodxdx) {
  member<blocks::j2j3, 'r', 'x', 'x'>(scope(n), {t, eta, eps, deta_drho, deta_dx, d2eta_drhodx},
                                      {d3j2_drhodxdx, d3j3_drhodxdx});
}
void tessarel_calc_d2j2j3_dtdx(const int32_t* n, const double* t, const double* eta, const double* eps,
                               const double* deta_dt, const double* deps_dt, const double* deta_dx,
                               const double* d2eta_dtdx, double* d2j2_dtdx, double* d2j3_dtdx) {
  member<blocks::j2j3, 't', 'x'>(scope(n), {t, eta, eps, deta_dt, deps_dt, deta_dx, d2eta_dtdx},
                                 {d2j2_dtdx, d2j3_dtdx});
}
void tessarel_calc_a2a3(const int32_t* n, const double* x, const int32_t* ipure, const double* t, const double* rho,
                        const double* j2, const double* j3, double* a2, double* a3) {
  member<blocks::a2a3>(scope(n, ipure), {x, t, rho, j2, j3}, {a2, a3});
}
void tessarel_calc_da2a3_dt(const int32_t* n, const double* x, const int32_t* ipure, const double* t, const double* rho,
                            const double* j2, const double* j3, const double* dj2_dt, const double* dj3_dt,
                            double* da2_dt, double* da3_dt) {
  member<blocks::a2a3, 't'>(scope(n, ipure), {x, t, rho, j2, j3, dj2_dt, dj3_dt}, {da2_dt, da3_dt});
}
void tessarel_calc_d2a2a3_dt2(const int32_t* n, const double* x, const int32_t* ipure, const double* t,
                              const double* rho, const double* j2, const double* j3, const double* dj2_dt,
                              const double* dj3_dt, const double* d2j2_dt2, const double* d2j3_dt2, double* d2a2_dt2,
                              double* d2a3_dt2) {
  member<blocks::a2a3, 't', 't'>(scope(n, ipure), {x, t, rho, j2, j3, dj2_dt, dj3_dt, d2j2_dt2, d2j3_dt2},
                                 {d2a2_dt2, d2a3_dt2});
}
void tessarel_calc_d3a2a3_dt3(const int32_t* n, const double* x, const int32_t* ipure, const double* t,
                              const double* rho, const double* j2, const double* j3, const double* dj2_dt,
                              const double* dj3_dt, const double* d2j2_dt2, const double* d2j3_dt2,
                              const double* d3j2_dt3, const double* d3j3_dt3, double* d3a2_dt3, double* d3a3_dt3) {
  member<blocks::a2a3, 't', 't', 't'>(scope(n, ipure),
                                      {x, t, rho, j2, j3, dj2_dt, dj3_dt, d2j2_dt2, d2j3_dt2, d3j2_dt3, d3j3_dt3},
                                      {d3a2_dt3, d3a3_dt3});
}
void tessarel_calc_da2a3_drho(const int32_t* n, const double* x, const int32_t* ipure, const double* t,
                              const double* rho, const double* j2, const double* j3, const double* dj2_drho,
                              const double* dj3_drho, double* da2_drho, double* da3_drho) {
  member<blocks::a2a3, 'r'>(scope(n, ipure), {x, t, rho, j2, j3, dj2_drho, dj3_drho}, {da2_drho, da3_drho});
}
void tessarel_calc_d2a2a3_drho2(const int32_t* n, const double* x, const int32_t* ipure, const double* t,
                                const double* rho, const double* j2, const double* j3, const double* dj2_drho,
                                const double* dj3_drho, const double* d2j2_drho2, const double* d2j3_drho2,
                                double* d2a2_drho2, double* d2a3_drho2) {
  member<blocks::a2a3, 'r', 'r'>(scope(n, ipure), {x, t, rho, j2, j3, dj2_drho, dj3_drho, d2j2_drho2, d2j3_drho2},
                                 {d2a2_drho2, d2a3_drho2});
}
void tessarel_calc_d3a2a3_drho3(const int32_t* n, const double* x, const int32_t* ipure, const double* t,
                                const double* rho, const double* j2, const double* j3, const double* dj2_drho,
                                const double* dj3_drho, const double* d2j2_drho2, const double* d2j3_drho2,
                                const double* d3j2_drho3, const double* d3j3_drho3, double* d3a2_drho3,
                                double* d3a3_drho3) {
  member<blocks::a2a3, 'r', 'r', 'r'>(
      scope(n, ipure), {x, t, rho, j2, j3, dj2_drho, dj3_drho, d2j2_drho2, d2j3_drho2, d3j2_drho3, d3j3_drho3},
      {d3a2_drho3, d3a3_drho3});
}
void tessarel_calc_d4a2a3_drho4(const int32_t* n, const double* x, const int32_t* ipure, const double* t,
                                const double* rho, const double* j2, const double* j3, const double* dj2_drho,
                                const double* dj3_drho, const double* d2j2_drho2, const double* d2j3_drho2,
                                const double* d3j2_drho3, const double* d3j3_drho3, const double* d4j2_drho4,
                                const double* d4j3_drho4, double* d4a2_drho4, double* d4a3_drho4) {
  member<blocks::a2a3, 'r', 'r', 'r', 'r'>(
      scope(n, ipure),
      {x, t, rho, j2, j3, dj2_drho, dj3_drho, d2j2_drho2, d2j3_drho2, d3j2_drho3, d3j3_drho3, d4j2_drho4, d4j3_drho4},
      {d4a2_drho4, d4a3_drho4});
}
void tessarel_calc_da2a3_dx(const int32_t* n, const double* x, const int32_t* ipure, const double* t, const double* rho,
                            const double* j2, const double* j3, const double* dj2_dx, const double* dj3_dx,
                            double* da2_dx, double* da3_dx) {
  member<blocks::a2a3, 'x'>(scope(n, ipure), {x, t, rho, j2, j3, dj2_dx, dj3_dx}, {da2_dx, da3_dx});
}
void tessarel_calc_d2a2a3_dxdx(const int32_t* n, const double* x, const int32_t* ipure, const double* t,
                               const double* rho, const double* j2, const double* j3, const double* dj2_dx,
                               const double* dj3_dx, const double* d2j2_dxdx, const double* d2j3_dxdx,
                               double* d2a2_dxdx, double* d2a3_dxdx) {
  member<blocks::a2a3, 'x', 'x'>(scope(n, ipure), {x, t, rho, j2, j3, dj2_dx, dj3_dx, d2j2_dxdx, d2j3_dxdx},
                                 {d2a2_dxdx, d2a3_dxdx});
}
void tessarel_calc_d3a2a3_dxdxdx(const int32_t* n, const double* x, const int32_t* ipure, const double* t,
                                 const double* rho, const double* j2, const double* j3, const double* dj2_dx,
                                 const double* dj3_dx, const double* d2j2_dxdx, const double* d2j3_dxdx,
                                 const double* d3j2_dxdxdx, const double* d3j3_dxdxdx, double* d3a2_dxdxdx,
                                 double* d3a3_dxdxdx) {
  member<blocks::a2a3, 'x', 'x', 'x'>(
      scope(n, ipure), {x, t, rho, j2, j3, dj2_dx, dj3_dx, d2j2_dxdx, d2j3_dxdx, d3j2_dxdxdx, d3j3_dxdxdx},
      {d3a2_dxdxdx, d3a3_dxdxdx});
}
void tessarel_calc_d2a2a3_dtdrho(const int32_t* n, const double* x, const int32_t* ipure, const double* t,
                                 const double* rho, const double* j2, const double* j3, const double* dj2_dt,
                                 const double* dj3_dt, const double* dj2_drho, const double* dj3_drho,
                                 const double* d2j2_dtdrho, const double* d2j3_dtdrho, double* d2a2_dtdrho,
                                 double* d2a3_dtdrho) {
  member<blocks::a2a3, 'r', 't'>(scope(n, ipure),
                                 {x, t, rho, j2, j3, dj2_dt, dj3_dt, dj2_drho, dj3_drho, d2j2_dtdrho, d2j3_dtdrho},
                                 {d2a2_dtdrho, d2a3_dtdrho});
}
void tessarel_calc_d3a2a3_dtdrho2(const int32_t* n, const double* x, const int32_t* ipure, const double* t,
                                  const double* rho, const double* j2, const double* j3, const double* dj2_dt,
                                  const double* dj3_dt, const double* dj2_drho, const double* dj3_drho,
                                  const double* d2j2_dtdrho, const double* d2j3_dtdrho, const double* d2j2_drho2,
                                  const double* d2j3_drho2, const double* d3j2_dtdrho2, const double* d3j3_dtdrho2,
                                  double* d3a2_dtdrho2, double* d3a3_dtdrho2) {
  member<blocks::a2a3, 'r', 'r', 't'>(scope(n, ipure),
                                      {x, t, rho, j2, j3, dj2_dt, dj3_dt, dj2_drho, dj3_drho, d2j2_dtdrho, d2j3_dtdrho,
                                       d2j2_drho2, d2j3_drho2, d3j2_dtdrho2, d3j3_dtdrho2},
                                      {d3a2_dtdrho2, d3a3_dtdrho2});
}
void tessarel_calc_d3a2a3_dt2drho(const int32_t* n, const double* x, const int32_t* ipure, const double* t,
                                  const double* rho, const double* j2, const double* j3, const double* dj2_dt,
                                  const double* dj3_dt, const double* dj2_drho, const double* dj3_drho,
                                  const double* d2j2_dt2, const double* d2j3_dt2, const double* d2j2_dtdrho,
                                  const double* d2j3_dtdrho, const double* d3j2_dt2drho, const double* d3j3_dt2drho,
                                  double* d3a2_dt2drho, double* d3a3_dt2drho) {
  member<blocks::a2a3, 'r', 't', 't'>(scope(n, ipure),
                                      {x, t, rho, j2, j3, dj2_dt, dj3_dt, dj2_drho, dj3_drho, d2j2_dt2, d2j3_dt2,
                                       d2j2_dtdrho, d2j3_dtdrho, d3j2_dt2drho, d3j3_dt2drho},
                                      {d3a2_dt2drho, d3a3_dt2drho});
}
void tessarel_calc_d2a2a3_drhodx(const int32_t* n, const double* x, const int32_t* ipure, const double* t,
                                 const double* rho, const double* j2, const double* j3, const double* dj2_drho,
                                 const double* dj3_drho, const double* dj2_dx, const double* dj3_dx,
                                 const double* d2j2_drhodx, const double* d2j3_drhodx, double* d2a2_drhodx,
                                 double* d2a3_drhodx) {
  member<blocks::a2a3, 'r', 'x'>(scope(n, ipure),
                                 {x, t, rho, j2, j3, dj2_drho, dj3_drho, dj2_dx, dj3_dx, d2j2_drhodx, d2j3_drhodx},
                                 {d2a2_drhodx, d2a3_drhodx});
}
void tessarel_calc_d3a2a3_drhodxdx(const int32_t* n, const double* x, const int32_t* ipure, const double* t,
                                   const double* rho, const double* j2, const double* j3, const double* dj2_drho,
                                   const double* dj3_drho, const double* dj2_dx, const double* dj3_dx,
                                   const double* d2j2_drhodx, const double* d2j3_drhodx, const double* d2j2_dxdx,
                                   const double* d2j3_dxdx, const double* d3j2_drhodxdx, const double* d3j3_drhodxdx,
                                   double* d3a2_drhodxdx, double* d3a3_drhodxdx) {
  member<blocks::a2a3, 'r', 'x', 'x'>(scope(n, ipure),
                                      {x, t, rho, j2, j3, dj2_drho, dj3_drho, dj2_dx, dj3_dx, d2j2_drhodx, d2j3_drhodx,
                                       d2j2_dxdx, d2j3_dxdx, d3j2_drhodxdx, d3j3_drhodxdx},
                                      {d3a2_drhodxdx, d3a3_drhodxdx});
}
void tessarel_calc_d2a2a3_dtdx(const int32_t* n, const double* x, const int32_t* ipure, const double* t,
                               const double* rho, const double* j2, const double* j3, const double* dj2_dt,
                               const double* dj3_dt, const double* dj2_dx, const double* dj3_dx,
                               const double* d2j2_dtdx, const double* d2j3_dtdx, double* d2a2_dtdx, double* d2a3_dtdx) {
  member<blocks::a2a3, 't', 'x'>(scope(n, ipure),
                                 {x, t, rho, j2, j3, dj2_dt, dj3_dt, dj2_dx, dj3_dx, d2j2_dtdx, d2j3_dtdx},
                                 {d2a2_dtdx, d2a3_dtdx});
}

}  // extern "C"
