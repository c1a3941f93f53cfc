// Exports of building blocks: association term. Made by tools/make_blocks.py from its table.
#include "interface/blocks_support.hpp"

using namespace tessarel;
using namespace tessarel::interface;

extern "C" {

void tessarel_calc_deltaab(const int32_t* n, const int32_t* ipure, const double* t, const double* sig_ij,
                           const double* gij, double* deltaab) {
  member<blocks::deltaab>(scope(n, ipure), {t, sig_ij, gij}, {deltaab});
}
void tessarel_calc_ddeltaab_dt(const int32_t* n, const int32_t* ipure, const double* t, const double* sig_ij,
                               const double* gij, const double* dgij_dt, double* ddeltaab_dt) {
  member<blocks::deltaab, 't'>(scope(n, ipure), {t, sig_ij, gij, dgij_dt}, {ddeltaab_dt});
}
void tessarel_calc_d2deltaab_dt2(const int32_t* n, const int32_t* ipure, const double* t, const double* sig_ij,
                                 const double* gij, const double* dgij_dt, const double* d2gij_dt2,
                                 double* d2deltaab_dt2) {
  member<blocks::deltaab, 't', 't'>(scope(n, ipure), {t, sig_ij, gij, dgij_dt, d2gij_dt2}, {d2deltaab_dt2});
}
void tessarel_calc_d3deltaab_dt3(const int32_t* n, const int32_t* ipure, const double* t, const double* sig_ij,
                                 const double* gij, const double* dgij_dt, const double* d2gij_dt2,
                                 const double* d3gij_dt3, double* d3deltaab_dt3) {
  member<blocks::deltaab, 't', 't', 't'>(scope(n, ipure), {t, sig_ij, gij, dgij_dt, d2gij_dt2, d3gij_dt3},
                                         {d3deltaab_dt3});
}
void tessarel_calc_ddeltaab_drho(const int32_t* n, const int32_t* ipure, const double* t, const double* sig_ij,
                                 const double* gij, const double* dgij_drho, double* ddeltaab_drho) {
  member<blocks::deltaab, 'r'>(scope(n, ipure), {t, sig_ij, gij, dgij_drho}, {ddeltaab_drho});
}
void tessarel_calc_d2deltaab_drho2(const int32_t* n, const int32_t* ipure, const double* t, const double* sig_ij,
                                   const double* gij, const double* dgij_drho, const double* d2gij_drho2,
                                   double* d2deltaab_drho2) {
  member<blocks::deltaab, 'r', 'r'>(scope(n, ipure), {t, sig_ij, gij, dgij_drho, d2gij_drho2}, {d2deltaab_drho2});
}
void tessarel_calc_d3deltaab_drho3(const int32_t* n, const int32_t* ipure, const double* t, const double* sig_ij,
                                   const double* gij, const double* dgij_drho, const double* d2gij_drho2,
                                   const double* d3gij_drho3, double* d3deltaab_drho3) {
  member<blocks::deltaab, 'r', 'r', 'r'>(scope(n, ipure), {t, sig_ij, gij, dgij_drho, d2gij_drho2, d3gij_drho3},
                                         {d3deltaab_drho3});
}
void tessarel_calc_d4deltaab_drho4(const int32_t* n, const int32_t* ipure, const double* t, const double* sig_ij,
                                   const double* gij, const double* dgij_drho, const double* d2gij_drho2,
                                   const double* d3gij_drho3, const double* d4gij_drho4, double* d4deltaab_drho4) {
  member<blocks::deltaab, 'r', 'r', 'r', 'r'>(
      scope(n, ipure), {t, sig_ij, gij, dgij_drho, d2gij_drho2, d3gij_drho3, d4gij_drho4}, {d4deltaab_drho4});
}
void tessarel_calc_ddeltaab_dx(const int32_t* n, const int32_t* ipure, const double* t, const double* sig_ij,
                               const double* gij, const double* dgij_dx, double* ddeltaab_dx) {
  member<blocks::deltaab, 'x'>(scope(n, ipure), {t, sig_ij, gij, dgij_dx}, {ddeltaab_dx});
}
void tessarel_calc_d2deltaab_dxdx(const int32_t* n, const int32_t* ipure, const double* t, const double* sig_ij,
                                  const double* gij, const double* dgij_dx, const double* d2gij_dxdx,
                                  double* d2deltaab_dxdx) {
  member<blocks::deltaab, 'x', 'x'>(scope(n, ipure), {t, sig_ij, gij, dgij_dx, d2gij_dxdx}, {d2deltaab_dxdx});
}
void tessarel_calc_d3deltaab_dxdxdx(const int32_t* n, const int32_t* ipure, const double* t, const double* sig_ij,
                                    const double* gij, const double* dgij_dx, const double* d2gij_dxdx,
                                    const double* d3gij_dxdxdx, double* d3deltaab_dxdxdx) {
  member<blocks::deltaab, 'x', 'x', 'x'>(scope(n, ipure), {t, sig_ij, gij, dgij_dx, d2gij_dxdx, d3gij_dxdxdx},
                                         {d3deltaab_dxdxdx});
}
void tessarel_calc_d2deltaab_dtdrho(const int32_t* n, const int32_t* ipure, const double* t, const double* sig_ij,
                                    const double* gij, const double* dgij_dt, const double* dgij_drho,
                                    const double* d2gij_dtdrho, double* d2deltaab_dtdrho) {
  member<blocks::deltaab, 'r', 't'>(scope(n, ipure), {t, sig_ij, gij, dgij_dt, dgij_drho, d2gij_dtdrho},
                                    {d2deltaab_dtdrho});
}
void tessarel_calc_d3deltaab_dtdrhodrho(const int32_t* n, const int32_t* ipure, const double* t, const double* sig_ij,
                                        const double* gij, const double* dgij_dt, const double* dgij_drho,
                                        const double* d2gij_dtdrho, const double* d2gij_drho2,
                                        const double* d3gij_dtdrho2, double* d3deltaab_dtdrhodrho) {
  member<blocks::deltaab, 'r', 'r', 't'>(scope(n, ipure),
                                         {t, sig_ij, gij, dgij_dt, dgij_drho, d2gij_dtdrho, d2gij_drho2, d3gij_dtdrho2},
                                         {d3deltaab_dtdrhodrho});
}
void tessarel_calc_d3deltaab_dtdtdrho(const int32_t* n, const int32_t* ipure, const double* t, const double* sig_ij,
                                      const double* gij, const double* dgij_dt, const double* dgij_drho,
                                      const double* d2gij_dt2, const double* d2gij_dtdrho, const double* d3gij_dt2drho,
                                      double* d3deltaab_dtdtdrho) {
  member<blocks::deltaab, 'r', 't', 't'>(scope(n, ipure),
                                         {t, sig_ij, gij, dgij_dt, dgij_drho, d2gij_dt2, d2gij_dtdrho, d3gij_dt2drho},
                                         {d3deltaab_dtdtdrho});
}
void tessarel_calc_d2deltaab_drhodx(const int32_t* n, const int32_t* ipure, const double* t, const double* sig_ij,
                                    const double* gij, const double* dgij_drho, const double* dgij_dx,
                                    const double* d2gij_drhodx, double* d2deltaab_drhodx) {
  member<blocks::deltaab, 'r', 'x'>(scope(n, ipure), {t, sig_ij, gij, dgij_drho, dgij_dx, d2gij_drhodx},
                                    {d2deltaab_drhodx});
}
void tessarel_calc_d3deltaab_drhodxdx(const int32_t* n, const int32_t* ipure, const double* t, const double* sig_ij,
                                      const double* gij, const double* dgij_drho, const double* dgij_dx,
                                      const double* d2gij_drhodx, const double* d2gij_dxdx,
                                      const double* d3gij_drhodxdx, double* d3deltaab_drhodxdx) {
  member<blocks::deltaab, 'r', 'x', 'x'>(scope(n, ipure),
                                         {t, sig_ij, gij, dgij_drho, dgij_dx, d2gij_drhodx, d2gij_dxdx, d3gij_drhodxdx},
                                         {d3deltaab_drhodxdx});
}
void tessarel_calc_d2deltaab_dtdx(const int32_t* n, const int32_t* ipure, const double* t, const double* sig_ij,
                                  const double* gij, const double* dgij_dt, const double* dgij_dx,
                                  const double* d2gij_dtdx, double* d2deltaab_dtdx) {
  member<blocks::deltaab, 't', 'x'>(scope(n, ipure), {t, sig_ij, gij, dgij_dt, dgij_dx, d2gij_dtdx}, {d2deltaab_dtdx});
}
void tessarel_calc_xnhb(const int32_t* n, const double* x, const int32_t* ipure, const double* rho,
                        const double* deltaab, double* xnhb, int32_t* status) {
  member<blocks::xnhb>(scope(n, ipure), {x, rho, deltaab}, {xnhb}, status);
}
void tessarel_calc_dxnhb_dt(const int32_t* n, const double* x, const int32_t* ipure, const double* rho,
                            const double* deltaab, const double* xnhb, const double* ddeltaab_dt, double* dxnhb_dt,
                            int32_t* status) {
  member<blocks::xnhb, 't'>(scope(n, ipure), {x, rho, deltaab, xnhb, ddeltaab_dt}, {dxnhb_dt}, status);
}
void tessarel_calc_d2xnhb_dt2(const int32_t* n, const double* x, const int32_t* ipure, const double* rho,
                              const double* deltaab, const double* xnhb, const double* ddeltaab_dt,
                              const double* dxnhb_dt, const double* d2deltaab_dt2, double* d2xnhb_dt2,
                              int32_t* status) {
  member<blocks::xnhb, 't', 't'>(scope(n, ipure), {x, rho, deltaab, xnhb, ddeltaab_dt, dxnhb_dt, d2deltaab_dt2},
                                 {d2xnhb_dt2}, status);
}
void tessarel_calc_d3xnhb_dt3(const int32_t* n, const double* x, const int32_t* ipure, const double* rho,
                              const double* deltaab, const double* xnhb, const double* ddeltaab_dt,
                              const double* dxnhb_dt, const double* d2deltaab_dt2, const double* d2xnhb_dt2,
                              const double* d3deltaab_dt3, double* d3xnhb_dt3, int32_t* status) {
  member<blocks::xnhb, 't', 't', 't'>(
      scope(n, ipure), {x, rho, deltaab, xnhb, ddeltaab_dt, dxnhb_dt, d2deltaab_dt2, d2xnhb_dt2, d3deltaab_dt3},
      {d3xnhb_dt3}, status);
}
void tessarel_calc_dxnhb_drho(const int32_t* n, const double* x, const int32_t* ipure, const double* rho,
                              const double* deltaab, const double* xnhb, const double* ddeltaab_drho,
                              double* dxnhb_drho, int32_t* status) {
  member<blocks::xnhb, 'r'>(scope(n, ipure), {x, rho, deltaab, xnhb, ddeltaab_drho}, {dxnhb_drho}, status);
}
void tessarel_calc_d2xnhb_drho2(const int32_t* n, const double* x, const int32_t* ipure, const double* rho,
                                const double* deltaab, const double* xnhb, const double* ddeltaab_drho,
                                const double* dxnhb_drho, const double* d2deltaab_drho2, double* d2xnhb_drho2,
                                int32_t* status) {
  member<blocks::xnhb, 'r', 'r'>(scope(n, ipure), {x, rho, deltaab, xnhb, ddeltaab_drho, dxnhb_drho, d2deltaab_drho2},
                                 {d2xnhb_drho2}, status);
}
void tessarel_calc_d3xnhb_drho3(const int32_t* n, const double* x, const int32_t* ipure, const double* rho,
                                const double* deltaab, const double* xnhb, const double* ddeltaab_drho,
                                const double* dxnhb_drho, const double* d2deltaab_drho2, const double* d2xnhb_drho2,
                                const double* d3deltaab_drho3, double* d3xnhb_drho3, int32_t* status) {
  member<blocks::xnhb, 'r', 'r', 'r'>(
      scope(n, ipure),
      {x, rho, deltaab, xnhb, ddeltaab_drho, dxnhb_drho, d2deltaab_drho2, d2xnhb_drho2, d3deltaab_drho3},
      {d3xnhb_drho3}, status);
}
void tessarel_calc_d4xnhb_drho4(const int32_t* n, const double* x, const int32_t* ipure, const double* rho,
                                const double* deltaab, const double* xnhb, const double* ddeltaab_drho,
                                const double* dxnhb_drho, const double* d2deltaab_drho2, const double* d2xnhb_drho2,
                                const double* d3deltaab_drho3, const double* d3xnhb_drho3,
                                const double* d4deltaab_drho4, double* d4xnhb_drho4, int32_t* status) {
  member<blocks::xnhb, 'r', 'r', 'r', 'r'>(scope(n, ipure),
                                           {x, rho, deltaab, xnhb, ddeltaab_drho, dxnhb_drho, d2deltaab_drho2,
                                            d2xnhb_drho2, d3deltaab_drho3, d3xnhb_drho3, d4deltaab_drho4},
                                           {d4xnhb_drho4}, status);
}
void tessarel_calc_dxnhb_dx(const int32_t* n, const double* x, const int32_t* ipure, const double* rho,
                            const double* deltaab, const double* xnhb, const double* ddeltaab_dx, double* dxnhb_dx,
                            int32_t* status) {
  member<blocks::xnhb, 'x'>(scope(n, ipure), {x, rho, deltaab, xnhb, ddeltaab_dx}, {dxnhb_dx}, status);
}
void tessarel_calc_d2xnhb_dxdx(const int32_t* n, const double* x, const int32_t* ipure, const double* rho,
                               const double* deltaab, const double* xnhb, const double* ddeltaab_dx,
                               const double* dxnhb_dx, const double* d2deltaab_dxdx, double* d2xnhb_dxdx,
                               int32_t* status) {
  member<blocks::xnhb, 'x', 'x'>(scope(n, ipure), {x, rho, deltaab, xnhb, ddeltaab_dx, dxnhb_dx, d2deltaab_dxdx},
                                 {d2xnhb_dxdx}, status);
}
void tessarel_calc_d3xnhb_dxdxdx(const int32_t* n, const double* x, const int32_t* ipure, const double* rho,
                                 const double* deltaab, const double* xnhb, const double* ddeltaab_dx,
                                 const double* dxnhb_dx, const double* d2deltaab_dxdx, const double* d2xnhb_dxdx,
                                 const double* d3deltaab_dxdxdx, double* d3xnhb_dxdxdx, int32_t* status) {
  member<blocks::xnhb, 'x', 'x', 'x'>(
      scope(n, ipure), {x, rho, deltaab, xnhb, ddeltaab_dx, dxnhb_dx, d2deltaab_dxdx, d2xnhb_dxdx, d3deltaab_dxdxdx},
      {d3xnhb_dxdxdx}, status);
}
void tessarel_calc_d2xnhb_drhodt(const int32_t* n, const double* x, const int32_t* ipure, const double* rho,
                                 const double* deltaab, const double* xnhb, const double* ddeltaab_dt,
                                 const double* dxnhb_dt, const double* ddeltaab_drho, const double* dxnhb_drho,
                                 const double* d2deltaab_dtdrho, double* d2xnhb_drhodt, int32_t* status) {
  member<blocks::xnhb, 'r', 't'>(
      scope(n, ipure), {x, rho, deltaab, xnhb, ddeltaab_dt, dxnhb_dt, ddeltaab_drho, dxnhb_drho, d2deltaab_dtdrho},
      {d2xnhb_drhodt}, status);
}
void tessarel_calc_d3xnhb_drhodrhodt(const int32_t* n, const double* x, const int32_t* ipure, const double* rho,
                                     const double* deltaab, const double* xnhb, const double* ddeltaab_dt,
                                     const double* dxnhb_dt, const double* ddeltaab_drho, const double* dxnhb_drho,
                                     const double* d2deltaab_dtdrho, const double* d2xnhb_dtdrho,
                                     const double* d2deltaab_drho2, const double* d2xnhb_drho2,
                                     const double* d3deltaab_dtdrho2, double* d3xnhb_drhodrhodt, int32_t* status) {
  member<blocks::xnhb, 'r', 'r', 't'>(
      scope(n, ipure),
      {x, rho, deltaab, xnhb, ddeltaab_dt, dxnhb_dt, ddeltaab_drho, dxnhb_drho, d2deltaab_dtdrho, d2xnhb_dtdrho,
       d2deltaab_drho2, d2xnhb_drho2, d3deltaab_dtdrho2},
      {d3xnhb_drhodrhodt}, status);
}
void tessarel_calc_d3xnhb_drhodtdt(const int32_t* n, const double* x, const int32_t* ipure, const double* rho,
                                   const double* deltaab, const double* xnhb, const double* ddeltaab_dt,
                                   const double* dxnhb_dt, const double* ddeltaab_drho, const double* dxnhb_drho,
                                   const double* d2deltaab_dt2, const double* d2xnhb_dt2,
                                   const double* d2deltaab_dtdrho, const double* d2xnhb_dtdrho,
                                   const double* d3deltaab_dt2drho, double* d3xnhb_drhodtdt, int32_t* status) {
  member<blocks::xnhb, 'r', 't', 't'>(scope(n, ipure),
                                      {x, rho, deltaab, xnhb, ddeltaab_dt, dxnhb_dt, ddeltaab_drho, dxnhb_drho,
                                       d2deltaab_dt2, d2xnhb_dt2, d2deltaab_dtdrho, d2xnhb_dtdrho, d3deltaab_dt2drho},
                                      {d3xnhb_drhodtdt}, status);
}
void tessarel_calc_d2xnhb_drhodx(const int32_t* n, const double* x, const int32_t* ipure, const double* rho,
                                 const double* deltaab, const double* xnhb, const double* ddeltaab_drho,
                                 const double* dxnhb_drho, const double* ddeltaab_dx, const double* dxnhb_dx,
                                 const double* d2deltaab_drhodx, double* d2xnhb_drhodx, int32_t* status) {
  member<blocks::xnhb, 'r', 'x'>(
      scope(n, ipure), {x, rho, deltaab, xnhb, ddeltaab_drho, dxnhb_drho, ddeltaab_dx, dxnhb_dx, d2deltaab_drhodx},
      {d2xnhb_drhodx}, status);
}
void tessarel_calc_d3xnhb_drhodxdx(const int32_t* n, const double* x, const int32_t* ipure, const double* rho,
                                   const double* deltaab, const double* xnhb, const double* ddeltaab_drho,
                                   const double* dxnhb_drho, const double* ddeltaab_dx, const double* dxnhb_dx,
                                   const double* d2deltaab_drhodx, const double* d2xnhb_drhodx,
                                   const double* d2deltaab_dxdx, const double* d2xnhb_dxdx,
                                   const double* d3deltaab_drhodxdx, double* d3xnhb_drhodxdx, int32_t* status) {
  member<blocks::xnhb, 'r', 'x', 'x'>(
      scope(n, ipure),
      {x, rho, deltaab, xnhb, ddeltaab_drho, dxnhb_drho, ddeltaab_dx, dxnhb_dx, d2deltaab_drhodx, d2xnhb_drhodx,
       d2deltaab_dxdx, d2xnhb_dxdx, d3deltaab_drhodxdx},
      {d3xnhb_drhodxdx}, status);
}
void tessarel_calc_d2xnhb_dtdx(const int32_t* n, const double* x, const int32_t* ipure, const double* rho,
                               const double* deltaab, const double* xnhb, const double* ddeltaab_dt,
                               const double* dxnhb_dt, const double* ddeltaab_dx, const double* dxnhb_dx,
                               const double* d2deltaab_dtdx, double* d2xnhb_dtdx, int32_t* status) {
  member<blocks::xnhb, 't', 'x'>(scope(n, ipure),
                                 {x, rho, deltaab, xnhb, ddeltaab_dt, dxnhb_dt, ddeltaab_dx, dxnhb_dx, d2deltaab_dtdx},
                                 {d2xnhb_dtdx}, status);
}

}  // extern "C"
