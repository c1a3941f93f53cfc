// Exports of building blocks: hard spheres of one diameter. Made by tools/make_blocks.py from its table.
#include "interface/blocks_support.hpp"

using namespace tessarel;
using namespace tessarel::interface;

extern "C" {

void tessarel_calc_chi_simp(const double* eta, double* chi) {
  member<blocks::chi>(scope(), {eta}, {chi});
}
void tessarel_calc_dchi_deta_simp(const double* eta, double* dchi_deta) {
  member<blocks::chi, 'e'>(scope(), {eta}, {dchi_deta});
}
void tessarel_calc_d2chi_deta2_simp(const double* eta, double* d2chi_deta2) {
  member<blocks::chi, 'e', 'e'>(scope(), {eta}, {d2chi_deta2});
}
void tessarel_calc_d3chi_deta3_simp(const double* eta, double* d3chi_deta3) {
  member<blocks::chi, 'e', 'e', 'e'>(scope(), {eta}, {d3chi_deta3});
}
void tessarel_calc_d4chi_deta4_simp(const double* eta, double* d4chi_deta4) {
  member<blocks::chi, 'e', 'e', 'e', 'e'>(scope(), {eta}, {d4chi_deta4});
}
void tessarel_calc_dchi_dt_simp(const double* eta, const double* deta_dt, double* dchi_dt) {
  member<blocks::chi, 't'>(scope(), {eta, deta_dt}, {dchi_dt});
}
void tessarel_calc_d2chi_dt2_simp(const double* eta, const double* deta_dt, const double* d2eta_dt2,
                                  double* d2chi_dt2) {
  member<blocks::chi, 't', 't'>(scope(), {eta, deta_dt, d2eta_dt2}, {d2chi_dt2});
}
void tessarel_calc_d3chi_dt3_simp(const double* eta, const double* deta_dt, const double* d2eta_dt2,
                                  const double* d3eta_dt3, double* d3chi_dt3) {
  member<blocks::chi, 't', 't', 't'>(scope(), {eta, deta_dt, d2eta_dt2, d3eta_dt3}, {d3chi_dt3});
}
void tessarel_calc_dchi_dx_simp(const int32_t* n, const double* eta, const double* deta_dx, double* dchi_dx) {
  member<blocks::chi, 'x'>(scope(n), {eta, deta_dx}, {dchi_dx});
}
void tessarel_calc_d2chi_dxdx_simp(const int32_t* n, const double* eta, const double* deta_dx, double* d2chi_dxdx) {
  member<blocks::chi, 'x', 'x'>(scope(n), {eta, deta_dx}, {d2chi_dxdx});
}
void tessarel_calc_d3chi_dxdxdx_simp(const int32_t* n, const double* eta, const double* deta_dx, double* d3chi_dxdxdx) {
  member<blocks::chi, 'x', 'x', 'x'>(scope(n), {eta, deta_dx}, {d3chi_dxdxdx});
}
void tessarel_calc_d2chi_dtdx_simp(const int32_t* n, const double* eta, const double* deta_dt, const double* deta_dx,
                                   const double* d2eta_dtdx, double* d2chi_dtdx) {
  member<blocks::chi, 't', 'x'>(scope(n), {eta, deta_dt, deta_dx, d2eta_dtdx}, {d2chi_dtdx});
}
void tessarel_calc_d2chi_detadx_simp(const int32_t* n, const double* eta, const double* deta_dx, double* d2chi_detadx) {
  member<blocks::chi, 'e', 'x'>(scope(n), {eta, deta_dx}, {d2chi_detadx});
}
void tessarel_calc_d3chi_detadxdx_simp(const int32_t* n, const double* eta, const double* deta_dx,
                                       double* d3chi_detadxdx) {
  member<blocks::chi, 'e', 'x', 'x'>(scope(n), {eta, deta_dx}, {d3chi_detadxdx});
}
void tessarel_calc_d2chi_detadt_simp(const double* eta, const double* deta_dt, double* d2chi_detadt) {
  member<blocks::chi, 'e', 't'>(scope(), {eta, deta_dt}, {d2chi_detadt});
}
void tessarel_calc_d3chi_detadt2_simp(const double* eta, const double* deta_dt, const double* d2eta_dt2,
                                      double* d3chi_detadt2) {
  member<blocks::chi, 'e', 't', 't'>(scope(), {eta, deta_dt, d2eta_dt2}, {d3chi_detadt2});
}
void tessarel_calc_d4chi_detadt3_simp(const double* eta, const double* deta_dt, const double* d2eta_dt2,
                                      const double* d3eta_dt3, double* d4chi_detadt3) {
  member<blocks::chi, 'e', 't', 't', 't'>(scope(), {eta, deta_dt, d2eta_dt2, d3eta_dt3}, {d4chi_detadt3});
}
void tessarel_calc_d3chi_deta2dt_simp(const double* eta, const double* deta_dt, double* d3chi_deta2dt) {
  member<blocks::chi, 'e', 'e', 't'>(scope(), {eta, deta_dt}, {d3chi_deta2dt});
}
void tessarel_calc_a_hs_simp(const double* eta, double* a) {
  member<blocks::a_hs>(scope(), {eta}, {a});
}
void tessarel_calc_da_hs_deta_simp(const double* eta, double* da_deta) {
  member<blocks::a_hs, 'e'>(scope(), {eta}, {da_deta});
}
void tessarel_calc_d2a_hs_deta2_simp(const double* eta, double* d2a_deta2) {
  member<blocks::a_hs, 'e', 'e'>(scope(), {eta}, {d2a_deta2});
}
void tessarel_calc_d3a_hs_deta3_simp(const double* eta, double* d3a_deta3) {
  member<blocks::a_hs, 'e', 'e', 'e'>(scope(), {eta}, {d3a_deta3});
}
void tessarel_calc_d4a_hs_deta4_simp(const double* eta, double* d4a_deta4) {
  member<blocks::a_hs, 'e', 'e', 'e', 'e'>(scope(), {eta}, {d4a_deta4});
}
void tessarel_calc_da_hs_drho_simp(const double* eta, double* da_drho) {
  member<blocks::a_hs, 'r'>(scope(), {eta}, {da_drho});
}
void tessarel_calc_d2a_hs_drho2_simp(const double* eta, double* d2a_drho2) {
  member<blocks::a_hs, 'r', 'r'>(scope(), {eta}, {d2a_drho2});
}
void tessarel_calc_d3a_hs_drho3_simp(const double* eta, double* d3a_drho3) {
  member<blocks::a_hs, 'r', 'r', 'r'>(scope(), {eta}, {d3a_drho3});
}
void tessarel_calc_d4a_hs_drho4_simp(const double* eta, double* d4a_drho4) {
  member<blocks::a_hs, 'r', 'r', 'r', 'r'>(scope(), {eta}, {d4a_drho4});
}
void tessarel_calc_da_hs_dt_simp(const double* eta, const double* deta_dt, double* da_dt) {
  member<blocks::a_hs, 't'>(scope(), {eta, deta_dt}, {da_dt});
}
void tessarel_calc_d2a_hs_dt2_simp(const double* eta, const double* deta_dt, const double* d2eta_dt2, double* d2a_dt2) {
  member<blocks::a_hs, 't', 't'>(scope(), {eta, deta_dt, d2eta_dt2}, {d2a_dt2});
}
void tessarel_calc_d3a_hs_dt3_simp(const double* eta, const double* deta_dt, const double* d2eta_dt2,
                                   const double* d3eta_dt3, double* d3a_dt3) {
  member<blocks::a_hs, 't', 't', 't'>(scope(), {eta, deta_dt, d2eta_dt2, d3eta_dt3}, {d3a_dt3});
}
void tessarel_calc_da_hs_dx_simp(const int32_t* n, const double* eta, const double* deta_dx, double* da_dx) {
  member<blocks::a_hs, 'x'>(scope(n), {eta, deta_dx}, {da_dx});
}
void tessarel_calc_d2a_hs_dxdx_simp(const int32_t* n, const double* eta, const double* deta_dx, double* d2a_dxdx) {
  member<blocks::a_hs, 'x', 'x'>(scope(n), {eta, deta_dx}, {d2a_dxdx});
}
void tessarel_calc_d3a_hs_dxdxdx_simp(const int32_t* n, const double* eta, const double* deta_dx, double* d3a_dxdxdx) {
  member<blocks::a_hs, 'x', 'x', 'x'>(scope(n), {eta, deta_dx}, {d3a_dxdxdx});
}
void tessarel_calc_d2a_hs_dtdx_simp(const int32_t* n, const double* eta, const double* deta_dt, const double* deta_dx,
                                    const double* d2eta_dtdx, double* d2a_dtdx) {
  member<blocks::a_hs, 't', 'x'>(scope(n), {eta, deta_dt, deta_dx, d2eta_dtdx}, {d2a_dtdx});
}
void tessarel_calc_d2a_hs_detadx_simp(const int32_t* n, const double* eta, const double* deta_dx, double* d2a_detadx) {
  member<blocks::a_hs, 'e', 'x'>(scope(n), {eta, deta_dx}, {d2a_detadx});
}
void tessarel_calc_d2a_hs_detadt_simp(const double* eta, const double* deta_dt, double* d2a_detadt) {
  member<blocks::a_hs, 'e', 't'>(scope(), {eta, deta_dt}, {d2a_detadt});
}
void tessarel_calc_d3a_hs_detadt2_simp(const double* eta, const double* deta_dt, const double* d2eta_dt2,
                                       double* d3a_detadt2) {
  member<blocks::a_hs, 'e', 't', 't'>(scope(), {eta, deta_dt, d2eta_dt2}, {d3a_detadt2});
}
void tessarel_calc_d4a_hs_detadt3_simp(const double* eta, const double* deta_dt, const double* d2eta_dt2,
                                       const double* d3eta_dt3, double* d4a_detadt3) {
  member<blocks::a_hs, 'e', 't', 't', 't'>(scope(), {eta, deta_dt, d2eta_dt2, d3eta_dt3}, {d4a_detadt3});
}
void tessarel_calc_d3a_hs_deta2dt_simp(const double* eta, const double* deta_dt, double* d3a_deta2dt) {
  member<blocks::a_hs, 'e', 'e', 't'>(scope(), {eta, deta_dt}, {d3a_deta2dt});
}
void tessarel_calc_d2a_hs_dtdrho_simp(const double* eta, const double* deta_dt, double* d2a_dtdrho) {
  member<blocks::a_hs, 'r', 't'>(scope(), {eta, deta_dt}, {d2a_dtdrho});
}
void tessarel_calc_d3a_hs_dtdrho2_simp(const double* eta, const double* deta_dt, double* d3a_dtdrho2) {
  member<blocks::a_hs, 'r', 'r', 't'>(scope(), {eta, deta_dt}, {d3a_dtdrho2});
}
void tessarel_calc_d3a_hs_dt2drho_simp(const double* eta, const double* deta_dt, const double* d2eta_dt2,
                                       double* d3a_dt2drho) {
  member<blocks::a_hs, 'r', 't', 't'>(scope(), {eta, deta_dt, d2eta_dt2}, {d3a_dt2drho});
}
void tessarel_calc_d4a_hs_dt3drho_simp(const double* eta, const double* deta_dt, const double* d2eta_dt2,
                                       const double* d3eta_dt3, double* d4a_dt3drho) {
  member<blocks::a_hs, 'r', 't', 't', 't'>(scope(), {eta, deta_dt, d2eta_dt2, d3eta_dt3}, {d4a_dt3drho});
}
void tessarel_calc_d2a_hs_drhodx_simp(const int32_t* n, const double* eta, const double* deta_dx, double* d2a_drhodx) {
  member<blocks::a_hs, 'r', 'x'>(scope(n), {eta, deta_dx}, {d2a_drhodx});
}
void tessarel_calc_d3a_hs_drhodxdx_simp(const int32_t* n, const double* eta, const double* deta_dx,
                                        double* d3a_drhodxdx) {
  member<blocks::a_hs, 'r', 'x', 'x'>(scope(n), {eta, deta_dx}, {d3a_drhodxdx});
}
void tessarel_calc_d3a_hs_detadxdx_simp(const int32_t* n, const double* eta, const double* deta_dx,
                                        double* d3a_detadxdx) {
  member<blocks::a_hs, 'e', 'x', 'x'>(scope(n), {eta, deta_dx}, {d3a_detadxdx});
}
void tessarel_calc_z_hs_simp(const double* eta, double* z) {
  member<blocks::z_hs>(scope(), {eta}, {z});
}
void tessarel_calc_dz_hs_deta_simp(const double* eta, double* dz_deta) {
  member<blocks::z_hs, 'e'>(scope(), {eta}, {dz_deta});
}
void tessarel_calc_d2z_hs_deta2_simp(const double* eta, double* d2z_deta2) {
  member<blocks::z_hs, 'e', 'e'>(scope(), {eta}, {d2z_deta2});
}
void tessarel_calc_d3z_hs_deta3_simp(const double* eta, double* d3z_deta3) {
  member<blocks::z_hs, 'e', 'e', 'e'>(scope(), {eta}, {d3z_deta3});
}
void tessarel_calc_dz_hs_drho_simp(const double* eta, double* dz_drho) {
  member<blocks::z_hs, 'r'>(scope(), {eta}, {dz_drho});
}
void tessarel_calc_d2z_hs_drho2_simp(const double* eta, double* d2z_drho2) {
  member<blocks::z_hs, 'r', 'r'>(scope(), {eta}, {d2z_drho2});
}
void tessarel_calc_d3z_hs_drho3_simp(const double* eta, double* d3z_drho3) {
  member<blocks::z_hs, 'r', 'r', 'r'>(scope(), {eta}, {d3z_drho3});
}
void tessarel_calc_dz_hs_dt_simp(const double* eta, const double* deta_dt, double* dz_dt) {
  member<blocks::z_hs, 't'>(scope(), {eta, deta_dt}, {dz_dt});
}
void tessarel_calc_d2z_hs_dt2_simp(const double* eta, const double* deta_dt, const double* d2eta_dt2, double* d2z_dt2) {
  member<blocks::z_hs, 't', 't'>(scope(), {eta, deta_dt, d2eta_dt2}, {d2z_dt2});
}
void tessarel_calc_d3z_hs_dt3_simp(const double* eta, const double* deta_dt, const double* d2eta_dt2,
                                   const double* d3eta_dt3, double* d3z_dt3) {
  member<blocks::z_hs, 't', 't', 't'>(scope(), {eta, deta_dt, d2eta_dt2, d3eta_dt3}, {d3z_dt3});
}
void tessarel_calc_dz_hs_dx_simp(const int32_t* n, const double* eta, const double* deta_dx, double* dz_dx) {
  member<blocks::z_hs, 'x'>(scope(n), {eta, deta_dx}, {dz_dx});
}
void tessarel_calc_d2z_hs_dxdx_simp(const int32_t* n, const double* eta, const double* deta_dx, double* d2z_dxdx) {
  member<blocks::z_hs, 'x', 'x'>(scope(n), {eta, deta_dx}, {d2z_dxdx});
}
void tessarel_calc_d2z_hs_dtdrho_simp(const double* eta, const double* deta_dt, double* d2z_dtdrho) {
  member<blocks::z_hs, 'r', 't'>(scope(), {eta, deta_dt}, {d2z_dtdrho});
}
void tessarel_calc_d2z_hs_detadt_simp(const double* eta, const double* deta_dt, double* d2z_detadt) {
  member<blocks::z_hs, 'e', 't'>(scope(), {eta, deta_dt}, {d2z_detadt});
}

}  // extern "C"
