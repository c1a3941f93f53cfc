// Fuzzes the three property calls on a pure fluid and two mixtures: input text of any bytes and length, any order, any
// values of the input pair or such that mean a fluid. A call that reports success must hand back finite numbers, and no
// call may work beyond its bound.
#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <string_view>
#include <vector>

#include "interface/session.hpp"
#include "tessarel/tessarel.h"

namespace {

/// docs/robustness.md, State solvers: what a call costs at most.
constexpr long long most_pressures = 400000;

void require(bool condition) {
  if (!condition) std::abort();
}

struct Selection {
  std::int32_t n;
  const char* names;  ///< fields of 8
  std::array<double, 3> z;
  std::int64_t session = 0;
};
std::array<Selection, 3> selections = {
    {{1, "propane ", {1.0}}, {2, "methane n-butane", {0.5, 0.5}}, {3, "water   methanoln-hexane", {0.4, 0.3, 0.3}}}};

bool select_all() {
  for (Selection& s : selections) {
    char err[40];
    tessarel_session_new(&s.session, err, sizeof err);
    tessarel_session_use(&s.session, err, sizeof err);
    tessarel_setfluid(&s.n, s.names, s.z.data(), err, 8, sizeof err);
    if (std::string_view(err, 9) != "No errors") return false;
  }
  return true;
}

/// Heap arrays of exactly the documented size.
class Outputs {
 public:
  Outputs() { arrays_.reserve(32); }
  double* array(std::size_t size, double value = 0.0) { return arrays_.emplace_back(size, value).data(); }
  [[nodiscard]] bool finite() const {
    return std::all_of(arrays_.begin(), arrays_.end(), [](const std::vector<double>& a) {
      return std::all_of(a.begin(), a.end(), [](double v) { return std::isfinite(v); });
    });
  }

 private:
  std::vector<std::vector<double>> arrays_;
};

/// A number of a range from the bits of any.
double within(double any, double low, double high, bool logarithmic) {
  std::uint64_t bits = 0;
  std::memcpy(&bits, &any, sizeof bits);
  const double share = static_cast<double>(bits % 65536U) / 65535.0;
  return logarithmic ? low * std::pow(high / low, share) : low + share * (high - low);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static const bool selected = select_all();
  require(selected);

  // Layout: order, six doubles, a length, a choice, the text.
  std::int32_t order = 0;
  double values[6] = {};
  std::uint8_t err_length = 0, choice = 0;
  if (size < sizeof order + sizeof values + sizeof err_length + sizeof choice) return 0;
  const auto take = [&](void* target, std::size_t bytes) {
    std::memcpy(target, data, bytes);
    data += bytes;
    size -= bytes;
  };
  take(&order, sizeof order);
  take(values, sizeof values);
  take(&err_length, sizeof err_length);
  take(&choice, sizeof choice);

  const Selection& s = selections[choice / 3U % 3U];
  char unused[80];
  tessarel_session_use(&s.session, unused, sizeof unused);
  auto [t, p, v, uh, entropy, q] = values;
  double h = uh;
  if (choice / 9U % 2U == 1) {  // such that mean a fluid
    t = within(t, 80, 900, false), p = within(p, 1, 1e8, true), v = within(v, 2e-5, 10, true);
    uh = within(uh, -4e5, 5e4, false), h = uh, entropy = within(entropy, -300, 200, false);
    q = within(q, -0.1, 1.1, false);
  }
  const auto n = static_cast<std::size_t>(s.n);
  Outputs out;
  double *x = out.array(n, 1.0 / s.n), *y = out.array(n, 1.0 / s.n);
  char* err = static_cast<char*>(std::malloc(err_length));  // exactly as long as said
  const char* spec = reinterpret_cast<const char*>(data);
  const auto& statistics = tessarel::interface::current_session().work.statistics;
  const long long before = statistics.pressures;
  const auto front_end = choice % 3U;
  const std::size_t places = front_end == 1 ? 3 : 1;
  double *pt = out.array(1, t), *pp = out.array(1, p), *pv = out.array(places, v), *pq = out.array(1, q);
  double *pu = out.array(places, uh), *ph = out.array(places, h), *ps = out.array(places, entropy);
  if (front_end == 2) {
    std::array<double*, 8> phases{};
    for (double*& value : phases) value = out.array(1);
    const auto& [v_l, v_v, h_l, h_v, s_l, s_v, u_l, u_v] = phases;
    tessarel_tmdpropsat(spec, pt, pp, pv, ph, ps, pu, pq, x, y, v_l, v_v, h_l, h_v, s_l, s_v, u_l, u_v, err, size,
                        err_length);
  } else {
    std::array<double*, 7> second{};
    for (double*& value : second) value = out.array(places);
    double* lnphi = out.array(n * places);
    const auto& [cv, dpdt, dpdv, d2pdt2, d2pdv2, d2pdtdv, dcvdt] = second;
    const auto& call = front_end == 1 ? tessarel_tmdprop_allphase : tessarel_tmdprop;
    call(spec, &order, pt, pp, pv, pu, ph, ps, pq, cv, dpdt, dpdv, d2pdt2, d2pdv2, d2pdtdv, dcvdt, x, y, lnphi, err,
         size, err_length);
  }
  require(statistics.pressures - before <= most_pressures);
  if (err_length >= 9 && std::string_view(err, 9) == "No errors") {
    // What a call leaves alone is the caller's: energies of a state under tension, q of one phase by itself.
    const bool tension = size >= 2 && spec[0] == 'T' && spec[1] == 'm';
    const bool single = size >= 6 && spec[4] == 'p' && spec[5] == 'h';
    if (single && !std::isfinite(*pq)) *pq = 0;
    for (double* value : {pu, ph, ps})
      if (tension && !std::isfinite(*value)) *value = 0;
    require(out.finite());
  }
  std::free(err);
  return 0;
}
