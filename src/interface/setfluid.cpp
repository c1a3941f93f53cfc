// Selection of a fluid: names and a composition become the one global record that every later call works on.
#include <cmath>

#include "envelope/critical_point.hpp"
#include "eos/polar_tables.hpp"
#include "eos/tables.hpp"
#include "fluid/bips.hpp"
#include "fluid/readers.hpp"
#include "fluid/selection.hpp"
#include "interface/boundary.hpp"
#include "solvers/psat_tsat.hpp"
#include "tessarel/tessarel.h"

namespace tessarel {
namespace {

using namespace fluid_module;

// A host asks for the simplified model by adding 111 to the first mole fraction.
constexpr double simplified_mark = 111.0;
constexpr double simplified_threshold = 100.0;

double unmarked(double z1) {
  return z1 > simplified_threshold ? z1 - simplified_mark : z1;
}

/// Finite, none negative, at least one positive. A tiny negative fraction would end in the logarithm of a negative
/// number in the entropy of mixing.
bool valid_composition(int n, const double* z) {
  bool any_positive = false;
  for (int i = 0; i < n; ++i) {
    const double x = i == 0 ? unmarked(z[0]) : z[i];
    if (!std::isfinite(x) || x < 0) return false;
    any_positive = any_positive || x > 0;
  }
  return any_positive;
}

bool same_selection(int nf, NameList names) {
  if (nf != record.n) return false;
  for (int i = 0; i < nf; ++i)
    if (!same_text(record.compfile[static_cast<std::size_t>(i)].view(), names[i])) return false;
  return true;
}

/// Reads the parameters of the components named and derives what depends on them alone.
Message select_components(int nf, NameList names) {
  // The names are kept before anything is read: they stand for what is in memory, also after a failed read.
  record.n = nf;
  for (int i = 0; i < nf; ++i) record.compfile[static_cast<std::size_t>(i)].assign(names[i]);
  Message err = readfluids(names);
  if (ok(err)) err = readbips();
  if (ok(err)) {
    setassocpar();
    set_polar_flags();
    eos::update_polar_constants();
  }
  set_kronecker_delta();
  eos::update_tables();
  return err;
}

/// A failure is not reported: a host may need no more than single-phase states.
void find_critical_point() {
  critical_point_module::critpoint();
  if (record.n < 2) return;
  // The extrema of the phase envelope, until one is traced.
  record.tcritherm = record.tcribar = record.tc;
  record.pcritherm = record.pcribar = record.pc;
}

Message select(int nf, NameList names, const double* z) {
  if (!same_selection(nf, names)) {
    if (const Message err = select_components(nf, names); !ok(err)) return err;
  }
  for (int i = 0; i < nf; ++i) record.z[static_cast<std::size_t>(i)] = z[i];
  if (record.z[0] > simplified_threshold) {
    record.is_simp = true;  // for good: nothing sets it back
    record.z[0] = unmarked(record.z[0]);
  }
  find_critical_point();
  return calc_psat_tsat::calc_ptrange();
}

Message check_arguments(const std::int32_t* nf, NameList names, const double* z) {
  if (boundary::any_null({nf, z})) return boundary::null_argument;
  if (*nf < 1 || *nf > nmax) return "TESSAREL error: number of components must be 1 to 20...";
  if (!usable_field(names.data, names.length)) return "TESSAREL error: names of the components are missing...";
  if (!valid_composition(*nf, z))
    return "TESSAREL error: mole fractions must be finite numbers, none negative, and not all zero...";
  return no_errors;
}

}  // namespace
}  // namespace tessarel

extern "C" void tessarel_setfluid(const int32_t* nf, const char* names, const double* z, char* err, size_t names_len,
                                  size_t err_len) {
  using namespace tessarel;
  const TextField errors{err, err_len};
  boundary::guarded(errors, [&] {
    const fluid_module::NameList list{names, names_len};
    Message message = check_arguments(nf, list, z);
    if (ok(message)) message = select(*nf, list, z);
    errors.assign(message);
  });
}
TESSAREL_FORTRAN_TWIN(tessarel_setfluid);
