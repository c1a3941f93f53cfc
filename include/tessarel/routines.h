/* Tessarel: the routines beneath the host entries of <tessarel/tessarel.h>, for hosts that call the forward
 * calculations of the equation of state directly. Grouped as the source folders are.
 *
 * Select a fluid first (tessarel_setfluid). Calling rules as in tessarel.h: every argument is a pointer, arrays run
 * first index fastest, texts are blank-padded fields whose lengths follow by value behind all other arguments.
 *
 * COMMON ARGUMENTS, with the same meaning in every routine
 *   n          number of components, 1 to 20 and at most that of the selected fluid: its first n components
 *   x          n mole fractions. Taken as they are: not normalised, and not required to be the selected composition
 *   ipure      0: the mixture x; i of 1 to n: component i alone, x is then not read
 *   t          temperature [K]
 *   p          pressure [Pa]
 *   v          molar volume [m3/mol]
 *   rho        number density [molecules per cubic angstrom], 6.022045e-7 / v
 *   eta        packing fraction
 *   phase      1 liquid-like root of the density, 2 vapour-like root
 *   err, errormsg   "No errors" after success, otherwise a message; each routine tells which
 *   status     0, or 1 when the iteration of the association sites has used up its 1000 passes; values are then those
 *              of the last pass. 1 also when the call was refused. May be null
 *
 * DERIVATIVES. The name tells the variables: d2z_dtdrho is the mixed second derivative of z by t and rho. The variables
 * are t, rho and the n fractions x, which are independent of each other (no constraint on their sum): what is not named
 * is held constant. A derivative by x has one index more than the quantity, the last, with n values: the derivative of
 * a number by x is an array of n, entry (i) at [i]; a second one n x n, entry (i,j) at [i + n j]; a third n x n x n,
 * entry (i,j,k) at [i + n (j + n k)]. Indices in this text run from 0. Derivatives by n (..._dn, _dndn, _dndndn) are by
 * mole numbers at a total of one mole. A unit is that of the quantity divided by those of the variables. Where a
 * building block takes both x and ipure, a derivative by x is that of the mixture x, whatever ipure.
 *
 * BUILDING BLOCKS. A member of a derivative family takes the arguments of the value function, and then the derivatives
 * of those arguments that it needs, in this order: first order by t, by rho, by x; then second order by t t, t rho,
 * t x, rho rho, rho x, x x; and so on. The packing fraction and the moments zeta2, zeta3 are linear in rho and in x, so
 * their second derivatives by rho or by x vanish and are no arguments. What a family scales by rho is said there.
 *
 * REFUSED CALLS. With a null pointer, or an n, ipure, component number or phase code out of range, results that are
 * single numbers become NaN and arrays are left alone; routines with an error text set that text instead. Numbers
 * outside the domain of the formulas (t of 0 or below, eta of 1 or more, NaN) give NaN or infinities and no message.
 *
 * Not thread safe, as everything here.
 */
#ifndef TESSAREL_ROUTINES_H
#define TESSAREL_ROUTINES_H

#include "tessarel/tessarel.h"

#ifdef __cplusplus
extern "C" {
#endif

/* ============================================================ fluid ============================================ */

/* Readers of fluid data. They fill the record of the selected fluid and leave its number of components and its
 * composition as they are; tessarel_setfluid is the usual way in. Names and paths may have any length.
 * Messages: "Error opening fluid data file of <name>", "Unexpected data in fluid data file "<name>.saf"...",
 * "Place of a component must be 1 to 20...", "TESSAREL error: null pointer argument...". */

/* Reads the components named in `fluids`, as many texts as the record has components, from the database or the files
 * <name>.saf in the fluid directory. Stops at the first that fails. */
TESSAREL_API void tessarel_readfluids(const char* fluids, char* errormsg, size_t fluids_len, size_t errormsg_len);
/* Reads the file `filename`, a full path with extension, into place i, counted from 1. */
TESSAREL_API void tessarel_readfluidsfile(const char* filename, const int32_t* i, char* errormsg, size_t filename_len,
                                          size_t errormsg_len);
/* Reads the record `filename` ("<name>.saf") of the database in the directory `fluiddb` into place i, from 1. */
TESSAREL_API void tessarel_readfluidsdb(const char* fluiddb, const char* filename, const int32_t* i, char* errormsg,
                                        size_t fluiddb_len, size_t filename_len, size_t errormsg_len);
/* The association parameters between unlike components from those of the components, and the flag of association. */
TESSAREL_API void tessarel_setassocpar(void);

/* The first 32 characters of `str` with A to Z in lower case. */
TESSAREL_API void tessarel_tolower_tessarel(char* result, const char* str, size_t result_len, size_t str_len);
/* Rows of the record `name` of the database in the directory `fluiddb`: 255 texts. Returns the number of rows, 0 when
 * there is no such record; rows behind them are left alone. status: 1 with rows, else 0. */
TESSAREL_API int32_t tessarel_getfluid(const char* fluiddb, const char* name, char* fluiddata, int32_t* status,
                                       size_t fluiddb_len, size_t name_len, size_t fluiddata_len);
/* Directory of the library loaded as `name` ("TESSAREL"), ending in its separator, and the fluid directory beside it;
 * "/opt/Ostrakine/fluids/" when they cannot be told. */
TESSAREL_API void tessarel_modulepath(char* result, const char* name, size_t result_len, size_t name_len);
TESSAREL_API void tessarel_fluidpath(char* result, const char* name, size_t result_len, size_t name_len);
/* Names of the files in `directory`, which ends in a separator, that match `pattern` (*, ?, [...]): the first 500 in
 * ascending order. `list` is an array of 500 texts, blank from the last name on. */
TESSAREL_API void tessarel_searchdirectory(const char* directory, const char* pattern, char* list, size_t directory_len,
                                           size_t pattern_len, size_t list_len);

/* Binary interaction parameters. Messages: "Error opening mixture parameter file BIPs.mix...",
 * "Unexpected data in mixture parameter file BIPs.mix...", "TESSAREL error: null pointer argument...". */

/* The parameters of the selected mixture from BIPs.mix in the library's directory; 0 for a pair that is not there. For
 * one component errormsg stays as it is. */
TESSAREL_API void tessarel_readbips(char* errormsg, size_t errormsg_len);
/* Reads up to nrows rows, at most 1000, of the file or of the database record `filename`.
 *   bip  out  1000 entries; those of rows that are not there are left alone
 *   cn   out  1000 x 2 texts: the two names of row k at [k] and [k + 1000] */
TESSAREL_API void tessarel_readbipsfile(const char* filename, const int32_t* nrows, double* bip, char* cn,
                                        char* errormsg, size_t filename_len, size_t cn_len, size_t errormsg_len);
TESSAREL_API void tessarel_readbipsdb(const char* fluiddb, const char* filename, double* bip, char* cn, char* errormsg,
                                      size_t fluiddb_len, size_t filename_len, size_t cn_len, size_t errormsg_len);
/* The parameters at temperature t, n x n, and their derivatives by t. */
TESSAREL_API void tessarel_ps_calc_kij(const int32_t* n, const double* t, double* kij);
TESSAREL_API void tessarel_calc_dkij_dt(const int32_t* n, const double* t, double* dkij);
TESSAREL_API void tessarel_calc_d2kij_dt2(const int32_t* n, const double* t, double* d2kij);
TESSAREL_API void tessarel_calc_d3kij_dt3(const int32_t* n, const double* t, double* d3kij);

/* Ideal-gas heat capacity of component i, from 1 [J/(mol K)], its slope, and the integrals of cp0 dt [J/mol] and of
 * cp0/t dt [J/(mol K)] from 298.15 K; then the sums over a mixture. Returned; NaN when refused. */
TESSAREL_API double tessarel_calc_cp0(const int32_t* i, const double* t);
TESSAREL_API double tessarel_calc_dcp0_dt(const int32_t* i, const double* t);
TESSAREL_API double tessarel_calc_icp0_dt(const int32_t* i, const double* t);
TESSAREL_API double tessarel_calc_icp0_t_dt(const int32_t* i, const double* t);
TESSAREL_API double tessarel_calc_cp0mix(const int32_t* n, const double* x, const double* t);
TESSAREL_API double tessarel_calc_dcp0mix_dt(const int32_t* n, const double* x, const double* t);
TESSAREL_API double tessarel_calc_icp0mix_dt(const int32_t* n, const double* x, const double* t);
TESSAREL_API double tessarel_calc_icp0mix_t_dt(const int32_t* n, const double* x, const double* t);

/* ============================================================ eos: state functions ============================= */

/* Residual Helmholtz energy a = A_res / (R T) and its derivatives. Plain derivatives, nothing scaled. */
TESSAREL_API void tessarel_calc_a(const int32_t* n, const double* x, const double* t, const double* rho, double* a);
TESSAREL_API void tessarel_calc_da_dt(const int32_t* n, const double* x, const double* t, const double* rho,
                                      double* da_dt);
TESSAREL_API void tessarel_calc_d2a_dt2(const int32_t* n, const double* x, const double* t, const double* rho,
                                        double* d2a_dt2);
TESSAREL_API void tessarel_calc_d3a_dt3(const int32_t* n, const double* x, const double* t, const double* rho,
                                        double* d3a_dt3);
TESSAREL_API void tessarel_calc_da_drho(const int32_t* n, const double* x, const double* t, const double* rho,
                                        double* da_drho);
TESSAREL_API void tessarel_calc_d2a_drho2(const int32_t* n, const double* x, const double* t, const double* rho,
                                          double* d2a_drho2);
TESSAREL_API void tessarel_calc_d3a_drho3(const int32_t* n, const double* x, const double* t, const double* rho,
                                          double* d3a_drho3);
TESSAREL_API void tessarel_calc_d4a_drho4(const int32_t* n, const double* x, const double* t, const double* rho,
                                          double* d4a_drho4);
TESSAREL_API void tessarel_calc_da_dx(const int32_t* n, const double* x, const double* t, const double* rho,
                                      double* da_dx);
TESSAREL_API void tessarel_calc_d2a_dxdx(const int32_t* n, const double* x, const double* t, const double* rho,
                                         double* d2a_dxdx);
TESSAREL_API void tessarel_calc_d3a_dxdxdx(const int32_t* n, const double* x, const double* t, const double* rho,
                                           double* d3a_dxdxdx);
TESSAREL_API void tessarel_calc_d2a_dtdx(const int32_t* n, const double* x, const double* t, const double* rho,
                                         double* d2a_dtdx);
TESSAREL_API void tessarel_calc_d2a_drhodx(const int32_t* n, const double* x, const double* t, const double* rho,
                                           double* d2a_drhodx);
/* By mole numbers at constant t and rho. */
TESSAREL_API void tessarel_calc_da_dn(const int32_t* n, const double* x, const double* t, const double* rho,
                                      double* da_dn);
TESSAREL_API void tessarel_calc_d2a_dndn(const int32_t* n, const double* x, const double* t, const double* rho,
                                         double* d2a_dndn);
TESSAREL_API void tessarel_calc_d3a_dndndn(const int32_t* n, const double* x, const double* t, const double* rho,
                                           double* d3a_dndndn);

/* Compressibility factor z = p / (rho k t) and its derivatives. Plain derivatives, nothing scaled. */
TESSAREL_API void tessarel_calc_z(const int32_t* n, const double* x, const int32_t* ipure, const double* t,
                                  const double* rho, double* z);
TESSAREL_API void tessarel_calc_dz_drho(const int32_t* n, const double* x, const int32_t* ipure, const double* t,
                                        const double* rho, double* dz_drho);
TESSAREL_API void tessarel_calc_d2z_drho2(const int32_t* n, const double* x, const int32_t* ipure, const double* t,
                                          const double* rho, double* d2z_drho2);
TESSAREL_API void tessarel_calc_d3z_drho3(const int32_t* n, const double* x, const int32_t* ipure, const double* t,
                                          const double* rho, double* d3z_drho3);
TESSAREL_API void tessarel_calc_dz_dt(const int32_t* n, const double* x, const double* t, const double* rho,
                                      double* dz_dt);
TESSAREL_API void tessarel_calc_d2z_dt2(const int32_t* n, const double* x, const double* t, const double* rho,
                                        double* d2z_dt2);
TESSAREL_API void tessarel_calc_d2z_dtdrho(const int32_t* n, const double* x, const double* t, const double* rho,
                                           double* d2z_dtdrho);
TESSAREL_API void tessarel_calc_dz_dx(const int32_t* n, const double* x, const double* t, const double* rho,
                                      double* dz_dx);
TESSAREL_API void tessarel_calc_d2z_dxdx(const int32_t* n, const double* x, const double* t, const double* rho,
                                         double* d2z_dxdx);
/* By mole numbers at constant t and total volume, so the density follows the amount: a central difference with a step
 * of 1e-6 mol. */
TESSAREL_API void tessarel_calc_dz_dn(const int32_t* n, const double* x, const double* t, const double* rho,
                                      double* dz_dn);
/* By mole numbers at constant t and rho. */
TESSAREL_API void tessarel_calc_d2z_dndn(const int32_t* n, const double* x, const double* t, const double* rho,
                                         double* d2z_dndn);
/* By p at constant t and x, at the vapour-like root of (t, p) whatever the state [1/Pa]. */
TESSAREL_API void tessarel_calc_dz_dp(const int32_t* n, const double* x, const double* t, const double* p,
                                      double* dz_dp);

/* Preparing and assembling apart: _prep fills a record of the building blocks of a state, _base makes the value from
 * it, without any other work. A record prepared for a derivative serves the lower orders by the same variable too:
 * calc_a_base also reads the record of calc_da_dt_prep, of calc_d2a_dxdx_prep, of calc_d2a_dtdx_prep. On any other
 * record, a null one, or with another n, _base gives NaN (arrays are left alone). x and rho of _base are those of
 * _prep. */
typedef struct tessarel_blocks tessarel_blocks;
/* A new, empty record; null when there is no memory. */
TESSAREL_API tessarel_blocks* tessarel_blocks_new(void);
/* Releases a record; null is tolerated. */
TESSAREL_API void tessarel_blocks_free(tessarel_blocks* blocks);
TESSAREL_API void tessarel_calc_a_prep(const int32_t* n, const double* x, const double* t, const double* rho,
                                       tessarel_blocks* blocks, int32_t* status);
TESSAREL_API void tessarel_calc_a_base(const int32_t* n, const double* x, const double* rho,
                                       const tessarel_blocks* blocks, double* a);
TESSAREL_API void tessarel_calc_da_dt_prep(const int32_t* n, const double* x, const double* t, const double* rho,
                                           tessarel_blocks* blocks, int32_t* status);
TESSAREL_API void tessarel_calc_da_dt_base(const int32_t* n, const double* x, const double* rho,
                                           const tessarel_blocks* blocks, double* da_dt);
TESSAREL_API void tessarel_calc_d2a_dt2_prep(const int32_t* n, const double* x, const double* t, const double* rho,
                                             tessarel_blocks* blocks, int32_t* status);
TESSAREL_API void tessarel_calc_d2a_dt2_base(const int32_t* n, const double* x, const double* rho,
                                             const tessarel_blocks* blocks, double* d2a_dt2);
TESSAREL_API void tessarel_calc_d3a_dt3_prep(const int32_t* n, const double* x, const double* t, const double* rho,
                                             tessarel_blocks* blocks, int32_t* status);
TESSAREL_API void tessarel_calc_d3a_dt3_base(const int32_t* n, const double* x, const double* rho,
                                             const tessarel_blocks* blocks, double* d3a_dt3);
TESSAREL_API void tessarel_calc_da_dx_prep(const int32_t* n, const double* x, const double* t, const double* rho,
                                           tessarel_blocks* blocks, int32_t* status);
TESSAREL_API void tessarel_calc_da_dx_base(const int32_t* n, const double* x, const double* rho,
                                           const tessarel_blocks* blocks, double* da_dx);
TESSAREL_API void tessarel_calc_d2a_dxdx_prep(const int32_t* n, const double* x, const double* t, const double* rho,
                                              tessarel_blocks* blocks, int32_t* status);
TESSAREL_API void tessarel_calc_d2a_dxdx_base(const int32_t* n, const double* x, const double* rho,
                                              const tessarel_blocks* blocks, double* d2a_dxdx);
TESSAREL_API void tessarel_calc_d3a_dxdxdx_prep(const int32_t* n, const double* x, const double* t, const double* rho,
                                                tessarel_blocks* blocks, int32_t* status);
TESSAREL_API void tessarel_calc_d3a_dxdxdx_base(const int32_t* n, const double* x, const double* rho,
                                                const tessarel_blocks* blocks, double* d3a_dxdxdx);
TESSAREL_API void tessarel_calc_d2a_dtdx_prep(const int32_t* n, const double* x, const double* t, const double* rho,
                                              tessarel_blocks* blocks, int32_t* status);
TESSAREL_API void tessarel_calc_d2a_dtdx_base(const int32_t* n, const double* x, const double* rho,
                                              const tessarel_blocks* blocks, double* d2a_dtdx);
TESSAREL_API void tessarel_calc_z_prep(const int32_t* n, const double* x, const int32_t* ipure, const double* t,
                                       const double* rho, tessarel_blocks* blocks, int32_t* status);
TESSAREL_API void tessarel_calc_z_base(const int32_t* n, const double* x, const double* rho,
                                       const tessarel_blocks* blocks, double* z);
TESSAREL_API void tessarel_calc_dz_drho_prep(const int32_t* n, const double* x, const int32_t* ipure, const double* t,
                                             const double* rho, tessarel_blocks* blocks, int32_t* status);
TESSAREL_API void tessarel_calc_dz_drho_base(const int32_t* n, const double* x, const double* rho,
                                             const tessarel_blocks* blocks, double* dz_drho);
TESSAREL_API void tessarel_calc_d2z_drho2_prep(const int32_t* n, const double* x, const int32_t* ipure, const double* t,
                                               const double* rho, tessarel_blocks* blocks, int32_t* status);
TESSAREL_API void tessarel_calc_d2z_drho2_base(const int32_t* n, const double* x, const double* rho,
                                               const tessarel_blocks* blocks, double* d2z_drho2);
TESSAREL_API void tessarel_calc_d3z_drho3_prep(const int32_t* n, const double* x, const int32_t* ipure, const double* t,
                                               const double* rho, tessarel_blocks* blocks, int32_t* status);
TESSAREL_API void tessarel_calc_d3z_drho3_base(const int32_t* n, const double* x, const double* rho,
                                               const tessarel_blocks* blocks, double* d3z_drho3);
TESSAREL_API void tessarel_calc_dz_dt_prep(const int32_t* n, const double* x, const double* t, const double* rho,
                                           tessarel_blocks* blocks, int32_t* status);
TESSAREL_API void tessarel_calc_dz_dt_base(const int32_t* n, const double* x, const double* rho,
                                           const tessarel_blocks* blocks, double* dz_dt);
TESSAREL_API void tessarel_calc_d2z_dt2_prep(const int32_t* n, const double* x, const double* t, const double* rho,
                                             tessarel_blocks* blocks, int32_t* status);
TESSAREL_API void tessarel_calc_d2z_dt2_base(const int32_t* n, const double* x, const double* rho,
                                             const tessarel_blocks* blocks, double* d2z_dt2);
TESSAREL_API void tessarel_calc_d2z_dtdrho_prep(const int32_t* n, const double* x, const double* t, const double* rho,
                                                tessarel_blocks* blocks, int32_t* status);
TESSAREL_API void tessarel_calc_d2z_dtdrho_base(const int32_t* n, const double* x, const double* rho,
                                                const tessarel_blocks* blocks, double* d2z_dtdrho);
TESSAREL_API void tessarel_calc_dz_dx_prep(const int32_t* n, const double* x, const double* t, const double* rho,
                                           tessarel_blocks* blocks, int32_t* status);
TESSAREL_API void tessarel_calc_dz_dx_base(const int32_t* n, const double* x, const double* rho,
                                           const tessarel_blocks* blocks, double* dz_dx);
TESSAREL_API void tessarel_calc_d2z_dxdx_prep(const int32_t* n, const double* x, const double* t, const double* rho,
                                              tessarel_blocks* blocks, int32_t* status);
TESSAREL_API void tessarel_calc_d2z_dxdx_base(const int32_t* n, const double* x, const double* rho,
                                              const tessarel_blocks* blocks, double* d2z_dxdx);

/* Pressure and its derivatives [Pa, Pa/K, Pa A3 ...]. calc_p: of the selected fluid and composition. */
TESSAREL_API void tessarel_calc_p(const double* t, const double* v, double* p);
TESSAREL_API void tessarel_calc_p_rho(const int32_t* n, const double* x, const double* t, const double* rho, double* p);
TESSAREL_API void tessarel_calc_dp_dt(const int32_t* n, const double* x, const double* t, const double* rho,
                                      double* dp_dt);
TESSAREL_API void tessarel_calc_d2p_dt2(const int32_t* n, const double* x, const double* t, const double* rho,
                                        double* d2p_dt2);
TESSAREL_API void tessarel_calc_dp_drho(const int32_t* n, const double* x, const double* t, const double* rho,
                                        double* dp_drho);
TESSAREL_API void tessarel_calc_d2p_drho2(const int32_t* n, const double* x, const double* t, const double* rho,
                                          double* d2p_drho2);
TESSAREL_API void tessarel_calc_d3p_drho3(const int32_t* n, const double* x, const double* t, const double* rho,
                                          double* d3p_drho3);
TESSAREL_API void tessarel_calc_d2p_dtdrho(const int32_t* n, const double* x, const double* t, const double* rho,
                                           double* d2p_dtdrho);
TESSAREL_API void tessarel_calc_dp_dx(const int32_t* n, const double* x, const double* t, const double* rho,
                                      double* dp_dx);
/* By mole numbers at constant t and rho; the second order at constant t and total volume, by central differences with a
 * step of 1e-6 mol, whose first index is the component stepped. */
TESSAREL_API void tessarel_calc_dp_dn(const int32_t* n, const double* x, const double* t, const double* rho,
                                      double* dp_dn);
TESSAREL_API void tessarel_calc_d2p_dndn(const int32_t* n, const double* x, const double* t, const double* rho,
                                         double* d2p_dndn);
/* Component ipure, or the first alone for n = 1: p and its derivatives by eta at constant t [Pa]. With ipure = 0 and
 * n above 1 all fractions count as 1. */
TESSAREL_API void tessarel_calc_p_deta(const int32_t* n, const int32_t* ipure, const double* t, const double* eta,
                                       double* p, double* dp_deta, double* d2p_deta2, double* d3p_deta3);

/* Molar volume of the selected fluid; v is written also without convergence. Messages: "No convergence calculating
 * density from T and P", "Phase code of the density must be 1 or 2...", "TESSAREL error: no fluid selected...",
 * "TESSAREL error: null pointer argument...". */
TESSAREL_API void tessarel_calc_v(const double* t, const double* p, const int32_t* phase, double* v, char* errormsg,
                                  size_t errormsg_len);
/* Number density; phase may also be -1: the root of lower Gibbs energy, the vapour-like one on a tie. A failure to
 * converge is silent. */
TESSAREL_API void tessarel_calc_rho(const int32_t* n, const double* x, const double* t, const double* p,
                                    const int32_t* phase, double* rho);
/* Packing fraction of a number density and back. */
TESSAREL_API void tessarel_calc_eta_rho(const int32_t* n, const double* x, const int32_t* ipure, const double* t,
                                        const double* rho, double* eta);
TESSAREL_API void tessarel_calc_rho_eta(const int32_t* n, const double* x, const int32_t* ipure, const double* t,
                                        const double* eta, double* rho);

/* The density iteration, piece by piece, on a fixed state of temperature and composition:
 *   zeta0r, zeta1r, zeta2r  moments per density, pi/6 sum x m d^k [A^k]; not read for n = 1 and in the simplified model
 *   conv       rho / eta = 1 / (pi/6 sum x m d^3) [1/A3]
 *   d          n segment diameters [A]
 *   dij        n x n pair diameters d_i d_j / (d_i + d_j) [A]; not read for n = 1 and in the simplified model
 *   m2es3, m2e2s3   the dispersion sums of calc_pertterm
 *   delta_t0   n x n x 5 x 5 association strengths at a contact value of 1, those of calc_deltaab with gij = 1 [A3];
 *              sites that the selected fluid has alike are read once, from the first of them;
 *              read for associating fluids
 * calc_p_eta12 gives p with its derivatives by eta at constant t and x [Pa]; the other two the association and the
 * polar term of z likewise, 0 where the fluid has none. densiter starts from eta and updates it; messages as calc_v. */
TESSAREL_API void tessarel_calc_p_eta12(const int32_t* n, const double* x, const double* t, const double* eta,
                                        const double* zeta0r, const double* zeta1r, const double* zeta2r,
                                        const double* conv, const double* d, const double* dij, const double* m2es3,
                                        const double* m2e2s3, const double* delta_t0, double* p, double* dp_deta,
                                        double* d2p_deta2);
TESSAREL_API void tessarel_calc_z_ass_eta12(const int32_t* n, const double* x, const double* t, const double* eta,
                                            const double* zeta0r, const double* zeta1r, const double* zeta2r,
                                            const double* conv, const double* d, const double* dij, const double* m2es3,
                                            const double* m2e2s3, const double* delta_t0, double* z, double* dz_deta,
                                            double* d2z_deta2);
TESSAREL_API void tessarel_calc_z_pol_eta12(const int32_t* n, const double* x, const double* t, const double* eta,
                                            const double* zeta0r, const double* zeta1r, const double* zeta2r,
                                            const double* conv, const double* d, const double* dij, const double* m2es3,
                                            const double* m2e2s3, const double* delta_t0, double* z, double* dz_deta,
                                            double* d2z_deta2);
TESSAREL_API void tessarel_densiter(const int32_t* n, const double* x, const double* t, const double* p,
                                    const double* zeta0r, const double* zeta1r, const double* zeta2r,
                                    const double* conv, const double* d, const double* dij, const double* m2es3,
                                    const double* m2e2s3, const double* delta_t0, double* eta, char* errormsg,
                                    size_t errormsg_len);

/* Functions with their first three derivatives in one pass. _rho123: by rho, each scaled by rho to its order; _eta123:
 * by eta, unscaled. Contact values: gii n values (the like pairs), gij n x n. zeta2 varies with eta, in proportion. */
TESSAREL_API void tessarel_calc_g_rho123_simp(const double* eta, double* g, double* g1, double* g2, double* g3);
TESSAREL_API void tessarel_calc_gii_rho123(const int32_t* n, const double* d, const double* zeta2, const double* zeta3,
                                           double* g, double* g1, double* g2, double* g3);
TESSAREL_API void tessarel_calc_gij_rho123(const int32_t* n, const double* d, const double* zeta2, const double* zeta3,
                                           double* g, double* g1, double* g2, double* g3);
TESSAREL_API void tessarel_calc_gij_eta123(const int32_t* n, const double* d, const double* zeta2, const double* zeta3,
                                           double* g, double* g1, double* g2, double* g3);
/* c1 and its derivatives; i2, and the first to third derivatives of (eta i1) and (eta i2), all at the mean segment
 * number of the last set_mmean. */
TESSAREL_API void tessarel_calc_c_eta123(const double* eta, double* c1, double* dc1, double* d2c1, double* d3c1);
TESSAREL_API void tessarel_calc_intgpert_eta123(const double* eta, double* i2, double* di1, double* di2, double* d2i1,
                                                double* d2i2, double* d3i1, double* d3i2);

/* Enthalpy, internal energy [J/mol] and entropy [J/(mol K)] of the selected fluid at consistent t, p, v. The reference
 * is the ideal gas at 298.15 K and 1e5 Pa, with the enthalpies of formation. Messages: "No errors",
 * "TESSAREL error: no fluid selected...", "TESSAREL error: null pointer argument...". */
TESSAREL_API void tessarel_calc_hsu(const double* t, const double* p, const double* v, double* h, double* s, double* u,
                                    char* errormsg, size_t errormsg_len);
/* Isochoric heat capacity [J/(mol K)] and its slope by t at constant rho [J/(mol K2)]. */
TESSAREL_API void tessarel_calc_cv(const int32_t* n, const double* x, const double* t, const double* rho, double* cv);
TESSAREL_API void tessarel_calc_dcv_dt(const int32_t* n, const double* x, const double* t, const double* rho,
                                       double* dcv_dt);
/* The second-order properties of tessarel_tmdprop as molar values: cv [J/(mol K)], pressure derivatives by t at
 * constant v and by v [m3/mol] at constant t, in Pa, and dcv/dt at constant v [J/(mol K2)]. */
TESSAREL_API void tessarel_calc_sectmdprop(const int32_t* n, const double* x, const double* t, const double* rho,
                                           double* cv, double* dpdt, double* dpdv, double* d2pdt2, double* d2pdv2,
                                           double* d2pdtdv, double* dcvdt);

/* ============================================================ eos: fugacity coefficients ======================= */

/* Logarithms of the fugacity coefficients, n values, and their derivatives. A matrix has the component of lnphi as its
 * first index and the component by whose fraction or mole number the derivative is taken as its second. Derivatives by
 * p in 1/Pa. For n = 1 the terms in the composition derivatives drop out. */

/* At given t and p, with a density solve; phase 1, 2, or -1 for the root of lower Gibbs energy. Derivatives by t at
 * constant p, by p at constant t, by x and by mole numbers at constant t and p. A density that did not converge passes
 * silently. */
TESSAREL_API void tessarel_calc_lnphi(const int32_t* n, const double* x, const double* t, const double* p,
                                      const int32_t* phase, double* lnphi);
TESSAREL_API void tessarel_calc_lnphi_tp(const int32_t* n, const double* x, const double* t, const double* p,
                                         const int32_t* phase, double* lnphi, double* dlnphi_dt, double* dlnphi_dp);
TESSAREL_API void tessarel_calc_lnphi_n(const int32_t* n, const double* x, const double* t, const double* p,
                                        const int32_t* phase, double* lnphi, double* dlnphi_dn);
TESSAREL_API void tessarel_calc_lnphi_tpn(const int32_t* n, const double* x, const double* t, const double* p,
                                          const int32_t* phase, double* lnphi, double* dlnphi_dt, double* dlnphi_dp,
                                          double* dlnphi_dn);
TESSAREL_API void tessarel_calc_dlnphi_dt(const int32_t* n, const double* x, const double* t, const double* p,
                                          const int32_t* phase, double* dlnphi_dt);
TESSAREL_API void tessarel_calc_dlnphi_dp(const int32_t* n, const double* x, const double* t, const double* p,
                                          const int32_t* phase, double* dlnphi_dp);
TESSAREL_API void tessarel_calc_dlnphi_dx(const int32_t* n, const double* x, const double* t, const double* p,
                                          const int32_t* phase, double* dlnphi_dx);
TESSAREL_API void tessarel_calc_dlnphi_dn(const int32_t* n, const double* x, const double* t, const double* p,
                                          const int32_t* phase, double* dlnphi_dn);
/* The same at a density that belongs to t and p, without the solve. */
TESSAREL_API void tessarel_calc_lnphi_tprho(const int32_t* n, const double* x, const double* t, const double* p,
                                            const double* rho, double* lnphi);
TESSAREL_API void tessarel_calc_lnphi_tpxn(const int32_t* n, const double* x, const double* t, const double* p,
                                           const double* rho, double* dlnphi_dt, double* dlnphi_dp, double* dlnphi_dx,
                                           double* dlnphi_dn);
/* At given t and rho. Derivatives at constant rho but for the two by p and by rho, which are at constant t. */
TESSAREL_API void tessarel_calc_lnphi_rho(const int32_t* n, const double* x, const double* t, const double* rho,
                                          double* lnphi);
TESSAREL_API void tessarel_calc_dlnphi_dt_rho(const int32_t* n, const double* x, const double* t, const double* rho,
                                              double* dlnphi_dt);
TESSAREL_API void tessarel_calc_dlnphi_dp_rho(const int32_t* n, const double* x, const double* t, const double* rho,
                                              double* dlnphi_dp);
TESSAREL_API void tessarel_calc_dlnphi_drho_t(const int32_t* n, const double* x, const double* t, const double* rho,
                                              double* dlnphi_drho);
TESSAREL_API void tessarel_calc_dlnphi_dx_rho(const int32_t* n, const double* x, const double* t, const double* rho,
                                              double* dlnphi_dx);
TESSAREL_API void tessarel_calc_dlnphi_dn_rho(const int32_t* n, const double* x, const double* t, const double* rho,
                                              double* dlnphi_dn);
TESSAREL_API void tessarel_calc_d2lnphi_dxdx_rho(const int32_t* n, const double* x, const double* t, const double* rho,
                                                 double* d2lnphi_dxdx);
TESSAREL_API void tessarel_calc_d2lnphi_dndn_rho(const int32_t* n, const double* x, const double* t, const double* rho,
                                                 double* d2lnphi_dndn);
/* ln(x_i p) + lnphi_i with p in Pa, and its derivatives by mole numbers at constant t and rho; fractions above 0. */
TESSAREL_API void tessarel_calc_lnfug_rho(const int32_t* n, const double* x, const double* t, const double* rho,
                                          double* lnfug);
TESSAREL_API void tessarel_calc_dlnfug_dn_rho(const int32_t* n, const double* x, const double* t, const double* rho,
                                              double* dlnfug_dn);
TESSAREL_API void tessarel_calc_d2lnfug_dndn_rho(const int32_t* n, const double* x, const double* t, const double* rho,
                                                 double* d2lnfug_dndn);
/* Component 1 of the selected fluid as a pure fluid: both roots at t and p. */
TESSAREL_API void tessarel_calc_lnphi_rho_pure(const double* t, const double* p, double* lnphi_l, double* lnphi_v,
                                               double* rho_l, double* rho_v);
TESSAREL_API void tessarel_calc_lnphi_eta(const double* t, const double* p, double* lnphi_l, double* lnphi_v);
TESSAREL_API void tessarel_calc_dlnphi_dp_rho_pure(const double* t, const double* p, const double* rho_l,
                                                   const double* rho_v, double* d_l, double* d_v);
TESSAREL_API void tessarel_calc_dlnphi_dt_rho_pure(const double* t, const double* p, const double* rho_l,
                                                   const double* rho_v, double* d_l, double* d_v);

/* ============================================================ eos: hard spheres and chains ===================== */

/* Segment diameters d [A], n values, sigma (1 - parat exp(-3 epsil / t)); with ipure = i only entry i is written. The
 * derivatives by t follow from a lower one: the first from d, the second and the third from dd (d2d is not read). */
TESSAREL_API void tessarel_calc_d(const int32_t* n, const int32_t* ipure, const double* t, double* d);
TESSAREL_API void tessarel_calc_dd_dt(const int32_t* n, const double* t, const double* d, double* dd);
TESSAREL_API void tessarel_calc_d2d_dt2(const int32_t* n, const double* t, const double* dd, double* d2d);
TESSAREL_API void tessarel_calc_d3d_dt3(const int32_t* n, const double* t, const double* dd, const double* d2d,
                                        double* d3d);
TESSAREL_API void tessarel_calc_d_dt123(const int32_t* n, const double* t, const double* d, double* dd, double* d2d,
                                        double* d3d);

/* Pair diameters d_i d_j / (d_i + d_j) [A], n x n. */
TESSAREL_API void tessarel_calc_dij(const int32_t* n, const double* d, double* dij);
TESSAREL_API void tessarel_calc_ddij_dt(const int32_t* n, const double* d, const double* dd_dt, double* ddij_dt);
TESSAREL_API void tessarel_calc_d2dij_dt2(const int32_t* n, const double* d, const double* dd_dt, const double* d2d_dt2,
                                          double* d2dij_dt2);
TESSAREL_API void tessarel_calc_d3dij_dt3(const int32_t* n, const double* d, const double* dd_dt, const double* d2d_dt2,
                                          const double* d3d_dt3, double* d3dij_dt3);

/* Moments of the diameter zeta_k = pi/6 rho sum x_i m_i d_i^k, k of 0 to 3. */
TESSAREL_API void tessarel_calc_zeta(const int32_t* n, const double* x, const int32_t* ipure, const double* rho,
                                     const double* d, const int32_t* k, double* zeta);
TESSAREL_API void tessarel_calc_dzeta_dt(const int32_t* n, const double* x, const int32_t* ipure, const double* rho,
                                         const double* d, const int32_t* k, const double* dd_dt, double* dzeta_dt);
TESSAREL_API void tessarel_calc_d2zeta_dt2(const int32_t* n, const double* x, const int32_t* ipure, const double* rho,
                                           const double* d, const int32_t* k, const double* dd_dt,
                                           const double* d2d_dt2, double* d2zeta_dt2);
TESSAREL_API void tessarel_calc_d3zeta_dt3(const int32_t* n, const double* x, const int32_t* ipure, const double* rho,
                                           const double* d, const int32_t* k, const double* dd_dt,
                                           const double* d2d_dt2, const double* d3d_dt3, double* d3zeta_dt3);
TESSAREL_API void tessarel_calc_dzeta_dx(const int32_t* n, const double* x, const int32_t* ipure, const double* rho,
                                         const double* d, const int32_t* k, double* dzeta_dx);
TESSAREL_API void tessarel_calc_d2zeta_dxdt(const int32_t* n, const double* x, const int32_t* ipure, const double* rho,
                                            const double* d, const int32_t* k, const double* dd_dt,
                                            double* d2zeta_dxdt);

/* Contact values of the pairs, n x n; the form of one diameter for n = 1 and, in entry (i,i) alone, for ipure = i.
 * Derivatives by rho carry a factor rho for each order in rho. Derivatives by eta are unscaled; the density is what
 * changes eta, so zeta2 follows in proportion. In mixed ones the derivative by eta or rho is taken first. */
TESSAREL_API void tessarel_calc_gij(const int32_t* n, const int32_t* ipure, const double* d, const double* zeta2,
                                    const double* zeta3, double* g);
TESSAREL_API void tessarel_calc_dgij_deta(const int32_t* n, const int32_t* ipure, const double* d, const double* zeta2,
                                          const double* zeta3, double* dg_deta);
TESSAREL_API void tessarel_calc_d2gij_deta2(const int32_t* n, const int32_t* ipure, const double* d,
                                            const double* zeta2, const double* zeta3, double* d2g_deta2);
TESSAREL_API void tessarel_calc_d3gij_deta3(const int32_t* n, const int32_t* ipure, const double* d,
                                            const double* zeta2, const double* zeta3, double* d3g_deta3);
TESSAREL_API void tessarel_calc_d4gij_deta4(const int32_t* n, const int32_t* ipure, const double* d,
                                            const double* zeta2, const double* zeta3, double* d4g_deta4);
TESSAREL_API void tessarel_calc_dgij_drho(const int32_t* n, const int32_t* ipure, const double* d, const double* zeta2,
                                          const double* zeta3, double* dg_drho);
TESSAREL_API void tessarel_calc_d2gij_drho2(const int32_t* n, const int32_t* ipure, const double* d,
                                            const double* zeta2, const double* zeta3, double* d2g_drho2);
TESSAREL_API void tessarel_calc_d3gij_drho3(const int32_t* n, const int32_t* ipure, const double* d,
                                            const double* zeta2, const double* zeta3, double* d3g_drho3);
TESSAREL_API void tessarel_calc_d4gij_drho4(const int32_t* n, const int32_t* ipure, const double* d,
                                            const double* zeta2, const double* zeta3, double* d4g_drho4);
TESSAREL_API void tessarel_calc_dgij_dt(const int32_t* n, const int32_t* ipure, const double* d, const double* zeta2,
                                        const double* zeta3, const double* dd_dt, const double* dzeta2_dt,
                                        const double* dzeta3_dt, double* dg_dt);
TESSAREL_API void tessarel_calc_d2gij_dt2(const int32_t* n, const int32_t* ipure, const double* d, const double* zeta2,
                                          const double* zeta3, const double* dd_dt, const double* dzeta2_dt,
                                          const double* dzeta3_dt, const double* d2d_dt2, const double* d2zeta2_dt2,
                                          const double* d2zeta3_dt2, double* d2g_dt2);
TESSAREL_API void tessarel_calc_d3gij_dt3(const int32_t* n, const int32_t* ipure, const double* d, const double* zeta2,
                                          const double* zeta3, const double* dd_dt, const double* dzeta2_dt,
                                          const double* dzeta3_dt, const double* d2d_dt2, const double* d2zeta2_dt2,
                                          const double* d2zeta3_dt2, const double* d3d_dt3, const double* d3zeta2_dt3,
                                          const double* d3zeta3_dt3, double* d3g_dt3);
TESSAREL_API void tessarel_calc_dgij_dx(const int32_t* n, const int32_t* ipure, const double* d, const double* zeta2,
                                        const double* zeta3, const double* dzeta2_dx, const double* dzeta3_dx,
                                        double* dg_dx);
TESSAREL_API void tessarel_calc_d2gij_dxdx(const int32_t* n, const int32_t* ipure, const double* d, const double* zeta2,
                                           const double* zeta3, const double* dzeta2_dx, const double* dzeta3_dx,
                                           double* d2g_dxdx);
TESSAREL_API void tessarel_calc_d3gij_dxdxdx(const int32_t* n, const int32_t* ipure, const double* d,
                                             const double* zeta2, const double* zeta3, const double* dzeta2_dx,
                                             const double* dzeta3_dx, double* d3g_dxdxdx);
TESSAREL_API void tessarel_calc_d2gij_dtdx(const int32_t* n, const int32_t* ipure, const double* d, const double* zeta2,
                                           const double* zeta3, const double* dd_dt, const double* dzeta2_dt,
                                           const double* dzeta3_dt, const double* dzeta2_dx, const double* dzeta3_dx,
                                           const double* d2zeta2_dtdx, const double* d2zeta3_dtdx, double* d2g_dtdx);
TESSAREL_API void tessarel_calc_d2gij_drhodx(const int32_t* n, const int32_t* ipure, const double* d,
                                             const double* zeta2, const double* zeta3, const double* dzeta2_dx,
                                             const double* dzeta3_dx, double* d2g_drhodx);
TESSAREL_API void tessarel_calc_d2gij_detadx(const int32_t* n, const int32_t* ipure, const double* d,
                                             const double* zeta2, const double* zeta3, const double* dzeta2_dx,
                                             const double* dzeta3_dx, double* d2g_detadx);
TESSAREL_API void tessarel_calc_d3gij_drhodxdx(const int32_t* n, const int32_t* ipure, const double* d,
                                               const double* zeta2, const double* zeta3, const double* dzeta2_dx,
                                               const double* dzeta3_dx, double* d3g_drhodxdx);
TESSAREL_API void tessarel_calc_d3gij_detadxdx(const int32_t* n, const int32_t* ipure, const double* d,
                                               const double* zeta2, const double* zeta3, const double* dzeta2_dx,
                                               const double* dzeta3_dx, double* d3g_detadxdx);
TESSAREL_API void tessarel_calc_d2gij_dtdrho(const int32_t* n, const int32_t* ipure, const double* d,
                                             const double* zeta2, const double* zeta3, const double* dd_dt,
                                             const double* dzeta2_dt, const double* dzeta3_dt, double* d2g_dtdrho);
TESSAREL_API void tessarel_calc_d2gij_detadt(const int32_t* n, const int32_t* ipure, const double* d,
                                             const double* zeta2, const double* zeta3, const double* dd_dt,
                                             const double* dzeta2_dt, const double* dzeta3_dt, double* d2g_detadt);
TESSAREL_API void tessarel_calc_d3gij_dtdrho2(const int32_t* n, const int32_t* ipure, const double* d,
                                              const double* zeta2, const double* zeta3, const double* dd_dt,
                                              const double* dzeta2_dt, const double* dzeta3_dt, double* d3g_dtdrho2);
TESSAREL_API void tessarel_calc_d3gij_deta2dt(const int32_t* n, const int32_t* ipure, const double* d,
                                              const double* zeta2, const double* zeta3, const double* dd_dt,
                                              const double* dzeta2_dt, const double* dzeta3_dt, double* d3g_deta2dt);
TESSAREL_API void tessarel_calc_d3gij_dt2drho(const int32_t* n, const int32_t* ipure, const double* d,
                                              const double* zeta2, const double* zeta3, const double* dd_dt,
                                              const double* dzeta2_dt, const double* dzeta3_dt, const double* d2d_dt2,
                                              const double* d2zeta2_dt2, const double* d2zeta3_dt2,
                                              double* d3g_dt2drho);
TESSAREL_API void tessarel_calc_d3gij_detadt2(const int32_t* n, const int32_t* ipure, const double* d,
                                              const double* zeta2, const double* zeta3, const double* dd_dt,
                                              const double* dzeta2_dt, const double* dzeta3_dt, const double* d2d_dt2,
                                              const double* d2zeta2_dt2, const double* d2zeta3_dt2,
                                              double* d3g_detadt2);

/* The fluid of one diameter, or of a mean diameter, as functions of eta alone: chi = eta / (1 - eta),
 * a_hs = chi (4 + chi), z_hs = eta da_hs/deta, g = (1 - eta/2) / (1 - eta)^3. Derivatives by rho carry a factor rho for
 * each order in rho, those by eta, t and x are unscaled. */
TESSAREL_API void tessarel_calc_chi_simp(const double* eta, double* chi);
TESSAREL_API void tessarel_calc_dchi_deta_simp(const double* eta, double* dchi_deta);
TESSAREL_API void tessarel_calc_d2chi_deta2_simp(const double* eta, double* d2chi_deta2);
TESSAREL_API void tessarel_calc_d3chi_deta3_simp(const double* eta, double* d3chi_deta3);
TESSAREL_API void tessarel_calc_d4chi_deta4_simp(const double* eta, double* d4chi_deta4);
TESSAREL_API void tessarel_calc_dchi_dt_simp(const double* eta, const double* deta_dt, double* dchi_dt);
TESSAREL_API void tessarel_calc_d2chi_dt2_simp(const double* eta, const double* deta_dt, const double* d2eta_dt2,
                                               double* d2chi_dt2);
TESSAREL_API void tessarel_calc_d3chi_dt3_simp(const double* eta, const double* deta_dt, const double* d2eta_dt2,
                                               const double* d3eta_dt3, double* d3chi_dt3);
TESSAREL_API void tessarel_calc_dchi_dx_simp(const int32_t* n, const double* eta, const double* deta_dx,
                                             double* dchi_dx);
TESSAREL_API void tessarel_calc_d2chi_dxdx_simp(const int32_t* n, const double* eta, const double* deta_dx,
                                                double* d2chi_dxdx);
TESSAREL_API void tessarel_calc_d3chi_dxdxdx_simp(const int32_t* n, const double* eta, const double* deta_dx,
                                                  double* d3chi_dxdxdx);
TESSAREL_API void tessarel_calc_d2chi_dtdx_simp(const int32_t* n, const double* eta, const double* deta_dt,
                                                const double* deta_dx, const double* d2eta_dtdx, double* d2chi_dtdx);
TESSAREL_API void tessarel_calc_d2chi_detadx_simp(const int32_t* n, const double* eta, const double* deta_dx,
                                                  double* d2chi_detadx);
TESSAREL_API void tessarel_calc_d3chi_detadxdx_simp(const int32_t* n, const double* eta, const double* deta_dx,
                                                    double* d3chi_detadxdx);
TESSAREL_API void tessarel_calc_d2chi_detadt_simp(const double* eta, const double* deta_dt, double* d2chi_detadt);
TESSAREL_API void tessarel_calc_d3chi_detadt2_simp(const double* eta, const double* deta_dt, const double* d2eta_dt2,
                                                   double* d3chi_detadt2);
TESSAREL_API void tessarel_calc_d4chi_detadt3_simp(const double* eta, const double* deta_dt, const double* d2eta_dt2,
                                                   const double* d3eta_dt3, double* d4chi_detadt3);
TESSAREL_API void tessarel_calc_d3chi_deta2dt_simp(const double* eta, const double* deta_dt, double* d3chi_deta2dt);
TESSAREL_API void tessarel_calc_a_hs_simp(const double* eta, double* a);
TESSAREL_API void tessarel_calc_da_hs_deta_simp(const double* eta, double* da_deta);
TESSAREL_API void tessarel_calc_d2a_hs_deta2_simp(const double* eta, double* d2a_deta2);
TESSAREL_API void tessarel_calc_d3a_hs_deta3_simp(const double* eta, double* d3a_deta3);
TESSAREL_API void tessarel_calc_d4a_hs_deta4_simp(const double* eta, double* d4a_deta4);
TESSAREL_API void tessarel_calc_da_hs_drho_simp(const double* eta, double* da_drho);
TESSAREL_API void tessarel_calc_d2a_hs_drho2_simp(const double* eta, double* d2a_drho2);
TESSAREL_API void tessarel_calc_d3a_hs_drho3_simp(const double* eta, double* d3a_drho3);
TESSAREL_API void tessarel_calc_d4a_hs_drho4_simp(const double* eta, double* d4a_drho4);
TESSAREL_API void tessarel_calc_da_hs_dt_simp(const double* eta, const double* deta_dt, double* da_dt);
TESSAREL_API void tessarel_calc_d2a_hs_dt2_simp(const double* eta, const double* deta_dt, const double* d2eta_dt2,
                                                double* d2a_dt2);
TESSAREL_API void tessarel_calc_d3a_hs_dt3_simp(const double* eta, const double* deta_dt, const double* d2eta_dt2,
                                                const double* d3eta_dt3, double* d3a_dt3);
TESSAREL_API void tessarel_calc_da_hs_dx_simp(const int32_t* n, const double* eta, const double* deta_dx,
                                              double* da_dx);
TESSAREL_API void tessarel_calc_d2a_hs_dxdx_simp(const int32_t* n, const double* eta, const double* deta_dx,
                                                 double* d2a_dxdx);
TESSAREL_API void tessarel_calc_d3a_hs_dxdxdx_simp(const int32_t* n, const double* eta, const double* deta_dx,
                                                   double* d3a_dxdxdx);
TESSAREL_API void tessarel_calc_d2a_hs_dtdx_simp(const int32_t* n, const double* eta, const double* deta_dt,
                                                 const double* deta_dx, const double* d2eta_dtdx, double* d2a_dtdx);
TESSAREL_API void tessarel_calc_d2a_hs_detadx_simp(const int32_t* n, const double* eta, const double* deta_dx,
                                                   double* d2a_detadx);
TESSAREL_API void tessarel_calc_d2a_hs_detadt_simp(const double* eta, const double* deta_dt, double* d2a_detadt);
TESSAREL_API void tessarel_calc_d3a_hs_detadt2_simp(const double* eta, const double* deta_dt, const double* d2eta_dt2,
                                                    double* d3a_detadt2);
TESSAREL_API void tessarel_calc_d4a_hs_detadt3_simp(const double* eta, const double* deta_dt, const double* d2eta_dt2,
                                                    const double* d3eta_dt3, double* d4a_detadt3);
TESSAREL_API void tessarel_calc_d3a_hs_deta2dt_simp(const double* eta, const double* deta_dt, double* d3a_deta2dt);
TESSAREL_API void tessarel_calc_d2a_hs_dtdrho_simp(const double* eta, const double* deta_dt, double* d2a_dtdrho);
TESSAREL_API void tessarel_calc_d3a_hs_dtdrho2_simp(const double* eta, const double* deta_dt, double* d3a_dtdrho2);
TESSAREL_API void tessarel_calc_d3a_hs_dt2drho_simp(const double* eta, const double* deta_dt, const double* d2eta_dt2,
                                                    double* d3a_dt2drho);
TESSAREL_API void tessarel_calc_d4a_hs_dt3drho_simp(const double* eta, const double* deta_dt, const double* d2eta_dt2,
                                                    const double* d3eta_dt3, double* d4a_dt3drho);
TESSAREL_API void tessarel_calc_d2a_hs_drhodx_simp(const int32_t* n, const double* eta, const double* deta_dx,
                                                   double* d2a_drhodx);
TESSAREL_API void tessarel_calc_d3a_hs_drhodxdx_simp(const int32_t* n, const double* eta, const double* deta_dx,
                                                     double* d3a_drhodxdx);
TESSAREL_API void tessarel_calc_d3a_hs_detadxdx_simp(const int32_t* n, const double* eta, const double* deta_dx,
                                                     double* d3a_detadxdx);
TESSAREL_API void tessarel_calc_z_hs_simp(const double* eta, double* z);
TESSAREL_API void tessarel_calc_dz_hs_deta_simp(const double* eta, double* dz_deta);
TESSAREL_API void tessarel_calc_d2z_hs_deta2_simp(const double* eta, double* d2z_deta2);
TESSAREL_API void tessarel_calc_d3z_hs_deta3_simp(const double* eta, double* d3z_deta3);
TESSAREL_API void tessarel_calc_dz_hs_drho_simp(const double* eta, double* dz_drho);
TESSAREL_API void tessarel_calc_d2z_hs_drho2_simp(const double* eta, double* d2z_drho2);
TESSAREL_API void tessarel_calc_d3z_hs_drho3_simp(const double* eta, double* d3z_drho3);
TESSAREL_API void tessarel_calc_dz_hs_dt_simp(const double* eta, const double* deta_dt, double* dz_dt);
TESSAREL_API void tessarel_calc_d2z_hs_dt2_simp(const double* eta, const double* deta_dt, const double* d2eta_dt2,
                                                double* d2z_dt2);
TESSAREL_API void tessarel_calc_d3z_hs_dt3_simp(const double* eta, const double* deta_dt, const double* d2eta_dt2,
                                                const double* d3eta_dt3, double* d3z_dt3);
TESSAREL_API void tessarel_calc_dz_hs_dx_simp(const int32_t* n, const double* eta, const double* deta_dx,
                                              double* dz_dx);
TESSAREL_API void tessarel_calc_d2z_hs_dxdx_simp(const int32_t* n, const double* eta, const double* deta_dx,
                                                 double* d2z_dxdx);
TESSAREL_API void tessarel_calc_d2z_hs_dtdrho_simp(const double* eta, const double* deta_dt, double* d2z_dtdrho);
TESSAREL_API void tessarel_calc_d2z_hs_detadt_simp(const double* eta, const double* deta_dt, double* d2z_detadt);
TESSAREL_API void tessarel_calc_g_simp(const double* eta, double* g);
TESSAREL_API void tessarel_calc_dg_deta_simp(const double* eta, double* dg_deta);
TESSAREL_API void tessarel_calc_d2g_deta2_simp(const double* eta, double* d2g_deta2);
TESSAREL_API void tessarel_calc_d3g_deta3_simp(const double* eta, double* d3g_deta3);
TESSAREL_API void tessarel_calc_d4g_deta4_simp(const double* eta, double* d4g_deta4);
TESSAREL_API void tessarel_calc_dg_drho_simp(const double* eta, double* dg_drho);
TESSAREL_API void tessarel_calc_d2g_drho2_simp(const double* eta, double* d2g_drho2);
TESSAREL_API void tessarel_calc_d3g_drho3_simp(const double* eta, double* d3g_drho3);
TESSAREL_API void tessarel_calc_d4g_drho4_simp(const double* eta, double* d4g_drho4);
TESSAREL_API void tessarel_calc_dg_dt_simp(const double* eta, const double* deta_dt, double* dg_dt);
TESSAREL_API void tessarel_calc_d2g_dt2_simp(const double* eta, const double* deta_dt, const double* d2eta_dt2,
                                             double* d2g_dt2);
TESSAREL_API void tessarel_calc_d3g_dt3_simp(const double* eta, const double* deta_dt, const double* d2eta_dt2,
                                             const double* d3eta_dt3, double* d3g_dt3);
TESSAREL_API void tessarel_calc_dg_dx_simp(const int32_t* n, const double* eta, const double* deta_dx, double* dg_dx);
TESSAREL_API void tessarel_calc_d2g_dxdx_simp(const int32_t* n, const double* eta, const double* deta_dx,
                                              double* d2g_dxdx);
TESSAREL_API void tessarel_calc_d3g_dxdxdx_simp(const int32_t* n, const double* eta, const double* deta_dx,
                                                double* d3g_dxdxdx);
TESSAREL_API void tessarel_calc_d2g_dtdx_simp(const int32_t* n, const double* eta, const double* deta_dt,
                                              const double* deta_dx, const double* d2eta_dtdx, double* d2g_dtdx);
TESSAREL_API void tessarel_calc_d2g_drhodx_simp(const int32_t* n, const double* eta, const double* deta_dx,
                                                double* d2g_drhodx);
TESSAREL_API void tessarel_calc_d2g_detadx_simp(const int32_t* n, const double* eta, const double* deta_dx,
                                                double* d2g_detadx);
TESSAREL_API void tessarel_calc_d3g_drhodxdx_simp(const int32_t* n, const double* eta, const double* deta_dx,
                                                  double* d3g_drhodxdx);
TESSAREL_API void tessarel_calc_d3g_detadxdx_simp(const int32_t* n, const double* eta, const double* deta_dx,
                                                  double* d3g_detadxdx);
TESSAREL_API void tessarel_calc_d2g_dtdrho_simp(const double* eta, const double* deta_dt, double* d2g_dtdrho);
TESSAREL_API void tessarel_calc_d2g_detadt_simp(const double* eta, const double* deta_dt, double* d2g_detadt);
TESSAREL_API void tessarel_calc_d3g_dtdrho2_simp(const double* eta, const double* deta_dt, double* d3g_dtdrho2);
TESSAREL_API void tessarel_calc_d3g_deta2dt_simp(const double* eta, const double* deta_dt, double* d3g_deta2dt);
TESSAREL_API void tessarel_calc_d3g_dt2drho_simp(const double* eta, const double* deta_dt, const double* d2eta_dt2,
                                                 double* d3g_dt2drho);
TESSAREL_API void tessarel_calc_d3g_detadt2_simp(const double* eta, const double* deta_dt, const double* d2eta_dt2,
                                                 double* d3g_detadt2);

/* Mean diameter d_avg = cbrt(sum x m d^3 / sum x m) [A] and packing fraction pi/6 rho d_avg^3 sum x m of it. */
TESSAREL_API void tessarel_calc_d_avg_simp(const int32_t* n, const double* x, const double* d, double* d_avg);
TESSAREL_API void tessarel_calc_dd_avg_dt_simp(const int32_t* n, const double* x, const double* d, const double* dd_dt,
                                               double* dd_avg_dt);
TESSAREL_API void tessarel_calc_d2d_avg_dt2_simp(const int32_t* n, const double* x, const double* d,
                                                 const double* dd_dt, const double* d2d_dt2, double* d2d_avg_dt2);
TESSAREL_API void tessarel_calc_d3d_avg_dt3_simp(const int32_t* n, const double* x, const double* d,
                                                 const double* dd_dt, const double* d2d_dt2, const double* d3d_dt3,
                                                 double* d3d_avg_dt3);
TESSAREL_API void tessarel_calc_dd_avg_dx_simp(const int32_t* n, const double* x, const double* d, double* dd_avg_dx);
TESSAREL_API void tessarel_calc_d2d_avg_dxdx_simp(const int32_t* n, const double* x, const double* d,
                                                  double* d2d_avg_dxdx);
TESSAREL_API void tessarel_calc_d3d_avg_dxdxdx_simp(const int32_t* n, const double* x, const double* d,
                                                    double* d3d_avg_dxdxdx);
TESSAREL_API void tessarel_calc_d2d_avg_dtdx_simp(const int32_t* n, const double* x, const double* d,
                                                  const double* dd_dt, double* d2d_avg_dtdx);
TESSAREL_API void tessarel_calc_eta_simp(const int32_t* n, const double* x, const double* rho, const double* d_avg,
                                         double* eta);
TESSAREL_API void tessarel_calc_deta_dt_simp(const int32_t* n, const double* x, const double* rho, const double* d_avg,
                                             const double* dd_avg_dt, double* deta_dt);
TESSAREL_API void tessarel_calc_d2eta_dt2_simp(const int32_t* n, const double* x, const double* rho,
                                               const double* d_avg, const double* dd_avg_dt, const double* d2d_avg_dt2,
                                               double* d2eta_dt2);
TESSAREL_API void tessarel_calc_d3eta_dt3_simp(const int32_t* n, const double* x, const double* rho,
                                               const double* d_avg, const double* dd_avg_dt, const double* d2d_avg_dt2,
                                               const double* d3d_avg_dt3, double* d3eta_dt3);
TESSAREL_API void tessarel_calc_deta_dx_simp(const int32_t* n, const double* x, const double* rho, const double* d_avg,
                                             const double* dd_avg_dx, double* deta_dx);
TESSAREL_API void tessarel_calc_d2eta_dtdx_simp(const int32_t* n, const double* x, const double* rho,
                                                const double* d_avg, const double* dd_avg_dt, const double* dd_avg_dx,
                                                const double* d2d_avg_dtdx, double* d2eta_dtdx);

/* ============================================================ eos: dispersion ================================== */

/* Sets the mean segment number of the composition, and the coefficients of the integrals at it, for the c1 and intgpert
 * families. To be called again for another composition or ipure. */
TESSAREL_API void tessarel_set_mmean(const int32_t* n, const double* x, const int32_t* ipure);
/* The coefficients of the two integrals, 7 values each, as of the last set_mmean, and their first to third derivatives
 * by the mean segment number (times mseg of each component: by x). */
TESSAREL_API void tessarel_calc_abpar(double* apar, double* bpar);
TESSAREL_API void tessarel_calc_dabpar_dx(double* apar_x, double* bpar_x);
TESSAREL_API void tessarel_calc_d2abpar_dxdx(double* apar_xx, double* bpar_xx);
TESSAREL_API void tessarel_calc_d3abpar_dxdxdx(double* apar_xxx, double* bpar_xxx);

/* Energies eps (n) and eps_ij (n x n) [K] with the interaction parameters at t, diameters sig_ij (n x n) [A]; with
 * ipure = i only the diagonal entry i. */
TESSAREL_API void tessarel_calc_sigeps(const int32_t* n, const int32_t* ipure, const double* t, double* eps,
                                       double* sig_ij, double* eps_ij);
TESSAREL_API void tessarel_calc_dsigeps_dt(const int32_t* n, const int32_t* ipure, const double* t, double* deps_dt,
                                           double* deps_ij_dt);
TESSAREL_API void tessarel_calc_d2sigeps_dt2(const int32_t* n, const int32_t* ipure, const double* t, double* d2eps_dt2,
                                             double* d2eps_ij_dt2);
TESSAREL_API void tessarel_calc_d3sigeps_dt3(const int32_t* n, const int32_t* ipure, const double* t, double* d3eps_dt3,
                                             double* d3eps_ij_dt3);

/* Compressibility expression c1 of eta and the mean segment number, which depends on x as well. */
TESSAREL_API void tessarel_calc_dc1_deta(const double* eta, const double* c1, double* dc1_deta);
TESSAREL_API void tessarel_calc_c1(const double* eta, double* c1);
TESSAREL_API void tessarel_calc_d2c1_deta2(const double* eta, double* d2c1_deta2);
TESSAREL_API void tessarel_calc_d3c1_deta3(const double* eta, double* d3c1_deta3);
TESSAREL_API void tessarel_calc_d4c1_deta4(const double* eta, double* d4c1_deta4);
TESSAREL_API void tessarel_calc_dc1_dt(const double* eta, const double* deta_dt, double* dc1_dt);
TESSAREL_API void tessarel_calc_d2c1_dt2(const double* eta, const double* deta_dt, const double* d2eta_dt2,
                                         double* d2c1_dt2);
TESSAREL_API void tessarel_calc_d3c1_dt3(const double* eta, const double* deta_dt, const double* d2eta_dt2,
                                         const double* d3eta_dt3, double* d3c1_dt3);
TESSAREL_API void tessarel_calc_dc1_dx(const int32_t* n, const double* eta, const double* deta_dx, double* dc1_dx);
TESSAREL_API void tessarel_calc_d2c1_dxdx(const int32_t* n, const double* eta, const double* deta_dx,
                                          double* d2c1_dxdx);
TESSAREL_API void tessarel_calc_d3c1_dxdxdx(const int32_t* n, const double* eta, const double* deta_dx,
                                            double* d3c1_dxdxdx);
TESSAREL_API void tessarel_calc_d2c1_detadt(const double* eta, const double* deta_dt, double* d2c1_detadt);
TESSAREL_API void tessarel_calc_d3c1_detadt2(const double* eta, const double* deta_dt, const double* d2eta_dt2,
                                             double* d3c1_detadt2);
TESSAREL_API void tessarel_calc_d3c1_deta2dt(const double* eta, const double* deta_dt, double* d3c1_deta2dt);
TESSAREL_API void tessarel_calc_d2c1_dtdx(const int32_t* n, const double* eta, const double* deta_dt,
                                          const double* deta_dx, const double* d2eta_dtdx, double* d2c1_dtdx);
TESSAREL_API void tessarel_calc_d2c1_detadx(const int32_t* n, const double* eta, const double* deta_dx,
                                            double* d2c1_detadx);
TESSAREL_API void tessarel_calc_d3c1_detadxdx(const int32_t* n, const double* eta, const double* deta_dx,
                                              double* d3c1_detadxdx);
TESSAREL_API void tessarel_calc_d3c1_deta2dx(const int32_t* n, const double* eta, const double* deta_dx,
                                             double* d3c1_deta2dx);

/* Integrals i1, i2 of eta and the mean segment number. In the members by eta, the mixed ones included, it is (eta i1)
 * and (eta i2) that is differentiated by eta. */
TESSAREL_API void tessarel_calc_intgpert(const double* eta, double* i1, double* i2);
TESSAREL_API void tessarel_calc_dintgpert_deta(const double* eta, double* di1_deta, double* di2_deta);
TESSAREL_API void tessarel_calc_d2intgpert_deta2(const double* eta, double* d2i1_deta2, double* d2i2_deta2);
TESSAREL_API void tessarel_calc_d3intgpert_deta3(const double* eta, double* d3i1_deta3, double* d3i2_deta3);
TESSAREL_API void tessarel_calc_d4intgpert_deta4(const double* eta, double* d4i1_deta4, double* d4i2_deta4);
TESSAREL_API void tessarel_calc_dintgpert_dt(const double* eta, const double* deta_dt, double* di1_dt, double* di2_dt);
TESSAREL_API void tessarel_calc_d2intgpert_dt2(const double* eta, const double* deta_dt, const double* d2eta_dt2,
                                               double* d2i1_dt2, double* d2i2_dt2);
TESSAREL_API void tessarel_calc_d3intgpert_dt3(const double* eta, const double* deta_dt, const double* d2eta_dt2,
                                               const double* d3eta_dt3, double* d3i1_dt3, double* d3i2_dt3);
TESSAREL_API void tessarel_calc_dintgpert_dx(const int32_t* n, const double* eta, const double* deta_dx, double* di1_dx,
                                             double* di2_dx);
TESSAREL_API void tessarel_calc_d2intgpert_dxdx(const int32_t* n, const double* eta, const double* deta_dx,
                                                double* d2i1_dxdx, double* d2i2_dxdx);
TESSAREL_API void tessarel_calc_d3intgpert_dxdxdx(const int32_t* n, const double* eta, const double* deta_dx,
                                                  double* d3i1_dxdxdx, double* d3i2_dxdxdx);
TESSAREL_API void tessarel_calc_d2intgpert_detadt(const double* eta, const double* deta_dt, double* d2i1_detadt,
                                                  double* d2i2_detadt);
TESSAREL_API void tessarel_calc_d3intgpert_detadt2(const double* eta, const double* deta_dt, const double* d2eta_dt2,
                                                   double* d3i1_detadt2, double* d3i2_detadt2);
TESSAREL_API void tessarel_calc_d3intgpert_deta2dt(const double* eta, const double* deta_dt, double* d3i1_deta2dt,
                                                   double* d3i2_deta2dt);
TESSAREL_API void tessarel_calc_d2intgpert_detadx(const int32_t* n, const double* eta, const double* deta_dx,
                                                  double* d2i1_detadx, double* d2i2_detadx);
TESSAREL_API void tessarel_calc_d2intgpert_dtdx(const int32_t* n, const double* eta, const double* deta_dt,
                                                const double* deta_dx, const double* d2eta_dtdx, double* d2i1_dtdx,
                                                double* d2i2_dtdx);
TESSAREL_API void tessarel_calc_d3intgpert_detadxdx(const int32_t* n, const double* eta, const double* deta_dx,
                                                    double* d3i1_detadxdx, double* d3i2_detadxdx);

/* Dispersion sums: m2es3 = sum x_i x_j m_i m_j (eps_ij / t) sig_ij^3, m2e2s3 with (eps_ij / t)^2 [A3]. */
TESSAREL_API void tessarel_calc_pertterm(const int32_t* n, const double* x, const int32_t* ipure, const double* t,
                                         const double* sig_ij, const double* eps_ij, double* m2es3, double* m2e2s3);
TESSAREL_API void tessarel_calc_dpertterm_dt(const int32_t* n, const double* x, const int32_t* ipure, const double* t,
                                             const double* sig_ij, const double* eps_ij, const double* deps_ij_dt,
                                             double* dm2es3_dt, double* dm2e2s3_dt);
TESSAREL_API void tessarel_calc_d2pertterm_dt2(const int32_t* n, const double* x, const int32_t* ipure, const double* t,
                                               const double* sig_ij, const double* eps_ij, const double* deps_ij_dt,
                                               const double* d2eps_ij_dt2, double* d2m2es3_dt2, double* d2m2e2s3_dt2);
TESSAREL_API void tessarel_calc_d3pertterm_dt3(const int32_t* n, const double* x, const int32_t* ipure, const double* t,
                                               const double* sig_ij, const double* eps_ij, const double* deps_ij_dt,
                                               const double* d2eps_ij_dt2, const double* d3eps_ij_dt3,
                                               double* d3m2es3_dt3, double* d3m2e2s3_dt3);
TESSAREL_API void tessarel_calc_dpertterm_dx(const int32_t* n, const double* x, const int32_t* ipure, const double* t,
                                             const double* sig_ij, const double* eps_ij, double* dm2es3_dx,
                                             double* dm2e2s3_dx);
TESSAREL_API void tessarel_calc_d2pertterm_dxdx(const int32_t* n, const double* x, const int32_t* ipure,
                                                const double* t, const double* sig_ij, const double* eps_ij,
                                                double* d2m2es3_dxdx, double* d2m2e2s3_dxdx);
TESSAREL_API void tessarel_calc_d2pertterm_dtdx(const int32_t* n, const double* x, const int32_t* ipure,
                                                const double* t, const double* sig_ij, const double* eps_ij,
                                                const double* deps_ij_dt, double* d2m2es3_dtdx, double* d2m2e2s3_dtdx);

/* ============================================================ eos: association ================================= */

/* Strengths g sig^3 kap_hb (exp(eps_hb / t) - 1) [A3], n x n x 5 x 5: of site type a on i with b on k at
 * [i + n (k + n (a + 5 b))], 0 where there is no such site. Derivatives by rho are plain: those of gij too, without the
 * factor rho of the gij family. In the simplified model gij(1,1) serves for all pairs. */
TESSAREL_API void tessarel_calc_deltaab(const int32_t* n, const int32_t* ipure, const double* t, const double* sig_ij,
                                        const double* gij, double* deltaab);
TESSAREL_API void tessarel_calc_ddeltaab_dt(const int32_t* n, const int32_t* ipure, const double* t,
                                            const double* sig_ij, const double* gij, const double* dgij_dt,
                                            double* ddeltaab_dt);
TESSAREL_API void tessarel_calc_d2deltaab_dt2(const int32_t* n, const int32_t* ipure, const double* t,
                                              const double* sig_ij, const double* gij, const double* dgij_dt,
                                              const double* d2gij_dt2, double* d2deltaab_dt2);
TESSAREL_API void tessarel_calc_d3deltaab_dt3(const int32_t* n, const int32_t* ipure, const double* t,
                                              const double* sig_ij, const double* gij, const double* dgij_dt,
                                              const double* d2gij_dt2, const double* d3gij_dt3, double* d3deltaab_dt3);
TESSAREL_API void tessarel_calc_ddeltaab_drho(const int32_t* n, const int32_t* ipure, const double* t,
                                              const double* sig_ij, const double* gij, const double* dgij_drho,
                                              double* ddeltaab_drho);
TESSAREL_API void tessarel_calc_d2deltaab_drho2(const int32_t* n, const int32_t* ipure, const double* t,
                                                const double* sig_ij, const double* gij, const double* dgij_drho,
                                                const double* d2gij_drho2, double* d2deltaab_drho2);
TESSAREL_API void tessarel_calc_d3deltaab_drho3(const int32_t* n, const int32_t* ipure, const double* t,
                                                const double* sig_ij, const double* gij, const double* dgij_drho,
                                                const double* d2gij_drho2, const double* d3gij_drho3,
                                                double* d3deltaab_drho3);
TESSAREL_API void tessarel_calc_d4deltaab_drho4(const int32_t* n, const int32_t* ipure, const double* t,
                                                const double* sig_ij, const double* gij, const double* dgij_drho,
                                                const double* d2gij_drho2, const double* d3gij_drho3,
                                                const double* d4gij_drho4, double* d4deltaab_drho4);
TESSAREL_API void tessarel_calc_ddeltaab_dx(const int32_t* n, const int32_t* ipure, const double* t,
                                            const double* sig_ij, const double* gij, const double* dgij_dx,
                                            double* ddeltaab_dx);
TESSAREL_API void tessarel_calc_d2deltaab_dxdx(const int32_t* n, const int32_t* ipure, const double* t,
                                               const double* sig_ij, const double* gij, const double* dgij_dx,
                                               const double* d2gij_dxdx, double* d2deltaab_dxdx);
TESSAREL_API void tessarel_calc_d3deltaab_dxdxdx(const int32_t* n, const int32_t* ipure, const double* t,
                                                 const double* sig_ij, const double* gij, const double* dgij_dx,
                                                 const double* d2gij_dxdx, const double* d3gij_dxdxdx,
                                                 double* d3deltaab_dxdxdx);
TESSAREL_API void tessarel_calc_d2deltaab_dtdrho(const int32_t* n, const int32_t* ipure, const double* t,
                                                 const double* sig_ij, const double* gij, const double* dgij_dt,
                                                 const double* dgij_drho, const double* d2gij_dtdrho,
                                                 double* d2deltaab_dtdrho);
TESSAREL_API void tessarel_calc_d3deltaab_dtdrhodrho(const int32_t* n, const int32_t* ipure, const double* t,
                                                     const double* sig_ij, const double* gij, const double* dgij_dt,
                                                     const double* dgij_drho, const double* d2gij_dtdrho,
                                                     const double* d2gij_drho2, const double* d3gij_dtdrho2,
                                                     double* d3deltaab_dtdrhodrho);
TESSAREL_API void tessarel_calc_d3deltaab_dtdtdrho(const int32_t* n, const int32_t* ipure, const double* t,
                                                   const double* sig_ij, const double* gij, const double* dgij_dt,
                                                   const double* dgij_drho, const double* d2gij_dt2,
                                                   const double* d2gij_dtdrho, const double* d3gij_dt2drho,
                                                   double* d3deltaab_dtdtdrho);
TESSAREL_API void tessarel_calc_d2deltaab_drhodx(const int32_t* n, const int32_t* ipure, const double* t,
                                                 const double* sig_ij, const double* gij, const double* dgij_drho,
                                                 const double* dgij_dx, const double* d2gij_drhodx,
                                                 double* d2deltaab_drhodx);
TESSAREL_API void tessarel_calc_d3deltaab_drhodxdx(const int32_t* n, const int32_t* ipure, const double* t,
                                                   const double* sig_ij, const double* gij, const double* dgij_drho,
                                                   const double* dgij_dx, const double* d2gij_drhodx,
                                                   const double* d2gij_dxdx, const double* d3gij_drhodxdx,
                                                   double* d3deltaab_drhodxdx);
TESSAREL_API void tessarel_calc_d2deltaab_dtdx(const int32_t* n, const int32_t* ipure, const double* t,
                                               const double* sig_ij, const double* gij, const double* dgij_dt,
                                               const double* dgij_dx, const double* d2gij_dtdx, double* d2deltaab_dtdx);

/* Fractions of unbonded sites, n x 5: site type a on i at [i + n a], 1 where there is no such site. Derivatives by rho
 * are plain. */
TESSAREL_API void tessarel_calc_xnhb(const int32_t* n, const double* x, const int32_t* ipure, const double* rho,
                                     const double* deltaab, double* xnhb, int32_t* status);
TESSAREL_API void tessarel_calc_dxnhb_dt(const int32_t* n, const double* x, const int32_t* ipure, const double* rho,
                                         const double* deltaab, const double* xnhb, const double* ddeltaab_dt,
                                         double* dxnhb_dt, int32_t* status);
TESSAREL_API void tessarel_calc_d2xnhb_dt2(const int32_t* n, const double* x, const int32_t* ipure, const double* rho,
                                           const double* deltaab, const double* xnhb, const double* ddeltaab_dt,
                                           const double* dxnhb_dt, const double* d2deltaab_dt2, double* d2xnhb_dt2,
                                           int32_t* status);
TESSAREL_API void tessarel_calc_d3xnhb_dt3(const int32_t* n, const double* x, const int32_t* ipure, const double* rho,
                                           const double* deltaab, const double* xnhb, const double* ddeltaab_dt,
                                           const double* dxnhb_dt, const double* d2deltaab_dt2,
                                           const double* d2xnhb_dt2, const double* d3deltaab_dt3, double* d3xnhb_dt3,
                                           int32_t* status);
TESSAREL_API void tessarel_calc_dxnhb_drho(const int32_t* n, const double* x, const int32_t* ipure, const double* rho,
                                           const double* deltaab, const double* xnhb, const double* ddeltaab_drho,
                                           double* dxnhb_drho, int32_t* status);
TESSAREL_API void tessarel_calc_d2xnhb_drho2(const int32_t* n, const double* x, const int32_t* ipure, const double* rho,
                                             const double* deltaab, const double* xnhb, const double* ddeltaab_drho,
                                             const double* dxnhb_drho, const double* d2deltaab_drho2,
                                             double* d2xnhb_drho2, int32_t* status);
TESSAREL_API void tessarel_calc_d3xnhb_drho3(const int32_t* n, const double* x, const int32_t* ipure, const double* rho,
                                             const double* deltaab, const double* xnhb, const double* ddeltaab_drho,
                                             const double* dxnhb_drho, const double* d2deltaab_drho2,
                                             const double* d2xnhb_drho2, const double* d3deltaab_drho3,
                                             double* d3xnhb_drho3, int32_t* status);
TESSAREL_API void tessarel_calc_d4xnhb_drho4(const int32_t* n, const double* x, const int32_t* ipure, const double* rho,
                                             const double* deltaab, const double* xnhb, const double* ddeltaab_drho,
                                             const double* dxnhb_drho, const double* d2deltaab_drho2,
                                             const double* d2xnhb_drho2, const double* d3deltaab_drho3,
                                             const double* d3xnhb_drho3, const double* d4deltaab_drho4,
                                             double* d4xnhb_drho4, int32_t* status);
TESSAREL_API void tessarel_calc_dxnhb_dx(const int32_t* n, const double* x, const int32_t* ipure, const double* rho,
                                         const double* deltaab, const double* xnhb, const double* ddeltaab_dx,
                                         double* dxnhb_dx, int32_t* status);
TESSAREL_API void tessarel_calc_d2xnhb_dxdx(const int32_t* n, const double* x, const int32_t* ipure, const double* rho,
                                            const double* deltaab, const double* xnhb, const double* ddeltaab_dx,
                                            const double* dxnhb_dx, const double* d2deltaab_dxdx, double* d2xnhb_dxdx,
                                            int32_t* status);
TESSAREL_API void tessarel_calc_d3xnhb_dxdxdx(const int32_t* n, const double* x, const int32_t* ipure,
                                              const double* rho, const double* deltaab, const double* xnhb,
                                              const double* ddeltaab_dx, const double* dxnhb_dx,
                                              const double* d2deltaab_dxdx, const double* d2xnhb_dxdx,
                                              const double* d3deltaab_dxdxdx, double* d3xnhb_dxdxdx, int32_t* status);
TESSAREL_API void tessarel_calc_d2xnhb_drhodt(const int32_t* n, const double* x, const int32_t* ipure,
                                              const double* rho, const double* deltaab, const double* xnhb,
                                              const double* ddeltaab_dt, const double* dxnhb_dt,
                                              const double* ddeltaab_drho, const double* dxnhb_drho,
                                              const double* d2deltaab_dtdrho, double* d2xnhb_drhodt, int32_t* status);
TESSAREL_API void tessarel_calc_d3xnhb_drhodrhodt(const int32_t* n, const double* x, const int32_t* ipure,
                                                  const double* rho, const double* deltaab, const double* xnhb,
                                                  const double* ddeltaab_dt, const double* dxnhb_dt,
                                                  const double* ddeltaab_drho, const double* dxnhb_drho,
                                                  const double* d2deltaab_dtdrho, const double* d2xnhb_dtdrho,
                                                  const double* d2deltaab_drho2, const double* d2xnhb_drho2,
                                                  const double* d3deltaab_dtdrho2, double* d3xnhb_drhodrhodt,
                                                  int32_t* status);
TESSAREL_API void tessarel_calc_d3xnhb_drhodtdt(
    const int32_t* n, const double* x, const int32_t* ipure, const double* rho, const double* deltaab,
    const double* xnhb, const double* ddeltaab_dt, const double* dxnhb_dt, const double* ddeltaab_drho,
    const double* dxnhb_drho, const double* d2deltaab_dt2, const double* d2xnhb_dt2, const double* d2deltaab_dtdrho,
    const double* d2xnhb_dtdrho, const double* d3deltaab_dt2drho, double* d3xnhb_drhodtdt, int32_t* status);
TESSAREL_API void tessarel_calc_d2xnhb_drhodx(const int32_t* n, const double* x, const int32_t* ipure,
                                              const double* rho, const double* deltaab, const double* xnhb,
                                              const double* ddeltaab_drho, const double* dxnhb_drho,
                                              const double* ddeltaab_dx, const double* dxnhb_dx,
                                              const double* d2deltaab_drhodx, double* d2xnhb_drhodx, int32_t* status);
TESSAREL_API void tessarel_calc_d3xnhb_drhodxdx(
    const int32_t* n, const double* x, const int32_t* ipure, const double* rho, const double* deltaab,
    const double* xnhb, const double* ddeltaab_drho, const double* dxnhb_drho, const double* ddeltaab_dx,
    const double* dxnhb_dx, const double* d2deltaab_drhodx, const double* d2xnhb_drhodx, const double* d2deltaab_dxdx,
    const double* d2xnhb_dxdx, const double* d3deltaab_drhodxdx, double* d3xnhb_drhodxdx, int32_t* status);
TESSAREL_API void tessarel_calc_d2xnhb_dtdx(const int32_t* n, const double* x, const int32_t* ipure, const double* rho,
                                            const double* deltaab, const double* xnhb, const double* ddeltaab_dt,
                                            const double* dxnhb_dt, const double* ddeltaab_dx, const double* dxnhb_dx,
                                            const double* d2deltaab_dtdx, double* d2xnhb_dtdx, int32_t* status);
/* Association term of a for component 1 alone, at the contact value (1 - eta/2) / (1 - eta)^3; delta_t: 5 x 5 strengths
 * at a contact value of 1 [A3]. */
TESSAREL_API void tessarel_calc_a_ass(const double* rho, const double* eta, const double* delta_t, double* a);

/* ============================================================ eos: polar terms ================================= */

/* Fill the constants of the dipole-dipole, quadrupole-quadrupole and mixed integrals from the segment numbers, and the
 * products of the moments with the range of interaction types in force. tessarel_setfluid does this. */
TESSAREL_API void tessarel_ddconst(void);
TESSAREL_API void tessarel_qqconst(void);
TESSAREL_API void tessarel_dqconst(void);
TESSAREL_API void tessarel_setpolarpar(void);

/* Integrals: j2 (3 x n x n), of type s and pair i, j at [s + 3 (i + n j)], and j3 (3 x n x n x n) at
 * [s + 3 (i + n (j + n l))]; s = 0 dipoles, 1 quadrupoles, 2 mixed, 0 for types not in force. eps: n energies of
 * calc_sigeps [K]. Plain derivatives. */
TESSAREL_API void tessarel_calc_j2j3(const int32_t* n, const double* t, const double* eta, const double* eps,
                                     double* j2, double* j3);
TESSAREL_API void tessarel_calc_dj2j3_dt(const int32_t* n, const double* t, const double* eta, const double* eps,
                                         const double* deta_dt, const double* deps_dt, double* dj2_dt, double* dj3_dt);
TESSAREL_API void tessarel_calc_d2j2j3_dt2(const int32_t* n, const double* t, const double* eta, const double* eps,
                                           const double* deta_dt, const double* deps_dt, const double* d2eta_dt2,
                                           const double* d2eps_dt2, double* d2j2_dt2, double* d2j3_dt2);
TESSAREL_API void tessarel_calc_d3j2j3_dt3(const int32_t* n, const double* t, const double* eta, const double* eps,
                                           const double* deta_dt, const double* deps_dt, const double* d2eta_dt2,
                                           const double* d2eps_dt2, const double* d3eta_dt3, const double* d3eps_dt3,
                                           double* d3j2_dt3, double* d3j3_dt3);
TESSAREL_API void tessarel_calc_dj2j3_drho(const int32_t* n, const double* t, const double* eta, const double* eps,
                                           const double* deta_drho, double* dj2_drho, double* dj3_drho);
TESSAREL_API void tessarel_calc_d2j2j3_drho2(const int32_t* n, const double* t, const double* eta, const double* eps,
                                             const double* deta_drho, double* d2j2_drho2, double* d2j3_drho2);
TESSAREL_API void tessarel_calc_d3j2j3_drho3(const int32_t* n, const double* t, const double* eta, const double* eps,
                                             const double* deta_drho, double* d3j2_drho3, double* d3j3_drho3);
TESSAREL_API void tessarel_calc_d4j2j3_drho4(const int32_t* n, const double* t, const double* eta, const double* eps,
                                             const double* deta_drho, double* d4j2_drho4, double* d4j3_drho4);
TESSAREL_API void tessarel_calc_dj2j3_dx(const int32_t* n, const double* t, const double* eta, const double* eps,
                                         const double* deta_dx, double* dj2_dx, double* dj3_dx);
TESSAREL_API void tessarel_calc_d2j2j3_dxdx(const int32_t* n, const double* t, const double* eta, const double* eps,
                                            const double* deta_dx, double* d2j2_dxdx, double* d2j3_dxdx);
TESSAREL_API void tessarel_calc_d3j2j3_dxdxdx(const int32_t* n, const double* t, const double* eta, const double* eps,
                                              const double* deta_dx, double* d3j2_dxdxdx, double* d3j3_dxdxdx);
TESSAREL_API void tessarel_calc_d2j2j3_dtdrho(const int32_t* n, const double* t, const double* eta, const double* eps,
                                              const double* deta_dt, const double* deps_dt, const double* deta_drho,
                                              const double* d2eta_dtdrho, double* d2j2_dtdrho, double* d2j3_dtdrho);
TESSAREL_API void tessarel_calc_d3j2j3_dtdrho2(const int32_t* n, const double* t, const double* eta, const double* eps,
                                               const double* deta_dt, const double* deps_dt, const double* deta_drho,
                                               const double* d2eta_dtdrho, double* d3j2_dtdrho2, double* d3j3_dtdrho2);
TESSAREL_API void tessarel_calc_d3j2j3_dt2drho(const int32_t* n, const double* t, const double* eta, const double* eps,
                                               const double* deta_dt, const double* deps_dt, const double* deta_drho,
                                               const double* d2eta_dt2, const double* d2eps_dt2,
                                               const double* d2eta_dtdrho, const double* d3eta_dt2drho,
                                               double* d3j2_dt2drho, double* d3j3_dt2drho);
TESSAREL_API void tessarel_calc_d2j2j3_drhodx(const int32_t* n, const double* t, const double* eta, const double* eps,
                                              const double* deta_drho, const double* deta_dx,
                                              const double* d2eta_drhodx, double* d2j2_drhodx, double* d2j3_drhodx);
TESSAREL_API void tessarel_calc_d3j2j3_drhodxdx(const int32_t* n, const double* t, const double* eta, const double* eps,
                                                const double* deta_drho, const double* deta_dx,
                                                const double* d2eta_drhodx, double* d3j2_drhodxdx,
                                                double* d3j3_drhodxdx);
TESSAREL_API void tessarel_calc_d2j2j3_dtdx(const int32_t* n, const double* t, const double* eta, const double* eps,
                                            const double* deta_dt, const double* deps_dt, const double* deta_dx,
                                            const double* d2eta_dtdx, double* d2j2_dtdx, double* d2j3_dtdx);
/* Second- and third-order terms, 3 values each by type. Plain derivatives. */
TESSAREL_API void tessarel_calc_a2a3(const int32_t* n, const double* x, const int32_t* ipure, const double* t,
                                     const double* rho, const double* j2, const double* j3, double* a2, double* a3);
TESSAREL_API void tessarel_calc_da2a3_dt(const int32_t* n, const double* x, const int32_t* ipure, const double* t,
                                         const double* rho, const double* j2, const double* j3, const double* dj2_dt,
                                         const double* dj3_dt, double* da2_dt, double* da3_dt);
TESSAREL_API void tessarel_calc_d2a2a3_dt2(const int32_t* n, const double* x, const int32_t* ipure, const double* t,
                                           const double* rho, const double* j2, const double* j3, const double* dj2_dt,
                                           const double* dj3_dt, const double* d2j2_dt2, const double* d2j3_dt2,
                                           double* d2a2_dt2, double* d2a3_dt2);
TESSAREL_API void tessarel_calc_d3a2a3_dt3(const int32_t* n, const double* x, const int32_t* ipure, const double* t,
                                           const double* rho, const double* j2, const double* j3, const double* dj2_dt,
                                           const double* dj3_dt, const double* d2j2_dt2, const double* d2j3_dt2,
                                           const double* d3j2_dt3, const double* d3j3_dt3, double* d3a2_dt3,
                                           double* d3a3_dt3);
TESSAREL_API void tessarel_calc_da2a3_drho(const int32_t* n, const double* x, const int32_t* ipure, const double* t,
                                           const double* rho, const double* j2, const double* j3,
                                           const double* dj2_drho, const double* dj3_drho, double* da2_drho,
                                           double* da3_drho);
TESSAREL_API void tessarel_calc_d2a2a3_drho2(const int32_t* n, const double* x, const int32_t* ipure, const double* t,
                                             const double* rho, const double* j2, const double* j3,
                                             const double* dj2_drho, const double* dj3_drho, const double* d2j2_drho2,
                                             const double* d2j3_drho2, double* d2a2_drho2, double* d2a3_drho2);
TESSAREL_API void tessarel_calc_d3a2a3_drho3(const int32_t* n, const double* x, const int32_t* ipure, const double* t,
                                             const double* rho, const double* j2, const double* j3,
                                             const double* dj2_drho, const double* dj3_drho, const double* d2j2_drho2,
                                             const double* d2j3_drho2, const double* d3j2_drho3,
                                             const double* d3j3_drho3, double* d3a2_drho3, double* d3a3_drho3);
TESSAREL_API void tessarel_calc_d4a2a3_drho4(const int32_t* n, const double* x, const int32_t* ipure, const double* t,
                                             const double* rho, const double* j2, const double* j3,
                                             const double* dj2_drho, const double* dj3_drho, const double* d2j2_drho2,
                                             const double* d2j3_drho2, const double* d3j2_drho3,
                                             const double* d3j3_drho3, const double* d4j2_drho4,
                                             const double* d4j3_drho4, double* d4a2_drho4, double* d4a3_drho4);
TESSAREL_API void tessarel_calc_da2a3_dx(const int32_t* n, const double* x, const int32_t* ipure, const double* t,
                                         const double* rho, const double* j2, const double* j3, const double* dj2_dx,
                                         const double* dj3_dx, double* da2_dx, double* da3_dx);
TESSAREL_API void tessarel_calc_d2a2a3_dxdx(const int32_t* n, const double* x, const int32_t* ipure, const double* t,
                                            const double* rho, const double* j2, const double* j3, const double* dj2_dx,
                                            const double* dj3_dx, const double* d2j2_dxdx, const double* d2j3_dxdx,
                                            double* d2a2_dxdx, double* d2a3_dxdx);
TESSAREL_API void tessarel_calc_d3a2a3_dxdxdx(const int32_t* n, const double* x, const int32_t* ipure, const double* t,
                                              const double* rho, const double* j2, const double* j3,
                                              const double* dj2_dx, const double* dj3_dx, const double* d2j2_dxdx,
                                              const double* d2j3_dxdx, const double* d3j2_dxdxdx,
                                              const double* d3j3_dxdxdx, double* d3a2_dxdxdx, double* d3a3_dxdxdx);
TESSAREL_API void tessarel_calc_d2a2a3_dtdrho(const int32_t* n, const double* x, const int32_t* ipure, const double* t,
                                              const double* rho, const double* j2, const double* j3,
                                              const double* dj2_dt, const double* dj3_dt, const double* dj2_drho,
                                              const double* dj3_drho, const double* d2j2_dtdrho,
                                              const double* d2j3_dtdrho, double* d2a2_dtdrho, double* d2a3_dtdrho);
TESSAREL_API void tessarel_calc_d3a2a3_dtdrho2(const int32_t* n, const double* x, const int32_t* ipure, const double* t,
                                               const double* rho, const double* j2, const double* j3,
                                               const double* dj2_dt, const double* dj3_dt, const double* dj2_drho,
                                               const double* dj3_drho, const double* d2j2_dtdrho,
                                               const double* d2j3_dtdrho, const double* d2j2_drho2,
                                               const double* d2j3_drho2, const double* d3j2_dtdrho2,
                                               const double* d3j3_dtdrho2, double* d3a2_dtdrho2, double* d3a3_dtdrho2);
TESSAREL_API void tessarel_calc_d3a2a3_dt2drho(const int32_t* n, const double* x, const int32_t* ipure, const double* t,
                                               const double* rho, const double* j2, const double* j3,
                                               const double* dj2_dt, const double* dj3_dt, const double* dj2_drho,
                                               const double* dj3_drho, const double* d2j2_dt2, const double* d2j3_dt2,
                                               const double* d2j2_dtdrho, const double* d2j3_dtdrho,
                                               const double* d3j2_dt2drho, const double* d3j3_dt2drho,
                                               double* d3a2_dt2drho, double* d3a3_dt2drho);
TESSAREL_API void tessarel_calc_d2a2a3_drhodx(const int32_t* n, const double* x, const int32_t* ipure, const double* t,
                                              const double* rho, const double* j2, const double* j3,
                                              const double* dj2_drho, const double* dj3_drho, const double* dj2_dx,
                                              const double* dj3_dx, const double* d2j2_drhodx,
                                              const double* d2j3_drhodx, double* d2a2_drhodx, double* d2a3_drhodx);
TESSAREL_API void tessarel_calc_d3a2a3_drhodxdx(
    const int32_t* n, const double* x, const int32_t* ipure, const double* t, const double* rho, const double* j2,
    const double* j3, const double* dj2_drho, const double* dj3_drho, const double* dj2_dx, const double* dj3_dx,
    const double* d2j2_drhodx, const double* d2j3_drhodx, const double* d2j2_dxdx, const double* d2j3_dxdx,
    const double* d3j2_drhodxdx, const double* d3j3_drhodxdx, double* d3a2_drhodxdx, double* d3a3_drhodxdx);
TESSAREL_API void tessarel_calc_d2a2a3_dtdx(const int32_t* n, const double* x, const int32_t* ipure, const double* t,
                                            const double* rho, const double* j2, const double* j3, const double* dj2_dt,
                                            const double* dj3_dt, const double* dj2_dx, const double* dj3_dx,
                                            const double* d2j2_dtdx, const double* d2j3_dtdx, double* d2a2_dtdx,
                                            double* d2a3_dtdx);
/* Polar term of a for component 1 alone; u: its energy from calc_sigeps [K]. */
TESSAREL_API void tessarel_calc_a_pol(const double* t, const double* rho, const double* eta, const double* u,
                                      double* a);

/* ============================================================ solvers ========================================== */

/* Sets the range in which the two-phase-aware solvers of the selected fluid search. err: "No errors", or
 * "TESSAREL error: no fluid selected...". */
TESSAREL_API void tessarel_calc_ptrange(char* err, size_t err_len);

/* Brent's root finder on one residual of a state solver. The state vector vars holds T, P, v, u, h, s (and q in the
 * form with two phases) in places 1 to 6 (7); ptr(1) is the place of the unknown, ptr(2) that of the target. func is a
 * forward calculation: it gets the entries of vars, reads some, overwrites others, and writes "No errors" or a message
 * into err, err_len characters. Between the ends a and b; the last evaluation leaves the solution in vars. x and y are
 * handed through to func and may be null.
 * Returned: the root, 0 or the last iterate on failure, NaN when refused. err: "No errors",
 * "Brent_Root: root not bracketed...", "Brent_Root: no convergence...", a message of func,
 * "TESSAREL error: null pointer argument...", "TESSAREL error: control pair out of range...".
 * The residual by itself, ps_delta and delta_1ph: the target less its value from func; 0 when func fails. */
typedef void (*tessarel_forward_1ph)(double* t, double* p, double* v, double* u, double* h, double* s, char* err,
                                     size_t err_len);
typedef void (*tessarel_forward)(double* t, double* p, double* v, double* u, double* h, double* s, double* q, double* x,
                                 double* y, char* err, size_t err_len);
TESSAREL_API double tessarel_brent_root(tessarel_forward func, const double* a, const double* b, double* vars,
                                        double* x, double* y, const int32_t* ptr, char* err, size_t err_len);
TESSAREL_API double tessarel_brent_root_1ph(tessarel_forward_1ph func, const double* a, const double* b, double* vars,
                                            const int32_t* ptr, char* err, size_t err_len);
TESSAREL_API double tessarel_ps_delta(tessarel_forward func, double* vars, double* x, double* y, const int32_t* ptr,
                                      char* err, size_t err_len);
TESSAREL_API double tessarel_delta_1ph(tessarel_forward_1ph func, double* vars, const int32_t* ptr, char* err,
                                       size_t err_len);

/* State solvers of one phase: t [K], p [Pa], v [m3/mol], u, h [J/mol], s [J/(mol K)]. The pair that the name gives is
 * read and the others are written; lph and vph: the liquid-like and the vapour-like density. On failure the outputs
 * stay, but for the unknown of the search. err: "No errors", messages of calc_v and brent_root_1ph,
 * "TESSAREL error: no fluid selected...", "TESSAREL error: null pointer argument...". */
TESSAREL_API void tessarel_tp_lph(double* t, double* p, double* v, double* u, double* h, double* s, char* err,
                                  size_t err_len);
TESSAREL_API void tessarel_tp_vph(double* t, double* p, double* v, double* u, double* h, double* s, char* err,
                                  size_t err_len);
TESSAREL_API void tessarel_tv_1ph(double* t, double* p, double* v, double* u, double* h, double* s, char* err,
                                  size_t err_len);
TESSAREL_API void tessarel_pv_1ph(double* t, double* p, double* v, double* u, double* h, double* s, char* err,
                                  size_t err_len);
TESSAREL_API void tessarel_ts_1ph(double* t, double* p, double* v, double* u, double* h, double* s, char* err,
                                  size_t err_len);
TESSAREL_API void tessarel_vu_1ph(double* t, double* p, double* v, double* u, double* h, double* s, char* err,
                                  size_t err_len);
TESSAREL_API void tessarel_vh_1ph(double* t, double* p, double* v, double* u, double* h, double* s, char* err,
                                  size_t err_len);
TESSAREL_API void tessarel_vs_1ph(double* t, double* p, double* v, double* u, double* h, double* s, char* err,
                                  size_t err_len);
TESSAREL_API void tessarel_pu_lph(double* t, double* p, double* v, double* u, double* h, double* s, char* err,
                                  size_t err_len);
TESSAREL_API void tessarel_pu_vph(double* t, double* p, double* v, double* u, double* h, double* s, char* err,
                                  size_t err_len);
TESSAREL_API void tessarel_ph_lph(double* t, double* p, double* v, double* u, double* h, double* s, char* err,
                                  size_t err_len);
TESSAREL_API void tessarel_ph_vph(double* t, double* p, double* v, double* u, double* h, double* s, char* err,
                                  size_t err_len);
TESSAREL_API void tessarel_ps_lph(double* t, double* p, double* v, double* u, double* h, double* s, char* err,
                                  size_t err_len);
TESSAREL_API void tessarel_ps_vph(double* t, double* p, double* v, double* u, double* h, double* s, char* err,
                                  size_t err_len);
TESSAREL_API void tessarel_hs_lph(double* t, double* p, double* v, double* u, double* h, double* s, char* err,
                                  size_t err_len);
TESSAREL_API void tessarel_hs_vph(double* t, double* p, double* v, double* u, double* h, double* s, char* err,
                                  size_t err_len);

/* ---------------------------------------------------------------------------------------------------------------------
 * Saturation and spinodal of the selected fluid (src/solvers)
 * err everywhere: "No errors", "TESSAREL error: no fluid selected...", "TESSAREL error: null pointer argument..." and
 * the texts named. A value not computed is -8888.8. */

/* Saturation pressure [Pa] of a pure fluid at t [K], and saturation temperature [K] at p [Pa].
 * err: "Temperature less than minimum temperature...", "Temperature greater than critical temperature...",
 * "No convergence calculating saturation pressure..."; "Pressure less than minimum pressure..." (0.1 Pa), "Pressure
 * greater than critical pressure...", "No convergence calculating saturation temperature...". After a failure to
 * converge the result is the last iterate. */
TESSAREL_API void tessarel_calc_psat(const double* t, double* psat, char* err, size_t err_len);
TESSAREL_API void tessarel_calc_tsat(const double* p, double* tsat, char* err, size_t err_len);

/* Spinodal: volumes [m3/mol] and pressures [Pa] of both branches at t [K], temperatures [K] of both branches at p [Pa],
 * and the one volume that the search reaches from the packing fraction eta.
 * err: "No convergence calculating specific volume for spinodal...", "T > Tc or T > Tcricondentherm, while saturation
 * state expected...", and for the temperatures the texts of calc_tsat and brent_spin. */
TESSAREL_API void tessarel_calc_vspin(const double* t, double* vliq, double* vvap, char* err, size_t err_len);
TESSAREL_API void tessarel_calc_vspin_phase(const double* eta, const double* t, double* v, char* err, size_t err_len);
TESSAREL_API void tessarel_calc_pspin(const double* t, double* pliq, double* pvap, char* err, size_t err_len);
TESSAREL_API void tessarel_calc_tspin(const double* p, double* tliq, double* tvap, char* err, size_t err_len);

/* The temperature t [K] between a and b [K] at which the spinodal pressure of branch iphase (1 liquid, 2 vapour) is
 * p [Pa], by Brent's method and by bisection to 1e-8 K.
 * err: "Brent method for spinodal: root not bracketed", "Brent method for spinodal: no convergence". */
TESSAREL_API void tessarel_brent_spin(const int32_t* iphase, const double* p, const double* a, const double* b,
                                      double* t, char* err, size_t err_len);
TESSAREL_API void tessarel_bisec_spin(const int32_t* iphase, const double* p, const double* a, const double* b,
                                      double* t, char* err, size_t err_len);

/* ---------------------------------------------------------------------------------------------------------------------
 * Critical points (src/envelope)
 * They write the record's critical point; tessarel_fluidinfo reports it. */

/* critpoint: the true critical point of a pure fluid, or the mole-fraction average of those of the components.
 * critpure: the search for component i. critmixt_pseudo: the mixture form. critmixt_brent: reserved, no effect.
 * errormsg: "Critical point: density iteration 1 not converged...", "Critical point: density iteration 2 not
 * converged...", "Critical point: : temperature-iteration not converged"; then the record holds the start estimates. */
TESSAREL_API void tessarel_critpoint(char* errormsg, size_t errormsg_len);
TESSAREL_API void tessarel_critpure(const int32_t* i, char* errormsg, size_t errormsg_len);
TESSAREL_API void tessarel_critmixt_pseudo(char* errormsg, size_t errormsg_len);
TESSAREL_API void tessarel_critmixt_brent(char* errormsg, size_t errormsg_len);

/* Two-level search from the critical temperature of the record, see docs/robustness.md for what it finds. It leaves the
 * critical density of the record in 1/A3. errormsg: "Critical point calulation failed...". */
TESSAREL_API void tessarel_critmixt_newton(char* errormsg, size_t errormsg_len);

/* The iterations of this search on the host's variables: z (n), rho [1/A3] and t [K] in and out, q (n,n) out; debug is
 * a logical that prints each pass. ierr: 0; 310 singular matrix; 320 cubic form, 321 determinant not converged; -1
 * arguments refused. */
TESSAREL_API void tessarel_cubic_newton(const int32_t* debug, const int32_t* n, const double* z, double* rho, double* t,
                                        int32_t* ierr);
TESSAREL_API void tessarel_det_q_newton(const int32_t* debug, const int32_t* n, const double* z, const double* rho,
                                        double* t, double* q, int32_t* ierr);

/* ---------------------------------------------------------------------------------------------------------------------
 * Flash adapters (src/flash)
 * t [K], p in bar; n at most the number of selected components. Refused arguments leave the outputs alone. */

/* Fugacity coefficients of amounts z (n) of any sum. icon: 1 lnphi; 2 also dlnphi_dt, dlnphi_dp (1/bar); 3 lnphi and
 * dlnphi_dn (n,n); 6 all; arrays not asked for may be null. mt: 1 liquid-like root, -1 vapour-like, 0 lower Gibbs
 * energy. ic: 2 for mt 0, else 1. ierr: 0. */
TESSAREL_API void tessarel_fugacoeff(const int32_t* icon, const int32_t* mt, const int32_t* n, const double* z,
                                     const double* t, const double* p, double* lnphi, double* dlnphi_dt,
                                     double* dlnphi_dp, double* dlnphi_dn, int32_t* ic, int32_t* ierr);

/* Critical temperature [K], critical pressure [bar] and acentric factor of component i. */
TESSAREL_API void tessarel_fluiddata(const int32_t* i, double* tc, double* pc, double* omega);

/* Reduced properties of one phase, with vr = v / R in K/bar: aux(3) residual enthalpy / R, aux(4) residual entropy / R,
 * aux(5) residual cp / R, aux(6) 1/p - dvr/dt, aux(7) vr - t dvr/dt, aux(8) dp/dvr, aux(9) dvr/dt, aux(10) aux(8)/t;
 * aux (10), entries 1 and 2 are not written. p of exactly 0 is replaced by the pressure of the equation of state. */
TESSAREL_API void tessarel_auxprop(const int32_t* n, const double* x, const double* t, double* p, const int32_t* mt,
                                   double* z, double* aux);
TESSAREL_API void tessarel_auxprop_v(const int32_t* n, const double* x, const double* t, double* p, const double* v,
                                     double* aux);

/* ---------------------------------------------------------------------------------------------------------------------
 * Linear algebra (src/numerics): n from 1 to 20, matrices (n,n) first index fastest, pivots from 1. ierr: 0; 310 a row
 * without a non-zero entry; -1 arguments refused. */

/* LU factors in place with row exchanges indx (n), d = +1 or -1 by their parity; solution in place of b (n). */
TESSAREL_API void tessarel_lu_dcmp(const int32_t* n, double* a, int32_t* indx, double* d, int32_t* ierr);
TESSAREL_API void tessarel_lu_bksb(const int32_t* n, const double* a, const int32_t* indx, double* b);
/* A unit vector x (n) near the null space of a, which is overwritten; x scaled to length 1, its former length
 * returned (NaN when refused); det(a), kept as it stands on failure. */
TESSAREL_API void tessarel_solution_vector(const int32_t* n, double* a, double* x);
TESSAREL_API double tessarel_normalize_vec(const int32_t* n, double* x);
TESSAREL_API void tessarel_determinant(const int32_t* n, const double* a, double* det, int32_t* ierr);

#ifdef __cplusplus
}
#endif

#endif
