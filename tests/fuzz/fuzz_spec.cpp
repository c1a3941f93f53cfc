// Fuzzes the property call on propane: input text of any bytes and length, any order, any values of the input pair.
// A call that reports success must hand back finite numbers.
#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <string_view>

#include "tessarel/tessarel.h"

namespace {

bool select_propane() {
  const std::int32_t n = 1;
  const double z = 1;
  char err[40];
  tessarel_setfluid(&n, "propane", &z, err, 7, sizeof err);
  return std::string_view(err, 9) == "No errors";
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static const bool selected = select_propane();
  if (!selected) std::abort();

  // Layout: order, five doubles, a length, the text.
  std::int32_t order = 0;
  double values[5] = {};
  std::uint8_t err_length = 0;
  if (size < sizeof order + sizeof values + sizeof err_length) return 0;
  const auto take = [&](void* target, std::size_t bytes) {
    std::memcpy(target, data, bytes);
    data += bytes;
    size -= bytes;
  };
  take(&order, sizeof order);
  take(values, sizeof values);
  take(&err_length, sizeof err_length);

  double t = values[0], p = values[1], v = values[2], u = values[3], h = values[3], s = values[4], q = 0;
  double cv = 0, dpdt = 0, dpdv = 0, d2pdt2 = 0, d2pdv2 = 0, d2pdtdv = 0, dcvdt = 0, x = 1, y = 1, lnphi = 0;
  char* err = static_cast<char*>(std::malloc(err_length));  // exactly as long as said
  tessarel_tmdprop(reinterpret_cast<const char*>(data), &order, &t, &p, &v, &u, &h, &s, &q, &cv, &dpdt, &dpdv, &d2pdt2,
                   &d2pdv2, &d2pdtdv, &dcvdt, &x, &y, &lnphi, err, size, err_length);
  if (err_length >= 9 && std::string_view(err, 9) == "No errors") {
    for (const double value : {t, p, v, u, h, s, cv, dpdt, dpdv, lnphi})
      if (!std::isfinite(value)) std::abort();
  }
  std::free(err);
  return 0;
}
