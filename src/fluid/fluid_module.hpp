// The one record of the selected fluid or mixture. Every calculation reads it and none takes it as an argument,
// so the library serves one host thread and one fluid at a time.
//
// Indices inside the library run from 0; the documented numbering of the interface (components, site types)
// runs from 1. Entries beyond `n` are stale and never read.
#pragma once

#include <array>
#include <cstdint>

#include "support/text.hpp"

namespace tessarel::fluid_module {

inline constexpr int nmax = 20;      ///< capacity: components of a mixture
inline constexpr int max_sites = 5;  ///< capacity: association site types of a component
inline constexpr int max_types = 3;  ///< polar interaction types: dipole-dipole, quadrupole-quadrupole, mixed

inline constexpr double gas_constant = 8.31441;                ///< R [J/(mol K)]
inline constexpr double avogadro_factor = 6.022045e-7;         ///< rho [1/A3] = factor / v [m3/mol]
inline constexpr double pressure_factor = 13806622.169047227;  ///< p [Pa] = factor * z * t * rho
inline constexpr double pi = 3.14159265359;                    ///< the model's pi
inline constexpr double pi_6 = 0.5235987755983333;             ///< the model's pi / 6
inline constexpr double not_computed = -8888.8;                ///< mark of a value that is not there

using Vector = std::array<double, nmax>;
using Matrix = std::array<Vector, nmax>;
template <class T>
using PerComponent = std::array<T, nmax>;

/// Parameters, flags and results of the selected fluid.
struct Record {
  // Selection and composition.
  int n = 0;                               ///< number of components
  Vector z{};                              ///< overall mole fractions
  PerComponent<FixedText<32>> compfile{};  ///< names as the host gave them; key of the re-selection test
  PerComponent<FixedText<32>> compname{};  ///< names as they stand in row 1 of the fluid records

  // Parameters of the components, as read.
  Vector tmin{}, tmax{};  ///< validity range [K]
  Vector molmas{};        ///< molar mass [g/mol]
  Vector omega{};         ///< acentric factor
  Vector mseg{};          ///< segment number
  Vector sigma{};         ///< segment diameter [A]
  Vector epsil{};         ///< dispersion energy / k [K]
  Vector parat{};         ///< factor of the temperature-dependent diameter, 0.12
  Vector saftpar{};       ///< temperature coefficient of the dispersion energy [K], 0
  Vector cp0_a{}, cp0_b{}, cp0_c{}, cp0_d{},
      cp0_e{};       ///< ideal-gas heat capacity polynomial [J/(mol K), /K ...]; e unused
  Vector delhf0{};   ///< ideal-gas enthalpy of formation at 298.15 K [J/mol]
  Vector dipole{};   ///< [D]
  Vector quapole{};  ///< [D A]
  Vector polariz{};  ///< [A3], reported only

  // Association: nhb_typ site types on a component, nhb_no[i][a] sites of type a.
  PerComponent<std::int32_t> nhb_typ{};
  std::array<std::array<std::int32_t, max_sites>, nmax> nhb_no{};
  std::array<std::array<std::array<std::array<double, max_sites>, max_sites>, nmax>, nmax>
      eps_hb{};     ///< [i][k][a][b], K
  Matrix kap_hb{};  ///< [i][k]

  // Mixture parameters and flags derived at selection.
  Matrix k_ij{};                                           ///< numbers, or codes of temperature correlations
  std::array<std::array<std::int32_t, nmax>, nmax> del{};  ///< Kronecker delta up to n
  bool is_assoc = false, is_polar = false, is_dipole = false, is_quapole = false, is_quadip = false;
  PerComponent<bool> is_assoc_cmp{}, is_polar_cmp{};
  bool is_simp = false;  ///< simplified hard-chain model; once set it stays

  // Results of the fluid analysis.
  double tc = 0, pc = 0, rhoc = 0;  ///< [K], [Pa], [mol/m3]
  double tcritherm = 0, pcritherm = 0, tcribar = 0, pcribar = 0;
  double tlowest = 0, thighest = 0, plowest = 0, plowest_bub = 0, phighest = 0;
  Vector tci{}, pci{};  ///< critical points of the pure components [K], [Pa]
};

/// The selected fluid.
extern Record record;

}  // namespace tessarel::fluid_module
