// Small entries that report on the library and on the selected fluid.
#include <algorithm>
#include <array>
#include <cstdio>

#include "interface/boundary.hpp"
#include "tessarel/tessarel.h"

namespace tessarel {
namespace {

using namespace fluid_module;

struct Parameter {
  std::string_view key;
  Vector Record::*values;
};

constexpr std::array<Parameter, 7> parameters = {{{"omega", &Record::omega},
                                                  {"mseg", &Record::mseg},
                                                  {"sigma", &Record::sigma},
                                                  {"epsil", &Record::epsil},
                                                  {"dipole", &Record::dipole},
                                                  {"quapole", &Record::quapole},
                                                  {"polariz", &Record::polariz}}};

constexpr double kilograms(double grams) {
  return 0.001 * grams;
}

/// Mixture molar mass [kg/mol]; `z` is the host's array, whose first element carries the mark of the simplified model.
double molar_mass(const double* z) {
  double sum = 0;
  for (std::size_t i = 0; i < static_cast<std::size_t>(record.n); ++i) {
    const double x = i == 0 && record.is_simp ? z[0] - 111.0 : z[i];
    sum += x * record.molmas[i];
  }
  return kilograms(sum);
}

void store(double* out, double value) {
  if (out != nullptr) *out = value;
}

void store(double* out, const Vector& values) {
  if (out != nullptr) std::copy_n(values.begin(), record.n, out);
}

}  // namespace
}  // namespace tessarel

extern "C" void tessarel_getversion(int32_t* version) {
  constexpr std::array<std::int32_t, 4> number = {2, 5, 1, 20};
  if (version != nullptr) std::copy(number.begin(), number.end(), version);
}
TESSAREL_FORTRAN_TWIN(tessarel_getversion);

extern "C" void tessarel_fluidinfo(const double* z, double* molmass, double* tc, double* pc, double* tmin, double* tmax,
                                   double* molmass_i, double* tc_i, double* pc_i, double* tmin_i, double* tmax_i) {
  using namespace tessarel;
  if (!boundary::fluid_selected()) {
    for (double* scalar : {molmass, tc, pc, tmin, tmax}) store(scalar, not_computed);
    return;
  }
  store(molmass, z == nullptr ? not_computed : molar_mass(z));
  store(tc, record.tc);
  store(pc, record.pc);
  store(tmin, record.tlowest);
  store(tmax, record.thighest);
  Vector grams = record.molmas;
  for (double& mass : grams) mass = kilograms(mass);
  store(molmass_i, grams);
  store(tc_i, record.tci);
  store(pc_i, record.pci);
  store(tmin_i, record.tmin);
  store(tmax_i, record.tmax);
}
TESSAREL_FORTRAN_TWIN(tessarel_fluidinfo);

extern "C" double tessarel_fluidparameter(const char* name, char* err, size_t name_len, size_t err_len) {
  using namespace tessarel;
  const TextField errors{err, err_len};
  const std::string_view key = trimmed(input_text(name, name_len));
  const auto* found =
      std::find_if(parameters.begin(), parameters.end(), [&](const Parameter& p) { return p.key == key; });
  if (found == parameters.end()) {
    boundary::compose(errors, {"TESSAREL parameter ", key, " not available..."});
    return not_computed;
  }
  if (!boundary::fluid_selected()) {
    errors.assign(boundary::no_fluid);
    return not_computed;
  }
  errors.assign(no_errors);
  return (record.*(found->values))[0];
}
TESSAREL_FORTRAN_TWIN(tessarel_fluidparameter);

extern "C" void tessarel_sub(void) {
  std::puts("****** Hello from the TESSAREL    ******");
  std::fflush(stdout);
}
TESSAREL_FORTRAN_TWIN(tessarel_sub);
