// Reading and changing the parameters of the selected fluid, for fits and studies.
#include <cmath>

#include "fluid/combining_rules.hpp"
#include "interface/boundary.hpp"
#include "interface/parameter_keys.hpp"
#include "interface/routines_support.hpp"
#include "tessarel/tessarel.h"

namespace tessarel::interface {
namespace {

using fluid::at, fluid::Parameters;

constexpr Message no_component = "TESSAREL error: no such component...";
constexpr Message no_sites = "TESSAREL error: the component has no association sites of two types...";

/// Association between the first two site types of a component.
bool associates(const Parameters& p, std::size_t i) {
  return p.nhb_typ[i] >= 2;
}

bool get(const Parameters& p, std::string_view key, std::size_t i, double& value) {
  if (key == "eps_hb")
    value = associates(p, i) ? p.eps_hb[i][i][0][1] : 0.0;
  else if (key == "kap_hb")
    value = associates(p, i) ? p.kap_hb[i][i] : 0.0;
  else if (const ParameterKey* found = find_key(key); found != nullptr)
    value = (p.*(found->values))[i];
  else
    return false;
  return true;
}

/// Stores a value that get() knows.
Message set(Parameters& p, std::string_view key, std::size_t i, double value) {
  if (!std::isfinite(value)) return bad_parameter;
  if (const ParameterKey* found = find_key(key); found != nullptr) {
    if (found->positive && value <= 0) return bad_parameter;
    if (key == "molmas" && value < fluid::least_molar_mass) return bad_molar_mass;
    if ((key == "tmin" && value > p.tmax[i]) || (key == "tmax" && value < p.tmin[i]))
      return "TESSAREL error: the highest temperature must not be below the lowest...";
    (p.*(found->values))[i] = value;
    return no_errors;
  }
  if (value < 0) return bad_parameter;
  if (!associates(p, i)) return no_sites;
  if (key == "eps_hb")
    p.eps_hb[i][i][0][1] = p.eps_hb[i][i][1][0] = value;
  else
    p.kap_hb[i][i] = value;
  return no_errors;
}

/// Runs `body(key, place, value)` for a key that exists and a component of the selection.
template <class Value, class Body>
void with_parameter(Session& session, TextField err, std::string_view name, const std::int32_t* i, Value* value,
                    Body&& body) {
  guarded(err, [&] {
    const std::string_view key = trimmed(name);
    double stored = 0;
    if (any_null({i, value}))
      err.assign(null_argument);
    else if (!session.selected())
      err.assign(no_fluid);
    else if (!valid_place(session, i))
      err.assign(no_component);
    else if (!get(session.model.parameters, key, at(*i - 1), stored))
      compose(err, {"TESSAREL parameter ", key, " not available..."});
    else
      err.assign(body(key, at(*i - 1), stored));
  });
}

}  // namespace
}  // namespace tessarel::interface

extern "C" void tessarel_getparameter(const char* name, const int32_t* i, double* value, char* err, size_t name_len,
                                      size_t err_len) {
  using namespace tessarel;
  using namespace tessarel::interface;
  if (value != nullptr) *value = fluid::not_computed;
  with_parameter(current_session(), {err, err_len}, input_text(name, name_len), i, value,
                 [&](std::string_view, std::size_t, double stored) {
                   *value = stored;
                   return no_errors;
                 });
}
TESSAREL_FORTRAN_TWIN(tessarel_getparameter);

extern "C" void tessarel_setparameter(const char* name, const int32_t* i, const double* value, char* err,
                                      size_t name_len, size_t err_len) {
  using namespace tessarel;
  using namespace tessarel::interface;
  Session& session = current_session();
  with_parameter(session, {err, err_len}, input_text(name, name_len), i, value,
                 [&](std::string_view key, std::size_t place, double) {
                   const Message message = set(session.model.parameters, key, place, *value);
                   if (!ok(message)) return message;
                   derive(session);
                   session.moment = fluid::moment_of(session.model.parameters);
                   return analyse(session);
                 });
}
TESSAREL_FORTRAN_TWIN(tessarel_setparameter);

extern "C" void tessarel_setkij(const int32_t* i, const int32_t* j, const double* kij, char* err, size_t err_len) {
  using namespace tessarel;
  using namespace tessarel::interface;
  Session& session = current_session();
  report(session, {i, j, kij}, {err, err_len}, [&]() -> Message {
    if (!valid_place(session, i) || !valid_place(session, j)) return no_component;
    if (*i == *j) return "TESSAREL error: an interaction parameter belongs to two different components...";
    if (!std::isfinite(*kij)) return bad_parameter;
    const auto a = at(*i - 1), b = at(*j - 1);
    auto& entries = session.model.parameters.k_ij;
    entries[a][b] = entries[b][a] = *kij;
    derive(session);
    return analyse(session);
  });
}
TESSAREL_FORTRAN_TWIN(tessarel_setkij);
