/* Tessarel: thermodynamic properties of pure fluids and mixtures by the PC-SAFT equation of state.
 *
 * The entries a host needs: select a fluid with tessarel_setfluid, then ask for states with tessarel_tmdprop. The
 * forward calculations beneath them are declared in <tessarel/routines.h>, their building blocks in
 * <tessarel/blocks.h>.
 *
 * Calling rules
 *   - All arguments are pointers; integers and logicals are int32_t. A logical is true when its lowest bit is set; the
 *     library returns true as -1. Arrays are contiguous, the first index running fastest.
 *   - Texts are fields of fixed length, blank-padded and not terminated. The length of each text argument follows as a
 *     size_t by value behind all other arguments, in the order of the texts; an array of texts has one length, that of
 *     an element. This is the hidden-length convention of the usual Fortran compilers. Texts are case significant.
 *   - An output text is cut at the field's length and padded with blanks; 80 characters hold nearly all messages, 300
 *     hold all that name a file. A null field or a zero length receives nothing.
 *   - Of an input text the first 4096 characters count. Where a message repeats what a host or a file has given,
 *     question marks stand for control characters.
 *   - `err` begins with "No errors" after success and holds a message otherwise. Nothing is thrown and no signal is
 *     raised across this interface.
 *   - Each entry is exported a second time with an underscore behind its name (tessarel_setfluid_), so a Fortran host
 *     on Unix calls it as an external procedure without any binding.
 *   - The selected fluid belongs to a session. The library starts with session 0, and a host that needs no other calls
 *     from one thread at a time and never names a session. More sessions hold more fluids, for as many threads (at the
 *     end of this header).
 *
 * Units: molar SI at entry (K, Pa, m3/mol, J/mol, J/(mol K)) and engineering units at return (degrees Celsius, bar,
 * m3/kg, kJ/kg, kJ/(kg K)), in the same variables. Do not feed a result straight back in.
 */
#ifndef TESSAREL_TESSAREL_H
#define TESSAREL_TESSAREL_H

#include <stddef.h>
#include <stdint.h>

#if defined(__GNUC__)
#define TESSAREL_API __attribute__((visibility("default")))
#else
#define TESSAREL_API
#endif

#ifdef __cplusplus
extern "C" {
#endif

/* Selects a fluid or mixture, or changes the composition of the selected one.
 *
 *   nf     in   number of components, 1 to 20
 *   names  in   nf text fields of names_len characters: names of fluids, that is of records in the fluid database or of
 *               files <name>.saf in the fluid directory beside the library's directory
 *   z      in   nf mole fractions. They are taken as given and not normalised: hand in fractions that sum to 1. They
 *               must be finite, none negative, with a sum between 1e-50 and 1e50. A fraction of zero is accepted in a
 *               mixture; the component then adds nothing to any property, and leaving it out instead is faster.
 *               With 111 added to z(1) (any value above 100 counts as such) the simplified hard-chain model with one
 *               mean segment diameter is used, from then on in this session.
 *   err    out  "No errors", or
 *               "TESSAREL error: number of components must be 1 to 20...",
 *               "TESSAREL error: names of the components are missing...",
 *               "TESSAREL error: fields of the names are longer than any file name..." (4096 characters),
 *               "TESSAREL error: mole fractions must be finite numbers, none negative, and not all zero...",
 *               "TESSAREL error: null pointer argument..." (in these cases the selection is unchanged);
 *               "Error opening fluid data file of <file>" (also for one of more than 16 MB),
 *               "Unexpected data in fluid data file "<name>.saf"...",
 *               "Unexpected data in fluid data file "<file>.saf", row <row>: <reason>..." for a number that means no
 *               fluid,
 *               "Error opening mixture parameter file ..." and their like from the data readers.
 *
 * After a failure of the data readers no fluid is selected: every call that needs one is refused until a selection has
 * come back with "No errors".
 *
 * With the same names as in the call before, no data is read: only the composition changes. This holds after a failed
 * call too, so a failed selection must not be repeated with the same names: that would report "No errors" on what is
 * left in memory. Select another fluid first.
 */
TESSAREL_API void tessarel_setfluid(const int32_t* nf, const char* names, const double* z, char* err, size_t names_len,
                                    size_t err_len);

/* Where the data are: a directory that holds fluids/ and, beside it or in lib/, BIPs.mix. It holds for the current
 * session and for those made later; call it before the first selection. A blank text: the usual place, which is the
 * directory of the environment variable TESSAREL_DATA; without that fluids/ and BIPs.mix beside the library
 * (lib/libtessarel.so reads fluids/ and lib/BIPs.mix), or share/tessarel/ beside its directory.
 *
 *   path  in   the directory
 *   err   out  "No errors", or, with nothing changed,
 *              "TESSAREL error: no fluids and BIPs.mix in the directory of the data...",
 *              "TESSAREL error: the path of the data is too long..."
 */
TESSAREL_API void tessarel_datadir(const char* path, char* err, size_t path_len, size_t err_len);

/* version: 4 integers, always 2, 5, 1, 20. Needs no fluid. A null pointer is tolerated. */
TESSAREL_API void tessarel_getversion(int32_t* version);

/* Data of the selected fluid and its n components.
 *
 *   z          in   n mole fractions, the array handed to tessarel_setfluid. While the simplified model is in use, 111
 *                   is taken off its first element: hand in the marked array.
 *   molmass    out  molar mass of the mixture [kg/mol]
 *   tc, pc     out  critical temperature [K] and pressure [Pa] of the model; of a mixture the averages of the
 *                   components' values over the mole fractions
 *   tmin, tmax out  range of temperature shared by the components [K]
 *   molmass_i, tc_i, pc_i, tmin_i, tmax_i  out  n values each: the same of the components. tc_i and pc_i belong to
 *                   mixtures; for a pure fluid they hold what the last mixture left, and tc and pc are its values.
 *
 * With no fluid selected the five scalars are -8888.8 and no array is written. Null outputs are skipped; with a null z
 * molmass is -8888.8.
 */
TESSAREL_API void tessarel_fluidinfo(const double* z, double* molmass, double* tc, double* pc, double* tmin,
                                     double* tmax, double* molmass_i, double* tc_i, double* pc_i, double* tmin_i,
                                     double* tmax_i);

/* Returns a parameter of the first component, as stored.
 *
 *   name  in   "omega" acentric factor, "mseg" segment number, "sigma" segment diameter [A], "epsil" dispersion energy
 *              over k [K], "dipole" [D], "quapole" [D A], "polariz" [A3]
 *   err   out  "No errors", or with the result -8888.8 "TESSAREL parameter <name> not available..." or
 *              "TESSAREL error: no fluid selected..."
 */
TESSAREL_API double tessarel_fluidparameter(const char* name, char* err, size_t name_len, size_t err_len);

/* Load check: writes one line to the standard output. */
TESSAREL_API void tessarel_sub(void);

/* The state of the selected fluid from two of its properties.
 *
 *   spec   in   Positions 1 and 2: the input pair, "TP", "Tv", "vP", "Ts", "vu", "vh", "vs", "Pu", "Ph", "Ps", "hs",
 *               "Pq", "Tq", "vq", "Pm" or "Tm". Position 3 is not looked at. Positions 4 to 6, read when the text has
 *               at least 6 characters without trailing blanks:
 *                 "Lph"          one liquid phase; the phase boundary is ignored
 *                 "?ph"          one vapour phase, with any other character in the first place, also a small l
 *                 "vap", "liq"   phase equilibrium considered, results for the vapour or the liquid
 *                 anything else  phase equilibrium considered, overall state
 *               A text shorter than 6 counts as padded with blanks.
 *   order  in   1: the second-order properties cv to dcvdt; 2: lnphi; 3: both; any other value: neither. What is not
 *               asked for is left as it is, but for the change of units below.
 *
 *                         at entry      at return
 *   t        in, out      K             degrees Celsius
 *   p        in, out      Pa            bar
 *   v        in, out      m3/mol        m3/kg
 *   u, h     in, out      J/mol         kJ/kg
 *   s        in, out      J/(mol K)     kJ/(kg K)
 *   q        in, out      mole fraction of vapour, or the metastable marker of "Pm" and "Tm"
 *   cv       out                        kJ/(kg K)
 *   dpdt     out                        Pa/K            at constant volume
 *   dpdv     out                        Pa kg/m3        at constant temperature
 *   d2pdt2   out                        Pa/K2           at constant volume
 *   d2pdv2   out                        Pa (kg/m3)2     at constant temperature
 *   d2pdtdv  out                        Pa kg/(m3 K)
 *   dcvdt    out                        J/(kg K2)       at constant volume
 *   x, y     out          n mole fractions of the liquid and of the vapour; left alone in single-phase mode and by pure
 *                         fluids
 *   lnphi    out          n logarithms of the fugacity coefficients
 *   err      out  "No errors"; check it before any result is used.
 *
 * The pair named in `spec` is read at entry and everything else is written. h and u include the heat of formation:
 * the reference is the ideal gas at 298.15 K and 1e5 Pa.
 *
 * The change of units takes place in every call that gets as far as a selected fluid and complete arguments, also after
 * a failure: t comes back less 273.15, and so on. The molar mass for it is that of the selected composition, but of `y`
 * with "vap" and of `x` with "liq". A host that uses these two for a pure fluid sets y(1) or x(1) to 1 before.
 *
 * With the phase boundary a state exists where T lies within tmin and tmax of tessarel_fluidinfo and P within 1 Pa
 * (mixtures 1000 Pa) and 5e7 Pa; "TP", "Tv" and the general flash reach somewhat further, and so do searches at a given
 * T or P outside; what is found from other properties lies within. q is 0 for one liquid phase
 * and 1 for one vapour phase: of a pure fluid below tc by the saturation pressure, of a mixture below tc and pc by its
 * dew temperature; above tc it is 1, and 0 between. Of one phase x or y is the selected composition, and of the phase
 * that is not there no composition has a meaning. A mixture's critical point is that of tessarel_fluidinfo until a
 * bubble or dew point has been asked for, also by a solver; where the label could depend on it, it is asked for.
 *
 * Single-phase states take the density root of the phase named, also where that phase is metastable; where it has no
 * root, the root of the other phase. Temperatures are searched between 150 K and 1000 K, pressures between 1000 Pa and
 * 1e8 Pa. Where a search crosses the end of a phase's existence and meets no solution there, the state returned is the
 * one next to that end and does not satisfy the input pair.
 *
 * Messages besides those of the solvers ("Brent_Root: root not bracketed...", "Brent_Root: no convergence...",
 * "No convergence calculating density from T and P"):
 *   "TESSAREL error: no fluid selected..." and "TESSAREL error: null pointer argument...": nothing else is written
 *   "TESSAREL error: calculation as function of <spec> not available.": no such input pair
 *   "Function 'Pq' not available for single phase calculations...", also for Tq, vq, Pm, Tm
 *   "TESSAREL error: input values must be finite numbers, temperature and volume positive..."
 *   "TESSAREL error: no finite state found for the input values..."
 *   with the phase boundary also those of its solvers (<tessarel/routines.h>): "Input Ph: h < h(Tmin,P)" and the like,
 *   "q < 0 or q > 1, out of range...", texts of the flash, of bubble and dew points and of the saturation pressure, and
 *   refusals of the flash: fractions that do not sum to 1, t and p outside the model, a volume below closest packing
 */
TESSAREL_API void tessarel_tmdprop(const char* spec, const int32_t* order, double* t, double* p, double* v, double* u,
                                   double* h, double* s, double* q, double* cv, double* dpdt, double* dpdv,
                                   double* d2pdt2, double* d2pdv2, double* d2pdtdv, double* dcvdt, double* x, double* y,
                                   double* lnphi, char* err, size_t spec_len, size_t err_len);

/*
 * tessarel_tmdprop_allphase: tessarel_tmdprop with the properties of each phase. Arguments, units and texts are those
 * of tessarel_tmdprop but for the following.
 *
 *   spec   in   One more suffix, "all": of two phases, the overall state and both. "Pm" and "Tm" are no input pairs
 *               here, and messages have double quotes around a code: Function "Pq" not available ...
 *   v, u, h, s  in, out  3 values each: the whole, the vapour, the liquid; the first is read at entry. The others are
 *               -8888.8 but after "TP all" with two phases.
 *   cv to dcvdt  out  3 values each, -8888.8 where nothing has been computed. One phase, and without "all": the first,
 *               with "vap" and "liq" of two phases that of the composition named, at the volume of the phase with "TP".
 *               "TP all" of two phases: the second and third.
 *   lnphi  out  n x 3 values, first index fastest, columns in the same way; others are left alone
 *   x, y   out  the selected composition, unless the solver writes another; sums are scaled to 1
 *
 * Units of the second-order set are those of tessarel_tmdprop but for dcvdt, in kJ/(kg K2), and the third value of cv,
 * in MJ/(kg K). With 0 < q < 1 the first values remain molar. The mark -8888.8 in the first values is scaled
 * with them. In single-phase mode the q handed in counts: hand in 0.
 */
TESSAREL_API void tessarel_tmdprop_allphase(const char* spec, const int32_t* order, double* t, double* p, double* v,
                                            double* u, double* h, double* s, double* q, double* cv, double* dpdt,
                                            double* dpdv, double* d2pdt2, double* d2pdv2, double* d2pdtdv,
                                            double* dcvdt, double* x, double* y, double* lnphi, char* err,
                                            size_t spec_len, size_t err_len);

/*
 * tessarel_tmdpropsat: the state from two of its properties, as tessarel_tmdprop, without derivatives; and for "TP"
 * with two phases the properties of both. Mind the order of the arguments, with u behind s.
 *
 *   spec   in   the input pair, and "Lph" or "?ph"; other suffixes have no effect. "Pm" and "Tm" are no input pairs
 *               here
 *   t, p, v, h, s, u, q  in, out  as tessarel_tmdprop
 *   x, y   out  as tessarel_tmdprop_allphase
 *   v_l, h_l, s_l, u_l and v_v, h_v, s_v, u_v  in, out  of the liquid and of the vapour, with the units of v, h, s, u.
 *               "TP" of two phases writes them; of one phase it repeats those of the session's last two phases, 0
 *               before the first. Other pairs leave the host's values. In any case they are scaled by the molar masses
 *               of x, y
 *   err    out  as tessarel_tmdprop, with double quotes around a code
 */
TESSAREL_API void tessarel_tmdpropsat(const char* spec, double* t, double* p, double* v, double* h, double* s,
                                      double* u, double* q, double* x, double* y, double* v_l, double* v_v, double* h_l,
                                      double* h_v, double* s_l, double* s_v, double* u_l, double* u_v, char* err,
                                      size_t spec_len, size_t err_len);

/*
 * tessarel_capeopenderiv: composition derivatives of a homogeneous phase at a given state, for process simulators. The
 * composition is that of the selection; nothing is solved and no unit is changed, so all values are molar.
 *
 *   t, p, v  in   K, Pa, m3/mol: a state that belongs together, from an earlier call
 *   dv, dh, ds, dg  out  2 + 2n values each: elements 3 to n+2 the derivatives by the mole fractions at constant T and
 *                   P, the other fractions held; elements n+3 to 2n+2 those by mole numbers at one mole, the projection
 *                   of the former. Elements 1 and 2, the places of the T and P derivatives, are left alone. The
 *                   entropy is without the term of ideal mixing, -R (ln x(i) + 1).
 *   dlnphi   out  n x (2n+2) values, first index fastest: columns by T [1/K], by P [1/Pa], by the n fractions, by the n
 *                 mole numbers
 *   err      out  "No errors"; the texts for null pointers, for no fluid selected, for input values that are not finite
 *                 or positive and for a volume below closest packing, and nothing else is written;
 *                 "TESSAREL error: no finite state found for the input values..."
 */
TESSAREL_API void tessarel_capeopenderiv(const double* t, const double* p, const double* v, double* dv, double* dh,
                                         double* ds, double* dg, double* dlnphi, char* err, size_t err_len);

/*
 * tessarel_criticalpoint: the critical point of the selection, of a mixture the true one, where its vapour and its
 * liquid become the same; tessarel_fluidinfo gives the mole-fraction average until a bubble or dew point has been asked
 * for. Nothing of the session changes.
 *
 *   tc, pc, rhoc  out  K, Pa, mol/m3
 *   err           out  "No errors"; "Critical point calulation failed..." for a mixture that has none that is stable,
 *                      or the texts of the search of a pure fluid; tc, pc and rhoc are then -8888.8
 */
TESSAREL_API void tessarel_criticalpoint(double* tc, double* pc, double* rhoc, char* err, size_t err_len);

/*
 * tessarel_phaseenvelope: the phase envelope of the selected mixture, traced if that has not happened yet. The points
 * run along the line from its bubble end to its dew end, or the other way round.
 *
 *   n     out  number of points; 0 without a mixture or without a line
 *   t, p  out  degrees C, bar; room for 5000 values each
 *   x, y  out  mole fractions at the points, (20, 5000) values each, first index fastest: of the liquid and the vapour
 *              on that side of a critical point where the trace began, of the vapour and the liquid beyond it; one of
 *              them is the selected composition throughout
 */
TESSAREL_API void tessarel_phaseenvelope(int32_t* n, double* t, double* p, double* x, double* y);

/*
 * tessarel_flash_sensitivity: the state at given t and p, one phase or two, and its exact derivatives by t, p and the
 * amounts of the feed along the equilibrium. Molar SI, one mole of the selected composition.
 *
 *   t, p     in   K, Pa
 *   beta     out  mole fraction of the vapour (the phase of larger molar volume); one phase: 0 or 1
 *   v, h, s  out  m3/mol, J/mol, J/(mol K) of the whole
 *   dbeta, dv, dh, ds  out  n+2 values each: by t, by p, by the amount of component 1 to n, the other amounts held. All
 *                 quantities are per mole of feed, so that the sum of z(j) times the column of j is 0
 *   dx, dy   out  n x (n+2) values, first index fastest: of the mole fractions of liquid and vapour; zeros for a phase
 *                 that is not there
 *   err      out  "No errors" for one phase and for two; the failure texts of tessarel_calc_pt_flash and its refusals
 * The derivative of s by the amount of an absent component is infinite: -8888.8 stands there.
 */
TESSAREL_API void tessarel_flash_sensitivity(const double* t, const double* p, double* beta, double* v, double* h,
                                             double* s, double* dbeta, double* dv, double* dh, double* ds, double* dx,
                                             double* dy, char* err, size_t err_len);

/*
 * tessarel_derived: further properties of a stable phase of composition x at t and v. Molar SI.
 *
 *   x      in   n mole fractions, none negative, a sum of 1 within 1e-6: the selected composition or that of a phase
 *   t, v   in   K, m3/mol
 *   cp     out  isobaric heat capacity [J/(mol K)]
 *   w      out  speed of sound [m/s]
 *   jt     out  Joule-Thomson coefficient, dT/dp at constant enthalpy [K/Pa]
 *   kappa  out  isothermal compressibility [1/Pa]
 *   alpha  out  thermal expansion, 1/v dv/dT at constant pressure [1/K]
 *   g      out  Gibbs energy h - t s [J/mol]
 *   err    out  "No errors"; or, with -8888.8 in the outputs,
 *               "TESSAREL error: mechanically unstable at this composition, temperature and volume...": dp/dv >= 0;
 *               "TESSAREL error: no stable single phase at this composition, temperature and volume...": the overall
 *               state of two phases, a metastable phase, a liquid in tension; saturated phases are accepted;
 *               the texts for fractions, temperatures and volumes without meaning, for a volume below closest packing,
 *               and of a flash that failed
 */
TESSAREL_API void tessarel_derived(const double* x, const double* t, const double* v, double* cp, double* w, double* jt,
                                   double* kappa, double* alpha, double* g, char* err, size_t err_len);

/*
 * tessarel_states: many states of the selection from the same pair of properties. Molar SI in and out: K, Pa, m3/mol,
 * J/mol, J/(mol K). Each is solved as tessarel_tmdprop solves it alone; one that fails does not end the call.
 *
 *   pair        in      as `spec` of tessarel_tmdprop; "vap" and "liq" have no effect
 *   count       in      number of states, 0 or more
 *   a, b        in      count values of each of the two properties, in the order of the pair
 *   states      out     count x 7, by columns: t, p, v, u, h, s, q; the column of a property is consecutive
 *   liquids     out     count x 4, by columns: v, u, h, s of the liquid of two phases. May be null
 *   vapours     out     the same of the vapour. May be null
 *   derived     out     count x 7, by columns: cv, cp, w, jt, kappa, alpha, g of one phase. May be null
 *   x, y        out     n x count, first index fastest: mole fractions of liquid and vapour of each state; the selected
 *                       composition where there is no such phase. May be null
 *   codes       out     count: 0, or the number from 1 of the text that tells why there is no state; -1 where that is
 *                       another text and `texts` was full
 *   text_count  in,out  number of text fields in `texts`; number of those used
 *   texts       out     the distinct messages of failed states
 *   err         out     "No errors" also when states have failed; "TESSAREL error: no fluid selected...",
 *                       "TESSAREL error: null pointer argument...",
 *                       "TESSAREL error: the number of states or of texts is negative or too large...". What may not be
 *                       null may not be so without states either
 * Values of states that failed, of phases that are not there and derived ones of two phases are -8888.8.
 */
TESSAREL_API void tessarel_states(const char* pair, const int64_t* count, const double* a, const double* b,
                                  double* states, double* liquids, double* vapours, double* derived, double* x,
                                  double* y, int32_t* codes, int32_t* text_count, char* texts, char* err,
                                  size_t pair_len, size_t texts_len, size_t err_len);

/* Parameters of the selection: component i (from 1), pairs of components.
 *
 * Keys, in the units of tessarel_fluidparameter where it knows them:
 *   "omega", "mseg", "sigma", "epsil", "dipole", "quapole", "polariz"
 *   "molmas"          molar mass [g/mol]
 *   "tmin", "tmax"    range of temperature [K]
 *   "parat"           factor of the temperature-dependent segment diameter
 *   "saftpar"         temperature coefficient of the dispersion energy [K]
 *   "cp0_a" to "cp0_d", "delhf0"  coefficients of the ideal-gas heat capacity [J/(mol K), /K, /K2, /K3] and enthalpy of
 *                     formation [J/mol]
 *   "eps_hb", "kap_hb"  association energy between the first two site types [K], and association volume; 0 for a
 *                     component that has no two site types, which cannot be changed
 *
 * A change acts on the current session as a fluid record or a table with the new value would: what follows from the
 * parameters, the critical point and the working range are found again, and the phase envelope is owed. The values stay
 * when the composition changes; selecting other fluids reads them anew. After a refusal nothing has changed.
 *
 *   value  out/in  -8888.8 when it could not be read
 *   kij    in   interaction parameter of components i and j, both ways; also a code of a temperature correlation
 *   err    out  "No errors", "TESSAREL parameter <name> not available...", "TESSAREL error: no such component...",
 *               "TESSAREL error: parameters must be finite numbers, sizes and energies positive...",
 *               "TESSAREL error: a molar mass must be at least 1 g/mol...",
 *               "TESSAREL error: the highest temperature must not be below the lowest...",
 *               "TESSAREL error: the component has no association sites of two types...",
 *               "TESSAREL error: an interaction parameter belongs to two different components..."; the texts for null
 *               pointers and for no fluid selected
 */
TESSAREL_API void tessarel_getparameter(const char* name, const int32_t* i, double* value, char* err, size_t name_len,
                                        size_t err_len);
TESSAREL_API void tessarel_setparameter(const char* name, const int32_t* i, const double* value, char* err,
                                        size_t name_len, size_t err_len);
TESSAREL_API void tessarel_setkij(const int32_t* i, const int32_t* j, const double* kij, char* err, size_t err_len);

/* Fitting: trial values of parameters in, what is compared with measurements out. Molar SI units.
 *
 * The trial values overwrite those of the selection and stay there, also after a failure. What follows from them is
 * brought up to date, but the critical point and the working range remain those of the selection: a saturation pressure
 * is refused above its critical temperature. tessarel_setparameter finds them again.
 *
 * Of a pure fluid, the saturation pressure p [Pa] and the density rho of the saturated liquid [mol/m3] at t [K], with
 * the segment number m, segment diameter sigma [A] and dispersion energy epsil [K] of component 1:
 *   tessarel_prho_mset    these alone
 *   tessarel_prho_mseekt  also the association energy eps [K] and volume kap of a fluid that associates
 *   tessarel_prho_msemut  also the dipole moment mu [D] of a dipolar fluid, or the quadrupole moment [D A] of one that
 *                         has no dipole; no effect on others
 * err is that of the density: where there is no saturation pressure, p is -8888.8, also with "No errors".
 *
 * Of a mixture, with the interaction parameter kij of components 1 and 2:
 *   tessarel_xy_kij  compositions x, y (2) of liquid and vapour at p [Pa], t [K], of two components; after one phase,
 *                    with "No errors", what the flash leaves there
 *   tessarel_p_kij   pressure p [Pa] of the bubble (q = 0) or dew point (q = 1) at t [K]; any other q computes nothing
 *   tessarel_t_kij   its temperature t [K] at p [Pa]
 * err: those of tessarel_calc_pt_flash and tessarel_calc_bubdew; the result is then -8888.8.
 *
 *   tessarel_hsxy_mp  of all n components at once: par (n,9) with the columns molar mass [g/mol], m, sigma, epsil,
 *                     association energy, association volume, dipole, quadrupole, polarisability. With a bond of energy
 *                     or volume 0 a component does not associate, else it has one site each of two types. h [J/mol], s
 *                     [J/(mol K)] are residual values of the state at t [K], p [Pa], x, y (n) its phases
 *
 * Refused with a text of their own: values that are not finite; m, sigma, epsil, t, p of 0 or below; molar masses below
 * 1 g/mol; negative association energies and volumes.
 */
TESSAREL_API void tessarel_prho_mset(const double* m, const double* sigma, const double* epsil, const double* t,
                                     double* p, double* rho, char* err, size_t err_len);
TESSAREL_API void tessarel_prho_mseekt(const double* m, const double* sigma, const double* epsil, const double* eps,
                                       const double* kap, const double* t, double* p, double* rho, char* err,
                                       size_t err_len);
TESSAREL_API void tessarel_prho_msemut(const double* m, const double* sigma, const double* epsil, const double* mu,
                                       const double* t, double* p, double* rho, char* err, size_t err_len);
TESSAREL_API void tessarel_xy_kij(const double* kij, const double* p, const double* t, double* x, double* y, char* err,
                                  size_t err_len);
TESSAREL_API void tessarel_p_kij(const double* kij, const double* t, const double* q, double* p, char* err,
                                 size_t err_len);
TESSAREL_API void tessarel_t_kij(const double* kij, const double* p, const double* q, double* t, char* err,
                                 size_t err_len);
TESSAREL_API void tessarel_hsxy_mp(const double* t, const double* p, const double* par, double* h, double* s, double* x,
                                   double* y, char* err, size_t err_len);

/* Sessions. A session holds a selected fluid with all that belongs to it; a host that wants several fluids at once, or
 * several threads, makes more than the one that the library starts with, number 0. Every other entry of the library
 * works on the session that is current on the calling thread, session 0 until another is made current.
 *
 * A session other than 0 is current on one thread at a time; a thread that ends gives its session back. Session 0 may
 * be current on several, and must then be used by one of them at a time. Numbers are not given twice. A process made by
 * fork() inherits the sessions but not the threads: make it before the first session, or call exec() in it.
 *
 *   tessarel_session_new      a fresh session, as the library at load; it does not become current
 *   tessarel_session_use      makes a session current on this thread. Refused with nothing changed:
 *                             "TESSAREL error: no such session...",
 *                             "TESSAREL error: session is in use on another thread..."
 *   tessarel_session_free     refused for 0 and for one that is current anywhere: "TESSAREL error: no such session...",
 *                             "TESSAREL error: session 0 cannot be freed...",
 *                             "TESSAREL error: session is current on a thread and cannot be freed..."
 *   tessarel_session_current  the number of the session that is current on this thread
 *   tessarel_session_clone    makes a session `to` with the selection and parameters of `from`, which may be current on
 *                             this thread but on no other one. Session 0 can be cloned while no other thread is in a
 *                             call that works on it: clone before the threads start
 *
 * err: "No errors", the texts above, "TESSAREL error: null pointer argument...".
 */
TESSAREL_API void tessarel_session_new(int64_t* session, char* err, size_t err_len);
TESSAREL_API void tessarel_session_use(const int64_t* session, char* err, size_t err_len);
TESSAREL_API void tessarel_session_free(const int64_t* session, char* err, size_t err_len);
TESSAREL_API void tessarel_session_current(int64_t* session);
TESSAREL_API void tessarel_session_clone(const int64_t* from, int64_t* to, char* err, size_t err_len);

#ifdef __cplusplus
}
#endif

#endif
