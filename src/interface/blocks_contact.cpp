// Exports of building blocks: contact values. Made by tools/make_blocks.py from its table.
#include "interface/blocks_support.hpp"

using namespace tessarel;
using namespace tessarel::interface;

extern "C" {

void tessarel_calc_g_simp(const double* eta, double* g) {
  member<blocks::g>(scope(), {eta}, {g});
}
void tessarel_calc_dg_deta_simp(const double* eta, double* dg_deta) {
  member<blocks::g, 'e'>(scope(), {eta}, {dg_deta});
}
void tessarel_calc_d2g_deta2_simp(const double* eta, double* d2g_deta2) {
  member<blocks::g, 'e', 'e'>(scope(), {eta}, {d2g_deta2});
}
void tessarel_calc_d3g_deta3_simp(const double* eta, double* d3g_deta3) {
  member<blocks::g, 'e', 'e', 'e'>(scope(), {eta}, {d3g_deta3});
}
void tessarel_calc_d4g_deta4_simp(const double* eta, double* d4g_deta4) {
  member<blocks::g, 'e', 'e', 'e', 'e'>(scope(), {eta}, {d4g_deta4});
}
void tessarel_calc_dg_drho_simp(const double* eta, double* dg_drho) {
  member<blocks::g, 'r'>(scope(), {eta}, {dg_drho});
}
void tessarel_calc_d2g_drho2_simp(const double* eta, double* d2g_drho2) {
  member<blocks::g, 'r', 'r'>(scope(), {eta}, {d2g_drho2});
}
void tessarel_calc_d3g_drho3_simp(const double* eta, double* d3g_drho3) {
  member<blocks::g, 'r', 'r', 'r'>(scope(), {eta}, {d3g_drho3});
}
void tessarel_calc_d4g_drho4_simp(const double* eta, double* d4g_drho4) {
  member<blocks::g, 'r', 'r', 'r', 'r'>(scope(), {eta}, {d4g_drho4});
}
void tessarel_calc_dg_dt_simp(const double* eta, const double* deta_dt, double* dg_dt) {
  member<blocks::g, 't'>(scope(), {eta, deta_dt}, {dg_dt});
}
void tessarel_calc_d2g_dt2_simp(const double* eta, const double* deta_dt, const double* d2eta_dt2, double* d2g_dt2) {
  member<blocks::g, 't', 't'>(scope(), {eta, deta_dt, d2eta_dt2}, {d2g_dt2});
}
void tessarel_calc_d3g_dt3_simp(const double* eta, const double* deta_dt, const double* d2eta_dt2,
                                const double* d3eta_dt3, double* d3g_dt3) {
  member<blocks::g, 't', 't', 't'>(scope(), {eta, deta_dt, d2eta_dt2, d3eta_dt3}, {d3g_dt3});
}
void tessarel_calc_dg_dx_simp(const int32_t* n, const double* eta, const double* deta_dx, double* dg_dx) {
  member<blocks::g, 'x'>(scope(n), {eta, deta_dx}, {dg_dx});
}
void tessarel_calc_d2g_dxdx_simp(const int32_t* n, const double* eta, const double* deta_dx, double* d2g_dxdx) {
  member<blocks::g, 'x', 'x'>(scope(n), {eta, deta_dx}, {d2g_dxdx});
}
void tessarel_calc_d3g_dxdxdx_simp(const int32_t* n, const double* eta, const double* deta_dx, double* d3g_dxdxdx) {
  member<blocks::g, 'x', 'x', 'x'>(scope(n), {eta, deta_dx}, {d3g_dxdxdx});
}
void tessarel_calc_d2g_dtdx_simp(const int32_t* n, const double* eta, const double* deta_dt, const double* deta_dx,
                                 const double* d2eta_dtdx, double* d2g_dtdx) {
  member<blocks::g, 't', 'x'>(scope(n), {eta, deta_dt, deta_dx, d2eta_dtdx}, {d2g_dtdx});
}
void tessarel_calc_d2g_drhodx_simp(const int32_t* n, const double* eta, const double* deta_dx, double* d2g_drhodx) {
  member<blocks::g, 'r', 'x'>(scope(n), {eta, deta_dx}, {d2g_drhodx});
}
void tessarel_calc_d2g_detadx_simp(const int32_t* n, const double* eta, const double* deta_dx, double* d2g_detadx) {
  member<blocks::g, 'e', 'x'>(scope(n), {eta, deta_dx}, {d2g_detadx});
}
void tessarel_calc_d3g_drhodxdx_simp(const int32_t* n, const double* eta, const double* deta_dx, double* d3g_drhodxdx) {
  member<blocks::g, 'r', 'x', 'x'>(scope(n), {eta, deta_dx}, {d3g_drhodxdx});
}
void tessarel_calc_d3g_detadxdx_simp(const int32_t* n, const double* eta, const double* deta_dx, double* d3g_detadxdx) {
  member<blocks::g, 'e', 'x', 'x'>(scope(n), {eta, deta_dx}, {d3g_detadxdx});
}
void tessarel_calc_d2g_dtdrho_simp(const double* eta, const double* deta_dt, double* d2g_dtdrho) {
  member<blocks::g, 'r', 't'>(scope(), {eta, deta_dt}, {d2g_dtdrho});
}
void tessarel_calc_d2g_detadt_simp(const double* eta, const double* deta_dt, double* d2g_detadt) {
  member<blocks::g, 'e', 't'>(scope(), {eta, deta_dt}, {d2g_detadt});
}
void tessarel_calc_d3g_dtdrho2_simp(const double* eta, const double* deta_dt, double* d3g_dtdrho2) {
  member<blocks::g, 'r', 'r', 't'>(scope(), {eta, deta_dt}, {d3g_dtdrho2});
}
void tessarel_calc_d3g_deta2dt_simp(const double* eta, const double* deta_dt, double* d3g_deta2dt) {
  member<blocks::g, 'e', 'e', 't'>(scope(), {eta, deta_dt}, {d3g_deta2dt});
}
void tessarel_calc_d3g_dt2drho_simp(const double* eta, const double* deta_dt, const double* d2eta_dt2,
                                    double* d3g_dt2drho) {
  member<blocks::g, 'r', 't', 't'>(scope(), {eta, deta_dt, d2eta_dt2}, {d3g_dt2drho});
}
void tessarel_calc_d3g_detadt2_simp(const double* eta, const double* deta_dt, const double* d2eta_dt2,
                                    double* d3g_detadt2) {
  member<blocks::g, 'e', 't', 't'>(scope(), {eta, deta_dt, d2eta_dt2}, {d3g_detadt2});
}
void tessarel_calc_gij(const int32_t* n, const int32_t* ipure, const double* d, const double* zeta2,
                       const double* zeta3, double* g) {
  member<blocks::gij>(scope(n, ipure), {d, zeta2, zeta3}, {g});
}
void tessarel_calc_dgij_deta(const int32_t* n, const int32_t* ipure, const double* d, const double* zeta2,
                             const double* zeta3, double* dg_deta) {
  member<blocks::gij, 'e'>(scope(n, ipure), {d, zeta2, zeta3}, {dg_deta});
}
void tessarel_calc_d2gij_deta2(const int32_t* n, const int32_t* ipure, const double* d, const double* zeta2,
                               const double* zeta3, double* d2g_deta2) {
  member<blocks::gij, 'e', 'e'>(scope(n, ipure), {d, zeta2, zeta3}, {d2g_deta2});
}
void tessarel_calc_d3gij_deta3(const int32_t* n, const int32_t* ipure, const double* d, const double* zeta2,
                               const double* zeta3, double* d3g_deta3) {
  member<blocks::gij, 'e', 'e', 'e'>(scope(n, ipure), {d, zeta2, zeta3}, {d3g_deta3});
}
void tessarel_calc_d4gij_deta4(const int32_t* n, const int32_t* ipure, const double* d, const double* zeta2,
                               const double* zeta3, double* d4g_deta4) {
  member<blocks::gij, 'e', 'e', 'e', 'e'>(scope(n, ipure), {d, zeta2, zeta3}, {d4g_deta4});
}
void tessarel_calc_dgij_drho(const int32_t* n, const int32_t* ipure, const double* d, const double* zeta2,
                             const double* zeta3, double* dg_drho) {
  member<blocks::gij, 'r'>(scope(n, ipure), {d, zeta2, zeta3}, {dg_drho});
}
void tessarel_calc_d2gij_drho2(const int32_t* n, const int32_t* ipure, const double* d, const double* zeta2,
                               const double* zeta3, double* d2g_drho2) {
  member<blocks::gij, 'r', 'r'>(scope(n, ipure), {d, zeta2, zeta3}, {d2g_drho2});
}
void tessarel_calc_d3gij_drho3(const int32_t* n, const int32_t* ipure, const double* d, const double* zeta2,
                               const double* zeta3, double* d3g_drho3) {
  member<blocks::gij, 'r', 'r', 'r'>(scope(n, ipure), {d, zeta2, zeta3}, {d3g_drho3});
}
void tessarel_calc_d4gij_drho4(const int32_t* n, const int32_t* ipure, const double* d, const double* zeta2,
                               const double* zeta3, double* d4g_drho4) {
  member<blocks::gij, 'r', 'r', 'r', 'r'>(scope(n, ipure), {d, zeta2, zeta3}, {d4g_drho4});
}
void tessarel_calc_dgij_dt(const int32_t* n, const int32_t* ipure, const double* d, const double* zeta2,
                           const double* zeta3, const double* dd_dt, const double* dzeta2_dt, const double* dzeta3_dt,
                           double* dg_dt) {
  member<blocks::gij, 't'>(scope(n, ipure), {d, zeta2, zeta3, dd_dt, dzeta2_dt, dzeta3_dt}, {dg_dt});
}
void tessarel_calc_d2gij_dt2(const int32_t* n, const int32_t* ipure, const double* d, const double* zeta2,
                             const double* zeta3, const double* dd_dt, const double* dzeta2_dt, const double* dzeta3_dt,
                             const double* d2d_dt2, const double* d2zeta2_dt2, const double* d2zeta3_dt2,
                             double* d2g_dt2) {
  member<blocks::gij, 't', 't'>(
      scope(n, ipure), {d, zeta2, zeta3, dd_dt, dzeta2_dt, dzeta3_dt, d2d_dt2, d2zeta2_dt2, d2zeta3_dt2}, {d2g_dt2});
}
void tessarel_calc_d3gij_dt3(const int32_t* n, const int32_t* ipure, const double* d, const double* zeta2,
                             const double* zeta3, const double* dd_dt, const double* dzeta2_dt, const double* dzeta3_dt,
                             const double* d2d_dt2, const double* d2zeta2_dt2, const double* d2zeta3_dt2,
                             const double* d3d_dt3, const double* d3zeta2_dt3, const double* d3zeta3_dt3,
                             double* d3g_dt3) {
  member<blocks::gij, 't', 't', 't'>(scope(n, ipure),
                                     {d, zeta2, zeta3, dd_dt, dzeta2_dt, dzeta3_dt, d2d_dt2, d2zeta2_dt2, d2zeta3_dt2,
                                      d3d_dt3, d3zeta2_dt3, d3zeta3_dt3},
                                     {d3g_dt3});
}
void tessarel_calc_dgij_dx(const int32_t* n, const int32_t* ipure, const double* d, const double* zeta2,
                           const double* zeta3, const double* dzeta2_dx, const double* dzeta3_dx, double* dg_dx) {
  member<blocks::gij, 'x'>(scope(n, ipure), {d, zeta2, zeta3, dzeta2_dx, dzeta3_dx}, {dg_dx});
}
void tessarel_calc_d2gij_dxdx(const int32_t* n, const int32_t* ipure, const double* d, const double* zeta2,
                              const double* zeta3, const double* dzeta2_dx, const double* dzeta3_dx, double* d2g_dxdx) {
  member<blocks::gij, 'x', 'x'>(scope(n, ipure), {d, zeta2, zeta3, dzeta2_dx, dzeta3_dx}, {d2g_dxdx});
}
void tessarel_calc_d3gij_dxdxdx(const int32_t* n, const int32_t* ipure, const double* d, const double* zeta2,
                                const double* zeta3, const double* dzeta2_dx, const double* dzeta3_dx,
                                double* d3g_dxdxdx) {
  member<blocks::gij, 'x', 'x', 'x'>(scope(n, ipure), {d, zeta2, zeta3, dzeta2_dx, dzeta3_dx}, {d3g_dxdxdx});
}
void tessarel_calc_d2gij_dtdx(const int32_t* n, const int32_t* ipure, const double* d, const double* zeta2,
                              const double* zeta3, const double* dd_dt, const double* dzeta2_dt,
                              const double* dzeta3_dt, const double* dzeta2_dx, const double* dzeta3_dx,
                              const double* d2zeta2_dtdx, const double* d2zeta3_dtdx, double* d2g_dtdx) {
  member<blocks::gij, 't', 'x'>(
      scope(n, ipure), {d, zeta2, zeta3, dd_dt, dzeta2_dt, dzeta3_dt, dzeta2_dx, dzeta3_dx, d2zeta2_dtdx, d2zeta3_dtdx},
      {d2g_dtdx});
}
void tessarel_calc_d2gij_drhodx(const int32_t* n, const int32_t* ipure, const double* d, const double* zeta2,
                                const double* zeta3, const double* dzeta2_dx, const double* dzeta3_dx,
                                double* d2g_drhodx) {
  member<blocks::gij, 'r', 'x'>(scope(n, ipure), {d, zeta2, zeta3, dzeta2_dx, dzeta3_dx}, {d2g_drhodx});
}
void tessarel_calc_d2gij_detadx(const int32_t* n, const int32_t* ipure, const double* d, const double* zeta2,
                                const double* zeta3, const double* dzeta2_dx, const double* dzeta3_dx,
                                double* d2g_detadx) {
  member<blocks::gij, 'e', 'x'>(scope(n, ipure), {d, zeta2, zeta3, dzeta2_dx, dzeta3_dx}, {d2g_detadx});
}
void tessarel_calc_d3gij_drhodxdx(const int32_t* n, const int32_t* ipure, const double* d, const double* zeta2,
                                  const double* zeta3, const double* dzeta2_dx, const double* dzeta3_dx,
                                  double* d3g_drhodxdx) {
  member<blocks::gij, 'r', 'x', 'x'>(scope(n, ipure), {d, zeta2, zeta3, dzeta2_dx, dzeta3_dx}, {d3g_drhodxdx});
}
void tessarel_calc_d3gij_detadxdx(const int32_t* n, const int32_t* ipure, const double* d, const double* zeta2,
                                  const double* zeta3, const double* dzeta2_dx, const double* dzeta3_dx,
                                  double* d3g_detadxdx) {
  member<blocks::gij, 'e', 'x', 'x'>(scope(n, ipure), {d, zeta2, zeta3, dzeta2_dx, dzeta3_dx}, {d3g_detadxdx});
}
void tessarel_calc_d2gij_dtdrho(const int32_t* n, const int32_t* ipure, const double* d, const double* zeta2,
                                const double* zeta3, const double* dd_dt, const double* dzeta2_dt,
                                const double* dzeta3_dt, double* d2g_dtdrho) {
  member<blocks::gij, 'r', 't'>(scope(n, ipure), {d, zeta2, zeta3, dd_dt, dzeta2_dt, dzeta3_dt}, {d2g_dtdrho});
}
void tessarel_calc_d2gij_detadt(const int32_t* n, const int32_t* ipure, const double* d, const double* zeta2,
                                const double* zeta3, const double* dd_dt, const double* dzeta2_dt,
                                const double* dzeta3_dt, double* d2g_detadt) {
  member<blocks::gij, 'e', 't'>(scope(n, ipure), {d, zeta2, zeta3, dd_dt, dzeta2_dt, dzeta3_dt}, {d2g_detadt});
}
void tessarel_calc_d3gij_dtdrho2(const int32_t* n, const int32_t* ipure, const double* d, const double* zeta2,
                                 const double* zeta3, const double* dd_dt, const double* dzeta2_dt,
                                 const double* dzeta3_dt, double* d3g_dtdrho2) {
  member<blocks::gij, 'r', 'r', 't'>(scope(n, ipure), {d, zeta2, zeta3, dd_dt, dzeta2_dt, dzeta3_dt}, {d3g_dtdrho2});
}
void tessarel_calc_d3gij_deta2dt(const int32_t* n, const int32_t* ipure, const double* d, const double* zeta2,
                                 const double* zeta3, const double* dd_dt, const double* dzeta2_dt,
                                 const double* dzeta3_dt, double* d3g_deta2dt) {
  member<blocks::gij, 'e', 'e', 't'>(scope(n, ipure), {d, zeta2, zeta3, dd_dt, dzeta2_dt, dzeta3_dt}, {d3g_deta2dt});
}
void tessarel_calc_d3gij_dt2drho(const int32_t* n, const int32_t* ipure, const double* d, const double* zeta2,
                                 const double* zeta3, const double* dd_dt, const double* dzeta2_dt,
                                 const double* dzeta3_dt, const double* d2d_dt2, const double* d2zeta2_dt2,
                                 const double* d2zeta3_dt2, double* d3g_dt2drho) {
  member<blocks::gij, 'r', 't', 't'>(scope(n, ipure),
                                     {d, zeta2, zeta3, dd_dt, dzeta2_dt, dzeta3_dt, d2d_dt2, d2zeta2_dt2, d2zeta3_dt2},
                                     {d3g_dt2drho});
}
void tessarel_calc_d3gij_detadt2(const int32_t* n, const int32_t* ipure, const double* d, const double* zeta2,
                                 const double* zeta3, const double* dd_dt, const double* dzeta2_dt,
                                 const double* dzeta3_dt, const double* d2d_dt2, const double* d2zeta2_dt2,
                                 const double* d2zeta3_dt2, double* d3g_detadt2) {
  member<blocks::gij, 'e', 't', 't'>(scope(n, ipure),
                                     {d, zeta2, zeta3, dd_dt, dzeta2_dt, dzeta3_dt, d2d_dt2, d2zeta2_dt2, d2zeta3_dt2},
                                     {d3g_detadt2});
}

}  // extern "C"
