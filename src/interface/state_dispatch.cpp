#include "interface/state_dispatch.hpp"

#include <algorithm>
#include <array>
#include <cmath>

#include "interface/flash_checks.hpp"

namespace tessarel::interface {
namespace {

using namespace solvers;

constexpr std::array<StateRow, 16> rows = {{
    {"TP", nullptr, nullptr, "TP_new", tp_new, true, tp_lph, tp_vph},
    {"Tv", tv, tv, "Tv_old", tv_old, true, tv_1ph, tv_1ph},
    {"vP", vp, vp, "", nullptr, false, pv_1ph, pv_1ph},
    {"Ts", ts, ts, "", nullptr, false, ts_1ph, ts_1ph},
    {"vu", vu, vu, "vu_new", vu_new, true, vu_1ph, vu_1ph},
    {"vh", vh, vh, "", nullptr, false, vh_1ph, vh_1ph},
    {"vs", vs, vs, "", nullptr, false, vs_1ph, vs_1ph},
    {"Pu", pu, pu_simple, "", nullptr, false, pu_lph, pu_vph},
    {"Ph", ph, ph_simple, "Ph_new", ph_new, false, ph_lph, ph_vph},
    {"Ps", ps, ps_simple, "Ps_new", ps_new, false, ps_lph, ps_vph},
    {"hs", hs_simple, hs_simple, "", nullptr, false, hs_lph, hs_vph},
    {"Pq", pq, pq, "", nullptr, false, nullptr, nullptr},
    {"Tq", tq, tq, "", nullptr, false, nullptr, nullptr},
    {"vq", vq, vq, "", nullptr, false, nullptr, nullptr},
    {"Pm", pm, pm, "", nullptr, false, nullptr, nullptr},
    {"Tm", tm, tm, "", nullptr, false, nullptr, nullptr},
}};

/// The two values that the code names must be there: temperature and volume enter logarithms.
bool usable(char property, const State& state) {
  State copy = state;
  const double value = value_named(property, copy);
  return property == 'T' || property == 'v' ? positive(value) : std::isfinite(value);
}

}  // namespace

double& value_named(char property, State& state) {
  switch (property) {
    case 'T':
      return state.t;
    case 'P':
      return state.p;
    case 'v':
      return state.v;
    case 'u':
      return state.u;
    case 'h':
      return state.h;
    case 's':
      return state.s;
    default:
      return state.q;
  }
}

const StateRow* find_state_row(std::string_view code) {
  const auto* row = std::find_if(rows.begin(), rows.end(), [&](const StateRow& r) { return r.code == code; });
  return row == rows.end() ? nullptr : row;
}

const StateRow* find_state_row(const InputSpec& spec) {
  const std::array<char, 2> code = {spec.first, spec.second};
  return find_state_row(std::string_view(code.data(), code.size()));
}

solvers::TwoPhaseSolver* solver_of(const StateRow& row, const InputSpec& spec, bool pure) {
  const bool variant = row.variant != nullptr && trimmed(spec.field) == row.variant_text;
  if (variant && (!pure || row.variant_for_pure)) return row.variant;
  return pure ? row.pure : row.mixture;
}

bool is_complete(const StateRow& row, const solvers::State& s) {
  return std::isfinite(s.t + s.p + s.v) && (row.code == "Tm" || std::isfinite(s.u + s.h + s.s));
}

Message check_pair(Session& session, const StateRow& row, bool single_phase, const State& state) {
  if (!usable(row.code[0], state) || !usable(row.code[1], state)) return bad_input;
  const bool has_t = row.code.find('T') != std::string_view::npos, has_p = row.code.find('P') != std::string_view::npos,
             has_v = row.code.find('v') != std::string_view::npos;
  if (single_phase) {
    if (has_p && !has_v && !(state.p > 0)) return bad_input;
    if (!within_model(has_t ? state.t : 300.0, has_p ? state.p : 1e5)) return no_model;
    return has_v && below_packing(session, session.z.data(), has_t ? state.t : 1000.0, state.v) ? too_dense : no_errors;
  }
  // With v given P may be that of a liquid under tension.
  const double p = has_p && !(has_v && state.p <= 0) ? state.p : 1e5;
  if (const Message refused = check_flash(session, has_t ? state.t : 300.0, p); !ok(refused)) return refused;
  // A component is smallest when hot.
  if (has_v && below_packing(session, session.z.data(), has_t ? state.t : 1000.0, state.v)) return too_dense;
  return no_errors;
}

}  // namespace tessarel::interface
