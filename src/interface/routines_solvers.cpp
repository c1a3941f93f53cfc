// Exports of the solvers: working range, Brent's method on the host's forward calculations, states of one phase.
#include "interface/routines_support.hpp"
#include "solvers/brent.hpp"
#include "solvers/psat_tsat.hpp"
#include "solvers/tmdstate_1ph.hpp"

using namespace tessarel;
using namespace tessarel::routines;
using boundary::any_null;

namespace {

/// A host's forward calculation as the root finder takes it. Its message lives in the object.
class HostForward {
 public:
  HostForward(tessarel_forward func, tessarel_forward_1ph func_1ph) : func_(func), func_1ph_(func_1ph) {}

  Message operator()(double& t, double& p, double& v, double& u, double& h, double& s) {
    err_.assign(no_errors);
    func_1ph_(&t, &p, &v, &u, &h, &s, err_.data(), err_.size());
    return err_.trimmed();
  }
  Message operator()(double& t, double& p, double& v, double& u, double& h, double& s, double& q, double* x,
                     double* y) {
    err_.assign(no_errors);
    func_(&t, &p, &v, &u, &h, &s, &q, x, y, err_.data(), err_.size());
    return err_.trimmed();
  }

 private:
  tessarel_forward func_;
  tessarel_forward_1ph func_1ph_;
  FixedText<300> err_;
};

/// Checks the arguments of a root search over a state vector of `places` entries and runs `body(forward, err)`.
template <class Body>
double search(HostForward forward, bool null, const int32_t* ptr, int places, TextField err, Body&& body) noexcept {
  double result = not_a_number;
  boundary::guarded(err, [&] {
    if (null || ptr == nullptr) {
      err.assign(boundary::null_argument);
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

/// A state solver on the host's variables.
void solve(tmdstate_1ph::Solver* solver, double* t, double* p, double* v, double* u, double* h, double* s,
           TextField err) noexcept {
  boundary::guarded(err, [&] {
    if (any_null({t, p, v, u, h, s}))
      err.assign(boundary::null_argument);
    else if (!boundary::fluid_selected())
      err.assign(boundary::no_fluid);
    else
      err.assign(solver(*t, *p, *v, *u, *h, *s));
  });
}

}  // namespace

extern "C" {

void tessarel_calc_ptrange(char* err, size_t err_len) {
  const TextField errors{err, err_len};
  boundary::guarded(
      errors, [&] { errors.assign(boundary::fluid_selected() ? calc_psat_tsat::calc_ptrange() : boundary::no_fluid); });
}

double tessarel_brent_root(tessarel_forward func, const double* a, const double* b, double* vars, double* x, double* y,
                           const int32_t* ptr, char* err, size_t err_len) {
  return search({func, nullptr}, func == nullptr || any_null({a, b, vars}), ptr, 7, {err, err_len},
                [&](auto& f, Message& m) { return tmdstate::brent_root(f, *a, *b, vars, x, y, ptr, m); });
}
double tessarel_brent_root_1ph(tessarel_forward_1ph func, const double* a, const double* b, double* vars,
                               const int32_t* ptr, char* err, size_t err_len) {
  return search({nullptr, func}, func == nullptr || any_null({a, b, vars}), ptr, 6, {err, err_len},
                [&](auto& f, Message& m) { return tmdstate_1ph::brent_root_1ph(f, *a, *b, vars, ptr, m); });
}
double tessarel_ps_delta(tessarel_forward func, double* vars, double* x, double* y, const int32_t* ptr, char* err,
                         size_t err_len) {
  return search({func, nullptr}, func == nullptr || vars == nullptr, ptr, 7, {err, err_len},
                [&](auto& f, Message& m) { return tmdstate::ps_delta(f, vars, x, y, ptr, m); });
}
double tessarel_delta_1ph(tessarel_forward_1ph func, double* vars, const int32_t* ptr, char* err, size_t err_len) {
  return search({nullptr, func}, func == nullptr || vars == nullptr, ptr, 6, {err, err_len},
                [&](auto& f, Message& m) { return tmdstate_1ph::delta_1ph(f, vars, ptr, m); });
}

#define SOLVER(name)                                                                                                  \
  void tessarel_##name(double* t, double* p, double* v, double* u, double* h, double* s, char* err, size_t err_len) { \
    solve(tmdstate_1ph::name, t, p, v, u, h, s, {err, err_len});                                                      \
  }
SOLVER(tp_lph)
SOLVER(tp_vph)
SOLVER(tv_1ph)
SOLVER(pv_1ph)
SOLVER(ts_1ph)
SOLVER(vu_1ph)
SOLVER(vh_1ph)
SOLVER(vs_1ph)
SOLVER(pu_lph)
SOLVER(pu_vph)
SOLVER(ph_lph)
SOLVER(ph_vph)
SOLVER(ps_lph)
SOLVER(ps_vph)
SOLVER(hs_lph)
SOLVER(hs_vph)

}  // extern "C"
