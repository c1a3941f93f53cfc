/* Tessarel: the building blocks of the equation of state, for hosts that assemble a and z or their derivatives by
 * themselves. Made by tools/make_blocks.py from its table and tools/blocks.h.in.
 *
 * The common arguments, the rules of derivatives and the refused calls are those of <tessarel/routines.h>. Where a
 * block takes both x and ipure, a derivative by x is that of the mixture x, whatever ipure.
 *
 * FAMILIES. A derivative takes the arguments of the value function, and then the derivatives of those arguments that it
 * needs, in this order: first order by t, by rho, by x; then second order by t t, t rho, t x, rho rho, rho x, x x; and
 * so on. The packing fraction and the moments zeta2, zeta3 are linear in rho and in x, so their second derivatives by
 * rho or by x vanish and are no arguments. A comment tells the shape of the outputs (none: one number), the factor rho
 * that some derivatives by rho carry ("times rho^2"), and the unit (none: a pure number). Entry (i,j) of n x n is at
 * [i + n j], and so on for more indices.
 */
#ifndef TESSAREL_BLOCKS_H
#define TESSAREL_BLOCKS_H

#include "tessarel/routines.h"

#ifdef __cplusplus
extern "C" {
#endif

/* ============================================================ prepare and assemble ============================= */

/* The building blocks of a state: _prep fills such a record, _base makes the value from it, without any other work. A
 * record prepared for a derivative serves the lower orders by the same variable too: calc_a_base also reads the record
 * of calc_da_dt_prep, of calc_d2a_dxdx_prep, of calc_d2a_dtdx_prep. On any other record, a null one, or with another n,
 * _base gives NaN (arrays are left alone). x and rho of _base are those of _prep. */
typedef struct tessarel_blocks tessarel_blocks;

/* A new, empty record; null when there is no memory. */
TESSAREL_API tessarel_blocks* tessarel_blocks_new(void);
/* Releases a record; null is tolerated. */
TESSAREL_API void tessarel_blocks_free(tessarel_blocks* blocks);

/* Fills a record for calc_a_base. */
TESSAREL_API void tessarel_calc_a_prep(const int32_t* n, const double* x, const double* t, const double* rho,
                                       tessarel_blocks* blocks, int32_t* status);
/* a from a record. */
TESSAREL_API void tessarel_calc_a_base(const int32_t* n, const double* x, const double* rho,
                                       const tessarel_blocks* blocks, double* a);
/* Fills a record for calc_da_dt_base. */
TESSAREL_API void tessarel_calc_da_dt_prep(const int32_t* n, const double* x, const double* t, const double* rho,
                                           tessarel_blocks* blocks, int32_t* status);
/* da_dt from a record [1/K]. */
TESSAREL_API void tessarel_calc_da_dt_base(const int32_t* n, const double* x, const double* rho,
                                           const tessarel_blocks* blocks, double* da_dt);
/* Fills a record for calc_d2a_dt2_base. */
TESSAREL_API void tessarel_calc_d2a_dt2_prep(const int32_t* n, const double* x, const double* t, const double* rho,
                                             tessarel_blocks* blocks, int32_t* status);
/* d2a_dt2 from a record [1/K2]. */
TESSAREL_API void tessarel_calc_d2a_dt2_base(const int32_t* n, const double* x, const double* rho,
                                             const tessarel_blocks* blocks, double* d2a_dt2);
/* Fills a record for calc_d3a_dt3_base. */
TESSAREL_API void tessarel_calc_d3a_dt3_prep(const int32_t* n, const double* x, const double* t, const double* rho,
                                             tessarel_blocks* blocks, int32_t* status);
/* d3a_dt3 from a record [1/K3]. */
TESSAREL_API void tessarel_calc_d3a_dt3_base(const int32_t* n, const double* x, const double* rho,
                                             const tessarel_blocks* blocks, double* d3a_dt3);
/* Fills a record for calc_da_dx_base. */
TESSAREL_API void tessarel_calc_da_dx_prep(const int32_t* n, const double* x, const double* t, const double* rho,
                                           tessarel_blocks* blocks, int32_t* status);
/* da_dx from a record: n. */
TESSAREL_API void tessarel_calc_da_dx_base(const int32_t* n, const double* x, const double* rho,
                                           const tessarel_blocks* blocks, double* da_dx);
/* Fills a record for calc_d2a_dxdx_base. */
TESSAREL_API void tessarel_calc_d2a_dxdx_prep(const int32_t* n, const double* x, const double* t, const double* rho,
                                              tessarel_blocks* blocks, int32_t* status);
/* d2a_dxdx from a record: n x n. */
TESSAREL_API void tessarel_calc_d2a_dxdx_base(const int32_t* n, const double* x, const double* rho,
                                              const tessarel_blocks* blocks, double* d2a_dxdx);
/* Fills a record for calc_d3a_dxdxdx_base. */
TESSAREL_API void tessarel_calc_d3a_dxdxdx_prep(const int32_t* n, const double* x, const double* t, const double* rho,
                                                tessarel_blocks* blocks, int32_t* status);
/* d3a_dxdxdx from a record: n x n x n. */
TESSAREL_API void tessarel_calc_d3a_dxdxdx_base(const int32_t* n, const double* x, const double* rho,
                                                const tessarel_blocks* blocks, double* d3a_dxdxdx);
/* Fills a record for calc_d2a_dtdx_base. */
TESSAREL_API void tessarel_calc_d2a_dtdx_prep(const int32_t* n, const double* x, const double* t, const double* rho,
                                              tessarel_blocks* blocks, int32_t* status);
/* d2a_dtdx from a record: n [1/K]. */
TESSAREL_API void tessarel_calc_d2a_dtdx_base(const int32_t* n, const double* x, const double* rho,
                                              const tessarel_blocks* blocks, double* d2a_dtdx);
/* Fills a record for calc_z_base. */
TESSAREL_API void tessarel_calc_z_prep(const int32_t* n, const double* x, const int32_t* ipure, const double* t,
                                       const double* rho, tessarel_blocks* blocks, int32_t* status);
/* z from a record. */
TESSAREL_API void tessarel_calc_z_base(const int32_t* n, const double* x, const double* rho,
                                       const tessarel_blocks* blocks, double* z);
/* Fills a record for calc_dz_drho_base. */
TESSAREL_API void tessarel_calc_dz_drho_prep(const int32_t* n, const double* x, const int32_t* ipure, const double* t,
                                             const double* rho, tessarel_blocks* blocks, int32_t* status);
/* dz_drho from a record [A3]. */
TESSAREL_API void tessarel_calc_dz_drho_base(const int32_t* n, const double* x, const double* rho,
                                             const tessarel_blocks* blocks, double* dz_drho);
/* Fills a record for calc_d2z_drho2_base. */
TESSAREL_API void tessarel_calc_d2z_drho2_prep(const int32_t* n, const double* x, const int32_t* ipure, const double* t,
                                               const double* rho, tessarel_blocks* blocks, int32_t* status);
/* d2z_drho2 from a record [A6]. */
TESSAREL_API void tessarel_calc_d2z_drho2_base(const int32_t* n, const double* x, const double* rho,
                                               const tessarel_blocks* blocks, double* d2z_drho2);
/* Fills a record for calc_d3z_drho3_base. */
TESSAREL_API void tessarel_calc_d3z_drho3_prep(const int32_t* n, const double* x, const int32_t* ipure, const double* t,
                                               const double* rho, tessarel_blocks* blocks, int32_t* status);
/* d3z_drho3 from a record [A9]. */
TESSAREL_API void tessarel_calc_d3z_drho3_base(const int32_t* n, const double* x, const double* rho,
                                               const tessarel_blocks* blocks, double* d3z_drho3);
/* Fills a record for calc_dz_dt_base. */
TESSAREL_API void tessarel_calc_dz_dt_prep(const int32_t* n, const double* x, const double* t, const double* rho,
                                           tessarel_blocks* blocks, int32_t* status);
/* dz_dt from a record [1/K]. */
TESSAREL_API void tessarel_calc_dz_dt_base(const int32_t* n, const double* x, const double* rho,
                                           const tessarel_blocks* blocks, double* dz_dt);
/* Fills a record for calc_d2z_dt2_base. */
TESSAREL_API void tessarel_calc_d2z_dt2_prep(const int32_t* n, const double* x, const double* t, const double* rho,
                                             tessarel_blocks* blocks, int32_t* status);
/* d2z_dt2 from a record [1/K2]. */
TESSAREL_API void tessarel_calc_d2z_dt2_base(const int32_t* n, const double* x, const double* rho,
                                             const tessarel_blocks* blocks, double* d2z_dt2);
/* Fills a record for calc_d2z_dtdrho_base. */
TESSAREL_API void tessarel_calc_d2z_dtdrho_prep(const int32_t* n, const double* x, const double* t, const double* rho,
                                                tessarel_blocks* blocks, int32_t* status);
/* d2z_dtdrho from a record [A3/K]. */
TESSAREL_API void tessarel_calc_d2z_dtdrho_base(const int32_t* n, const double* x, const double* rho,
                                                const tessarel_blocks* blocks, double* d2z_dtdrho);
/* Fills a record for calc_dz_dx_base. */
TESSAREL_API void tessarel_calc_dz_dx_prep(const int32_t* n, const double* x, const double* t, const double* rho,
                                           tessarel_blocks* blocks, int32_t* status);
/* dz_dx from a record: n. */
TESSAREL_API void tessarel_calc_dz_dx_base(const int32_t* n, const double* x, const double* rho,
                                           const tessarel_blocks* blocks, double* dz_dx);
/* Fills a record for calc_d2z_dxdx_base. */
TESSAREL_API void tessarel_calc_d2z_dxdx_prep(const int32_t* n, const double* x, const double* t, const double* rho,
                                              tessarel_blocks* blocks, int32_t* status);
/* d2z_dxdx from a record: n x n. */
TESSAREL_API void tessarel_calc_d2z_dxdx_base(const int32_t* n, const double* x, const double* rho,
                                              const tessarel_blocks* blocks, double* d2z_dxdx);

/* ============================================================ diameters ======================================== */

/* Segment diameters sigma (1 - parat exp(-3 epsil / t)): n [A]; with ipure = i only entry i is written. */
TESSAREL_API void tessarel_calc_d(const int32_t* n, const int32_t* ipure, const double* t, double* d);
/* First derivative of the diameters by t, from the diameters: n [A/K]. */
TESSAREL_API void tessarel_calc_dd_dt(const int32_t* n, const double* t, const double* d, double* dd);
/* Second derivative of the diameters by t, from the first: n [A/K2]. */
TESSAREL_API void tessarel_calc_d2d_dt2(const int32_t* n, const double* t, const double* dd, double* d2d);
/* Third derivative of the diameters by t, from the first: n [A/K3]; d2d is not read. */
TESSAREL_API void tessarel_calc_d3d_dt3(const int32_t* n, const double* t, const double* dd, const double* d2d,
                                        double* d3d);
/* First to third derivatives of the diameters by t, from the diameters: n each [A/K, A/K2, A/K3]. */
TESSAREL_API void tessarel_calc_d_dt123(const int32_t* n, const double* t, const double* d, double* dd, double* d2d,
                                        double* d3d);

/* Pair diameters d_i d_j / (d_i + d_j). */

/* Pair diameters: n x n [A]. */
TESSAREL_API void tessarel_calc_dij(const int32_t* n, const double* d, double* dij);
/* First derivative of the pair diameters by t: n x n [A/K]. */
TESSAREL_API void tessarel_calc_ddij_dt(const int32_t* n, const double* d, const double* dd_dt, double* ddij_dt);
/* Second derivative of the pair diameters by t twice: n x n [A/K2]. */
TESSAREL_API void tessarel_calc_d2dij_dt2(const int32_t* n, const double* d, const double* dd_dt, const double* d2d_dt2,
                                          double* d2dij_dt2);
/* Third derivative of the pair diameters by t three times: n x n [A/K3]. */
TESSAREL_API void tessarel_calc_d3dij_dt3(const int32_t* n, const double* d, const double* dd_dt, const double* d2d_dt2,
                                          const double* d3d_dt3, double* d3dij_dt3);

/* Moments of the diameter zeta_k = pi/6 rho sum x_i m_i d_i^k, k of 0 to 3. */

/* Moment zeta_k [A^(k-3)]. */
TESSAREL_API void tessarel_calc_zeta(const int32_t* n, const double* x, const int32_t* ipure, const double* rho,
                                     const double* d, const int32_t* k, double* zeta);
/* First derivative of the moment zeta_k by t [A^(k-3)/K]. */
TESSAREL_API void tessarel_calc_dzeta_dt(const int32_t* n, const double* x, const int32_t* ipure, const double* rho,
                                         const double* d, const int32_t* k, const double* dd_dt, double* dzeta_dt);
/* Second derivative of the moment zeta_k by t twice [A^(k-3)/K2]. */
TESSAREL_API void tessarel_calc_d2zeta_dt2(const int32_t* n, const double* x, const int32_t* ipure, const double* rho,
                                           const double* d, const int32_t* k, const double* dd_dt,
                                           const double* d2d_dt2, double* d2zeta_dt2);
/* Third derivative of the moment zeta_k by t three times [A^(k-3)/K3]. */
TESSAREL_API void tessarel_calc_d3zeta_dt3(const int32_t* n, const double* x, const int32_t* ipure, const double* rho,
                                           const double* d, const int32_t* k, const double* dd_dt,
                                           const double* d2d_dt2, const double* d3d_dt3, double* d3zeta_dt3);
/* First derivative of the moment zeta_k by x: n [A^(k-3)]. */
TESSAREL_API void tessarel_calc_dzeta_dx(const int32_t* n, const double* x, const int32_t* ipure, const double* rho,
                                         const double* d, const int32_t* k, double* dzeta_dx);
/* Second derivative of the moment zeta_k by x and t: n [A^(k-3)/K]. */
TESSAREL_API void tessarel_calc_d2zeta_dxdt(const int32_t* n, const double* x, const int32_t* ipure, const double* rho,
                                            const double* d, const int32_t* k, const double* dd_dt,
                                            double* d2zeta_dxdt);

/* Mean diameter d_avg = cbrt(sum x m d^3 / sum x m), and the packing fraction pi/6 rho d_avg^3 sum x m of it. */

/* Mean diameter [A]. */
TESSAREL_API void tessarel_calc_d_avg_simp(const int32_t* n, const double* x, const double* d, double* d_avg);
/* First derivative of the mean diameter by t [A/K]. */
TESSAREL_API void tessarel_calc_dd_avg_dt_simp(const int32_t* n, const double* x, const double* d, const double* dd_dt,
                                               double* dd_avg_dt);
/* Second derivative of the mean diameter by t twice [A/K2]. */
TESSAREL_API void tessarel_calc_d2d_avg_dt2_simp(const int32_t* n, const double* x, const double* d,
                                                 const double* dd_dt, const double* d2d_dt2, double* d2d_avg_dt2);
/* Third derivative of the mean diameter by t three times [A/K3]. */
TESSAREL_API void tessarel_calc_d3d_avg_dt3_simp(const int32_t* n, const double* x, const double* d,
                                                 const double* dd_dt, const double* d2d_dt2, const double* d3d_dt3,
                                                 double* d3d_avg_dt3);
/* First derivative of the mean diameter by x: n [A]. */
TESSAREL_API void tessarel_calc_dd_avg_dx_simp(const int32_t* n, const double* x, const double* d, double* dd_avg_dx);
/* Second derivative of the mean diameter by x twice: n x n [A]. */
TESSAREL_API void tessarel_calc_d2d_avg_dxdx_simp(const int32_t* n, const double* x, const double* d,
                                                  double* d2d_avg_dxdx);
/* Third derivative of the mean diameter by x three times: n x n x n [A]. */
TESSAREL_API void tessarel_calc_d3d_avg_dxdxdx_simp(const int32_t* n, const double* x, const double* d,
                                                    double* d3d_avg_dxdxdx);
/* Second derivative of the mean diameter by t and x: n [A/K]. */
TESSAREL_API void tessarel_calc_d2d_avg_dtdx_simp(const int32_t* n, const double* x, const double* d,
                                                  const double* dd_dt, double* d2d_avg_dtdx);
/* Packing fraction of the mean diameter. */
TESSAREL_API void tessarel_calc_eta_simp(const int32_t* n, const double* x, const double* rho, const double* d_avg,
                                         double* eta);
/* First derivative of the packing fraction of the mean diameter by t [1/K]. */
TESSAREL_API void tessarel_calc_deta_dt_simp(const int32_t* n, const double* x, const double* rho, const double* d_avg,
                                             const double* dd_avg_dt, double* deta_dt);
/* Second derivative of the packing fraction of the mean diameter by t twice [1/K2]. */
TESSAREL_API void tessarel_calc_d2eta_dt2_simp(const int32_t* n, const double* x, const double* rho,
                                               const double* d_avg, const double* dd_avg_dt, const double* d2d_avg_dt2,
                                               double* d2eta_dt2);
/* Third derivative of the packing fraction of the mean diameter by t three times [1/K3]. */
TESSAREL_API void tessarel_calc_d3eta_dt3_simp(const int32_t* n, const double* x, const double* rho,
                                               const double* d_avg, const double* dd_avg_dt, const double* d2d_avg_dt2,
                                               const double* d3d_avg_dt3, double* d3eta_dt3);
/* First derivative of the packing fraction of the mean diameter by x: n. */
TESSAREL_API void tessarel_calc_deta_dx_simp(const int32_t* n, const double* x, const double* rho, const double* d_avg,
                                             const double* dd_avg_dx, double* deta_dx);
/* Second derivative of the packing fraction of the mean diameter by t and x: n [1/K]. */
TESSAREL_API void tessarel_calc_d2eta_dtdx_simp(const int32_t* n, const double* x, const double* rho,
                                                const double* d_avg, const double* dd_avg_dt, const double* dd_avg_dx,
                                                const double* d2d_avg_dtdx, double* d2eta_dtdx);

/* ============================================================ hard spheres of one diameter ===================== */

/* The fluid of one diameter, or of a mean diameter, as functions of eta alone: chi = eta / (1 - eta),
 * a_hs = chi (4 + chi), z_hs = eta da_hs/deta. */

/* Chi = eta / (1 - eta). */
TESSAREL_API void tessarel_calc_chi_simp(const double* eta, double* chi);
/* First derivative of chi by eta. */
TESSAREL_API void tessarel_calc_dchi_deta_simp(const double* eta, double* dchi_deta);
/* Second derivative of chi by eta twice. */
TESSAREL_API void tessarel_calc_d2chi_deta2_simp(const double* eta, double* d2chi_deta2);
/* Third derivative of chi by eta three times. */
TESSAREL_API void tessarel_calc_d3chi_deta3_simp(const double* eta, double* d3chi_deta3);
/* Fourth derivative of chi by eta four times. */
TESSAREL_API void tessarel_calc_d4chi_deta4_simp(const double* eta, double* d4chi_deta4);
/* First derivative of chi by t [1/K]. */
TESSAREL_API void tessarel_calc_dchi_dt_simp(const double* eta, const double* deta_dt, double* dchi_dt);
/* Second derivative of chi by t twice [1/K2]. */
TESSAREL_API void tessarel_calc_d2chi_dt2_simp(const double* eta, const double* deta_dt, const double* d2eta_dt2,
                                               double* d2chi_dt2);
/* Third derivative of chi by t three times [1/K3]. */
TESSAREL_API void tessarel_calc_d3chi_dt3_simp(const double* eta, const double* deta_dt, const double* d2eta_dt2,
                                               const double* d3eta_dt3, double* d3chi_dt3);
/* First derivative of chi by x: n. */
TESSAREL_API void tessarel_calc_dchi_dx_simp(const int32_t* n, const double* eta, const double* deta_dx,
                                             double* dchi_dx);
/* Second derivative of chi by x twice: n x n. */
TESSAREL_API void tessarel_calc_d2chi_dxdx_simp(const int32_t* n, const double* eta, const double* deta_dx,
                                                double* d2chi_dxdx);
/* Third derivative of chi by x three times: n x n x n. */
TESSAREL_API void tessarel_calc_d3chi_dxdxdx_simp(const int32_t* n, const double* eta, const double* deta_dx,
                                                  double* d3chi_dxdxdx);
/* Second derivative of chi by t and x: n [1/K]. */
TESSAREL_API void tessarel_calc_d2chi_dtdx_simp(const int32_t* n, const double* eta, const double* deta_dt,
                                                const double* deta_dx, const double* d2eta_dtdx, double* d2chi_dtdx);
/* Second derivative of chi by eta and x: n. */
TESSAREL_API void tessarel_calc_d2chi_detadx_simp(const int32_t* n, const double* eta, const double* deta_dx,
                                                  double* d2chi_detadx);
/* Third derivative of chi by eta and x twice: n x n. */
TESSAREL_API void tessarel_calc_d3chi_detadxdx_simp(const int32_t* n, const double* eta, const double* deta_dx,
                                                    double* d3chi_detadxdx);
/* Second derivative of chi by eta and t [1/K]. */
TESSAREL_API void tessarel_calc_d2chi_detadt_simp(const double* eta, const double* deta_dt, double* d2chi_detadt);
/* Third derivative of chi by eta and t twice [1/K2]. */
TESSAREL_API void tessarel_calc_d3chi_detadt2_simp(const double* eta, const double* deta_dt, const double* d2eta_dt2,
                                                   double* d3chi_detadt2);
/* Fourth derivative of chi by eta and t three times [1/K3]. */
TESSAREL_API void tessarel_calc_d4chi_detadt3_simp(const double* eta, const double* deta_dt, const double* d2eta_dt2,
                                                   const double* d3eta_dt3, double* d4chi_detadt3);
/* Third derivative of chi by eta twice and t [1/K]. */
TESSAREL_API void tessarel_calc_d3chi_deta2dt_simp(const double* eta, const double* deta_dt, double* d3chi_deta2dt);
/* Hard-sphere a. */
TESSAREL_API void tessarel_calc_a_hs_simp(const double* eta, double* a);
/* First derivative of the hard-sphere a by eta. */
TESSAREL_API void tessarel_calc_da_hs_deta_simp(const double* eta, double* da_deta);
/* Second derivative of the hard-sphere a by eta twice. */
TESSAREL_API void tessarel_calc_d2a_hs_deta2_simp(const double* eta, double* d2a_deta2);
/* Third derivative of the hard-sphere a by eta three times. */
TESSAREL_API void tessarel_calc_d3a_hs_deta3_simp(const double* eta, double* d3a_deta3);
/* Fourth derivative of the hard-sphere a by eta four times. */
TESSAREL_API void tessarel_calc_d4a_hs_deta4_simp(const double* eta, double* d4a_deta4);
/* First derivative of the hard-sphere a by rho, times rho. */
TESSAREL_API void tessarel_calc_da_hs_drho_simp(const double* eta, double* da_drho);
/* Second derivative of the hard-sphere a by rho twice, times rho^2. */
TESSAREL_API void tessarel_calc_d2a_hs_drho2_simp(const double* eta, double* d2a_drho2);
/* Third derivative of the hard-sphere a by rho three times, times rho^3. */
TESSAREL_API void tessarel_calc_d3a_hs_drho3_simp(const double* eta, double* d3a_drho3);
/* Fourth derivative of the hard-sphere a by rho four times, times rho^4. */
TESSAREL_API void tessarel_calc_d4a_hs_drho4_simp(const double* eta, double* d4a_drho4);
/* First derivative of the hard-sphere a by t [1/K]. */
TESSAREL_API void tessarel_calc_da_hs_dt_simp(const double* eta, const double* deta_dt, double* da_dt);
/* Second derivative of the hard-sphere a by t twice [1/K2]. */
TESSAREL_API void tessarel_calc_d2a_hs_dt2_simp(const double* eta, const double* deta_dt, const double* d2eta_dt2,
                                                double* d2a_dt2);
/* Third derivative of the hard-sphere a by t three times [1/K3]. */
TESSAREL_API void tessarel_calc_d3a_hs_dt3_simp(const double* eta, const double* deta_dt, const double* d2eta_dt2,
                                                const double* d3eta_dt3, double* d3a_dt3);
/* First derivative of the hard-sphere a by x: n. */
TESSAREL_API void tessarel_calc_da_hs_dx_simp(const int32_t* n, const double* eta, const double* deta_dx,
                                              double* da_dx);
/* Second derivative of the hard-sphere a by x twice: n x n. */
TESSAREL_API void tessarel_calc_d2a_hs_dxdx_simp(const int32_t* n, const double* eta, const double* deta_dx,
                                                 double* d2a_dxdx);
/* Third derivative of the hard-sphere a by x three times: n x n x n. */
TESSAREL_API void tessarel_calc_d3a_hs_dxdxdx_simp(const int32_t* n, const double* eta, const double* deta_dx,
                                                   double* d3a_dxdxdx);
/* Second derivative of the hard-sphere a by t and x: n [1/K]. */
TESSAREL_API void tessarel_calc_d2a_hs_dtdx_simp(const int32_t* n, const double* eta, const double* deta_dt,
                                                 const double* deta_dx, const double* d2eta_dtdx, double* d2a_dtdx);
/* Second derivative of the hard-sphere a by eta and x: n. */
TESSAREL_API void tessarel_calc_d2a_hs_detadx_simp(const int32_t* n, const double* eta, const double* deta_dx,
                                                   double* d2a_detadx);
/* Second derivative of the hard-sphere a by eta and t [1/K]. */
TESSAREL_API void tessarel_calc_d2a_hs_detadt_simp(const double* eta, const double* deta_dt, double* d2a_detadt);
/* Third derivative of the hard-sphere a by eta and t twice [1/K2]. */
TESSAREL_API void tessarel_calc_d3a_hs_detadt2_simp(const double* eta, const double* deta_dt, const double* d2eta_dt2,
                                                    double* d3a_detadt2);
/* Fourth derivative of the hard-sphere a by eta and t three times [1/K3]. */
TESSAREL_API void tessarel_calc_d4a_hs_detadt3_simp(const double* eta, const double* deta_dt, const double* d2eta_dt2,
                                                    const double* d3eta_dt3, double* d4a_detadt3);
/* Third derivative of the hard-sphere a by eta twice and t [1/K]. */
TESSAREL_API void tessarel_calc_d3a_hs_deta2dt_simp(const double* eta, const double* deta_dt, double* d3a_deta2dt);
/* Second derivative of the hard-sphere a by t and rho, times rho [1/K]. */
TESSAREL_API void tessarel_calc_d2a_hs_dtdrho_simp(const double* eta, const double* deta_dt, double* d2a_dtdrho);
/* Third derivative of the hard-sphere a by t and rho twice, times rho^2 [1/K]. */
TESSAREL_API void tessarel_calc_d3a_hs_dtdrho2_simp(const double* eta, const double* deta_dt, double* d3a_dtdrho2);
/* Third derivative of the hard-sphere a by t twice and rho, times rho [1/K2]. */
TESSAREL_API void tessarel_calc_d3a_hs_dt2drho_simp(const double* eta, const double* deta_dt, const double* d2eta_dt2,
                                                    double* d3a_dt2drho);
/* Fourth derivative of the hard-sphere a by t three times and rho, times rho [1/K3]. */
TESSAREL_API void tessarel_calc_d4a_hs_dt3drho_simp(const double* eta, const double* deta_dt, const double* d2eta_dt2,
                                                    const double* d3eta_dt3, double* d4a_dt3drho);
/* Second derivative of the hard-sphere a by rho and x: n, times rho. */
TESSAREL_API void tessarel_calc_d2a_hs_drhodx_simp(const int32_t* n, const double* eta, const double* deta_dx,
                                                   double* d2a_drhodx);
/* Third derivative of the hard-sphere a by rho and x twice: n x n, times rho. */
TESSAREL_API void tessarel_calc_d3a_hs_drhodxdx_simp(const int32_t* n, const double* eta, const double* deta_dx,
                                                     double* d3a_drhodxdx);
/* Third derivative of the hard-sphere a by eta and x twice: n x n. */
TESSAREL_API void tessarel_calc_d3a_hs_detadxdx_simp(const int32_t* n, const double* eta, const double* deta_dx,
                                                     double* d3a_detadxdx);
/* Hard-sphere z. */
TESSAREL_API void tessarel_calc_z_hs_simp(const double* eta, double* z);
/* First derivative of the hard-sphere z by eta. */
TESSAREL_API void tessarel_calc_dz_hs_deta_simp(const double* eta, double* dz_deta);
/* Second derivative of the hard-sphere z by eta twice. */
TESSAREL_API void tessarel_calc_d2z_hs_deta2_simp(const double* eta, double* d2z_deta2);
/* Third derivative of the hard-sphere z by eta three times. */
TESSAREL_API void tessarel_calc_d3z_hs_deta3_simp(const double* eta, double* d3z_deta3);
/* First derivative of the hard-sphere z by rho, times rho. */
TESSAREL_API void tessarel_calc_dz_hs_drho_simp(const double* eta, double* dz_drho);
/* Second derivative of the hard-sphere z by rho twice, times rho^2. */
TESSAREL_API void tessarel_calc_d2z_hs_drho2_simp(const double* eta, double* d2z_drho2);
/* Third derivative of the hard-sphere z by rho three times, times rho^3. */
TESSAREL_API void tessarel_calc_d3z_hs_drho3_simp(const double* eta, double* d3z_drho3);
/* First derivative of the hard-sphere z by t [1/K]. */
TESSAREL_API void tessarel_calc_dz_hs_dt_simp(const double* eta, const double* deta_dt, double* dz_dt);
/* Second derivative of the hard-sphere z by t twice [1/K2]. */
TESSAREL_API void tessarel_calc_d2z_hs_dt2_simp(const double* eta, const double* deta_dt, const double* d2eta_dt2,
                                                double* d2z_dt2);
/* Third derivative of the hard-sphere z by t three times [1/K3]. */
TESSAREL_API void tessarel_calc_d3z_hs_dt3_simp(const double* eta, const double* deta_dt, const double* d2eta_dt2,
                                                const double* d3eta_dt3, double* d3z_dt3);
/* First derivative of the hard-sphere z by x: n. */
TESSAREL_API void tessarel_calc_dz_hs_dx_simp(const int32_t* n, const double* eta, const double* deta_dx,
                                              double* dz_dx);
/* Second derivative of the hard-sphere z by x twice: n x n. */
TESSAREL_API void tessarel_calc_d2z_hs_dxdx_simp(const int32_t* n, const double* eta, const double* deta_dx,
                                                 double* d2z_dxdx);
/* Second derivative of the hard-sphere z by t and rho, times rho [1/K]. */
TESSAREL_API void tessarel_calc_d2z_hs_dtdrho_simp(const double* eta, const double* deta_dt, double* d2z_dtdrho);
/* Second derivative of the hard-sphere z by eta and t [1/K]. */
TESSAREL_API void tessarel_calc_d2z_hs_detadt_simp(const double* eta, const double* deta_dt, double* d2z_detadt);

/* ============================================================ contact values =================================== */

/* Contact value of one diameter, (1 - eta/2) / (1 - eta)^3. */

/* Contact value g of one diameter. */
TESSAREL_API void tessarel_calc_g_simp(const double* eta, double* g);
/* First derivative of the contact value g of one diameter by eta. */
TESSAREL_API void tessarel_calc_dg_deta_simp(const double* eta, double* dg_deta);
/* Second derivative of the contact value g of one diameter by eta twice. */
TESSAREL_API void tessarel_calc_d2g_deta2_simp(const double* eta, double* d2g_deta2);
/* Third derivative of the contact value g of one diameter by eta three times. */
TESSAREL_API void tessarel_calc_d3g_deta3_simp(const double* eta, double* d3g_deta3);
/* Fourth derivative of the contact value g of one diameter by eta four times. */
TESSAREL_API void tessarel_calc_d4g_deta4_simp(const double* eta, double* d4g_deta4);
/* First derivative of the contact value g of one diameter by rho, times rho. */
TESSAREL_API void tessarel_calc_dg_drho_simp(const double* eta, double* dg_drho);
/* Second derivative of the contact value g of one diameter by rho twice, times rho^2. */
TESSAREL_API void tessarel_calc_d2g_drho2_simp(const double* eta, double* d2g_drho2);
/* Third derivative of the contact value g of one diameter by rho three times, times rho^3. */
TESSAREL_API void tessarel_calc_d3g_drho3_simp(const double* eta, double* d3g_drho3);
/* Fourth derivative of the contact value g of one diameter by rho four times, times rho^4. */
TESSAREL_API void tessarel_calc_d4g_drho4_simp(const double* eta, double* d4g_drho4);
/* First derivative of the contact value g of one diameter by t [1/K]. */
TESSAREL_API void tessarel_calc_dg_dt_simp(const double* eta, const double* deta_dt, double* dg_dt);
/* Second derivative of the contact value g of one diameter by t twice [1/K2]. */
TESSAREL_API void tessarel_calc_d2g_dt2_simp(const double* eta, const double* deta_dt, const double* d2eta_dt2,
                                             double* d2g_dt2);
/* Third derivative of the contact value g of one diameter by t three times [1/K3]. */
TESSAREL_API void tessarel_calc_d3g_dt3_simp(const double* eta, const double* deta_dt, const double* d2eta_dt2,
                                             const double* d3eta_dt3, double* d3g_dt3);
/* First derivative of the contact value g of one diameter by x: n. */
TESSAREL_API void tessarel_calc_dg_dx_simp(const int32_t* n, const double* eta, const double* deta_dx, double* dg_dx);
/* Second derivative of the contact value g of one diameter by x twice: n x n. */
TESSAREL_API void tessarel_calc_d2g_dxdx_simp(const int32_t* n, const double* eta, const double* deta_dx,
                                              double* d2g_dxdx);
/* Third derivative of the contact value g of one diameter by x three times: n x n x n. */
TESSAREL_API void tessarel_calc_d3g_dxdxdx_simp(const int32_t* n, const double* eta, const double* deta_dx,
                                                double* d3g_dxdxdx);
/* Second derivative of the contact value g of one diameter by t and x: n [1/K]. */
TESSAREL_API void tessarel_calc_d2g_dtdx_simp(const int32_t* n, const double* eta, const double* deta_dt,
                                              const double* deta_dx, const double* d2eta_dtdx, double* d2g_dtdx);
/* Second derivative of the contact value g of one diameter by rho and x: n, times rho. */
TESSAREL_API void tessarel_calc_d2g_drhodx_simp(const int32_t* n, const double* eta, const double* deta_dx,
                                                double* d2g_drhodx);
/* Second derivative of the contact value g of one diameter by eta and x: n. */
TESSAREL_API void tessarel_calc_d2g_detadx_simp(const int32_t* n, const double* eta, const double* deta_dx,
                                                double* d2g_detadx);
/* Third derivative of the contact value g of one diameter by rho and x twice: n x n, times rho. */
TESSAREL_API void tessarel_calc_d3g_drhodxdx_simp(const int32_t* n, const double* eta, const double* deta_dx,
                                                  double* d3g_drhodxdx);
/* Third derivative of the contact value g of one diameter by eta and x twice: n x n. */
TESSAREL_API void tessarel_calc_d3g_detadxdx_simp(const int32_t* n, const double* eta, const double* deta_dx,
                                                  double* d3g_detadxdx);
/* Second derivative of the contact value g of one diameter by t and rho, times rho [1/K]. */
TESSAREL_API void tessarel_calc_d2g_dtdrho_simp(const double* eta, const double* deta_dt, double* d2g_dtdrho);
/* Second derivative of the contact value g of one diameter by eta and t [1/K]. */
TESSAREL_API void tessarel_calc_d2g_detadt_simp(const double* eta, const double* deta_dt, double* d2g_detadt);
/* Third derivative of the contact value g of one diameter by t and rho twice, times rho^2 [1/K]. */
TESSAREL_API void tessarel_calc_d3g_dtdrho2_simp(const double* eta, const double* deta_dt, double* d3g_dtdrho2);
/* Third derivative of the contact value g of one diameter by eta twice and t [1/K]. */
TESSAREL_API void tessarel_calc_d3g_deta2dt_simp(const double* eta, const double* deta_dt, double* d3g_deta2dt);
/* Third derivative of the contact value g of one diameter by t twice and rho, times rho [1/K2]. */
TESSAREL_API void tessarel_calc_d3g_dt2drho_simp(const double* eta, const double* deta_dt, const double* d2eta_dt2,
                                                 double* d3g_dt2drho);
/* Third derivative of the contact value g of one diameter by eta and t twice [1/K2]. */
TESSAREL_API void tessarel_calc_d3g_detadt2_simp(const double* eta, const double* deta_dt, const double* d2eta_dt2,
                                                 double* d3g_detadt2);
/* Contact value of one diameter with its first to third derivatives by rho, times rho, rho^2, rho^3. */
TESSAREL_API void tessarel_calc_g_rho123_simp(const double* eta, double* g, double* g1, double* g2, double* g3);

/* Contact values of the pairs; the form of one diameter for n = 1 and, in entry (i,i) alone, for ipure = i. The density
 * is what changes eta, so zeta2 follows in proportion. In mixed derivatives that by eta or rho is taken first. */

/* Contact values g of the pairs: n x n. */
TESSAREL_API void tessarel_calc_gij(const int32_t* n, const int32_t* ipure, const double* d, const double* zeta2,
                                    const double* zeta3, double* g);
/* First derivative of the contact values g of the pairs by eta: n x n. */
TESSAREL_API void tessarel_calc_dgij_deta(const int32_t* n, const int32_t* ipure, const double* d, const double* zeta2,
                                          const double* zeta3, double* dg_deta);
/* Second derivative of the contact values g of the pairs by eta twice: n x n. */
TESSAREL_API void tessarel_calc_d2gij_deta2(const int32_t* n, const int32_t* ipure, const double* d,
                                            const double* zeta2, const double* zeta3, double* d2g_deta2);
/* Third derivative of the contact values g of the pairs by eta three times: n x n. */
TESSAREL_API void tessarel_calc_d3gij_deta3(const int32_t* n, const int32_t* ipure, const double* d,
                                            const double* zeta2, const double* zeta3, double* d3g_deta3);
/* Fourth derivative of the contact values g of the pairs by eta four times: n x n. */
TESSAREL_API void tessarel_calc_d4gij_deta4(const int32_t* n, const int32_t* ipure, const double* d,
                                            const double* zeta2, const double* zeta3, double* d4g_deta4);
/* First derivative of the contact values g of the pairs by rho: n x n, times rho. */
TESSAREL_API void tessarel_calc_dgij_drho(const int32_t* n, const int32_t* ipure, const double* d, const double* zeta2,
                                          const double* zeta3, double* dg_drho);
/* Second derivative of the contact values g of the pairs by rho twice: n x n, times rho^2. */
TESSAREL_API void tessarel_calc_d2gij_drho2(const int32_t* n, const int32_t* ipure, const double* d,
                                            const double* zeta2, const double* zeta3, double* d2g_drho2);
/* Third derivative of the contact values g of the pairs by rho three times: n x n, times rho^3. */
TESSAREL_API void tessarel_calc_d3gij_drho3(const int32_t* n, const int32_t* ipure, const double* d,
                                            const double* zeta2, const double* zeta3, double* d3g_drho3);
/* Fourth derivative of the contact values g of the pairs by rho four times: n x n, times rho^4. */
TESSAREL_API void tessarel_calc_d4gij_drho4(const int32_t* n, const int32_t* ipure, const double* d,
                                            const double* zeta2, const double* zeta3, double* d4g_drho4);
/* First derivative of the contact values g of the pairs by t: n x n [1/K]. */
TESSAREL_API void tessarel_calc_dgij_dt(const int32_t* n, const int32_t* ipure, const double* d, const double* zeta2,
                                        const double* zeta3, const double* dd_dt, const double* dzeta2_dt,
                                        const double* dzeta3_dt, double* dg_dt);
/* Second derivative of the contact values g of the pairs by t twice: n x n [1/K2]. */
TESSAREL_API void tessarel_calc_d2gij_dt2(const int32_t* n, const int32_t* ipure, const double* d, const double* zeta2,
                                          const double* zeta3, const double* dd_dt, const double* dzeta2_dt,
                                          const double* dzeta3_dt, const double* d2d_dt2, const double* d2zeta2_dt2,
                                          const double* d2zeta3_dt2, double* d2g_dt2);
/* Third derivative of the contact values g of the pairs by t three times: n x n [1/K3]. */
TESSAREL_API void tessarel_calc_d3gij_dt3(const int32_t* n, const int32_t* ipure, const double* d, const double* zeta2,
                                          const double* zeta3, const double* dd_dt, const double* dzeta2_dt,
                                          const double* dzeta3_dt, const double* d2d_dt2, const double* d2zeta2_dt2,
                                          const double* d2zeta3_dt2, const double* d3d_dt3, const double* d3zeta2_dt3,
                                          const double* d3zeta3_dt3, double* d3g_dt3);
/* First derivative of the contact values g of the pairs by x: n x n x n. */
TESSAREL_API void tessarel_calc_dgij_dx(const int32_t* n, const int32_t* ipure, const double* d, const double* zeta2,
                                        const double* zeta3, const double* dzeta2_dx, const double* dzeta3_dx,
                                        double* dg_dx);
/* Second derivative of the contact values g of the pairs by x twice: n x n x n x n. */
TESSAREL_API void tessarel_calc_d2gij_dxdx(const int32_t* n, const int32_t* ipure, const double* d, const double* zeta2,
                                           const double* zeta3, const double* dzeta2_dx, const double* dzeta3_dx,
                                           double* d2g_dxdx);
/* Third derivative of the contact values g of the pairs by x three times: n x n x n x n x n. */
TESSAREL_API void tessarel_calc_d3gij_dxdxdx(const int32_t* n, const int32_t* ipure, const double* d,
                                             const double* zeta2, const double* zeta3, const double* dzeta2_dx,
                                             const double* dzeta3_dx, double* d3g_dxdxdx);
/* Second derivative of the contact values g of the pairs by t and x: n x n x n [1/K]. */
TESSAREL_API void tessarel_calc_d2gij_dtdx(const int32_t* n, const int32_t* ipure, const double* d, const double* zeta2,
                                           const double* zeta3, const double* dd_dt, const double* dzeta2_dt,
                                           const double* dzeta3_dt, const double* dzeta2_dx, const double* dzeta3_dx,
                                           const double* d2zeta2_dtdx, const double* d2zeta3_dtdx, double* d2g_dtdx);
/* Second derivative of the contact values g of the pairs by rho and x: n x n x n, times rho. */
TESSAREL_API void tessarel_calc_d2gij_drhodx(const int32_t* n, const int32_t* ipure, const double* d,
                                             const double* zeta2, const double* zeta3, const double* dzeta2_dx,
                                             const double* dzeta3_dx, double* d2g_drhodx);
/* Second derivative of the contact values g of the pairs by eta and x: n x n x n. */
TESSAREL_API void tessarel_calc_d2gij_detadx(const int32_t* n, const int32_t* ipure, const double* d,
                                             const double* zeta2, const double* zeta3, const double* dzeta2_dx,
                                             const double* dzeta3_dx, double* d2g_detadx);
/* Third derivative of the contact values g of the pairs by rho and x twice: n x n x n x n, times rho. */
TESSAREL_API void tessarel_calc_d3gij_drhodxdx(const int32_t* n, const int32_t* ipure, const double* d,
                                               const double* zeta2, const double* zeta3, const double* dzeta2_dx,
                                               const double* dzeta3_dx, double* d3g_drhodxdx);
/* Third derivative of the contact values g of the pairs by eta and x twice: n x n x n x n. */
TESSAREL_API void tessarel_calc_d3gij_detadxdx(const int32_t* n, const int32_t* ipure, const double* d,
                                               const double* zeta2, const double* zeta3, const double* dzeta2_dx,
                                               const double* dzeta3_dx, double* d3g_detadxdx);
/* Second derivative of the contact values g of the pairs by t and rho: n x n, times rho [1/K]. */
TESSAREL_API void tessarel_calc_d2gij_dtdrho(const int32_t* n, const int32_t* ipure, const double* d,
                                             const double* zeta2, const double* zeta3, const double* dd_dt,
                                             const double* dzeta2_dt, const double* dzeta3_dt, double* d2g_dtdrho);
/* Second derivative of the contact values g of the pairs by eta and t: n x n [1/K]. */
TESSAREL_API void tessarel_calc_d2gij_detadt(const int32_t* n, const int32_t* ipure, const double* d,
                                             const double* zeta2, const double* zeta3, const double* dd_dt,
                                             const double* dzeta2_dt, const double* dzeta3_dt, double* d2g_detadt);
/* Third derivative of the contact values g of the pairs by t and rho twice: n x n, times rho^2 [1/K]. */
TESSAREL_API void tessarel_calc_d3gij_dtdrho2(const int32_t* n, const int32_t* ipure, const double* d,
                                              const double* zeta2, const double* zeta3, const double* dd_dt,
                                              const double* dzeta2_dt, const double* dzeta3_dt, double* d3g_dtdrho2);
/* Third derivative of the contact values g of the pairs by eta twice and t: n x n [1/K]. */
TESSAREL_API void tessarel_calc_d3gij_deta2dt(const int32_t* n, const int32_t* ipure, const double* d,
                                              const double* zeta2, const double* zeta3, const double* dd_dt,
                                              const double* dzeta2_dt, const double* dzeta3_dt, double* d3g_deta2dt);
/* Third derivative of the contact values g of the pairs by t twice and rho: n x n, times rho [1/K2]. */
TESSAREL_API void tessarel_calc_d3gij_dt2drho(const int32_t* n, const int32_t* ipure, const double* d,
                                              const double* zeta2, const double* zeta3, const double* dd_dt,
                                              const double* dzeta2_dt, const double* dzeta3_dt, const double* d2d_dt2,
                                              const double* d2zeta2_dt2, const double* d2zeta3_dt2,
                                              double* d3g_dt2drho);
/* Third derivative of the contact values g of the pairs by eta and t twice: n x n [1/K2]. */
TESSAREL_API void tessarel_calc_d3gij_detadt2(const int32_t* n, const int32_t* ipure, const double* d,
                                              const double* zeta2, const double* zeta3, const double* dd_dt,
                                              const double* dzeta2_dt, const double* dzeta3_dt, const double* d2d_dt2,
                                              const double* d2zeta2_dt2, const double* d2zeta3_dt2,
                                              double* d3g_detadt2);
/* Contact values of the like pairs with their first to third derivatives by rho: n each, times rho, rho^2, rho^3. */
TESSAREL_API void tessarel_calc_gii_rho123(const int32_t* n, const double* d, const double* zeta2, const double* zeta3,
                                           double* g, double* g1, double* g2, double* g3);
/* Contact values of all pairs with their first to third derivatives by rho: n x n each, times rho, rho^2, rho^3. */
TESSAREL_API void tessarel_calc_gij_rho123(const int32_t* n, const double* d, const double* zeta2, const double* zeta3,
                                           double* g, double* g1, double* g2, double* g3);
/* Contact values of all pairs with their first to third derivatives by eta: n x n each. */
TESSAREL_API void tessarel_calc_gij_eta123(const int32_t* n, const double* d, const double* zeta2, const double* zeta3,
                                           double* g, double* g1, double* g2, double* g3);

/* ============================================================ dispersion ======================================= */

/* Sets the mean segment number of the composition, and the coefficients of the integrals at it, for the c1 and intgpert
 * families. To be called again for another composition or ipure. */
TESSAREL_API void tessarel_set_mmean(const int32_t* n, const double* x, const int32_t* ipure);
/* Coefficients of the two integrals at the mean segment number of the last set_mmean: 7 each. */
TESSAREL_API void tessarel_calc_abpar(double* apar, double* bpar);
/* First derivative of these coefficients by the mean segment number: 7 each; times mseg of a component, that by x. */
TESSAREL_API void tessarel_calc_dabpar_dx(double* apar_x, double* bpar_x);
/* Second derivative of these coefficients by the mean segment number: 7 each. */
TESSAREL_API void tessarel_calc_d2abpar_dxdx(double* apar_xx, double* bpar_xx);
/* Third derivative of these coefficients by the mean segment number: 7 each. */
TESSAREL_API void tessarel_calc_d3abpar_dxdxdx(double* apar_xxx, double* bpar_xxx);

/* Energies eps: n, and eps_ij: n x n [K] with the interaction parameters at t, and diameters sig_ij: n x n [A]; with
 * ipure = i only entry i and the diagonal entry i. */
TESSAREL_API void tessarel_calc_sigeps(const int32_t* n, const int32_t* ipure, const double* t, double* eps,
                                       double* sig_ij, double* eps_ij);
/* First derivative of the energies eps and eps_ij by t: n and n x n. */
TESSAREL_API void tessarel_calc_dsigeps_dt(const int32_t* n, const int32_t* ipure, const double* t, double* deps_dt,
                                           double* deps_ij_dt);
/* Second derivative of the energies eps and eps_ij by t twice: n and n x n [1/K]. */
TESSAREL_API void tessarel_calc_d2sigeps_dt2(const int32_t* n, const int32_t* ipure, const double* t, double* d2eps_dt2,
                                             double* d2eps_ij_dt2);
/* Third derivative of the energies eps and eps_ij by t three times: n and n x n [1/K2]. */
TESSAREL_API void tessarel_calc_d3sigeps_dt3(const int32_t* n, const int32_t* ipure, const double* t, double* d3eps_dt3,
                                             double* d3eps_ij_dt3);

/* Compressibility expression c1 of eta and the mean segment number, which depends on x as well. */

/* Compressibility expression c1. */
TESSAREL_API void tessarel_calc_c1(const double* eta, double* c1);
/* Second derivative of the compressibility expression c1 by eta twice. */
TESSAREL_API void tessarel_calc_d2c1_deta2(const double* eta, double* d2c1_deta2);
/* Third derivative of the compressibility expression c1 by eta three times. */
TESSAREL_API void tessarel_calc_d3c1_deta3(const double* eta, double* d3c1_deta3);
/* Fourth derivative of the compressibility expression c1 by eta four times. */
TESSAREL_API void tessarel_calc_d4c1_deta4(const double* eta, double* d4c1_deta4);
/* First derivative of the compressibility expression c1 by t [1/K]. */
TESSAREL_API void tessarel_calc_dc1_dt(const double* eta, const double* deta_dt, double* dc1_dt);
/* Second derivative of the compressibility expression c1 by t twice [1/K2]. */
TESSAREL_API void tessarel_calc_d2c1_dt2(const double* eta, const double* deta_dt, const double* d2eta_dt2,
                                         double* d2c1_dt2);
/* Third derivative of the compressibility expression c1 by t three times [1/K3]. */
TESSAREL_API void tessarel_calc_d3c1_dt3(const double* eta, const double* deta_dt, const double* d2eta_dt2,
                                         const double* d3eta_dt3, double* d3c1_dt3);
/* First derivative of the compressibility expression c1 by x: n. */
TESSAREL_API void tessarel_calc_dc1_dx(const int32_t* n, const double* eta, const double* deta_dx, double* dc1_dx);
/* Second derivative of the compressibility expression c1 by x twice: n x n. */
TESSAREL_API void tessarel_calc_d2c1_dxdx(const int32_t* n, const double* eta, const double* deta_dx,
                                          double* d2c1_dxdx);
/* Third derivative of the compressibility expression c1 by x three times: n x n x n. */
TESSAREL_API void tessarel_calc_d3c1_dxdxdx(const int32_t* n, const double* eta, const double* deta_dx,
                                            double* d3c1_dxdxdx);
/* Second derivative of the compressibility expression c1 by eta and t [1/K]. */
TESSAREL_API void tessarel_calc_d2c1_detadt(const double* eta, const double* deta_dt, double* d2c1_detadt);
/* Third derivative of the compressibility expression c1 by eta and t twice [1/K2]. */
TESSAREL_API void tessarel_calc_d3c1_detadt2(const double* eta, const double* deta_dt, const double* d2eta_dt2,
                                             double* d3c1_detadt2);
/* Third derivative of the compressibility expression c1 by eta twice and t [1/K]. */
TESSAREL_API void tessarel_calc_d3c1_deta2dt(const double* eta, const double* deta_dt, double* d3c1_deta2dt);
/* Second derivative of the compressibility expression c1 by t and x: n [1/K]. */
TESSAREL_API void tessarel_calc_d2c1_dtdx(const int32_t* n, const double* eta, const double* deta_dt,
                                          const double* deta_dx, const double* d2eta_dtdx, double* d2c1_dtdx);
/* Second derivative of the compressibility expression c1 by eta and x: n. */
TESSAREL_API void tessarel_calc_d2c1_detadx(const int32_t* n, const double* eta, const double* deta_dx,
                                            double* d2c1_detadx);
/* Third derivative of the compressibility expression c1 by eta and x twice: n x n. */
TESSAREL_API void tessarel_calc_d3c1_detadxdx(const int32_t* n, const double* eta, const double* deta_dx,
                                              double* d3c1_detadxdx);
/* Third derivative of the compressibility expression c1 by eta twice and x: n. */
TESSAREL_API void tessarel_calc_d3c1_deta2dx(const int32_t* n, const double* eta, const double* deta_dx,
                                             double* d3c1_deta2dx);
/* First derivative of c1 by eta, from the value c1. */
TESSAREL_API void tessarel_calc_dc1_deta(const double* eta, const double* c1, double* dc1_deta);
/* c1 with its first to third derivatives by eta. */
TESSAREL_API void tessarel_calc_c_eta123(const double* eta, double* c1, double* dc1, double* d2c1, double* d3c1);

/* Integrals i1, i2 of eta and the mean segment number. In the members by eta, the mixed ones included, it is (eta i1)
 * and (eta i2) that is differentiated. */

/* Integrals i1 and i2. */
TESSAREL_API void tessarel_calc_intgpert(const double* eta, double* i1, double* i2);
/* First derivative of the products eta i1 and eta i2 by eta. */
TESSAREL_API void tessarel_calc_dintgpert_deta(const double* eta, double* di1_deta, double* di2_deta);
/* Second derivative of the products eta i1 and eta i2 by eta twice. */
TESSAREL_API void tessarel_calc_d2intgpert_deta2(const double* eta, double* d2i1_deta2, double* d2i2_deta2);
/* Third derivative of the products eta i1 and eta i2 by eta three times. */
TESSAREL_API void tessarel_calc_d3intgpert_deta3(const double* eta, double* d3i1_deta3, double* d3i2_deta3);
/* Fourth derivative of the products eta i1 and eta i2 by eta four times. */
TESSAREL_API void tessarel_calc_d4intgpert_deta4(const double* eta, double* d4i1_deta4, double* d4i2_deta4);
/* First derivative of the integrals i1 and i2 by t [1/K]. */
TESSAREL_API void tessarel_calc_dintgpert_dt(const double* eta, const double* deta_dt, double* di1_dt, double* di2_dt);
/* Second derivative of the integrals i1 and i2 by t twice [1/K2]. */
TESSAREL_API void tessarel_calc_d2intgpert_dt2(const double* eta, const double* deta_dt, const double* d2eta_dt2,
                                               double* d2i1_dt2, double* d2i2_dt2);
/* Third derivative of the integrals i1 and i2 by t three times [1/K3]. */
TESSAREL_API void tessarel_calc_d3intgpert_dt3(const double* eta, const double* deta_dt, const double* d2eta_dt2,
                                               const double* d3eta_dt3, double* d3i1_dt3, double* d3i2_dt3);
/* First derivative of the integrals i1 and i2 by x: n. */
TESSAREL_API void tessarel_calc_dintgpert_dx(const int32_t* n, const double* eta, const double* deta_dx, double* di1_dx,
                                             double* di2_dx);
/* Second derivative of the integrals i1 and i2 by x twice: n x n. */
TESSAREL_API void tessarel_calc_d2intgpert_dxdx(const int32_t* n, const double* eta, const double* deta_dx,
                                                double* d2i1_dxdx, double* d2i2_dxdx);
/* Third derivative of the integrals i1 and i2 by x three times: n x n x n. */
TESSAREL_API void tessarel_calc_d3intgpert_dxdxdx(const int32_t* n, const double* eta, const double* deta_dx,
                                                  double* d3i1_dxdxdx, double* d3i2_dxdxdx);
/* Second derivative of the products eta i1 and eta i2 by eta and t [1/K]. */
TESSAREL_API void tessarel_calc_d2intgpert_detadt(const double* eta, const double* deta_dt, double* d2i1_detadt,
                                                  double* d2i2_detadt);
/* Third derivative of the products eta i1 and eta i2 by eta and t twice [1/K2]. */
TESSAREL_API void tessarel_calc_d3intgpert_detadt2(const double* eta, const double* deta_dt, const double* d2eta_dt2,
                                                   double* d3i1_detadt2, double* d3i2_detadt2);
/* Third derivative of the products eta i1 and eta i2 by eta twice and t [1/K]. */
TESSAREL_API void tessarel_calc_d3intgpert_deta2dt(const double* eta, const double* deta_dt, double* d3i1_deta2dt,
                                                   double* d3i2_deta2dt);
/* Second derivative of the products eta i1 and eta i2 by eta and x: n. */
TESSAREL_API void tessarel_calc_d2intgpert_detadx(const int32_t* n, const double* eta, const double* deta_dx,
                                                  double* d2i1_detadx, double* d2i2_detadx);
/* Second derivative of the integrals i1 and i2 by t and x: n [1/K]. */
TESSAREL_API void tessarel_calc_d2intgpert_dtdx(const int32_t* n, const double* eta, const double* deta_dt,
                                                const double* deta_dx, const double* d2eta_dtdx, double* d2i1_dtdx,
                                                double* d2i2_dtdx);
/* Third derivative of the products eta i1 and eta i2 by eta and x twice: n x n. */
TESSAREL_API void tessarel_calc_d3intgpert_detadxdx(const int32_t* n, const double* eta, const double* deta_dx,
                                                    double* d3i1_detadxdx, double* d3i2_detadxdx);
/* Integral i2, and the first to third derivatives of (eta i1) and (eta i2) by eta. */
TESSAREL_API void tessarel_calc_intgpert_eta123(const double* eta, double* i2, double* di1, double* di2, double* d2i1,
                                                double* d2i2, double* d3i1, double* d3i2);

/* Dispersion sums m2es3 = sum x_i x_j m_i m_j (eps_ij / t) sig_ij^3, m2e2s3 with (eps_ij / t)^2. */

/* Dispersion sums m2es3 and m2e2s3 [A3]. */
TESSAREL_API void tessarel_calc_pertterm(const int32_t* n, const double* x, const int32_t* ipure, const double* t,
                                         const double* sig_ij, const double* eps_ij, double* m2es3, double* m2e2s3);
/* First derivative of the dispersion sums m2es3 and m2e2s3 by t [A3/K]. */
TESSAREL_API void tessarel_calc_dpertterm_dt(const int32_t* n, const double* x, const int32_t* ipure, const double* t,
                                             const double* sig_ij, const double* eps_ij, const double* deps_ij_dt,
                                             double* dm2es3_dt, double* dm2e2s3_dt);
/* Second derivative of the dispersion sums m2es3 and m2e2s3 by t twice [A3/K2]. */
TESSAREL_API void tessarel_calc_d2pertterm_dt2(const int32_t* n, const double* x, const int32_t* ipure, const double* t,
                                               const double* sig_ij, const double* eps_ij, const double* deps_ij_dt,
                                               const double* d2eps_ij_dt2, double* d2m2es3_dt2, double* d2m2e2s3_dt2);
/* Third derivative of the dispersion sums m2es3 and m2e2s3 by t three times [A3/K3]. */
TESSAREL_API void tessarel_calc_d3pertterm_dt3(const int32_t* n, const double* x, const int32_t* ipure, const double* t,
                                               const double* sig_ij, const double* eps_ij, const double* deps_ij_dt,
                                               const double* d2eps_ij_dt2, const double* d3eps_ij_dt3,
                                               double* d3m2es3_dt3, double* d3m2e2s3_dt3);
/* First derivative of the dispersion sums m2es3 and m2e2s3 by x: n [A3]. */
TESSAREL_API void tessarel_calc_dpertterm_dx(const int32_t* n, const double* x, const int32_t* ipure, const double* t,
                                             const double* sig_ij, const double* eps_ij, double* dm2es3_dx,
                                             double* dm2e2s3_dx);
/* Second derivative of the dispersion sums m2es3 and m2e2s3 by x twice: n x n [A3]. */
TESSAREL_API void tessarel_calc_d2pertterm_dxdx(const int32_t* n, const double* x, const int32_t* ipure,
                                                const double* t, const double* sig_ij, const double* eps_ij,
                                                double* d2m2es3_dxdx, double* d2m2e2s3_dxdx);
/* Second derivative of the dispersion sums m2es3 and m2e2s3 by t and x: n [A3/K]. */
TESSAREL_API void tessarel_calc_d2pertterm_dtdx(const int32_t* n, const double* x, const int32_t* ipure,
                                                const double* t, const double* sig_ij, const double* eps_ij,
                                                const double* deps_ij_dt, double* d2m2es3_dtdx, double* d2m2e2s3_dtdx);

/* ============================================================ association ====================================== */

/* Association strengths g sig^3 kap_hb (exp(eps_hb / t) - 1), of site type a on i with b on k at
 * [i + n (k + n (a + 5 b))], 0 where there is no such site. Derivatives by rho are plain: those of gij too, without the
 * factor rho of the gij family. In the simplified model gij(1,1) serves for all pairs. */

/* Association strengths: n x n x 5 x 5 [A3]. */
TESSAREL_API void tessarel_calc_deltaab(const int32_t* n, const int32_t* ipure, const double* t, const double* sig_ij,
                                        const double* gij, double* deltaab);
/* First derivative of the association strengths by t: n x n x 5 x 5 [A3/K]. */
TESSAREL_API void tessarel_calc_ddeltaab_dt(const int32_t* n, const int32_t* ipure, const double* t,
                                            const double* sig_ij, const double* gij, const double* dgij_dt,
                                            double* ddeltaab_dt);
/* Second derivative of the association strengths by t twice: n x n x 5 x 5 [A3/K2]. */
TESSAREL_API void tessarel_calc_d2deltaab_dt2(const int32_t* n, const int32_t* ipure, const double* t,
                                              const double* sig_ij, const double* gij, const double* dgij_dt,
                                              const double* d2gij_dt2, double* d2deltaab_dt2);
/* Third derivative of the association strengths by t three times: n x n x 5 x 5 [A3/K3]. */
TESSAREL_API void tessarel_calc_d3deltaab_dt3(const int32_t* n, const int32_t* ipure, const double* t,
                                              const double* sig_ij, const double* gij, const double* dgij_dt,
                                              const double* d2gij_dt2, const double* d3gij_dt3, double* d3deltaab_dt3);
/* First derivative of the association strengths by rho: n x n x 5 x 5 [A6]. */
TESSAREL_API void tessarel_calc_ddeltaab_drho(const int32_t* n, const int32_t* ipure, const double* t,
                                              const double* sig_ij, const double* gij, const double* dgij_drho,
                                              double* ddeltaab_drho);
/* Second derivative of the association strengths by rho twice: n x n x 5 x 5 [A9]. */
TESSAREL_API void tessarel_calc_d2deltaab_drho2(const int32_t* n, const int32_t* ipure, const double* t,
                                                const double* sig_ij, const double* gij, const double* dgij_drho,
                                                const double* d2gij_drho2, double* d2deltaab_drho2);
/* Third derivative of the association strengths by rho three times: n x n x 5 x 5 [A12]. */
TESSAREL_API void tessarel_calc_d3deltaab_drho3(const int32_t* n, const int32_t* ipure, const double* t,
                                                const double* sig_ij, const double* gij, const double* dgij_drho,
                                                const double* d2gij_drho2, const double* d3gij_drho3,
                                                double* d3deltaab_drho3);
/* Fourth derivative of the association strengths by rho four times: n x n x 5 x 5 [A15]. */
TESSAREL_API void tessarel_calc_d4deltaab_drho4(const int32_t* n, const int32_t* ipure, const double* t,
                                                const double* sig_ij, const double* gij, const double* dgij_drho,
                                                const double* d2gij_drho2, const double* d3gij_drho3,
                                                const double* d4gij_drho4, double* d4deltaab_drho4);
/* First derivative of the association strengths by x: n x n x 5 x 5 x n [A3]. */
TESSAREL_API void tessarel_calc_ddeltaab_dx(const int32_t* n, const int32_t* ipure, const double* t,
                                            const double* sig_ij, const double* gij, const double* dgij_dx,
                                            double* ddeltaab_dx);
/* Second derivative of the association strengths by x twice: n x n x 5 x 5 x n x n [A3]. */
TESSAREL_API void tessarel_calc_d2deltaab_dxdx(const int32_t* n, const int32_t* ipure, const double* t,
                                               const double* sig_ij, const double* gij, const double* dgij_dx,
                                               const double* d2gij_dxdx, double* d2deltaab_dxdx);
/* Third derivative of the association strengths by x three times: n x n x 5 x 5 x n x n x n [A3]. */
TESSAREL_API void tessarel_calc_d3deltaab_dxdxdx(const int32_t* n, const int32_t* ipure, const double* t,
                                                 const double* sig_ij, const double* gij, const double* dgij_dx,
                                                 const double* d2gij_dxdx, const double* d3gij_dxdxdx,
                                                 double* d3deltaab_dxdxdx);
/* Second derivative of the association strengths by t and rho: n x n x 5 x 5 [A6/K]. */
TESSAREL_API void tessarel_calc_d2deltaab_dtdrho(const int32_t* n, const int32_t* ipure, const double* t,
                                                 const double* sig_ij, const double* gij, const double* dgij_dt,
                                                 const double* dgij_drho, const double* d2gij_dtdrho,
                                                 double* d2deltaab_dtdrho);
/* Third derivative of the association strengths by t and rho twice: n x n x 5 x 5 [A9/K]. */
TESSAREL_API void tessarel_calc_d3deltaab_dtdrhodrho(const int32_t* n, const int32_t* ipure, const double* t,
                                                     const double* sig_ij, const double* gij, const double* dgij_dt,
                                                     const double* dgij_drho, const double* d2gij_dtdrho,
                                                     const double* d2gij_drho2, const double* d3gij_dtdrho2,
                                                     double* d3deltaab_dtdrhodrho);
/* Third derivative of the association strengths by t twice and rho: n x n x 5 x 5 [A6/K2]. */
TESSAREL_API void tessarel_calc_d3deltaab_dtdtdrho(const int32_t* n, const int32_t* ipure, const double* t,
                                                   const double* sig_ij, const double* gij, const double* dgij_dt,
                                                   const double* dgij_drho, const double* d2gij_dt2,
                                                   const double* d2gij_dtdrho, const double* d3gij_dt2drho,
                                                   double* d3deltaab_dtdtdrho);
/* Second derivative of the association strengths by rho and x: n x n x 5 x 5 x n [A6]. */
TESSAREL_API void tessarel_calc_d2deltaab_drhodx(const int32_t* n, const int32_t* ipure, const double* t,
                                                 const double* sig_ij, const double* gij, const double* dgij_drho,
                                                 const double* dgij_dx, const double* d2gij_drhodx,
                                                 double* d2deltaab_drhodx);
/* Third derivative of the association strengths by rho and x twice: n x n x 5 x 5 x n x n [A6]. */
TESSAREL_API void tessarel_calc_d3deltaab_drhodxdx(const int32_t* n, const int32_t* ipure, const double* t,
                                                   const double* sig_ij, const double* gij, const double* dgij_drho,
                                                   const double* dgij_dx, const double* d2gij_drhodx,
                                                   const double* d2gij_dxdx, const double* d3gij_drhodxdx,
                                                   double* d3deltaab_drhodxdx);
/* Second derivative of the association strengths by t and x: n x n x 5 x 5 x n [A3/K]. */
TESSAREL_API void tessarel_calc_d2deltaab_dtdx(const int32_t* n, const int32_t* ipure, const double* t,
                                               const double* sig_ij, const double* gij, const double* dgij_dt,
                                               const double* dgij_dx, const double* d2gij_dtdx, double* d2deltaab_dtdx);

/* Fractions of unbonded sites, of site type a on i at [i + n a], 1 where there is no such site. Derivatives by rho are
 * plain. */

/* Fractions of unbonded sites: n x 5. */
TESSAREL_API void tessarel_calc_xnhb(const int32_t* n, const double* x, const int32_t* ipure, const double* rho,
                                     const double* deltaab, double* xnhb, int32_t* status);
/* First derivative of the fractions of unbonded sites by t: n x 5 [1/K]. */
TESSAREL_API void tessarel_calc_dxnhb_dt(const int32_t* n, const double* x, const int32_t* ipure, const double* rho,
                                         const double* deltaab, const double* xnhb, const double* ddeltaab_dt,
                                         double* dxnhb_dt, int32_t* status);
/* Second derivative of the fractions of unbonded sites by t twice: n x 5 [1/K2]. */
TESSAREL_API void tessarel_calc_d2xnhb_dt2(const int32_t* n, const double* x, const int32_t* ipure, const double* rho,
                                           const double* deltaab, const double* xnhb, const double* ddeltaab_dt,
                                           const double* dxnhb_dt, const double* d2deltaab_dt2, double* d2xnhb_dt2,
                                           int32_t* status);
/* Third derivative of the fractions of unbonded sites by t three times: n x 5 [1/K3]. */
TESSAREL_API void tessarel_calc_d3xnhb_dt3(const int32_t* n, const double* x, const int32_t* ipure, const double* rho,
                                           const double* deltaab, const double* xnhb, const double* ddeltaab_dt,
                                           const double* dxnhb_dt, const double* d2deltaab_dt2,
                                           const double* d2xnhb_dt2, const double* d3deltaab_dt3, double* d3xnhb_dt3,
                                           int32_t* status);
/* First derivative of the fractions of unbonded sites by rho: n x 5 [A3]. */
TESSAREL_API void tessarel_calc_dxnhb_drho(const int32_t* n, const double* x, const int32_t* ipure, const double* rho,
                                           const double* deltaab, const double* xnhb, const double* ddeltaab_drho,
                                           double* dxnhb_drho, int32_t* status);
/* Second derivative of the fractions of unbonded sites by rho twice: n x 5 [A6]. */
TESSAREL_API void tessarel_calc_d2xnhb_drho2(const int32_t* n, const double* x, const int32_t* ipure, const double* rho,
                                             const double* deltaab, const double* xnhb, const double* ddeltaab_drho,
                                             const double* dxnhb_drho, const double* d2deltaab_drho2,
                                             double* d2xnhb_drho2, int32_t* status);
/* Third derivative of the fractions of unbonded sites by rho three times: n x 5 [A9]. */
TESSAREL_API void tessarel_calc_d3xnhb_drho3(const int32_t* n, const double* x, const int32_t* ipure, const double* rho,
                                             const double* deltaab, const double* xnhb, const double* ddeltaab_drho,
                                             const double* dxnhb_drho, const double* d2deltaab_drho2,
                                             const double* d2xnhb_drho2, const double* d3deltaab_drho3,
                                             double* d3xnhb_drho3, int32_t* status);
/* Fourth derivative of the fractions of unbonded sites by rho four times: n x 5 [A12]. */
TESSAREL_API void tessarel_calc_d4xnhb_drho4(const int32_t* n, const double* x, const int32_t* ipure, const double* rho,
                                             const double* deltaab, const double* xnhb, const double* ddeltaab_drho,
                                             const double* dxnhb_drho, const double* d2deltaab_drho2,
                                             const double* d2xnhb_drho2, const double* d3deltaab_drho3,
                                             const double* d3xnhb_drho3, const double* d4deltaab_drho4,
                                             double* d4xnhb_drho4, int32_t* status);
/* First derivative of the fractions of unbonded sites by x: n x 5 x n. */
TESSAREL_API void tessarel_calc_dxnhb_dx(const int32_t* n, const double* x, const int32_t* ipure, const double* rho,
                                         const double* deltaab, const double* xnhb, const double* ddeltaab_dx,
                                         double* dxnhb_dx, int32_t* status);
/* Second derivative of the fractions of unbonded sites by x twice: n x 5 x n x n. */
TESSAREL_API void tessarel_calc_d2xnhb_dxdx(const int32_t* n, const double* x, const int32_t* ipure, const double* rho,
                                            const double* deltaab, const double* xnhb, const double* ddeltaab_dx,
                                            const double* dxnhb_dx, const double* d2deltaab_dxdx, double* d2xnhb_dxdx,
                                            int32_t* status);
/* Third derivative of the fractions of unbonded sites by x three times: n x 5 x n x n x n. */
TESSAREL_API void tessarel_calc_d3xnhb_dxdxdx(const int32_t* n, const double* x, const int32_t* ipure,
                                              const double* rho, const double* deltaab, const double* xnhb,
                                              const double* ddeltaab_dx, const double* dxnhb_dx,
                                              const double* d2deltaab_dxdx, const double* d2xnhb_dxdx,
                                              const double* d3deltaab_dxdxdx, double* d3xnhb_dxdxdx, int32_t* status);
/* Second derivative of the fractions of unbonded sites by rho and t: n x 5 [A3/K]. */
TESSAREL_API void tessarel_calc_d2xnhb_drhodt(const int32_t* n, const double* x, const int32_t* ipure,
                                              const double* rho, const double* deltaab, const double* xnhb,
                                              const double* ddeltaab_dt, const double* dxnhb_dt,
                                              const double* ddeltaab_drho, const double* dxnhb_drho,
                                              const double* d2deltaab_dtdrho, double* d2xnhb_drhodt, int32_t* status);
/* Third derivative of the fractions of unbonded sites by rho twice and t: n x 5 [A6/K]. */
TESSAREL_API void tessarel_calc_d3xnhb_drhodrhodt(const int32_t* n, const double* x, const int32_t* ipure,
                                                  const double* rho, const double* deltaab, const double* xnhb,
                                                  const double* ddeltaab_dt, const double* dxnhb_dt,
                                                  const double* ddeltaab_drho, const double* dxnhb_drho,
                                                  const double* d2deltaab_dtdrho, const double* d2xnhb_dtdrho,
                                                  const double* d2deltaab_drho2, const double* d2xnhb_drho2,
                                                  const double* d3deltaab_dtdrho2, double* d3xnhb_drhodrhodt,
                                                  int32_t* status);
/* Third derivative of the fractions of unbonded sites by rho and t twice: n x 5 [A3/K2]. */
TESSAREL_API void tessarel_calc_d3xnhb_drhodtdt(
    const int32_t* n, const double* x, const int32_t* ipure, const double* rho, const double* deltaab,
    const double* xnhb, const double* ddeltaab_dt, const double* dxnhb_dt, const double* ddeltaab_drho,
    const double* dxnhb_drho, const double* d2deltaab_dt2, const double* d2xnhb_dt2, const double* d2deltaab_dtdrho,
    const double* d2xnhb_dtdrho, const double* d3deltaab_dt2drho, double* d3xnhb_drhodtdt, int32_t* status);
/* Second derivative of the fractions of unbonded sites by rho and x: n x 5 x n [A3]. */
TESSAREL_API void tessarel_calc_d2xnhb_drhodx(const int32_t* n, const double* x, const int32_t* ipure,
                                              const double* rho, const double* deltaab, const double* xnhb,
                                              const double* ddeltaab_drho, const double* dxnhb_drho,
                                              const double* ddeltaab_dx, const double* dxnhb_dx,
                                              const double* d2deltaab_drhodx, double* d2xnhb_drhodx, int32_t* status);
/* Third derivative of the fractions of unbonded sites by rho and x twice: n x 5 x n x n [A3]. */
TESSAREL_API void tessarel_calc_d3xnhb_drhodxdx(
    const int32_t* n, const double* x, const int32_t* ipure, const double* rho, const double* deltaab,
    const double* xnhb, const double* ddeltaab_drho, const double* dxnhb_drho, const double* ddeltaab_dx,
    const double* dxnhb_dx, const double* d2deltaab_drhodx, const double* d2xnhb_drhodx, const double* d2deltaab_dxdx,
    const double* d2xnhb_dxdx, const double* d3deltaab_drhodxdx, double* d3xnhb_drhodxdx, int32_t* status);
/* Second derivative of the fractions of unbonded sites by t and x: n x 5 x n [1/K]. */
TESSAREL_API void tessarel_calc_d2xnhb_dtdx(const int32_t* n, const double* x, const int32_t* ipure, const double* rho,
                                            const double* deltaab, const double* xnhb, const double* ddeltaab_dt,
                                            const double* dxnhb_dt, const double* ddeltaab_dx, const double* dxnhb_dx,
                                            const double* d2deltaab_dtdx, double* d2xnhb_dtdx, int32_t* status);
/* Association term of a for component 1 alone, at the contact value (1 - eta/2) / (1 - eta)^3; delta_t: 5 x 5 strengths
 * at a contact value of 1 [A3]. */
TESSAREL_API void tessarel_calc_a_ass(const double* rho, const double* eta, const double* delta_t, double* a);

/* ============================================================ polar terms ====================================== */

/* Fills the constants of the dipole-dipole integrals from the segment numbers; tessarel_setfluid does this. */
TESSAREL_API void tessarel_ddconst(void);
/* Fills the constants of the quadrupole-quadrupole integrals; tessarel_setfluid does this. */
TESSAREL_API void tessarel_qqconst(void);
/* Fills the constants of the dipole-quadrupole integrals; tessarel_setfluid does this. */
TESSAREL_API void tessarel_dqconst(void);
/* Fills the products of the moments and tells which interaction types are present; tessarel_setfluid does this. */
TESSAREL_API void tessarel_setpolarpar(void);

/* Polar integrals: j2 of type s and pair i, j at [s + 3 (i + n j)], j3 at [s + 3 (i + n (j + n l))]; s = 0 dipoles, 1
 * quadrupoles, 2 mixed, 0 for types that the first n components do not have. eps: n energies of calc_sigeps [K]. */

/* Polar integrals j2 and j3: 3 x n x n and 3 x n x n x n. */
TESSAREL_API void tessarel_calc_j2j3(const int32_t* n, const double* t, const double* eta, const double* eps,
                                     double* j2, double* j3);
/* First derivative of the polar integrals j2 and j3 by t: 3 x n x n and 3 x n x n x n [1/K]. */
TESSAREL_API void tessarel_calc_dj2j3_dt(const int32_t* n, const double* t, const double* eta, const double* eps,
                                         const double* deta_dt, const double* deps_dt, double* dj2_dt, double* dj3_dt);
/* Second derivative of the polar integrals j2 and j3 by t twice: 3 x n x n and 3 x n x n x n [1/K2]. */
TESSAREL_API void tessarel_calc_d2j2j3_dt2(const int32_t* n, const double* t, const double* eta, const double* eps,
                                           const double* deta_dt, const double* deps_dt, const double* d2eta_dt2,
                                           const double* d2eps_dt2, double* d2j2_dt2, double* d2j3_dt2);
/* Third derivative of the polar integrals j2 and j3 by t three times: 3 x n x n and 3 x n x n x n [1/K3]. */
TESSAREL_API void tessarel_calc_d3j2j3_dt3(const int32_t* n, const double* t, const double* eta, const double* eps,
                                           const double* deta_dt, const double* deps_dt, const double* d2eta_dt2,
                                           const double* d2eps_dt2, const double* d3eta_dt3, const double* d3eps_dt3,
                                           double* d3j2_dt3, double* d3j3_dt3);
/* First derivative of the polar integrals j2 and j3 by rho: 3 x n x n and 3 x n x n x n [A3]. */
TESSAREL_API void tessarel_calc_dj2j3_drho(const int32_t* n, const double* t, const double* eta, const double* eps,
                                           const double* deta_drho, double* dj2_drho, double* dj3_drho);
/* Second derivative of the polar integrals j2 and j3 by rho twice: 3 x n x n and 3 x n x n x n [A6]. */
TESSAREL_API void tessarel_calc_d2j2j3_drho2(const int32_t* n, const double* t, const double* eta, const double* eps,
                                             const double* deta_drho, double* d2j2_drho2, double* d2j3_drho2);
/* Third derivative of the polar integrals j2 and j3 by rho three times: 3 x n x n and 3 x n x n x n [A9]. */
TESSAREL_API void tessarel_calc_d3j2j3_drho3(const int32_t* n, const double* t, const double* eta, const double* eps,
                                             const double* deta_drho, double* d3j2_drho3, double* d3j3_drho3);
/* Fourth derivative of the polar integrals j2 and j3 by rho four times: 3 x n x n and 3 x n x n x n [A12]. */
TESSAREL_API void tessarel_calc_d4j2j3_drho4(const int32_t* n, const double* t, const double* eta, const double* eps,
                                             const double* deta_drho, double* d4j2_drho4, double* d4j3_drho4);
/* First derivative of the polar integrals j2 and j3 by x: 3 x n x n x n and 3 x n x n x n x n. */
TESSAREL_API void tessarel_calc_dj2j3_dx(const int32_t* n, const double* t, const double* eta, const double* eps,
                                         const double* deta_dx, double* dj2_dx, double* dj3_dx);
/* Second derivative of the polar integrals j2 and j3 by x twice: 3 x n x n x n x n and 3 x n x n x n x n x n. */
TESSAREL_API void tessarel_calc_d2j2j3_dxdx(const int32_t* n, const double* t, const double* eta, const double* eps,
                                            const double* deta_dx, double* d2j2_dxdx, double* d2j3_dxdx);
/* Third derivative of the polar integrals j2 and j3 by x three times: 3 x n x n x n x n x n and 3 x n x n x n x n x n x
 * n. */
TESSAREL_API void tessarel_calc_d3j2j3_dxdxdx(const int32_t* n, const double* t, const double* eta, const double* eps,
                                              const double* deta_dx, double* d3j2_dxdxdx, double* d3j3_dxdxdx);
/* Second derivative of the polar integrals j2 and j3 by t and rho: 3 x n x n and 3 x n x n x n [A3/K]. */
TESSAREL_API void tessarel_calc_d2j2j3_dtdrho(const int32_t* n, const double* t, const double* eta, const double* eps,
                                              const double* deta_dt, const double* deps_dt, const double* deta_drho,
                                              const double* d2eta_dtdrho, double* d2j2_dtdrho, double* d2j3_dtdrho);
/* Third derivative of the polar integrals j2 and j3 by t and rho twice: 3 x n x n and 3 x n x n x n [A6/K]. */
TESSAREL_API void tessarel_calc_d3j2j3_dtdrho2(const int32_t* n, const double* t, const double* eta, const double* eps,
                                               const double* deta_dt, const double* deps_dt, const double* deta_drho,
                                               const double* d2eta_dtdrho, double* d3j2_dtdrho2, double* d3j3_dtdrho2);
/* Third derivative of the polar integrals j2 and j3 by t twice and rho: 3 x n x n and 3 x n x n x n [A3/K2]. */
TESSAREL_API void tessarel_calc_d3j2j3_dt2drho(const int32_t* n, const double* t, const double* eta, const double* eps,
                                               const double* deta_dt, const double* deps_dt, const double* deta_drho,
                                               const double* d2eta_dt2, const double* d2eps_dt2,
                                               const double* d2eta_dtdrho, const double* d3eta_dt2drho,
                                               double* d3j2_dt2drho, double* d3j3_dt2drho);
/* Second derivative of the polar integrals j2 and j3 by rho and x: 3 x n x n x n and 3 x n x n x n x n [A3]. */
TESSAREL_API void tessarel_calc_d2j2j3_drhodx(const int32_t* n, const double* t, const double* eta, const double* eps,
                                              const double* deta_drho, const double* deta_dx,
                                              const double* d2eta_drhodx, double* d2j2_drhodx, double* d2j3_drhodx);
/* Third derivative of the polar integrals j2 and j3 by rho and x twice: 3 x n x n x n x n and 3 x n x n x n x n x n
 * [A3]. */
TESSAREL_API void tessarel_calc_d3j2j3_drhodxdx(const int32_t* n, const double* t, const double* eta, const double* eps,
                                                const double* deta_drho, const double* deta_dx,
                                                const double* d2eta_drhodx, double* d3j2_drhodxdx,
                                                double* d3j3_drhodxdx);
/* Second derivative of the polar integrals j2 and j3 by t and x: 3 x n x n x n and 3 x n x n x n x n [1/K]. */
TESSAREL_API void tessarel_calc_d2j2j3_dtdx(const int32_t* n, const double* t, const double* eta, const double* eps,
                                            const double* deta_dt, const double* deps_dt, const double* deta_dx,
                                            const double* d2eta_dtdx, double* d2j2_dtdx, double* d2j3_dtdx);

/* Second- and third-order polar terms by type. */

/* Second- and third-order polar terms a2 and a3: 3. */
TESSAREL_API void tessarel_calc_a2a3(const int32_t* n, const double* x, const int32_t* ipure, const double* t,
                                     const double* rho, const double* j2, const double* j3, double* a2, double* a3);
/* First derivative of the second- and third-order polar terms a2 and a3 by t: 3 [1/K]. */
TESSAREL_API void tessarel_calc_da2a3_dt(const int32_t* n, const double* x, const int32_t* ipure, const double* t,
                                         const double* rho, const double* j2, const double* j3, const double* dj2_dt,
                                         const double* dj3_dt, double* da2_dt, double* da3_dt);
/* Second derivative of the second- and third-order polar terms a2 and a3 by t twice: 3 [1/K2]. */
TESSAREL_API void tessarel_calc_d2a2a3_dt2(const int32_t* n, const double* x, const int32_t* ipure, const double* t,
                                           const double* rho, const double* j2, const double* j3, const double* dj2_dt,
                                           const double* dj3_dt, const double* d2j2_dt2, const double* d2j3_dt2,
                                           double* d2a2_dt2, double* d2a3_dt2);
/* Third derivative of the second- and third-order polar terms a2 and a3 by t three times: 3 [1/K3]. */
TESSAREL_API void tessarel_calc_d3a2a3_dt3(const int32_t* n, const double* x, const int32_t* ipure, const double* t,
                                           const double* rho, const double* j2, const double* j3, const double* dj2_dt,
                                           const double* dj3_dt, const double* d2j2_dt2, const double* d2j3_dt2,
                                           const double* d3j2_dt3, const double* d3j3_dt3, double* d3a2_dt3,
                                           double* d3a3_dt3);
/* First derivative of the second- and third-order polar terms a2 and a3 by rho: 3 [A3]. */
TESSAREL_API void tessarel_calc_da2a3_drho(const int32_t* n, const double* x, const int32_t* ipure, const double* t,
                                           const double* rho, const double* j2, const double* j3,
                                           const double* dj2_drho, const double* dj3_drho, double* da2_drho,
                                           double* da3_drho);
/* Second derivative of the second- and third-order polar terms a2 and a3 by rho twice: 3 [A6]. */
TESSAREL_API void tessarel_calc_d2a2a3_drho2(const int32_t* n, const double* x, const int32_t* ipure, const double* t,
                                             const double* rho, const double* j2, const double* j3,
                                             const double* dj2_drho, const double* dj3_drho, const double* d2j2_drho2,
                                             const double* d2j3_drho2, double* d2a2_drho2, double* d2a3_drho2);
/* Third derivative of the second- and third-order polar terms a2 and a3 by rho three times: 3 [A9]. */
TESSAREL_API void tessarel_calc_d3a2a3_drho3(const int32_t* n, const double* x, const int32_t* ipure, const double* t,
                                             const double* rho, const double* j2, const double* j3,
                                             const double* dj2_drho, const double* dj3_drho, const double* d2j2_drho2,
                                             const double* d2j3_drho2, const double* d3j2_drho3,
                                             const double* d3j3_drho3, double* d3a2_drho3, double* d3a3_drho3);
/* Fourth derivative of the second- and third-order polar terms a2 and a3 by rho four times: 3 [A12]. */
TESSAREL_API void tessarel_calc_d4a2a3_drho4(const int32_t* n, const double* x, const int32_t* ipure, const double* t,
                                             const double* rho, const double* j2, const double* j3,
                                             const double* dj2_drho, const double* dj3_drho, const double* d2j2_drho2,
                                             const double* d2j3_drho2, const double* d3j2_drho3,
                                             const double* d3j3_drho3, const double* d4j2_drho4,
                                             const double* d4j3_drho4, double* d4a2_drho4, double* d4a3_drho4);
/* First derivative of the second- and third-order polar terms a2 and a3 by x: 3 x n. */
TESSAREL_API void tessarel_calc_da2a3_dx(const int32_t* n, const double* x, const int32_t* ipure, const double* t,
                                         const double* rho, const double* j2, const double* j3, const double* dj2_dx,
                                         const double* dj3_dx, double* da2_dx, double* da3_dx);
/* Second derivative of the second- and third-order polar terms a2 and a3 by x twice: 3 x n x n. */
TESSAREL_API void tessarel_calc_d2a2a3_dxdx(const int32_t* n, const double* x, const int32_t* ipure, const double* t,
                                            const double* rho, const double* j2, const double* j3, const double* dj2_dx,
                                            const double* dj3_dx, const double* d2j2_dxdx, const double* d2j3_dxdx,
                                            double* d2a2_dxdx, double* d2a3_dxdx);
/* Third derivative of the second- and third-order polar terms a2 and a3 by x three times: 3 x n x n x n. */
TESSAREL_API void tessarel_calc_d3a2a3_dxdxdx(const int32_t* n, const double* x, const int32_t* ipure, const double* t,
                                              const double* rho, const double* j2, const double* j3,
                                              const double* dj2_dx, const double* dj3_dx, const double* d2j2_dxdx,
                                              const double* d2j3_dxdx, const double* d3j2_dxdxdx,
                                              const double* d3j3_dxdxdx, double* d3a2_dxdxdx, double* d3a3_dxdxdx);
/* Second derivative of the second- and third-order polar terms a2 and a3 by t and rho: 3 [A3/K]. */
TESSAREL_API void tessarel_calc_d2a2a3_dtdrho(const int32_t* n, const double* x, const int32_t* ipure, const double* t,
                                              const double* rho, const double* j2, const double* j3,
                                              const double* dj2_dt, const double* dj3_dt, const double* dj2_drho,
                                              const double* dj3_drho, const double* d2j2_dtdrho,
                                              const double* d2j3_dtdrho, double* d2a2_dtdrho, double* d2a3_dtdrho);
/* Third derivative of the second- and third-order polar terms a2 and a3 by t and rho twice: 3 [A6/K]. */
TESSAREL_API void tessarel_calc_d3a2a3_dtdrho2(const int32_t* n, const double* x, const int32_t* ipure, const double* t,
                                               const double* rho, const double* j2, const double* j3,
                                               const double* dj2_dt, const double* dj3_dt, const double* dj2_drho,
                                               const double* dj3_drho, const double* d2j2_dtdrho,
                                               const double* d2j3_dtdrho, const double* d2j2_drho2,
                                               const double* d2j3_drho2, const double* d3j2_dtdrho2,
                                               const double* d3j3_dtdrho2, double* d3a2_dtdrho2, double* d3a3_dtdrho2);
/* Third derivative of the second- and third-order polar terms a2 and a3 by t twice and rho: 3 [A3/K2]. */
TESSAREL_API void tessarel_calc_d3a2a3_dt2drho(const int32_t* n, const double* x, const int32_t* ipure, const double* t,
                                               const double* rho, const double* j2, const double* j3,
                                               const double* dj2_dt, const double* dj3_dt, const double* dj2_drho,
                                               const double* dj3_drho, const double* d2j2_dt2, const double* d2j3_dt2,
                                               const double* d2j2_dtdrho, const double* d2j3_dtdrho,
                                               const double* d3j2_dt2drho, const double* d3j3_dt2drho,
                                               double* d3a2_dt2drho, double* d3a3_dt2drho);
/* Second derivative of the second- and third-order polar terms a2 and a3 by rho and x: 3 x n [A3]. */
TESSAREL_API void tessarel_calc_d2a2a3_drhodx(const int32_t* n, const double* x, const int32_t* ipure, const double* t,
                                              const double* rho, const double* j2, const double* j3,
                                              const double* dj2_drho, const double* dj3_drho, const double* dj2_dx,
                                              const double* dj3_dx, const double* d2j2_drhodx,
                                              const double* d2j3_drhodx, double* d2a2_drhodx, double* d2a3_drhodx);
/* Third derivative of the second- and third-order polar terms a2 and a3 by rho and x twice: 3 x n x n [A3]. */
TESSAREL_API void tessarel_calc_d3a2a3_drhodxdx(
    const int32_t* n, const double* x, const int32_t* ipure, const double* t, const double* rho, const double* j2,
    const double* j3, const double* dj2_drho, const double* dj3_drho, const double* dj2_dx, const double* dj3_dx,
    const double* d2j2_drhodx, const double* d2j3_drhodx, const double* d2j2_dxdx, const double* d2j3_dxdx,
    const double* d3j2_drhodxdx, const double* d3j3_drhodxdx, double* d3a2_drhodxdx, double* d3a3_drhodxdx);
/* Second derivative of the second- and third-order polar terms a2 and a3 by t and x: 3 x n [1/K]. */
TESSAREL_API void tessarel_calc_d2a2a3_dtdx(const int32_t* n, const double* x, const int32_t* ipure, const double* t,
                                            const double* rho, const double* j2, const double* j3, const double* dj2_dt,
                                            const double* dj3_dt, const double* dj2_dx, const double* dj3_dx,
                                            const double* d2j2_dtdx, const double* d2j3_dtdx, double* d2a2_dtdx,
                                            double* d2a3_dtdx);
/* Polar term of a for component 1 alone; u: its energy from calc_sigeps [K]. */
TESSAREL_API void tessarel_calc_a_pol(const double* t, const double* rho, const double* eta, const double* u,
                                      double* a);

/* ============================================================ states of fixed temperature and composition ====== */

/* The density iteration in pieces, on a fixed state of temperature and composition:
 *   zeta0r, zeta1r, zeta2r  moments per density, pi/6 sum x m d^k [A^k]; not read for n = 1 and in the simplified model
 *   conv       rho / eta = 1 / (pi/6 sum x m d^3) [1/A3]
 *   d          n segment diameters [A]
 *   dij        n x n pair diameters d_i d_j / (d_i + d_j) [A]; not read for n = 1 and in the simplified model
 *   m2es3, m2e2s3   the dispersion sums of calc_pertterm
 *   delta_t0   n x n x 5 x 5 association strengths at a contact value of 1, those of calc_deltaab with gij = 1 [A3];
 *              sites that the selected fluid has alike are read once, from the first of them;
 *              read for associating fluids */

/* Pressure and its first and second derivative by eta at constant t and x [Pa]. */
TESSAREL_API void tessarel_calc_p_eta12(const int32_t* n, const double* x, const double* t, const double* eta,
                                        const double* zeta0r, const double* zeta1r, const double* zeta2r,
                                        const double* conv, const double* d, const double* dij, const double* m2es3,
                                        const double* m2e2s3, const double* delta_t0, double* p, double* dp_deta,
                                        double* d2p_deta2);
/* Association term of z and its first and second derivative by eta; 0 where the fluid has none. */
TESSAREL_API void tessarel_calc_z_ass_eta12(const int32_t* n, const double* x, const double* t, const double* eta,
                                            const double* zeta0r, const double* zeta1r, const double* zeta2r,
                                            const double* conv, const double* d, const double* dij, const double* m2es3,
                                            const double* m2e2s3, const double* delta_t0, double* z, double* dz_deta,
                                            double* d2z_deta2);
/* Polar term of z and its first and second derivative by eta; 0 where the fluid has none. */
TESSAREL_API void tessarel_calc_z_pol_eta12(const int32_t* n, const double* x, const double* t, const double* eta,
                                            const double* zeta0r, const double* zeta1r, const double* zeta2r,
                                            const double* conv, const double* d, const double* dij, const double* m2es3,
                                            const double* m2e2s3, const double* delta_t0, double* z, double* dz_deta,
                                            double* d2z_deta2);
/* The density iteration: eta in as the start, out as the root at p; messages as calc_v. */
TESSAREL_API void tessarel_densiter(const int32_t* n, const double* x, const double* t, const double* p,
                                    const double* zeta0r, const double* zeta1r, const double* zeta2r,
                                    const double* conv, const double* d, const double* dij, const double* m2es3,
                                    const double* m2e2s3, const double* delta_t0, double* eta, char* errormsg,
                                    size_t errormsg_len);

#ifdef __cplusplus
}
#endif

#endif
