// Selection of a fluid: names and a composition become the session that every later call works on.
#include <cmath>

#include "envelope/critical_point.hpp"
#include "fluid/bips.hpp"
#include "fluid/combining_rules.hpp"
#include "fluid/readers.hpp"
#include "interface/boundary.hpp"
#include "interface/session.hpp"
#include "solvers/psat_tsat.hpp"
#include "tessarel/tessarel.h"

namespace tessarel::interface {
namespace {

using fluid::at, fluid::NameList, fluid::nmax;

// A host asks for the simplified model by adding 111 to the first mole fraction.
constexpr double simplified_mark = 111.0;
constexpr double simplified_threshold = 100.0;

double unmarked(double z1) {
  return z1 > simplified_threshold ? z1 - simplified_mark : z1;
}

/// Finite, none negative, with a sum whose third power, and a property per mass, are numbers. A tiny negative fraction
/// would end in the logarithm of a negative number in the entropy of mixing.
bool valid_composition(int n, const double* z) {
  double sum = 0;
  for (int i = 0; i < n; ++i) {
    const double x = i == 0 ? unmarked(z[0]) : z[i];
    if (!(x >= 0)) return false;
    sum += x;
  }
  return sum > 1e-50 && sum < 1e50;
}

bool same_selection(const Session& session, int nf, NameList names) {
  if (nf != session.model.parameters.n) return false;  // of a failed selection too
  for (int i = 0; i < nf; ++i)
    if (!same_text(session.names[at(i)].view(), names[i])) return false;
  return true;
}

/// Reads the parameters of the components named and derives what depends on them alone.
Message select_components(Session& session, int nf, NameList names) {
  fluid::Parameters& p = session.model.parameters;
  // Store the names first: repeating a failed selection must skip reading (documented).
  session.failed = true;
  p.n = nf;
  for (int i = 0; i < nf; ++i) session.names[at(i)].assign(names[i]);
  Message err = fluid::readfluids(names, p, session.sources);
  if (ok(err)) err = fluid::readbips(p, session.sources.bips, session.sources.directory.view());
  if (ok(err))
    derive(session);
  else
    session.update();
  session.moment = fluid::moment_of(p);
  return err;
}

/// A failure is not reported: a host may need no more than single-phase states.
void find_critical_point(Session& session) {
  fluid::Limits& limits = session.limits;
  Session::ComponentCriticalPoints& known = session.components;
  if (session.n() > 1 && known.valid && known.simplified == session.simplified) {
    // They depend on the parameters alone, not on the composition.
    limits.tci = known.tci;
    limits.pci = known.pci;
    envelope::average_critical_points(session.eos(), session.n(), session.z.data(), limits);
  } else {
    const Message message =
        envelope::critpoint(session.eos(), session.n(), session.z.data(), limits, &session.critical_points);
    known = {ok(message), session.simplified, limits.tci, limits.pci};
  }
  if (session.n() < 2) return;
  // The extrema of the phase envelope, until one is traced.
  limits.tcritherm = limits.tcribar = limits.tc;
  limits.pcritherm = limits.pcribar = limits.pc;
}

Message select_unchecked(Session& session, int nf, NameList names, const double* z) {
  if (nf > 1 && !session.envelope.table) session.envelope.table = std::make_unique<envelope::Table>();
  if (!same_selection(session, nf, names)) {
    if (const Message err = select_components(session, nf, names); !ok(err)) return err;
  }
  session.failed = false;
  for (int i = 0; i < nf; ++i) session.z[at(i)] = z[i];
  if (session.z[0] > simplified_threshold) {
    session.simplified = true;  // nothing in the session sets it back
    session.z[0] = unmarked(session.z[0]);
  }
  return analyse(session);
}

Message check_arguments(const std::int32_t* nf, NameList names, const double* z) {
  if (any_null({nf, z})) return null_argument;
  if (*nf < 1 || *nf > nmax) return "TESSAREL error: number of components must be 1 to 20...";
  if (!usable_field(names.data, names.length)) return "TESSAREL error: names of the components are missing...";
  if (names.length > longest_text) return "TESSAREL error: fields of the names are longer than any file name...";
  if (!valid_composition(*nf, z))
    return "TESSAREL error: mole fractions must be finite numbers, none negative, and not all zero...";
  return no_errors;
}

}  // namespace

void derive(Session& session) {
  fluid::setassocpar(session.model.parameters);
  fluid::set_polar_flags(session.model.parameters);
  session.update();
}

Message analyse(Session& session) {
  find_critical_point(session);
  const Message message = solvers::calc_ptrange(session.model.parameters, session.limits);
  // The envelope is traced when it is asked for; until then the averages stand for its extrema.
  session.envelope.hasphaseenv = false;
  session.envelope.above_critical = HUGE_VAL;
  session.envelope.at_selection = session.limits;
  return message;
}

Message select(Session& session, const std::int32_t* nf, NameList names, const double* z) {
  const Message message = check_arguments(nf, names, z);
  return ok(message) ? select_unchecked(session, *nf, names, z) : message;
}

}  // namespace tessarel::interface

extern "C" void tessarel_setfluid(const int32_t* nf, const char* names, const double* z, char* err, size_t names_len,
                                  size_t err_len) {
  using namespace tessarel::interface;
  const tessarel::TextField errors{err, err_len};
  guarded(errors, [&] { errors.assign(select(current_session(), nf, NameList{names, names_len}, z)); });
}
TESSAREL_FORTRAN_TWIN(tessarel_setfluid);
