/* Tessarel: the routines beneath the host entries of <tessarel/tessarel.h>, for hosts that call the forward
 * calculations of the equation of state directly. The building blocks beneath them are in <tessarel/blocks.h>.
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
 * mole numbers at a total of one mole. A unit is that of the quantity divided by those of the variables.
 *
 * REFUSED CALLS. With a null pointer, or an n, ipure, component number or phase code out of range, results that are
 * single numbers become NaN and arrays are left alone; routines with an error text set that text instead. Numbers
 * outside the domain of the formulas (t of 0 or below, eta of 1 or more, NaN) give NaN or infinities where there is no
 * error text, and a text where there is one: "TESSAREL error: input values must be finite numbers, temperature and
 * volume positive...", "TESSAREL error: the volume is below that of closest packing...", "TESSAREL error: no finite
 * state found for the input values...".
 *
 * Every routine works on the session that is current on the calling thread.
 */
#ifndef TESSAREL_ROUTINES_H
#define TESSAREL_ROUTINES_H

#include "tessarel/tessarel.h"

#ifdef __cplusplus
extern "C" {
#endif

/* ============================================================ fluid ============================================= */

/* Readers of fluid data. They fill the parameters of the session and leave its number of components and its
 * composition as they are; tessarel_setfluid is the usual way in. Messages:
 * "Error opening fluid data file of <name>", "Unexpected data in fluid data file "<name>.saf"...",
 * "Place of a component must be 1 to 20...", "TESSAREL error: null pointer argument...". */

/* Reads the components named in `fluids`, as many texts as the session has components, from the database or the files
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
/* Rows of the record `name` of the database in the directory `fluiddb`: 255 texts. Returns the number of rows, 0
 * when there is no such record; rows behind them are left alone. status: 1 with rows, else 0. */
TESSAREL_API int32_t tessarel_getfluid(const char* fluiddb, const char* name, char* fluiddata, int32_t* status,
                                       size_t fluiddb_len, size_t name_len, size_t fluiddata_len);
/* Directory of the library loaded as `name` ("TESSAREL"), ending in its separator; "/opt/Ostrakine/fluids/" when it
 * cannot be told. */
TESSAREL_API void tessarel_modulepath(char* result, const char* name, size_t result_len, size_t name_len);
/* The fluid directory beside that directory; "/opt/Ostrakine/fluids/" when it cannot be told. */
TESSAREL_API void tessarel_fluidpath(char* result, const char* name, size_t result_len, size_t name_len);
/* Names of the files in `directory`, which ends in a separator, that match `pattern` (*, ?, [...]): the first 500 in
 * ascending order. `list` is an array of 500 texts, blank from the last name on. */
TESSAREL_API void tessarel_searchdirectory(const char* directory, const char* pattern, char* list, size_t directory_len,
                                           size_t pattern_len, size_t list_len);

/* Binary interaction parameters. Messages: "Error opening mixture parameter file BIPs.mix...",
 * "Unexpected data in mixture parameter file BIPs.mix...", "TESSAREL error: null pointer argument...". Tables: bip
 * (1000), entries of rows that are not there are left alone; cn (1000 x 2 texts), the two names of row k at [k] and
 * [k + 1000]. */

/* The parameters of the selected mixture from BIPs.mix in the library's directory; 0 for a pair that is not there.
 * For one component errormsg stays as it is. */
TESSAREL_API void tessarel_readbips(char* errormsg, size_t errormsg_len);
/* Reads up to nrows rows, at most 1000, of the file `filename`. */
TESSAREL_API void tessarel_readbipsfile(const char* filename, const int32_t* nrows, double* bip, char* cn,
                                        char* errormsg, size_t filename_len, size_t cn_len, size_t errormsg_len);
/* Reads the rows of the record `filename` of the database in the directory `fluiddb`. */
TESSAREL_API void tessarel_readbipsdb(const char* fluiddb, const char* filename, double* bip, char* cn, char* errormsg,
                                      size_t fluiddb_len, size_t filename_len, size_t cn_len, size_t errormsg_len);
/* The parameters at t: n x n. */
TESSAREL_API void tessarel_ps_calc_kij(const int32_t* n, const double* t, double* kij);
/* First derivative of the parameters by t: n x n [1/K]. */
TESSAREL_API void tessarel_calc_dkij_dt(const int32_t* n, const double* t, double* dkij);
/* Second derivative of the parameters by t: n x n [1/K2]. */
TESSAREL_API void tessarel_calc_d2kij_dt2(const int32_t* n, const double* t, double* d2kij);
/* Third derivative of the parameters by t: n x n [1/K3]. */
TESSAREL_API void tessarel_calc_d3kij_dt3(const int32_t* n, const double* t, double* d3kij);

/* Ideal-gas heat capacities and their integrals from 298.15 K. Returned; NaN when refused. */

/* Heat capacity of component i, from 1 [J/(mol K)]. */
TESSAREL_API double tessarel_calc_cp0(const int32_t* i, const double* t);
/* Its slope of component i, from 1 [J/(mol K2)]. */
TESSAREL_API double tessarel_calc_dcp0_dt(const int32_t* i, const double* t);
/* Integral of cp0 dt of component i, from 1 [J/mol]. */
TESSAREL_API double tessarel_calc_icp0_dt(const int32_t* i, const double* t);
/* Integral of cp0/t dt of component i, from 1 [J/(mol K)]. */
TESSAREL_API double tessarel_calc_icp0_t_dt(const int32_t* i, const double* t);
/* Heat capacity of the mixture x [J/(mol K)]. */
TESSAREL_API double tessarel_calc_cp0mix(const int32_t* n, const double* x, const double* t);
/* Its slope of the mixture x [J/(mol K2)]. */
TESSAREL_API double tessarel_calc_dcp0mix_dt(const int32_t* n, const double* x, const double* t);
/* Integral of cp0 dt of the mixture x [J/mol]. */
TESSAREL_API double tessarel_calc_icp0mix_dt(const int32_t* n, const double* x, const double* t);
/* Integral of cp0/t dt of the mixture x [J/(mol K)]. */
TESSAREL_API double tessarel_calc_icp0mix_t_dt(const int32_t* n, const double* x, const double* t);

/* ============================================================ Helmholtz energy ================================== */

/* Residual Helmholtz energy a = A_res / (R T) and its derivatives. Plain derivatives, nothing scaled. */

/* a of the mixture. */
TESSAREL_API void tessarel_calc_a(const int32_t* n, const double* x, const double* t, const double* rho, double* a);
/* First derivative of a by t [1/K]. */
TESSAREL_API void tessarel_calc_da_dt(const int32_t* n, const double* x, const double* t, const double* rho,
                                      double* da_dt);
/* Second derivative of a by t, t [1/K2]. */
TESSAREL_API void tessarel_calc_d2a_dt2(const int32_t* n, const double* x, const double* t, const double* rho,
                                        double* d2a_dt2);
/* Third derivative of a by t, t, t [1/K3]. */
TESSAREL_API void tessarel_calc_d3a_dt3(const int32_t* n, const double* x, const double* t, const double* rho,
                                        double* d3a_dt3);
/* First derivative of a by rho [A3]. */
TESSAREL_API void tessarel_calc_da_drho(const int32_t* n, const double* x, const double* t, const double* rho,
                                        double* da_drho);
/* Second derivative of a by rho, rho [A6]. */
TESSAREL_API void tessarel_calc_d2a_drho2(const int32_t* n, const double* x, const double* t, const double* rho,
                                          double* d2a_drho2);
/* Third derivative of a by rho, rho, rho [A9]. */
TESSAREL_API void tessarel_calc_d3a_drho3(const int32_t* n, const double* x, const double* t, const double* rho,
                                          double* d3a_drho3);
/* Fourth derivative of a by rho, rho, rho, rho [A12]. */
TESSAREL_API void tessarel_calc_d4a_drho4(const int32_t* n, const double* x, const double* t, const double* rho,
                                          double* d4a_drho4);
/* First derivative of a by x: n. */
TESSAREL_API void tessarel_calc_da_dx(const int32_t* n, const double* x, const double* t, const double* rho,
                                      double* da_dx);
/* Second derivative of a by x, x: n x n. */
TESSAREL_API void tessarel_calc_d2a_dxdx(const int32_t* n, const double* x, const double* t, const double* rho,
                                         double* d2a_dxdx);
/* Third derivative of a by x, x, x: n x n x n. */
TESSAREL_API void tessarel_calc_d3a_dxdxdx(const int32_t* n, const double* x, const double* t, const double* rho,
                                           double* d3a_dxdxdx);
/* Second derivative of a by t, x: n [1/K]. */
TESSAREL_API void tessarel_calc_d2a_dtdx(const int32_t* n, const double* x, const double* t, const double* rho,
                                         double* d2a_dtdx);
/* Second derivative of a by rho, x: n [A3]. */
TESSAREL_API void tessarel_calc_d2a_drhodx(const int32_t* n, const double* x, const double* t, const double* rho,
                                           double* d2a_drhodx);
/* First derivative of a by mole numbers at constant t and rho: n. */
TESSAREL_API void tessarel_calc_da_dn(const int32_t* n, const double* x, const double* t, const double* rho,
                                      double* da_dn);
/* Second derivative of a by mole numbers at constant t and rho: n x n. */
TESSAREL_API void tessarel_calc_d2a_dndn(const int32_t* n, const double* x, const double* t, const double* rho,
                                         double* d2a_dndn);
/* Third derivative of a by mole numbers at constant t and rho: n x n x n. */
TESSAREL_API void tessarel_calc_d3a_dndndn(const int32_t* n, const double* x, const double* t, const double* rho,
                                           double* d3a_dndndn);

/* ============================================================ compressibility factor ============================ */

/* Compressibility factor z = p / (rho k t) and its derivatives. Plain derivatives, nothing scaled. */

/* z of the mixture, or of component ipure alone. */
TESSAREL_API void tessarel_calc_z(const int32_t* n, const double* x, const int32_t* ipure, const double* t,
                                  const double* rho, double* z);
/* First derivative of z by rho [A3]. */
TESSAREL_API void tessarel_calc_dz_drho(const int32_t* n, const double* x, const int32_t* ipure, const double* t,
                                        const double* rho, double* dz_drho);
/* Second derivative of z by rho, rho [A6]. */
TESSAREL_API void tessarel_calc_d2z_drho2(const int32_t* n, const double* x, const int32_t* ipure, const double* t,
                                          const double* rho, double* d2z_drho2);
/* Third derivative of z by rho, rho, rho [A9]. */
TESSAREL_API void tessarel_calc_d3z_drho3(const int32_t* n, const double* x, const int32_t* ipure, const double* t,
                                          const double* rho, double* d3z_drho3);
/* First derivative of z by t [1/K]. */
TESSAREL_API void tessarel_calc_dz_dt(const int32_t* n, const double* x, const double* t, const double* rho,
                                      double* dz_dt);
/* Second derivative of z by t, t [1/K2]. */
TESSAREL_API void tessarel_calc_d2z_dt2(const int32_t* n, const double* x, const double* t, const double* rho,
                                        double* d2z_dt2);
/* Second derivative of z by t, rho [A3/K]. */
TESSAREL_API void tessarel_calc_d2z_dtdrho(const int32_t* n, const double* x, const double* t, const double* rho,
                                           double* d2z_dtdrho);
/* First derivative of z by x: n. */
TESSAREL_API void tessarel_calc_dz_dx(const int32_t* n, const double* x, const double* t, const double* rho,
                                      double* dz_dx);
/* Second derivative of z by x, x: n x n. */
TESSAREL_API void tessarel_calc_d2z_dxdx(const int32_t* n, const double* x, const double* t, const double* rho,
                                         double* d2z_dxdx);
/* First derivative of z by mole numbers at constant t and total volume, so the density follows the amount: n; a
 * central difference with a step of 1e-6 mol. */
TESSAREL_API void tessarel_calc_dz_dn(const int32_t* n, const double* x, const double* t, const double* rho,
                                      double* dz_dn);
/* Second derivative of z by mole numbers at constant t and rho: n x n. */
TESSAREL_API void tessarel_calc_d2z_dndn(const int32_t* n, const double* x, const double* t, const double* rho,
                                         double* d2z_dndn);
/* Derivative of z by p at constant t and x, at the vapour-like root of (t, p) whatever the state [1/Pa]. */
TESSAREL_API void tessarel_calc_dz_dp(const int32_t* n, const double* x, const double* t, const double* p,
                                      double* dz_dp);

/* ============================================================ pressure ========================================== */

/* p of the selected fluid and composition at t and v [Pa]; NaN where t or v is not positive or v below closest packing.
 */
TESSAREL_API void tessarel_calc_p(const double* t, const double* v, double* p);
/* p of the mixture at t and rho [Pa]. */
TESSAREL_API void tessarel_calc_p_rho(const int32_t* n, const double* x, const double* t, const double* rho, double* p);
/* First derivative of p by t [Pa/K]. */
TESSAREL_API void tessarel_calc_dp_dt(const int32_t* n, const double* x, const double* t, const double* rho,
                                      double* dp_dt);
/* Second derivative of p by t, t [Pa/K2]. */
TESSAREL_API void tessarel_calc_d2p_dt2(const int32_t* n, const double* x, const double* t, const double* rho,
                                        double* d2p_dt2);
/* First derivative of p by rho [Pa A3]. */
TESSAREL_API void tessarel_calc_dp_drho(const int32_t* n, const double* x, const double* t, const double* rho,
                                        double* dp_drho);
/* Second derivative of p by rho, rho [Pa A6]. */
TESSAREL_API void tessarel_calc_d2p_drho2(const int32_t* n, const double* x, const double* t, const double* rho,
                                          double* d2p_drho2);
/* Third derivative of p by rho, rho, rho [Pa A9]. */
TESSAREL_API void tessarel_calc_d3p_drho3(const int32_t* n, const double* x, const double* t, const double* rho,
                                          double* d3p_drho3);
/* Second derivative of p by t, rho [Pa A3/K]. */
TESSAREL_API void tessarel_calc_d2p_dtdrho(const int32_t* n, const double* x, const double* t, const double* rho,
                                           double* d2p_dtdrho);
/* First derivative of p by x: n [Pa]. */
TESSAREL_API void tessarel_calc_dp_dx(const int32_t* n, const double* x, const double* t, const double* rho,
                                      double* dp_dx);
/* First derivative of p by mole numbers at constant t and rho: n [Pa/mol]. */
TESSAREL_API void tessarel_calc_dp_dn(const int32_t* n, const double* x, const double* t, const double* rho,
                                      double* dp_dn);
/* Second derivative of p by mole numbers at constant t and total volume, by central differences with a step of 1e-6
 * mol, whose first index is the component stepped: n x n [Pa/mol2]. */
TESSAREL_API void tessarel_calc_d2p_dndn(const int32_t* n, const double* x, const double* t, const double* rho,
                                         double* d2p_dndn);
/* Component ipure, or the first alone for n = 1: p and its derivatives by eta at constant t [Pa]. With ipure = 0 and
 * n above 1 all fractions count as 1. */
TESSAREL_API void tessarel_calc_p_deta(const int32_t* n, const int32_t* ipure, const double* t, const double* eta,
                                       double* p, double* dp_deta, double* d2p_deta2, double* d3p_deta3);

/* ============================================================ density =========================================== */

/* Molar volume [m3/mol] of the selected fluid; v is written also without convergence. Messages:
 * "No convergence calculating density from T and P", "Phase code of the density must be 1 or 2...",
 * "TESSAREL error: no fluid selected...", "TESSAREL error: null pointer argument...". */
TESSAREL_API void tessarel_calc_v(const double* t, const double* p, const int32_t* phase, double* v, char* errormsg,
                                  size_t errormsg_len);
/* Number density [1/A3]; phase may also be -1: the root of lower Gibbs energy, the vapour-like one on a tie. A
 * failure to converge is silent. */
TESSAREL_API void tessarel_calc_rho(const int32_t* n, const double* x, const double* t, const double* p,
                                    const int32_t* phase, double* rho);
/* Packing fraction of a number density. */
TESSAREL_API void tessarel_calc_eta_rho(const int32_t* n, const double* x, const int32_t* ipure, const double* t,
                                        const double* rho, double* eta);
/* Number density [1/A3] of a packing fraction. */
TESSAREL_API void tessarel_calc_rho_eta(const int32_t* n, const double* x, const int32_t* ipure, const double* t,
                                        const double* eta, double* rho);

/* ============================================================ caloric properties ================================ */

/* Enthalpy, internal energy [J/mol] and entropy [J/(mol K)] of the selected fluid at consistent t, p, v. The
 * reference is the ideal gas at 298.15 K and 1e5 Pa, with the enthalpies of formation. Messages: "No errors",
 * "TESSAREL error: no fluid selected...", "TESSAREL error: null pointer argument...". */
TESSAREL_API void tessarel_calc_hsu(const double* t, const double* p, const double* v, double* h, double* s, double* u,
                                    char* errormsg, size_t errormsg_len);
/* Isochoric heat capacity [J/(mol K)]. */
TESSAREL_API void tessarel_calc_cv(const int32_t* n, const double* x, const double* t, const double* rho, double* cv);
/* Its slope by t at constant rho [J/(mol K2)]. */
TESSAREL_API void tessarel_calc_dcv_dt(const int32_t* n, const double* x, const double* t, const double* rho,
                                       double* dcv_dt);
/* The second-order properties of tessarel_tmdprop as molar values: cv [J/(mol K)], pressure derivatives by t at
 * constant v and by v [m3/mol] at constant t, in Pa, and dcv/dt at constant v [J/(mol K2)]. */
TESSAREL_API void tessarel_calc_sectmdprop(const int32_t* n, const double* x, const double* t, const double* rho,
                                           double* cv, double* dpdt, double* dpdv, double* d2pdt2, double* d2pdv2,
                                           double* d2pdtdv, double* dcvdt);

/* ============================================================ fugacity coefficients ============================= */

/* Logarithms of the fugacity coefficients and their derivatives. A matrix has the component of lnphi as its first
 * index and the component by whose fraction or mole number the derivative is taken as its second. For n = 1 the
 * terms in the composition derivatives drop out. */

/* At given t and p, with a density solve; phase 1, 2, or -1 for the root of lower Gibbs energy. Derivatives by t at
 * constant p, by p at constant t, by x and by mole numbers at constant t and p. A density that did not converge
 * passes silently. */

/* lnphi: n. */
TESSAREL_API void tessarel_calc_lnphi(const int32_t* n, const double* x, const double* t, const double* p,
                                      const int32_t* phase, double* lnphi);
/* lnphi: n, and its derivatives by t: n [1/K], and by p: n [1/Pa]. */
TESSAREL_API void tessarel_calc_lnphi_tp(const int32_t* n, const double* x, const double* t, const double* p,
                                         const int32_t* phase, double* lnphi, double* dlnphi_dt, double* dlnphi_dp);
/* lnphi: n, and its derivatives by mole numbers: n x n. */
TESSAREL_API void tessarel_calc_lnphi_n(const int32_t* n, const double* x, const double* t, const double* p,
                                        const int32_t* phase, double* lnphi, double* dlnphi_dn);
/* lnphi: n, and its derivatives by t: n [1/K], by p: n [1/Pa], and by mole numbers: n x n. */
TESSAREL_API void tessarel_calc_lnphi_tpn(const int32_t* n, const double* x, const double* t, const double* p,
                                          const int32_t* phase, double* lnphi, double* dlnphi_dt, double* dlnphi_dp,
                                          double* dlnphi_dn);
/* Derivatives of lnphi by t: n [1/K]. */
TESSAREL_API void tessarel_calc_dlnphi_dt(const int32_t* n, const double* x, const double* t, const double* p,
                                          const int32_t* phase, double* dlnphi_dt);
/* Derivatives of lnphi by p: n [1/Pa]. */
TESSAREL_API void tessarel_calc_dlnphi_dp(const int32_t* n, const double* x, const double* t, const double* p,
                                          const int32_t* phase, double* dlnphi_dp);
/* Derivatives of lnphi by x: n x n. */
TESSAREL_API void tessarel_calc_dlnphi_dx(const int32_t* n, const double* x, const double* t, const double* p,
                                          const int32_t* phase, double* dlnphi_dx);
/* Derivatives of lnphi by mole numbers: n x n. */
TESSAREL_API void tessarel_calc_dlnphi_dn(const int32_t* n, const double* x, const double* t, const double* p,
                                          const int32_t* phase, double* dlnphi_dn);
/* lnphi: n, at a density that belongs to t and p, without the solve. */
TESSAREL_API void tessarel_calc_lnphi_tprho(const int32_t* n, const double* x, const double* t, const double* p,
                                            const double* rho, double* lnphi);
/* Derivatives of lnphi by t: n [1/K], by p: n [1/Pa], by x: n x n, and by mole numbers: n x n, at a density that
 * belongs to t and p, without the solve. */
TESSAREL_API void tessarel_calc_lnphi_tpxn(const int32_t* n, const double* x, const double* t, const double* p,
                                           const double* rho, double* dlnphi_dt, double* dlnphi_dp, double* dlnphi_dx,
                                           double* dlnphi_dn);

/* At given t and rho. Derivatives at constant rho but for the two by p and by rho, which are at constant t. */

/* lnphi: n. */
TESSAREL_API void tessarel_calc_lnphi_rho(const int32_t* n, const double* x, const double* t, const double* rho,
                                          double* lnphi);
/* Derivatives of lnphi by t: n [1/K]. */
TESSAREL_API void tessarel_calc_dlnphi_dt_rho(const int32_t* n, const double* x, const double* t, const double* rho,
                                              double* dlnphi_dt);
/* Derivatives of lnphi by p: n [1/Pa]. */
TESSAREL_API void tessarel_calc_dlnphi_dp_rho(const int32_t* n, const double* x, const double* t, const double* rho,
                                              double* dlnphi_dp);
/* Derivatives of lnphi by rho: n [A3]. */
TESSAREL_API void tessarel_calc_dlnphi_drho_t(const int32_t* n, const double* x, const double* t, const double* rho,
                                              double* dlnphi_drho);
/* Derivatives of lnphi by x: n x n. */
TESSAREL_API void tessarel_calc_dlnphi_dx_rho(const int32_t* n, const double* x, const double* t, const double* rho,
                                              double* dlnphi_dx);
/* Derivatives of lnphi by mole numbers: n x n. */
TESSAREL_API void tessarel_calc_dlnphi_dn_rho(const int32_t* n, const double* x, const double* t, const double* rho,
                                              double* dlnphi_dn);
/* Second derivatives of lnphi by x: n x n x n. */
TESSAREL_API void tessarel_calc_d2lnphi_dxdx_rho(const int32_t* n, const double* x, const double* t, const double* rho,
                                                 double* d2lnphi_dxdx);
/* Second derivatives of lnphi by mole numbers: n x n x n. */
TESSAREL_API void tessarel_calc_d2lnphi_dndn_rho(const int32_t* n, const double* x, const double* t, const double* rho,
                                                 double* d2lnphi_dndn);
/* ln(x_i p) + lnphi_i with p in Pa: n; fractions above 0. */
TESSAREL_API void tessarel_calc_lnfug_rho(const int32_t* n, const double* x, const double* t, const double* rho,
                                          double* lnfug);
/* Its derivatives by mole numbers at constant t and rho: n x n. */
TESSAREL_API void tessarel_calc_dlnfug_dn_rho(const int32_t* n, const double* x, const double* t, const double* rho,
                                              double* dlnfug_dn);
/* Its second derivatives by mole numbers at constant t and rho: n x n x n. */
TESSAREL_API void tessarel_calc_d2lnfug_dndn_rho(const int32_t* n, const double* x, const double* t, const double* rho,
                                                 double* d2lnfug_dndn);
/* Component 1 of the selected fluid as a pure fluid: lnphi and the number density [1/A3] of both roots at t and p. */
TESSAREL_API void tessarel_calc_lnphi_rho_pure(const double* t, const double* p, double* lnphi_l, double* lnphi_v,
                                               double* rho_l, double* rho_v);
/* Component 1 as a pure fluid: lnphi of both roots at t and p. */
TESSAREL_API void tessarel_calc_lnphi_eta(const double* t, const double* p, double* lnphi_l, double* lnphi_v);
/* Component 1 as a pure fluid: derivatives of lnphi by p at the densities of both roots [1/Pa]. */
TESSAREL_API void tessarel_calc_dlnphi_dp_rho_pure(const double* t, const double* p, const double* rho_l,
                                                   const double* rho_v, double* d_l, double* d_v);
/* Component 1 as a pure fluid: derivatives of lnphi by t at the densities of both roots [1/K]. */
TESSAREL_API void tessarel_calc_dlnphi_dt_rho_pure(const double* t, const double* p, const double* rho_l,
                                                   const double* rho_v, double* d_l, double* d_v);

/* ============================================================ solvers =========================================== */

/* Sets the range in which the two-phase-aware solvers of the selected fluid search. err: "No errors", or
 * "TESSAREL error: no fluid selected...". */
TESSAREL_API void tessarel_calc_ptrange(char* err, size_t err_len);

/* Brent's root finder on one residual of a state solver. The state vector vars holds T, P, v, u, h, s (and q in the
 * form with two phases) in places 1 to 6 (7); ptr(1) is the place of the unknown, ptr(2) that of the target. func is
 * a forward calculation: it gets the entries of vars, reads some, overwrites others, and writes "No errors" or a
 * message into err, err_len characters. Between the ends a and b; the last evaluation leaves the solution in vars. x
 * and y are handed through to func and may be null. Returned: the root, 0 or the last iterate on failure, NaN when
 * refused. err: "No errors", "Brent_Root: root not bracketed...", "Brent_Root: no convergence...", a message of
 * func, "TESSAREL error: null pointer argument...", "TESSAREL error: control pair out of range...". */

/* A forward calculation of one phase. */
typedef void (*tessarel_forward_1ph)(double* t, double* p, double* v, double* u, double* h, double* s, char* err,
                                     size_t err_len);
/* A forward calculation with two phases: also the vapour fraction q and the fractions x, y of both. */
typedef void (*tessarel_forward)(double* t, double* p, double* v, double* u, double* h, double* s, double* q, double* x,
                                 double* y, char* err, size_t err_len);
/* The root by a forward calculation with two phases. */
TESSAREL_API double tessarel_brent_root(tessarel_forward func, const double* a, const double* b, double* vars,
                                        double* x, double* y, const int32_t* ptr, char* err, size_t err_len);
/* The root by a forward calculation of one phase. */
TESSAREL_API double tessarel_brent_root_1ph(tessarel_forward_1ph func, const double* a, const double* b, double* vars,
                                            const int32_t* ptr, char* err, size_t err_len);
/* The residual by itself: the target less its value from func; 0 when func fails. */
TESSAREL_API double tessarel_ps_delta(tessarel_forward func, double* vars, double* x, double* y, const int32_t* ptr,
                                      char* err, size_t err_len);
/* The same for one phase. */
TESSAREL_API double tessarel_delta_1ph(tessarel_forward_1ph func, double* vars, const int32_t* ptr, char* err,
                                       size_t err_len);

/* State solvers of one phase: t [K], p [Pa], v [m3/mol], u, h [J/mol], s [J/(mol K)]. The pair that the name gives
 * is read and the others are written. On failure the outputs stay, but for the unknown of the search. err:
 * "No errors", messages of calc_v and brent_root_1ph, "TESSAREL error: no fluid selected...",
 * "TESSAREL error: null pointer argument...". */

/* State of given temperature and pressure, at the liquid-like density. */
TESSAREL_API void tessarel_tp_lph(double* t, double* p, double* v, double* u, double* h, double* s, char* err,
                                  size_t err_len);
/* State of given temperature and pressure, at the vapour-like density. */
TESSAREL_API void tessarel_tp_vph(double* t, double* p, double* v, double* u, double* h, double* s, char* err,
                                  size_t err_len);
/* State of given temperature and volume. */
TESSAREL_API void tessarel_tv_1ph(double* t, double* p, double* v, double* u, double* h, double* s, char* err,
                                  size_t err_len);
/* State of given pressure and volume. */
TESSAREL_API void tessarel_pv_1ph(double* t, double* p, double* v, double* u, double* h, double* s, char* err,
                                  size_t err_len);
/* State of given temperature and entropy. */
TESSAREL_API void tessarel_ts_1ph(double* t, double* p, double* v, double* u, double* h, double* s, char* err,
                                  size_t err_len);
/* State of given volume and internal energy. */
TESSAREL_API void tessarel_vu_1ph(double* t, double* p, double* v, double* u, double* h, double* s, char* err,
                                  size_t err_len);
/* State of given volume and enthalpy. */
TESSAREL_API void tessarel_vh_1ph(double* t, double* p, double* v, double* u, double* h, double* s, char* err,
                                  size_t err_len);
/* State of given volume and entropy. */
TESSAREL_API void tessarel_vs_1ph(double* t, double* p, double* v, double* u, double* h, double* s, char* err,
                                  size_t err_len);
/* State of given pressure and internal energy, at the liquid-like density. */
TESSAREL_API void tessarel_pu_lph(double* t, double* p, double* v, double* u, double* h, double* s, char* err,
                                  size_t err_len);
/* State of given pressure and internal energy, at the vapour-like density. */
TESSAREL_API void tessarel_pu_vph(double* t, double* p, double* v, double* u, double* h, double* s, char* err,
                                  size_t err_len);
/* State of given pressure and enthalpy, at the liquid-like density. */
TESSAREL_API void tessarel_ph_lph(double* t, double* p, double* v, double* u, double* h, double* s, char* err,
                                  size_t err_len);
/* State of given pressure and enthalpy, at the vapour-like density. */
TESSAREL_API void tessarel_ph_vph(double* t, double* p, double* v, double* u, double* h, double* s, char* err,
                                  size_t err_len);
/* State of given pressure and entropy, at the liquid-like density. */
TESSAREL_API void tessarel_ps_lph(double* t, double* p, double* v, double* u, double* h, double* s, char* err,
                                  size_t err_len);
/* State of given pressure and entropy, at the vapour-like density. */
TESSAREL_API void tessarel_ps_vph(double* t, double* p, double* v, double* u, double* h, double* s, char* err,
                                  size_t err_len);
/* State of given enthalpy and entropy, at the liquid-like density. */
TESSAREL_API void tessarel_hs_lph(double* t, double* p, double* v, double* u, double* h, double* s, char* err,
                                  size_t err_len);
/* State of given enthalpy and entropy, at the vapour-like density. */
TESSAREL_API void tessarel_hs_vph(double* t, double* p, double* v, double* u, double* h, double* s, char* err,
                                  size_t err_len);

/* ---------------------------------------------------------- with the phase boundary ----------------------------- */

/* The stable state of the selection, of one phase or two. Each member reads the pair that its name gives and writes the
 * others: t [K], p [Pa], v [m3/mol], u, h [J/mol], s [J/(mol K)], q the mole fraction of vapour, x and y (n) the mole
 * fractions of liquid and vapour; a pure fluid leaves x and y alone. Values of two phases are the mean by amounts. A
 * state exists when t and p lie within the range of the fluid: tmin to tmax of tessarel_fluidinfo, 1 Pa (mixtures 1000
 * Pa) to 5e7 Pa. The one of two that belong to a pair may be returned where there are two.
 *
 * err, if not "No errors": the state is left as it was. The texts of each member; of the searches "Brent_Root: root not
 * bracketed...", "Brent_Root: no convergence..."; of what they call (calc_psat, calc_tsat, calc_pt_flash,
 * calc_ab_flash, calc_bubdew, the density solver); "TESSAREL error: input values must be finite numbers, temperature
 * and volume positive...", "TESSAREL error: temperature and pressure must be positive finite numbers...", "TESSAREL
 * error: temperature must be 1 to 1e5 K and pressure at most 1e12 Pa...", "TESSAREL error: the volume is below that of
 * closest packing...", "TESSAREL error: mole fractions of the selection must sum to 1 within 1e-6...", and those for
 * null pointers and for no fluid selected. */

/* Given t, p. One phase: q is 0 or 1, the composition of the other phase is what the flash left. With a pure fluid at
 * tc or above q keeps its value. */
TESSAREL_API void tessarel_tp(double* t, double* p, double* v, double* u, double* h, double* s, double* q, double* x,
                              double* y, char* err, size_t err_len);
/* The same by phases: v, u, h, s have 3 values, the whole, the vapour, the liquid. phase 0: the whole into the first;
 * 1, 2: of two phases the liquid's, the vapour's into the first; 3: all. The second and third are written only for two
 * phases and 3. After a failed flash the values follow from its q, and err is the text of the flash. "TESSAREL error:
 * phase code must be 0 to 3...". */
TESSAREL_API void tessarel_tp_ph(double* t, double* p, const int32_t* phase, double* v, double* u, double* h, double* s,
                                 double* q, double* x, double* y, char* err, size_t err_len);
/* Given t, p, by the general flash. */
TESSAREL_API void tessarel_tp_new(double* t, double* p, double* v, double* u, double* h, double* s, double* q,
                                  double* x, double* y, char* err, size_t err_len);
/* Given t, p: the liquid-like root, q 0, x and y the selected composition. */
TESSAREL_API void tessarel_tp_l(double* t, double* p, double* v, double* u, double* h, double* s, double* q, double* x,
                                double* y, char* err, size_t err_len);
/* Given t, p: the vapour-like root, q 1. */
TESSAREL_API void tessarel_tp_v(double* t, double* p, double* v, double* u, double* h, double* s, double* q, double* x,
                                double* y, char* err, size_t err_len);
/* Given t, v: one phase whatever the phase boundary says, q 0. p can be negative. */
TESSAREL_API void tessarel_tv_1(double* t, double* p, double* v, double* u, double* h, double* s, double* q, double* x,
                                double* y, char* err, size_t err_len);
/* Given t, v. */
TESSAREL_API void tessarel_tv(double* t, double* p, double* v, double* u, double* h, double* s, double* q, double* x,
                              double* y, char* err, size_t err_len);
/* Given t, v, by bubble and dew point behind the quick route. */
TESSAREL_API void tessarel_tv_old(double* t, double* p, double* v, double* u, double* h, double* s, double* q,
                                  double* x, double* y, char* err, size_t err_len);
/* Given v, p. */
TESSAREL_API void tessarel_vp(double* t, double* p, double* v, double* u, double* h, double* s, double* q, double* x,
                              double* y, char* err, size_t err_len);
/* Given t, s. "Input Ts: s < s(T,Pmax)", "Input Ts: s > s(T,Pmin)". */
TESSAREL_API void tessarel_ts(double* t, double* p, double* v, double* u, double* h, double* s, double* q, double* x,
                              double* y, char* err, size_t err_len);
/* Given v, u. "Input vu: u < u(Pmin,v)" (pure fluids), "Input vu: u > u(Tmax,v)". */
TESSAREL_API void tessarel_vu(double* t, double* p, double* v, double* u, double* h, double* s, double* q, double* x,
                              double* y, char* err, size_t err_len);
/* Given v, u, by the general flash. */
TESSAREL_API void tessarel_vu_new(double* t, double* p, double* v, double* u, double* h, double* s, double* q,
                                  double* x, double* y, char* err, size_t err_len);
/* Given v, h. "Input vh: h < h(Pmin,v)", "Input vh: h > h(Tmax,v)". */
TESSAREL_API void tessarel_vh(double* t, double* p, double* v, double* u, double* h, double* s, double* q, double* x,
                              double* y, char* err, size_t err_len);
/* Given v, s. "Input vs: s < s(Pmin,v)", "Input vs: s > s(Tmax,v)". */
TESSAREL_API void tessarel_vs(double* t, double* p, double* v, double* u, double* h, double* s, double* q, double* x,
                              double* y, char* err, size_t err_len);
/* Given p, u. "Input Pu: u < u(Tmin,P)", "Input Pu: u > u(Tmax,P)". */
TESSAREL_API void tessarel_pu(double* t, double* p, double* v, double* u, double* h, double* s, double* q, double* x,
                              double* y, char* err, size_t err_len);
/* Given p, h. "Input Ph: h < h(Tmin,P)", "Input Ph: h > h(Tmax,P)". */
TESSAREL_API void tessarel_ph(double* t, double* p, double* v, double* u, double* h, double* s, double* q, double* x,
                              double* y, char* err, size_t err_len);
/* Given p, s. "Input Ps: s < s(Tmin,P)", "Input Ps: s > s(Tmax,P)". */
TESSAREL_API void tessarel_ps(double* t, double* p, double* v, double* u, double* h, double* s, double* q, double* x,
                              double* y, char* err, size_t err_len);
/* Given p, u of a mixture, without bubble and dew points; texts as pu. */
TESSAREL_API void tessarel_pu_simple(double* t, double* p, double* v, double* u, double* h, double* s, double* q,
                                     double* x, double* y, char* err, size_t err_len);
/* Given p, h, the same way, without a test of the range. */
TESSAREL_API void tessarel_ph_simple(double* t, double* p, double* v, double* u, double* h, double* s, double* q,
                                     double* x, double* y, char* err, size_t err_len);
/* Given p, s, the same way; texts as ps. */
TESSAREL_API void tessarel_ps_simple(double* t, double* p, double* v, double* u, double* h, double* s, double* q,
                                     double* x, double* y, char* err, size_t err_len);
/* Given p, h of a mixture, by the general flash. */
TESSAREL_API void tessarel_ph_new(double* t, double* p, double* v, double* u, double* h, double* s, double* q,
                                  double* x, double* y, char* err, size_t err_len);
/* Given p, s of a mixture, by the general flash. */
TESSAREL_API void tessarel_ps_new(double* t, double* p, double* v, double* u, double* h, double* s, double* q,
                                  double* x, double* y, char* err, size_t err_len);
/* Given h, s, with a bracket in p from the saturation lines behind the quick route. */
TESSAREL_API void tessarel_hs(double* t, double* p, double* v, double* u, double* h, double* s, double* q, double* x,
                              double* y, char* err, size_t err_len);
/* Given h, s, over the whole range of p. */
TESSAREL_API void tessarel_hs_simple(double* t, double* p, double* v, double* u, double* h, double* s, double* q,
                                     double* x, double* y, char* err, size_t err_len);
/* Given p, q. At q of 0 a mixture leaves x, at 1 y alone. "q < 0 or q > 1, out of range...", "For this input of P and q
 * no solution exists...". */
TESSAREL_API void tessarel_pq(double* t, double* p, double* v, double* u, double* h, double* s, double* q, double* x,
                              double* y, char* err, size_t err_len);
/* Given t, q. The same, "For this input of T and q no solution exists...". */
TESSAREL_API void tessarel_tq(double* t, double* p, double* v, double* u, double* h, double* s, double* q, double* x,
                              double* y, char* err, size_t err_len);
/* Given v, q. "Input vq: v > vmax(Pmin,q)", "Input vq: v < vmin(Pmin,q=0)", "Input vq: v root not bracketed. Multiple v
 * roots exist for q.", "3284" (volume not found on the traced line), "3285" (as brent_extreme). */
TESSAREL_API void tessarel_vq(double* t, double* p, double* v, double* u, double* h, double* s, double* q, double* x,
                              double* y, char* err, size_t err_len);
/* Given p and in q the branch, 0 liquid or 1 vapour: the limit of the metastable states of a pure fluid; x and y are
 * not touched. "Function Pm: metastable state m = 0 (liquid) or m = 1 (vapor)", "Function Pm: P > Pcr or P >
 * Pcricondenbar while saturation state requested", "Function Pm: multicomponent mixtures not allowed yet....". */
TESSAREL_API void tessarel_pm(double* t, double* p, double* v, double* u, double* h, double* s, double* q, double* x,
                              double* y, char* err, size_t err_len);
/* Given t and the branch. u, h, s stay as they were where the pressure is negative. Texts as pm, with "Function Tm: T >
 * Tcr or T > Tcricondentherm while saturation state requested" and "Function Tm: ..." in the others. */
TESSAREL_API void tessarel_tm(double* t, double* p, double* v, double* u, double* h, double* s, double* q, double* x,
                              double* y, char* err, size_t err_len);
/* The extreme of a function of X between a and b by Brent's minimiser; xbest receives its place. mode 0: the vapour
 * fraction of the flash at t = fixed, p = X; 1: at p = fixed, t = X; any other: v of tq at t = X, q = fixed. sign 1:
 * maximum, and the function is taken negative; else minimum. Returns the value of the function, NaN when refused.
 * "3285": not settled after 100 passes; texts of tq. */
TESSAREL_API double tessarel_brent_extreme(const int32_t* mode, const int32_t* sign, const double* fixed,
                                           const double* a, const double* b, double* xbest, char* err, size_t err_len);

/* ============================================================ saturation and spinodal =========================== */

/* Of the selected fluid. err everywhere: "No errors", "TESSAREL error: no fluid selected...",
 * "TESSAREL error: null pointer argument..." and the texts named. A value not computed is -8888.8. */

/* Saturation pressure [Pa] of a pure fluid at t. Of a mixture: of its first component alone, but with the critical
 * point and the range of temperature of the mixture as limits; select the component by itself instead. err:
 * "Temperature less than minimum temperature...", "Temperature greater than critical temperature...", "No convergence
 * calculating saturation pressure...", after which the result is the last iterate. */
TESSAREL_API void tessarel_calc_psat(const double* t, double* psat, char* err, size_t err_len);
/* Saturation temperature [K] of a pure fluid at p; of a mixture, as calc_psat. err: "Pressure less than minimum
 * pressure..." (0.1 Pa), "Pressure greater than critical pressure...", "No convergence calculating saturation
 * temperature...", after which the result is the last iterate. */
TESSAREL_API void tessarel_calc_tsat(const double* p, double* tsat, char* err, size_t err_len);
/* Volumes of both branches of the spinodal at t [m3/mol]. err:
 * "No convergence calculating specific volume for spinodal...",
 * "T > Tc or T > Tcricondentherm, while saturation state expected...". */
TESSAREL_API void tessarel_calc_vspin(const double* t, double* vliq, double* vvap, char* err, size_t err_len);
/* The one volume of the spinodal at t that the search reaches from the packing fraction eta [m3/mol]; err as
 * calc_vspin. */
TESSAREL_API void tessarel_calc_vspin_phase(const double* eta, const double* t, double* v, char* err, size_t err_len);
/* Pressures of both branches of the spinodal at t [Pa]; err as calc_vspin. */
TESSAREL_API void tessarel_calc_pspin(const double* t, double* pliq, double* pvap, char* err, size_t err_len);
/* Temperatures of both branches of the spinodal at p [K]; err also as calc_tsat and brent_spin. */
TESSAREL_API void tessarel_calc_tspin(const double* p, double* tliq, double* tvap, char* err, size_t err_len);
/* The temperature t [K] between a and b [K] at which the spinodal pressure of branch iphase (1 liquid, 2 vapour) is
 * p, by Brent's method. err: "Brent method for spinodal: root not bracketed",
 * "Brent method for spinodal: no convergence". */
TESSAREL_API void tessarel_brent_spin(const int32_t* iphase, const double* p, const double* a, const double* b,
                                      double* t, char* err, size_t err_len);
/* The same by bisection to 1e-8 K. */
TESSAREL_API void tessarel_bisec_spin(const int32_t* iphase, const double* p, const double* a, const double* b,
                                      double* t, char* err, size_t err_len);

/* ============================================================ critical points =================================== */

/* They write the critical point of the session; tessarel_fluidinfo reports it. errormsg:
 * "Critical point: density iteration 1 not converged...", "Critical point: density iteration 2 not converged...",
 * "Critical point: : temperature-iteration not converged"; then the session holds the start estimates. */

/* The true critical point of a pure fluid, or the mole-fraction average of those of the components. */
TESSAREL_API void tessarel_critpoint(char* errormsg, size_t errormsg_len);
/* The search for component i. Of a mixture, tc, pc and the critical density of the session become those of the
 * component, until the next selection. */
TESSAREL_API void tessarel_critpure(const int32_t* i, char* errormsg, size_t errormsg_len);
/* The mole-fraction average of the critical points of the components. */
TESSAREL_API void tessarel_critmixt_pseudo(char* errormsg, size_t errormsg_len);
/* Reserved, no effect. */
TESSAREL_API void tessarel_critmixt_brent(char* errormsg, size_t errormsg_len);
/* The critical point of a mixture by the conditions of Heidemann & Khalil (1980), from the critical temperature of the
 * session, with a search along the limit of stability behind it. It leaves the critical density of the session in 1/A3.
 * errormsg: "No errors", then no other phase is more stable there; "Critical point calulation failed...". */
TESSAREL_API void tessarel_critmixt_newton(char* errormsg, size_t errormsg_len);

/* The iterations of this search on the host's variables: z (n), rho [1/A3] and t [K]. debug is a logical that prints
 * each pass. ierr: 0; 310 singular matrix; 320 cubic form, 321 determinant not converged; -1 arguments refused. */

/* The density and the temperature at which the cubic form vanishes; rho and t in and out. */
TESSAREL_API void tessarel_cubic_newton(const int32_t* debug, const int32_t* n, const double* z, double* rho, double* t,
                                        int32_t* ierr);
/* The temperature at which the determinant of q vanishes; t in and out, q: n x n out. */
TESSAREL_API void tessarel_det_q_newton(const int32_t* debug, const int32_t* n, const double* z, const double* rho,
                                        double* t, double* q, int32_t* ierr);

/* ============================================================ flash adapters ==================================== */

/* t [K], p in bar; n at most the number of selected components. Refused arguments leave the outputs alone. */

/* Fugacity coefficients of amounts z (n) of any sum. icon: 1 lnphi; 2 also dlnphi_dt, dlnphi_dp (1/bar); 3 lnphi and
 * dlnphi_dn (n,n); 6 all; arrays not asked for may be null. mt: 1 liquid-like root, -1 vapour-like, 0 lower Gibbs
 * energy. ic: 2 for mt 0, else 1. ierr: 0. */
TESSAREL_API void tessarel_fugacoeff(const int32_t* icon, const int32_t* mt, const int32_t* n, const double* z,
                                     const double* t, const double* p, double* lnphi, double* dlnphi_dt,
                                     double* dlnphi_dp, double* dlnphi_dn, int32_t* ic, int32_t* ierr);
/* Critical temperature [K], critical pressure [bar] and acentric factor of component i. */
TESSAREL_API void tessarel_fluiddata(const int32_t* i, double* tc, double* pc, double* omega);
/* Reduced properties of one phase, with vr = v / R in K/bar: aux(3) residual enthalpy / R, aux(4) residual entropy /
 * R, aux(5) residual cp / R, aux(6) 1/p - dvr/dt, aux(7) vr - t dvr/dt, aux(8) dp/dvr, aux(9) dvr/dt, aux(10)
 * aux(8)/t; aux (10), entries 1 and 2 are not written. p of exactly 0 is replaced by the pressure of the equation of
 * state. */
TESSAREL_API void tessarel_auxprop(const int32_t* n, const double* x, const double* t, double* p, const int32_t* mt,
                                   double* z, double* aux);
/* The same at a given volume v. */
TESSAREL_API void tessarel_auxprop_v(const int32_t* n, const double* x, const double* t, double* p, const double* v,
                                     double* aux);

/* ---------------------------------------------------------- phase split ------------------------------------------ */

/* Rachford-Rice at given ln K (n): the vapour fraction beta, with it as a start if it fits, x and y. With all the feed
 * on one side beta is 0 or 1. */
TESSAREL_API void tessarel_solrac(const int32_t* n, double* x, double* y, const double* z, const double* lnk,
                                  double* beta);
/* The plain form of the same. */
TESSAREL_API void tessarel_rr_solve(const int32_t* n, double* x, double* y, const double* z, const double* lnk,
                                    double* beta);
/* One successive substitution at t [K], p_bar [bar]: solrac, both phases at the root of lower Gibbs energy, lnk_new =
 * lnphi(x) - lnphi(y), dlnk = lnk_new - lnk, errk = sum of z dlnk^2, errmax the largest |dlnk|. fz (n) is ln z +
 * lnphi(z); tmx, tmy are the distances of the phases from the feed's tangent plane, gmix their mean by amounts. */
TESSAREL_API void tessarel_dirsub(const int32_t* n, const double* t, const double* p_bar, double* x, double* y,
                                  const double* z, const double* lnk, double* lnk_new, double* beta, double* dlnk,
                                  double* errk, double* errmax, const double* fz, double* tmx, double* tmy,
                                  double* gmix);
/* Stability test: minimises the tangent-plane distance tm of a trial phase from amounts y (n), in and out. option 0:
 * ends as soon as a negative distance is shown. conv: 0 not converged, 1 ended on a negative distance, 2 converged.
 * split: 1 when a negative distance was found. idebug is not read. Michelsen (1982a). */
TESSAREL_API void tessarel_hebmin(const int32_t* n, const int32_t* option, int32_t* conv, int32_t* split,
                                  const double* t, const double* p_bar, double* y, const double* z, const double* fz,
                                  double* tm, const int32_t* idebug);
/* Minimises the Gibbs energy of two phases from their mole amounts x, y (n), in and out; gfeed is the sum of z fz.
 * ifail: 0, or 1 on failure. idebug is not read. Michelsen (1982b). */
TESSAREL_API void tessarel_solmin(const int32_t* n, int32_t* ifail, const double* t, const double* p_bar, double* x,
                                  double* y, const double* z, const double* gfeed, const int32_t* idebug);

/* Flash of the selected composition at t [K] and p [Pa]: two phases or one, from no start. x, y (n) and beta: liquid,
 * vapour (the phase of larger molar volume) and its mole fraction. A negative x(1) at entry says that x and y hold an
 * earlier solution to start from. errormsg: "No errors" for two phases, then 0 < beta < 1 and fugacities agree to
 * 1e-11; "Michelsen's Flash calculation: no phase split detected..." for one, x and y are then test compositions, or
 * the feed and zeros; "Michelsen's Flash calculation: no convergence second order minimizer", "... no convergence
 * stability analysis", "... unexpected error, NaN's calculated...". Fractions of the selection that do not sum to 1
 * within 1e-6, and t outside 1 to 1e5 K or p not above 0 or above 1e12 Pa, are refused with a text of their own. */
TESSAREL_API void tessarel_calc_pt_flash(const double* t, const double* p, double* x, double* y, double* beta,
                                         char* errormsg, size_t errormsg_len);
/* The same routine by the names of its parts. */
TESSAREL_API void tessarel_calc_flash_michelsen(const double* t, const double* p, double* x, double* y, double* beta,
                                                char* errormsg, size_t errormsg_len);
TESSAREL_API void tessarel_flmain(const double* t, const double* p, double* x, double* y, double* beta, char* errormsg,
                                  size_t errormsg_len);
/* A simple flash kept with its defects (K is a ratio of logarithms): not for calculations. */
TESSAREL_API void tessarel_calc_flash_velda(const double* t, const double* p, double* x, double* y, double* beta,
                                            char* errormsg, size_t errormsg_len);

/* ----------------------------------------------------------- envelope -------------------------------------------- */

/* The phase envelope of the selected mixture, traced when one of these is called first after a selection. z (n): all
 * selected components, adding up to 1 within 1e-6. */

/* Traces the envelope of z. ierr: 0; 451 no first point found, 453 the critical point fits nowhere in the line; -1
 * arguments refused. tc, pc, cricondentherm and cricondenbar of the session become those of the line. */
TESSAREL_API void tessarel_calc_phaseenv(const int32_t* n, const double* z, int32_t* ierr);
/* Bubble (what 'B') or dew point ('D') of z at given ('T' or 'P') value [K, bar]; result is the other one. x liquid, y
 * vapour: one of them is z, the other the incipient phase. Of two points at one value the first on the way from the low
 * end of the branch is given. errormsg: "No errors"; "Error calculating phase envelope..."; the texts of
 * tessarel_errorstring. result is -8888.8 without an answer; a refused call leaves the results as they are. */
TESSAREL_API void tessarel_calc_bubdew(const int32_t* n, const double* z, const char* given, const char* what,
                                       const double* value, double* x, double* y, double* result, char* errormsg,
                                       size_t given_len, size_t what_len, size_t errormsg_len);
/* The same for the selected composition in K and Pa, with the incipient phase (n). The first query after a selection
 * makes tc, pc, cricondentherm and cricondenbar of the session those of the line. */
TESSAREL_API void tessarel_calc_bubble_p(const double* t, double* y, double* p, char* errormsg, size_t errormsg_len);
TESSAREL_API void tessarel_calc_bubble_t(const double* p, double* y, double* t, char* errormsg, size_t errormsg_len);
TESSAREL_API void tessarel_calc_dew_p(const double* t, double* x, double* p, char* errormsg, size_t errormsg_len);
TESSAREL_API void tessarel_calc_dew_t(const double* p, double* x, double* t, char* errormsg, size_t errormsg_len);
/* The state of z with the vapour fraction beta at given 'T' [K] or 'P' [bar]; result is the other one. */
TESSAREL_API void tessarel_calc_prop_q(const int32_t* n, const double* z, const double* beta, const char* given,
                                       const double* value, double* x, double* y, double* result, char* errormsg,
                                       size_t given_len, size_t errormsg_len);
/* The points of the line: npnt of them, t [degrees C] and p [bar] (5000), the compositions x and y (20,5000) as
 * tessarel_phaseenvelope has them. */
TESSAREL_API void tessarel_getphaseenv(int32_t* npnt, double* t, double* p, double* x, double* y);
/* Ends of the bubble and the dew branch, and cricondentherm and cricondenbar, in K and bar. */
TESSAREL_API void tessarel_getminima(double* tbub, double* pbub, double* tdew, double* pdew);
TESSAREL_API void tessarel_getmaxima(double* tmax, double* p_tmax, double* pmax, double* t_pmax);
/* The text of a code of bubble and dew points. */
TESSAREL_API void tessarel_errorstring(const int32_t* ierr, char* errormsg, size_t errormsg_len);
/* Prints the line to standard output. */
TESSAREL_API void tessarel_write_phaseenv(void);

/* Flash of the selected composition for a pair of properties, molar SI: mode 1 a = p, b = t; 2 p, h; 3 p, s; 4 t, v;
 * 5 v, u. All other arguments are results: q the vapour fraction, x, y (n) the phases; one phase has q of 0 or 1 and
 * zeros for the other. Searches for t go from 100 to 1000 K, pressures up to 2e8 Pa. errormsg: "No errors",
 * "Michelsen's GenFlash calculation: error code = -2" when a search left this range, "... = -3" when it found no state
 * (also between the phases of a fluid of one component), "Michelsen's GenFlash calculation: unexpected error, NaN's
 * calculated...". Results are written always. Refused with a text of their own: values that are not finite or, but for
 * h, s and u, not positive; a volume below closest packing; and as for tessarel_calc_pt_flash. */
TESSAREL_API void tessarel_calc_ab_flash(const int32_t* mode, const double* a, const double* b, double* t, double* p,
                                         double* v, double* u, double* h, double* s, double* q, double* x, double* y,
                                         char* errormsg, size_t errormsg_len);
/* The same in reduced units: p [bar], h, u and s divided by R, v = V / R [K/bar]. ispec 1: spec1 = t, spec2 = p; 2: h,
 * p; 3: s, p; 4: t, v; 5: u, v. z (n) amounts of any sum; bv, bl the fractions of vapour and liquid. icode: 0, -2, -3
 * as above, -1 for a refused call. debug is not read. */
TESSAREL_API void tessarel_genflash(const int32_t* ispec, const double* spec1, const double* spec2, const int32_t* n,
                                    double* t, double* p, const double* z, double* bv, double* bl, double* x, double* y,
                                    double* h, double* s, double* u, double* v, const int32_t* debug, int32_t* icode);

/* ============================================================ residual properties =============================== */

/* Residual enthalpy h [J/mol] and entropy s [J/(mol K)] of one phase of the selected composition at t, p and v that
 * belong together: against the ideal gas at t and p. */
TESSAREL_API void tessarel_calc_hs_res(const double* t, const double* p, const double* v, double* h, double* s);
/* The same of the stable state at t and p, of two phases the mean by amounts, with their compositions x, y (n); after
 * one phase what the flash leaves there. err: that of tessarel_calc_pt_flash, but "No errors" for one phase. */
TESSAREL_API void tessarel_tp_zelmaron(const double* t, const double* p, double* h, double* s, double* x, double* y,
                                       char* err, size_t err_len);

/* ============================================================ linear algebra ==================================== */

/* n from 1 to 20, matrices (n,n) first index fastest, pivots from 1. ierr: 0; 310 a row without a non-zero entry; -1
 * arguments refused. */

/* LU factors in place of a with row exchanges indx (n), d = +1 or -1 by their parity. */
TESSAREL_API void tessarel_lu_dcmp(const int32_t* n, double* a, int32_t* indx, double* d, int32_t* ierr);
/* Solution of a factored system in place of b (n). */
TESSAREL_API void tessarel_lu_bksb(const int32_t* n, const double* a, const int32_t* indx, double* b);
/* A unit vector x (n) near the null space of a, which is overwritten. */
TESSAREL_API void tessarel_solution_vector(const int32_t* n, double* a, double* x);
/* x (n) scaled to length 1; returns its former length, NaN when refused. */
TESSAREL_API double tessarel_normalize_vec(const int32_t* n, double* x);
/* det(a); kept as it stands on failure. */
TESSAREL_API void tessarel_determinant(const int32_t* n, const double* a, double* det, int32_t* ierr);

#ifdef __cplusplus
}
#endif

#endif
