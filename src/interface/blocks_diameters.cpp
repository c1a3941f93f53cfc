// Exports of building blocks: pair diameters, moments of the diameter, mean diameter. Made by tools/make_blocks.py from
// its table.
#include "interface/blocks_support.hpp"

using namespace tessarel;
using namespace tessarel::interface;

extern "C" {

void tessarel_calc_dij(const int32_t* n, const double* d, double* dij) {
  member<blocks::dij>(scope(n), {d}, {dij});
}
void tessarel_calc_ddij_dt(const int32_t* n, const double* d, const double* dd_dt, double* ddij_dt) {
  member<blocks::dij, 't'>(scope(n), {d, dd_dt}, {ddij_dt});
}
void tessarel_calc_d2dij_dt2(const int32_t* n, const double* d, const double* dd_dt, const double* d2d_dt2,
                             double* d2dij_dt2) {
  member<blocks::dij, 't', 't'>(scope(n), {d, dd_dt, d2d_dt2}, {d2dij_dt2});
}
void tessarel_calc_d3dij_dt3(const int32_t* n, const double* d, const double* dd_dt, const double* d2d_dt2,
                             const double* d3d_dt3, double* d3dij_dt3) {
  member<blocks::dij, 't', 't', 't'>(scope(n), {d, dd_dt, d2d_dt2, d3d_dt3}, {d3dij_dt3});
}
void tessarel_calc_zeta(const int32_t* n, const double* x, const int32_t* ipure, const double* rho, const double* d,
                        const int32_t* k, double* zeta) {
  member<blocks::zeta>(scope(n, ipure, k), {x, rho, d}, {zeta});
}
void tessarel_calc_dzeta_dt(const int32_t* n, const double* x, const int32_t* ipure, const double* rho, const double* d,
                            const int32_t* k, const double* dd_dt, double* dzeta_dt) {
  member<blocks::zeta, 't'>(scope(n, ipure, k), {x, rho, d, dd_dt}, {dzeta_dt});
}
void tessarel_calc_d2zeta_dt2(const int32_t* n, const double* x, const int32_t* ipure, const double* rho,
                              const double* d, const int32_t* k, const double* dd_dt, const double* d2d_dt2,
                              double* d2zeta_dt2) {
  member<blocks::zeta, 't', 't'>(scope(n, ipure, k), {x, rho, d, dd_dt, d2d_dt2}, {d2zeta_dt2});
}
void tessarel_calc_d3zeta_dt3(const int32_t* n, const double* x, const int32_t* ipure, const double* rho,
                              const double* d, const int32_t* k, const double* dd_dt, const double* d2d_dt2,
                              const double* d3d_dt3, double* d3zeta_dt3) {
  member<blocks::zeta, 't', 't', 't'>(scope(n, ipure, k), {x, rho, d, dd_dt, d2d_dt2, d3d_dt3}, {d3zeta_dt3});
}
void tessarel_calc_dzeta_dx(const int32_t* n, const double* x, const int32_t* ipure, const double* rho, const double* d,
                            const int32_t* k, double* dzeta_dx) {
  member<blocks::zeta, 'x'>(scope(n, ipure, k), {x, rho, d}, {dzeta_dx});
}
void tessarel_calc_d2zeta_dxdt(const int32_t* n, const double* x, const int32_t* ipure, const double* rho,
                               const double* d, const int32_t* k, const double* dd_dt, double* d2zeta_dxdt) {
  member<blocks::zeta, 't', 'x'>(scope(n, ipure, k), {x, rho, d, dd_dt}, {d2zeta_dxdt});
}
void tessarel_calc_d_avg_simp(const int32_t* n, const double* x, const double* d, double* d_avg) {
  member<blocks::d_avg>(scope(n), {x, d}, {d_avg});
}
void tessarel_calc_dd_avg_dt_simp(const int32_t* n, const double* x, const double* d, const double* dd_dt,
                                  double* dd_avg_dt) {
  member<blocks::d_avg, 't'>(scope(n), {x, d, dd_dt}, {dd_avg_dt});
}
void tessarel_calc_d2d_avg_dt2_simp(const int32_t* n, const double* x, const double* d, const double* dd_dt,
                                    const double* d2d_dt2, double* d2d_avg_dt2) {
  member<blocks::d_avg, 't', 't'>(scope(n), {x, d, dd_dt, d2d_dt2}, {d2d_avg_dt2});
}
void tessarel_calc_d3d_avg_dt3_simp(const int32_t* n, const double* x, const double* d, const double* dd_dt,
                                    const double* d2d_dt2, const double* d3d_dt3, double* d3d_avg_dt3) {
  member<blocks::d_avg, 't', 't', 't'>(scope(n), {x, d, dd_dt, d2d_dt2, d3d_dt3}, {d3d_avg_dt3});
}
void tessarel_calc_dd_avg_dx_simp(const int32_t* n, const double* x, const double* d, double* dd_avg_dx) {
  member<blocks::d_avg, 'x'>(scope(n), {x, d}, {dd_avg_dx});
}
void tessarel_calc_d2d_avg_dxdx_simp(const int32_t* n, const double* x, const double* d, double* d2d_avg_dxdx) {
  member<blocks::d_avg, 'x', 'x'>(scope(n), {x, d}, {d2d_avg_dxdx});
}
void tessarel_calc_d3d_avg_dxdxdx_simp(const int32_t* n, const double* x, const double* d, double* d3d_avg_dxdxdx) {
  member<blocks::d_avg, 'x', 'x', 'x'>(scope(n), {x, d}, {d3d_avg_dxdxdx});
}
void tessarel_calc_d2d_avg_dtdx_simp(const int32_t* n, const double* x, const double* d, const double* dd_dt,
                                     double* d2d_avg_dtdx) {
  member<blocks::d_avg, 't', 'x'>(scope(n), {x, d, dd_dt}, {d2d_avg_dtdx});
}
void tessarel_calc_eta_simp(const int32_t* n, const double* x, const double* rho, const double* d_avg, double* eta) {
  member<blocks::eta_simp>(scope(n), {x, rho, d_avg}, {eta});
}
void tessarel_calc_deta_dt_simp(const int32_t* n, const double* x, const double* rho, const double* d_avg,
                                const double* dd_avg_dt, double* deta_dt) {
  member<blocks::eta_simp, 't'>(scope(n), {x, rho, d_avg, dd_avg_dt}, {deta_dt});
}
void tessarel_calc_d2eta_dt2_simp(const int32_t* n, const double* x, const double* rho, const double* d_avg,
                                  const double* dd_avg_dt, const double* d2d_avg_dt2, double* d2eta_dt2) {
  member<blocks::eta_simp, 't', 't'>(scope(n), {x, rho, d_avg, dd_avg_dt, d2d_avg_dt2}, {d2eta_dt2});
}
void tessarel_calc_d3eta_dt3_simp(const int32_t* n, const double* x, const double* rho, const double* d_avg,
                                  const double* dd_avg_dt, const double* d2d_avg_dt2, const double* d3d_avg_dt3,
                                  double* d3eta_dt3) {
  member<blocks::eta_simp, 't', 't', 't'>(scope(n), {x, rho, d_avg, dd_avg_dt, d2d_avg_dt2, d3d_avg_dt3}, {d3eta_dt3});
}
void tessarel_calc_deta_dx_simp(const int32_t* n, const double* x, const double* rho, const double* d_avg,
                                const double* dd_avg_dx, double* deta_dx) {
  member<blocks::eta_simp, 'x'>(scope(n), {x, rho, d_avg, dd_avg_dx}, {deta_dx});
}
void tessarel_calc_d2eta_dtdx_simp(const int32_t* n, const double* x, const double* rho, const double* d_avg,
                                   const double* dd_avg_dt, const double* dd_avg_dx, const double* d2d_avg_dtdx,
                                   double* d2eta_dtdx) {
  member<blocks::eta_simp, 't', 'x'>(scope(n), {x, rho, d_avg, dd_avg_dt, dd_avg_dx, d2d_avg_dtdx}, {d2eta_dtdx});
}

}  // extern "C"
