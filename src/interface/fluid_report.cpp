// Small entries that report on the library and on the selected fluid.
#include <algorithm>
#include <array>
#include <cstdio>

#include "interface/boundary.hpp"
#include "interface/parameter_keys.hpp"
#include "interface/session.hpp"
#include "tessarel/tessarel.h"

namespace tessarel::interface {
namespace {

using fluid::at, fluid::not_computed, fluid::Parameters, fluid::Vector;

constexpr double kilograms(double grams) {
  return 0.001 * grams;
}

/// Mixture molar mass [kg/mol]; `z` is the host's array, whose first element carries the mark of the simplified model.
double molar_mass(const Session& session, const double* z) {
  double sum = 0;
  for (std::size_t i = 0; i < at(session.n()); ++i) {
    const double x = i == 0 && session.simplified ? z[0] - 111.0 : z[i];
    sum += x * session.model.parameters.molmas[i];
  }
  return kilograms(sum);
}

void store(double* out, double value) {
  if (out != nullptr) *out = value;
}

void store(double* out, int n, const Vector& values) {
  if (out != nullptr) std::copy_n(values.begin(), n, out);
}

}  // namespace
}  // namespace tessarel::interface

extern "C" void tessarel_getversion(int32_t* version) {
  constexpr std::array<std::int32_t, 4> number = {2, 5, 1, 20};
  if (version != nullptr) std::copy(number.begin(), number.end(), version);
}
TESSAREL_FORTRAN_TWIN(tessarel_getversion);

extern "C" void tessarel_fluidinfo(const double* z, double* molmass, double* tc, double* pc, double* tmin, double* tmax,
                                   double* molmass_i, double* tc_i, double* pc_i, double* tmin_i, double* tmax_i) {
  using namespace tessarel;
  using namespace tessarel::interface;
  const Session& session = current_session();
  const Parameters& p = session.model.parameters;
  if (!session.selected()) {
    for (double* scalar : {molmass, tc, pc, tmin, tmax}) store(scalar, not_computed);
    return;
  }
  store(molmass, z == nullptr ? not_computed : molar_mass(session, z));
  store(tc, session.limits.tc);
  store(pc, session.limits.pc);
  store(tmin, session.limits.tlowest);
  store(tmax, session.limits.thighest);
  Vector grams = p.molmas;
  for (double& mass : grams) mass = kilograms(mass);
  store(molmass_i, p.n, grams);
  store(tc_i, p.n, session.limits.tci);
  store(pc_i, p.n, session.limits.pci);
  store(tmin_i, p.n, p.tmin);
  store(tmax_i, p.n, p.tmax);
}
TESSAREL_FORTRAN_TWIN(tessarel_fluidinfo);

extern "C" double tessarel_fluidparameter(const char* name, char* err, size_t name_len, size_t err_len) {
  using namespace tessarel;
  using namespace tessarel::interface;
  const TextField errors{err, err_len};
  const std::string_view key = trimmed(input_text(name, name_len));
  const ParameterKey* found = find_key(key);
  if (found == nullptr || !found->reported) {
    compose(errors, {"TESSAREL parameter ", key, " not available..."});
    return not_computed;
  }
  const Session& session = current_session();
  if (!session.selected()) {
    errors.assign(no_fluid);
    return not_computed;
  }
  errors.assign(no_errors);
  return (session.model.parameters.*(found->values))[0];
}
TESSAREL_FORTRAN_TWIN(tessarel_fluidparameter);

extern "C" void tessarel_sub(void) {
  std::puts("****** Hello from the TESSAREL    ******");
  std::fflush(stdout);
}
TESSAREL_FORTRAN_TWIN(tessarel_sub);
