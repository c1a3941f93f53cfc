#include <algorithm>
#include <cmath>

#include "flash/sensitivity.hpp"
#include "interface/flash_checks.hpp"
#include "interface/routines_support.hpp"
#include "tessarel/tessarel.h"

namespace tessarel::interface {
namespace {

using flash::Sensitivity;

/// Where the caller wants the derivatives.
struct Fields {
  double *dbeta, *dv, *dh, *ds, *dx, *dy;
};

void hand_over(const Sensitivity& result, std::size_t n, const Fields& out) {
  for (std::size_t column = 0; column < n + 2; ++column) {
    out.dbeta[column] = result.dbeta[column];
    out.dv[column] = result.dv[column];
    out.dh[column] = result.dh[column];
    out.ds[column] = result.ds[column];
    for (std::size_t i = 0; i < n; ++i) {
      out.dx[i + n * column] = result.dx[i][column];
      out.dy[i + n * column] = result.dy[i][column];
    }
  }
}

}  // namespace
}  // namespace tessarel::interface

extern "C" void tessarel_flash_sensitivity(const double* t, const double* p, double* beta, double* v, double* h,
                                           double* s, double* dbeta, double* dv, double* dh, double* ds, double* dx,
                                           double* dy, char* err, size_t err_len) {
  using namespace tessarel;
  using namespace tessarel::interface;
  Session& session = current_session();
  report(session, {t, p, beta, v, h, s, dbeta, dv, dh, ds, dx, dy}, {err, err_len}, [&]() -> Message {
    if (const Message refused = check_flash(session, *t, *p); !ok(refused)) return refused;
    Sensitivity result;
    const Message message = flash::flash_sensitivity(session.fluid(), *t, *p, result);
    if (!ok(message)) return message;
    *beta = result.beta, *v = result.v, *h = result.h, *s = result.s;
    const std::size_t n = fluid::at(session.n());
    hand_over(result, n, {dbeta, dv, dh, ds, dx, dy});
    const auto finite = [](const double* first, std::size_t count) {
      return std::all_of(first, first + count, [](double value) { return std::isfinite(value); });
    };
    bool complete = std::isfinite(*beta + *v + *h + *s);
    for (const double* row : {dbeta, dv, dh, ds}) complete = complete && finite(row, n + 2);
    for (const double* matrix : {dx, dy}) complete = complete && finite(matrix, n * (n + 2));
    return complete ? no_errors : no_state;
  });
}
TESSAREL_FORTRAN_TWIN(tessarel_flash_sensitivity);
