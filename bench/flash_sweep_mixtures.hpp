// The mixtures of the flash sweep: names of shipped fluids and amounts, scaled to a sum of 1 when they are selected.
#pragma once

#include <string>
#include <vector>

namespace tessarel::sweep {

struct Mixture {
  std::string name;
  std::vector<std::string> fluids;
  std::vector<double> amounts;  ///< empty: equimolar
};

inline const std::vector<Mixture> mixtures = {
    {"methane/n-butane", {"methane", "n-butane"}, {0.5, 0.5}},
    {"lean natural gas",
     {"nitrogen", "carbon dioxide", "methane", "ethane", "propane", "isobutane", "n-butane"},
     {0.02, 0.01, 0.85, 0.07, 0.03, 0.01, 0.01}},
    {"natural gas with C7+",
     {"nitrogen", "carbon dioxide", "methane", "ethane", "propane", "isobutane", "n-butane", "isopentane", "n-pentane",
      "n-hexane", "n-heptane", "n-octane", "n-decane"},
     {0.01, 0.02, 0.8, 0.07, 0.04, 0.01, 0.015, 0.007, 0.007, 0.006, 0.008, 0.004, 0.003}},
    {"gas condensate",
     {"carbon dioxide", "methane", "ethane", "propane", "n-butane", "n-pentane", "n-heptane", "n-decane",
      "n-tetradecane"},
     {0.03, 0.7, 0.09, 0.05, 0.03, 0.02, 0.04, 0.025, 0.015}},
    {"sour gas condensate",
     {"hydrogen sulfide", "carbon dioxide", "methane", "ethane", "propane", "n-hexane", "n-nonane", "toluene"},
     {0.15, 0.1, 0.5, 0.06, 0.04, 0.07, 0.05, 0.03}},
    {"carbon dioxide/propane", {"carbon dioxide", "propane"}, {0.6, 0.4}},
    {"carbon dioxide/n-decane/methane", {"carbon dioxide", "n-decane", "methane"}, {0.6, 0.25, 0.15}},
    {"nitrogen/methane/ethane", {"nitrogen", "methane", "ethane"}, {0.3, 0.5, 0.2}},
    {"nitrogen/n-heptane", {"nitrogen", "n-heptane"}, {0.4, 0.6}},
    {"air", {"nitrogen", "oxygen", "argon"}, {0.7812, 0.2096, 0.0092}},
    {"hydrogen/methane/propane", {"hydrogen", "methane", "propane"}, {0.4, 0.4, 0.2}},
    {"r32/r125/r134a", {"r32", "r125", "r134a"}, {0.38, 0.18, 0.44}},
    {"r1234yf/r32", {"r1234yf", "r32"}, {0.3, 0.7}},
    {"propane/isobutane/dimethyl ether", {"propane", "isobutane", "dimethyl ether"}, {0.4, 0.3, 0.3}},
    {"ethanol/water", {"ethanol", "water"}, {0.3, 0.7}},
    {"methanol/ethanol/water", {"methanol", "ethanol", "water"}, {0.3, 0.3, 0.4}},
    {"acetone/chloroform/methanol", {"acetone", "chloroform", "methanol"}, {0.4, 0.3, 0.3}},
    {"acetonitrile/acetone/ethyl acetate/toluene",
     {"acetonitrile", "acetone", "ethyl acetate", "toluene"},
     {0.3, 0.2, 0.25, 0.25}},
    {"near-azeotropic acetone/n-hexane", {"acetone", "n-hexane"}, {0.64, 0.36}},
    {"near-azeotropic benzene/cyclohexane", {"benzene", "cyclohexane"}, {0.54, 0.46}},
    {"close-boiling xylenes", {"o-xylene", "m-xylene", "p-xylene", "ethylbenzene"}, {}},
    {"close-boiling propane/propylene", {"propane", "propylene"}, {0.5, 0.5}},
    {"traces",
     {"methane", "ethane", "n-hexane", "n-dodecane", "water", "hydrogen"},
     {0.8, 0.2 - 4e-8, 1e-8, 1e-8, 1e-8, 1e-8}},
    {"traces of light gas", {"n-heptane", "n-nonane", "methane", "nitrogen"}, {0.6, 0.4 - 2e-8, 1e-8, 1e-8}},
    {"zero fractions", {"propane", "methane", "n-butane", "water", "n-pentane"}, {0.5, 0, 0.3, 0, 0.2}},
    {"water/n-hexane", {"water", "n-hexane"}, {0.5, 0.5}},
    {"water/methane", {"water", "methane"}, {0.3, 0.7}},
    {"methanol/n-hexane", {"methanol", "n-hexane"}, {0.5, 0.5}},
    {"ethanol/n-heptane", {"ethanol", "n-heptane"}, {0.4, 0.6}},
    {"carbon dioxide/water", {"carbon dioxide", "water"}, {0.6, 0.4}},
    {"water/1-butanol", {"water", "1-butanol"}, {0.8, 0.2}},
    {"water/ethanol/toluene", {"water", "ethanol", "toluene"}, {0.4, 0.3, 0.3}},
    {"wet gas", {"methane", "carbon dioxide", "propane", "n-hexane", "water"}, {0.6, 0.1, 0.15, 0.1, 0.05}},
    {"10 n-alkanes",
     {"methane", "ethane", "propane", "n-butane", "n-pentane", "n-hexane", "n-heptane", "n-octane", "n-nonane",
      "n-decane"},
     {}},
    {"10 hydrocarbons",
     {"ethylene", "propylene", "isobutane", "n-pentane", "cyclopentane", "cyclohexane", "benzene", "toluene",
      "n-octane", "n-dodecane"},
     {0.1, 0.15, 0.1, 0.1, 0.1, 0.1, 0.1, 0.1, 0.1, 0.05}},
    {"20 components",
     {"methane",    "ethane",     "propane",  "n-butane",  "n-pentane",  "n-hexane",     "n-heptane",
      "n-octane",   "n-nonane",   "n-decane", "isobutane", "isopentane", "cyclopentane", "cyclohexane",
      "n-undecane", "n-dodecane", "ethylene", "propylene", "toluene",    "argon"},
     {}},
};

/// Selects amounts of the fluids of a mixture on the session of this thread and returns them as fractions; exits with a
/// text when that fails. No amounts: equimolar.
std::vector<double> select(const Mixture& mixture, std::vector<double> amounts);

}  // namespace tessarel::sweep
