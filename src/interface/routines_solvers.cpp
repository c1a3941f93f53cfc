// Exports of the solvers: working range, Brent's method on the host's forward calculations, states of one phase.
#include <cmath>

#include "interface/routines_support.hpp"
#include "interface/state_dispatch.hpp"
#include "solvers/brent.hpp"
#include "solvers/psat_tsat.hpp"
#include "solvers/single_phase.hpp"

using namespace tessarel;
using namespace tessarel::interface;

namespace {

/// A host's forward calculation as the root finder takes it. Its message lives in the object.
class HostForward {
 public:
  HostForward(tessarel_forward func, tessarel_forward_1ph func_1ph) : func_(func), func_1ph_(func_1ph) {}

  Message operator()(double& t, double& p, double& v, double& u, double& h, double& s) {
    err_.assign(no_errors.text());
    func_1ph_(&t, &p, &v, &u, &h, &s, err_.data(), err_.size());
    return message();
  }
  Message operator()(double& t, double& p, double& v, double& u, double& h, double& s, double& q, double* x,
                     double* y) {
    err_.assign(no_errors.text());
    func_(&t, &p, &v, &u, &h, &s, &q, x, y, err_.data(), err_.size());
    return message();
  }

 private:
  [[nodiscard]] Message message() const {
    const std::string_view text = err_.trimmed();
    return text == no_errors.text() ? no_errors : Message::of(text);
  }

  tessarel_forward func_;
  tessarel_forward_1ph func_1ph_;
  FixedText<300> err_;
};

/// A state solver of one phase behind the checks of the property call.
void single_phase(solvers::Solver& solver, std::string_view pair, double* t, double* p, double* v, double* u, double* h,
                  double* s, TextField err) {
  Session& session = current_session();
  report(session, {t, p, v, u, h, s}, err, [&]() -> Message {
    const solvers::State given{*t, *p, *v, *u, *h, *s, 0};
    if (const Message refused = check_pair(session, *find_state_row(pair), true, given); !ok(refused)) return refused;
    const Message message = solver(session.fluid(), *t, *p, *v, *u, *h, *s);
    return !ok(message) || std::isfinite(*t + *p + *v + *u + *h + *s) ? message : no_state;
  });
}

/// Checks the arguments of a root search over a state vector of `places` entries and runs `body(forward, err)`.
template <class Body>
double search(HostForward forward, bool null, const int32_t* ptr, int places, TextField err, Body&& body) noexcept {
  double result = not_a_number;
  guarded(err, [&] {
    if (null || ptr == nullptr) {
      err.assign(null_argument);
      return;
    }
    for (int k = 0; k < 2; ++k) {
      if (ptr[k] < 1 || ptr[k] > places) {
        err.assign("TESSAREL error: control pair out of range...");
        return;
      }
    }
    Message message = no_errors;
    result = body(forward, message);
    err.assign(message);
  });
  return result;
}

}  // namespace

extern "C" {

void tessarel_calc_ptrange(char* err, size_t err_len) {
  Session& session = current_session();
  report(session, {}, {err, err_len}, [&] { return solvers::calc_ptrange(session.model.parameters, session.limits); });
}

double tessarel_brent_root(tessarel_forward func, const double* a, const double* b, double* vars, double* x, double* y,
                           const int32_t* ptr, char* err, size_t err_len) {
  return search({func, nullptr}, func == nullptr || any_null({a, b, vars}), ptr, 7, {err, err_len},
                [&](auto& f, Message& m) { return solvers::brent_root(f, *a, *b, vars, x, y, ptr, m); });
}
double tessarel_brent_root_1ph(tessarel_forward_1ph func, const double* a, const double* b, double* vars,
                               const int32_t* ptr, char* err, size_t err_len) {
  return search({nullptr, func}, func == nullptr || any_null({a, b, vars}), ptr, 6, {err, err_len},
                [&](auto& f, Message& m) { return solvers::brent_root_1ph(f, *a, *b, vars, ptr, m); });
}
double tessarel_ps_delta(tessarel_forward func, double* vars, double* x, double* y, const int32_t* ptr, char* err,
                         size_t err_len) {
  return search({func, nullptr}, func == nullptr || vars == nullptr, ptr, 7, {err, err_len},
                [&](auto& f, Message& m) { return solvers::ps_delta(f, vars, x, y, ptr, m); });
}
double tessarel_delta_1ph(tessarel_forward_1ph func, double* vars, const int32_t* ptr, char* err, size_t err_len) {
  return search({nullptr, func}, func == nullptr || vars == nullptr, ptr, 6, {err, err_len},
                [&](auto& f, Message& m) { return solvers::delta_1ph(f, vars, ptr, m); });
}

#define SOLVER(name, pair)                                                                                            \
  void tessarel_##name(double* t, double* p, double* v, double* u, double* h, double* s, char* err, size_t err_len) { \
    single_phase(solvers::name, pair, t, p, v, u, h, s, {err, err_len});                                              \
  }
SOLVER(tp_lph, "TP")
SOLVER(tp_vph, "TP")
SOLVER(tv_1ph, "Tv")
SOLVER(pv_1ph, "vP")
SOLVER(ts_1ph, "Ts")
SOLVER(vu_1ph, "vu")
SOLVER(vh_1ph, "vh")
SOLVER(vs_1ph, "vs")
SOLVER(pu_lph, "Pu")
SOLVER(pu_vph, "Pu")
SOLVER(ph_lph, "Ph")
SOLVER(ph_vph, "Ph")
SOLVER(ps_lph, "Ps")
SOLVER(ps_vph, "Ps")
SOLVER(hs_lph, "hs")
SOLVER(hs_vph, "hs")

}  // extern "C"
